// Objects, wrappers, interface maps, creators and pointers, without any process.

#include <core/component/ClassDescriptor.h>
#include <core/component/IUnknownImpl.h>
#include <core/component/InterfacePtr.h>
#include <core/component/Refcountable.h>

#include "support/FailingMemory.h"

#include <gmock/gmock.h>

#include <thread>
#include <vector>

using namespace core::literals;
using core::InterfacePtr;
using testing::ElementsAre;

namespace {

constexpr _GUID IID_IFirst = "a2f0a35c-7a0e-44c1-8d21-6ed3d2b0a6a1"_guid;
constexpr _GUID IID_ISecond = "b8b2ab90-1ef1-43a9-86e0-c0b0ad8e9f02"_guid;
constexpr _GUID IID_IThird = "c0c1e6c2-5f87-4df3-a2f5-7d6c6b0f3a03"_guid;
constexpr _GUID IID_IOther = "d9a3b7b4-3a1c-4d0f-93c6-0b6f1f3c2b04"_guid;
constexpr _GUID CLSID_Plain = "e0e7f7a1-2f53-4e27-9c43-5d3a2b1c0d05"_guid;

int living = 0;

class IFirst : public IUnknown {
public:
    ORB_INTERFACE(IFirst, IID_IFirst)
    virtual int first() = 0;
};
class ISecond : public IUnknown {
public:
    ORB_INTERFACE(ISecond, IID_ISecond)
    virtual int second() = 0;
};
class IThird : public ISecond {
public:
    ORB_INTERFACE(IThird, IID_IThird)
    virtual int third() = 0;
};

// Two branches, so that interfaces lie at different places.
class Body
    : public IFirst
    , public IThird {
public:
    Body() { ++living; }
    ~Body() { --living; }
    int first() override { return 1; }
    int second() override { return 2; }
    int third() override { return 3; }
};

class Plain
    : public core::ObjectRoot
    , public core::SCOM_Class<Plain, &CLSID_Plain>
    , public Body {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<Plain, IFirst, core::Via<ISecond, IThird>, IThird>();
    }
};
class Aggregatable
    : public core::ObjectRoot
    , public core::SCOM_Class<Aggregatable, &CLSID_Plain>
    , public Body {
public:
    static constexpr bool kAggregatable = true;
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<Aggregatable, IFirst, IThird>();
    }
};
class Single
    : public core::ObjectRoot
    , public core::SCOM_Singleton<Single, &CLSID_Plain>
    , public Body {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<Single, IFirst, IThird>();
    }
};
class Service
    : public core::ObjectRoot
    , public core::SCOM_Service<Service, &CLSID_Plain, &IID_IFirst>
    , public Body {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<Service, IFirst, IThird>();
    }
};
class Throwing
    : public core::ObjectRoot
    , public core::SCOM_Class<Throwing, &CLSID_Plain>
    , public Body {
public:
    Throwing() { throw 1; }
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<Throwing, IFirst>();
    }
};

// An outer object that is never freed and knows one interface besides.
class Outer
    : public core::ObjectRoot
    , public IFirst {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<Outer, IFirst>();
    }
    int first() override { return 100; }
};

template <class I, class Object> InterfacePtr<I> query(Object* object) {
    void* found = nullptr;
    object->QueryInterface(core::interface_id_of<I>(), &found);
    return {static_cast<I*>(found), false};
}

TEST(QueryInterface, GivesEveryInterfaceOfTheMapAtItsPlace) {
    const auto object = core::make_object<Plain>();
    const auto first = query<IFirst>(object.get());
    const auto second = query<ISecond>(first.get());
    const auto third = query<IThird>(second.get());
    ASSERT_TRUE(first && second && third);
    EXPECT_EQ(first->first(), 1);
    EXPECT_EQ(second->second(), 2);
    EXPECT_EQ(third->third(), 3);
}

TEST(QueryInterface, GivesOneIdentityThroughEveryInterface) {
    const auto object = core::make_object<Plain>();
    EXPECT_EQ(query<IUnknown>(query<IFirst>(object.get()).get()),
              query<IUnknown>(query<IThird>(object.get()).get()));
}

TEST(QueryInterface, RefusesWithoutTouchingCounts) {
    const auto object = core::make_object<Plain>();
    void* out = &living;
    EXPECT_EQ(object->QueryInterface(IID_IOther, &out), E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(object->QueryInterface(IID_IFirst, nullptr), E_POINTER);
    EXPECT_EQ(object->AddRef(), 2u);
    EXPECT_EQ(object->Release(), 1u);
}

std::vector<const char*> asked;

HRESULT refuse(void*, const _GUID&, void**, std::intptr_t) noexcept {
    asked.push_back("refuse");
    return E_FAIL;
}
HRESULT refuse_blindly(void*, const _GUID&, void**, std::intptr_t) noexcept {
    asked.push_back("blind");
    return E_FAIL;
}
HRESULT give_first(void* object, const _GUID&, void** out, std::intptr_t offset) noexcept;

class Asking
    : public core::ObjectRoot
    , public Body {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<Asking, IThird, core::BlindEntry<refuse_blindly>,
                                   core::FunctionEntry<&IID_IFirst, give_first, 7>,
                                   core::FunctionEntry<&IID_IOther, refuse>, IFirst>();
    }
};

HRESULT give_first(void* object, const _GUID&, void** out, std::intptr_t offset) noexcept {
    asked.push_back("give");
    EXPECT_EQ(offset, 7);
    IFirst* const first = static_cast<Asking*>(object);
    first->AddRef();
    *out = first;
    return S_OK;
}

TEST(QueryInterface, AsksFunctionsInOrderAndGoesOnBehindABlindRefusal) {
    const auto object = core::make_object<Asking>();
    asked.clear();
    EXPECT_TRUE(query<IFirst>(object.get()));
    EXPECT_THAT(asked, ElementsAre(testing::StrEq("blind"), testing::StrEq("give")));
    asked.clear();
    void* out = nullptr;
    EXPECT_EQ(object->QueryInterface(IID_IOther, &out), E_FAIL);
    EXPECT_THAT(asked, ElementsAre(testing::StrEq("blind"), testing::StrEq("refuse")));
}

TEST(Counting, EndsAnObjectWithItsLastReference) {
    living = 0;
    {
        InterfacePtr<IFirst> first = core::make_object<Plain>();
        const InterfacePtr<IThird> third(first);
        first.reset();
        EXPECT_EQ(living, 1);
    }
    EXPECT_EQ(living, 0);
}

TEST(Counting, IsSafeAcrossThreads) {
    living = 0;
    {
        const InterfacePtr<IFirst> shared = core::make_object<Plain>();
        std::vector<std::thread> threads;
        for (int i = 0; i != 4; ++i)
            threads.emplace_back([copy = shared] {
                for (int n = 0; n != 10'000; ++n) InterfacePtr<IThird> other(copy);
            });
        for (std::thread& thread : threads) thread.join();
    }
    EXPECT_EQ(living, 0);
}

TEST(Counting, StaticAndSingletonObjectsCountNothing) {
    core::StaticObject<Outer> outer;
    EXPECT_EQ(outer.AddRef(), 1u);
    EXPECT_EQ(outer.Release(), 1u);

    living = 0;
    void* made = nullptr;
    ASSERT_EQ(core::creator_of<Single>()(nullptr, IID_IFirst, &made), S_OK);
    auto* const single = static_cast<IFirst*>(made);
    EXPECT_EQ(single->Release(), 1u);
    EXPECT_EQ(single->Release(), 1u);
    EXPECT_EQ(living, 1);
    query<core::ISCOMSingleton>(single).detach()->destroySingleton();
    EXPECT_EQ(living, 0);
}

TEST(DestructionGuard, StopsTheProcessWhenReferencesAreHeld) {
    EXPECT_DEATH(
        {
            core::SCOM_Object<Plain> onTheStack;
            onTheStack.AddRef();
        },
        "destroyed while references");
}

TEST(Creators, FollowTheRegistrationOfTheClass) {
    core::StaticObject<Outer> outer;
    const struct {
        const char* what;
        core::Creator creator;
        IUnknown* outer;
        HRESULT result;
    } rows[] = {
        {"plain", core::creator_of<Plain>(), nullptr, S_OK},
        {"plain, outer", core::creator_of<Plain>(), &outer, CLASS_E_NOAGGREGATION},
        {"aggregatable", core::creator_of<Aggregatable>(), nullptr, S_OK},
        {"aggregatable, outer", core::creator_of<Aggregatable>(), &outer, S_OK},
        {"singleton, outer", core::creator_of<Single>(), &outer, CLASS_E_NOAGGREGATION},
        {"service", core::creator_of<Service>(), nullptr, E_FAIL},
        {"service, outer", core::creator_of<Service>(), &outer, S_OK},
        {"throwing", core::creator_of<Throwing>(), nullptr, E_OUTOFMEMORY},
    };
    living = 0;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        void* out = nullptr;
        EXPECT_EQ(row.creator(row.outer, core::IID_IUnknown, &out), row.result);
        EXPECT_EQ(out != nullptr, row.result == S_OK);
        if (out) static_cast<IUnknown*>(out)->Release();
        EXPECT_EQ(living, 0);
        // An object without the interface asked for does not outlive the call.
        EXPECT_NE(row.creator(row.outer, IID_IOther, &out), S_OK);
        EXPECT_EQ(living, 0);
    }
}

TEST(Creators, ReportFailingMemory) {
    core::StaticObject<Outer> outer;
    living = 0;
    for (IUnknown* const unknown :
         {static_cast<IUnknown*>(nullptr), static_cast<IUnknown*>(&outer)}) {
        const test::FailingMemory failing(0);
        void* out = nullptr;
        EXPECT_EQ(core::creator_of<Aggregatable>()(unknown, core::IID_IUnknown, &out),
                  E_OUTOFMEMORY);
        EXPECT_EQ(core::create_class_factory(core::creator_of<Plain>(), core::IID_IUnknown, &out),
                  E_OUTOFMEMORY);
        EXPECT_THROW(core::make_class_factory(core::creator_of<Plain>()), std::bad_alloc);
    }
    EXPECT_EQ(living, 0);
}

TEST(Aggregation, KeepsTheInnerUnknownApartFromTheInterfaces) {
    living = 0;
    // A counted outer object shows where references go.
    const auto outer = core::make_object<Outer>();
    const std::int32_t locks = core::this_module().lockCount();
    void* made = nullptr;
    ASSERT_EQ(core::creator_of<Aggregatable>()(outer.get(), core::IID_IUnknown, &made), S_OK);
    InterfacePtr<IUnknown> inner(static_cast<IUnknown*>(made), false);
    EXPECT_EQ(core::this_module().lockCount(), locks + 1);
    {
        const auto third = query<IThird>(inner.get());
        ASSERT_TRUE(third);
        EXPECT_EQ(outer->AddRef(), 3u) << "an interface holds the outer object";
        outer->Release();
        // The outer object answers first, for its own interfaces and for the identity.
        EXPECT_EQ(query<IFirst>(third.get())->first(), 100);
        EXPECT_EQ(query<IUnknown>(third.get()).get(), query<IUnknown>(outer.get()).get());
        // What only the contained object has is reached through the fallback.
        EXPECT_EQ(query<IThird>(third.get()), third);
    }
    EXPECT_EQ(query<IUnknown>(inner.get()), inner);
    EXPECT_EQ(living, 1);
    inner.reset();
    EXPECT_EQ(living, 0);
    EXPECT_EQ(core::this_module().lockCount(), locks);
}

TEST(ClassFactory, ChecksWhatItIsAsked) {
    core::StaticObject<Outer> outer;
    const InterfacePtr<IClassFactory> factory =
        core::make_class_factory(core::creator_of<Aggregatable>());
    void* out = &outer;
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IFirst, nullptr), E_POINTER);
    EXPECT_EQ(factory->CreateInstance(&outer, IID_IFirst, &out), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(out, nullptr);
    ASSERT_EQ(factory->CreateInstance(nullptr, IID_IFirst, &out), S_OK);
    EXPECT_EQ(static_cast<IFirst*>(out)->Release(), 0u);
}

// ---- InterfacePtr

class Logged
    : public core::ObjectRoot
    , public IFirst {
public:
    explicit Logged(InterfacePtr<IFirst>* holder) : holder_(holder) {}
    ~Logged() { seenEmpty = !*holder_; }
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<Logged, IFirst>();
    }
    int first() override { return 1; }
    static inline bool seenEmpty = false;

private:
    InterfacePtr<IFirst>* holder_;
};

TEST(InterfacePointer, IsEmptyBeforeItsObjectEnds) {
    InterfacePtr<IFirst> holder;
    holder = core::make_object<Logged>(&holder);
    Logged::seenEmpty = false;
    holder.reset();
    EXPECT_TRUE(Logged::seenEmpty);
}

TEST(InterfacePointer, MovesReferencesAboutWithoutLosingAny) {
    living = 0;
    InterfacePtr<IFirst> a = core::make_object<Plain>();
    InterfacePtr<IFirst>& same = a;
    a = same;
    a = std::move(same);
    EXPECT_EQ(living, 1);
    IFirst* const raw = a.detach();
    EXPECT_FALSE(a);
    a = InterfacePtr<IFirst>(raw, false);
    EXPECT_EQ(a->AddRef(), 2u);
    a->Release();
    a = core::make_object<Plain>();
    EXPECT_EQ(living, 1);
    EXPECT_FALSE(InterfacePtr<IThird>(static_cast<IUnknown*>(nullptr)));
    a = nullptr;
    EXPECT_EQ(living, 0);
}

// ---- What is no object of the model

struct Counted : core::Refcountable<Counted, core::SimpleCounter> {
    virtual ~Counted() { --living; }
    Counted() { ++living; }
};

TEST(Refcountable, EndsThroughTheVirtualDestructor) {
    living = 0;
    const InterfacePtr<Counted> first(new Counted, true);
    {
        const InterfacePtr<Counted> second = first;
        EXPECT_EQ(first->references(), 2u);
        const Counted copy(*first);
        EXPECT_EQ(copy.references(), 0u) << "references are no part of the value";
    }
    EXPECT_EQ(first->references(), 1u);
}

class FirstImpl : public IFirst {
public:
    int first() override { return 9; }
};

TEST(LightObject, KnowsItsInterfaceAndTheRoot) {
    core::IUnknownImpl<FirstImpl, IFirst> object;
    EXPECT_EQ(query<IFirst>(&object)->first(), 9);
    EXPECT_TRUE(query<IUnknown>(&object));
    EXPECT_FALSE(query<ISecond>(&object));
    EXPECT_EQ(object.QueryInterface(IID_IFirst, nullptr), E_POINTER);
    EXPECT_EQ(object.Release(), 1u);
}

} // namespace
