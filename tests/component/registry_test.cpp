// Tables of classes, alone and chained.

#include <core/component/ClassBundle.h>
#include <core/component/ClassDescriptor.h>

#include "support/FailingMemory.h"

#include <gmock/gmock.h>

#include <atomic>
#include <latch>
#include <thread>

using namespace core::literals;
using core::InterfacePtr;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using Strategy = core::ClassBundleSearchStrategy;

namespace {

constexpr _GUID IID_INumber = "11f2d9a0-6c7b-4f53-9b8e-0d4b7f2c1a01"_guid;
constexpr _GUID CLSID_A = "20000000-0000-0000-0000-00000000000a"_guid;
constexpr _GUID CLSID_B = "10000000-0000-0000-0000-00000000000b"_guid;
constexpr _GUID CATID_X = "30000000-0000-0000-0000-000000000001"_guid;
constexpr _GUID CATID_Y = "30000000-0000-0000-0000-000000000002"_guid;

class INumber : public IUnknown {
public:
    ORB_INTERFACE(INumber, IID_INumber)
    virtual int number() = 0;
};

std::atomic<int> living = 0;

template <int value>
class Number
    : public core::ObjectRoot
    , public core::SCOM_Class<Number<value>, &CLSID_A>
    , public INumber {
public:
    static constexpr bool kAggregatable = true;
    Number() { ++living; }
    ~Number() { --living; }
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<Number, INumber>();
    }
    int number() override { return value; }
};

class Single
    : public core::ObjectRoot
    , public core::SCOM_Singleton<Single, &CLSID_A>
    , public INumber {
public:
    Single() {
        ++living;
        if (duringConstruction) duringConstruction();
    }
    ~Single() { --living; }
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<Single, INumber>();
    }
    int number() override { return 0; }
    static inline void (*duringConstruction)() = nullptr;
};

template <class X> InterfacePtr<IClassFactory> factory_of() {
    return core::make_class_factory(core::creator_of<X>());
}

InterfacePtr<core::SCOM_ClassRegistrar> table(core::SCOM_ClassBundle* parent = nullptr,
                                              Strategy strategy = Strategy::ParentFirst) {
    return core::create_SCOM_class_bundle(parent, strategy);
}

template <class X>
void add(core::SCOM_ClassRegistrar& to, const _GUID& clsid,
         core::SCOM_RegisterType type = core::RegisterClass) {
    to.registerClass(clsid, factory_of<X>().get(), type, "here");
}

// The number of the class behind a GUID or an alias; -1 for none.
int number_of(core::SCOM_ClassBundle& bundle, const _GUID& clsid) {
    void* out = &living;
    if (!bundle.createObject(clsid, IID_INumber, &out)) {
        EXPECT_EQ(out, nullptr);
        return -1;
    }
    return InterfacePtr<INumber>(static_cast<INumber*>(out), false)->number();
}
int number_of(core::SCOM_ClassBundle& bundle, const stdx::ustring& alias) {
    void* out = nullptr;
    if (!bundle.createObjectByAlias(alias, IID_INumber, &out)) return -1;
    return InterfacePtr<INumber>(static_cast<INumber*>(out), false)->number();
}

TEST(Registrar, KeepsTheFirstFactoryOfAClass) {
    const auto classes = table();
    add<Number<1>>(*classes, CLSID_A);
    add<Number<2>>(*classes, CLSID_A);
    EXPECT_EQ(number_of(*classes, CLSID_A), 1);
    EXPECT_EQ(number_of(*classes, CLSID_B), -1);
    EXPECT_EQ(classes->getClassComponent(CLSID_A), "here");
    EXPECT_EQ(classes->getClassComponent(CLSID_B), "");
}

TEST(Registrar, TakesNoServicesAndCreatesNothingWithoutAFactory) {
    const auto classes = table();
    add<Number<1>>(*classes, CLSID_A, core::RegisterService);
    EXPECT_FALSE(classes->hasClass(CLSID_A));
    classes->registerClass(CLSID_B, nullptr, core::RegisterClass, "here");
    EXPECT_TRUE(classes->hasClass(CLSID_B));
    EXPECT_EQ(number_of(*classes, CLSID_B), -1);
}

TEST(Registrar, FindsAliasesInAnyCaseOfBothAlphabets) {
    const auto classes = table();
    add<Number<1>>(*classes, CLSID_A);
    add<Number<2>>(*classes, CLSID_B);
    classes->addClassAlias(CLSID_A, u"MyType");
    classes->addClassAlias(CLSID_B, u"MYTYPE"); // taken
    classes->addClassAlias(CLSID_B, u"Ёлка");
    classes->addClassAlias("99999999-0000-0000-0000-000000000000"_guid, u"Unknown");
    EXPECT_EQ(number_of(*classes, u"mytype"), 1);
    EXPECT_EQ(number_of(*classes, u"ёЛКА"), 2);
    EXPECT_EQ(number_of(*classes, u"unknown"), -1);
    EXPECT_EQ(number_of(*classes, u""), -1);
    EXPECT_THAT(classes->getClassAliases(CLSID_B), ElementsAre(u"Ёлка"));

    classes->removeClassAlias(u"ЁЛКА");
    EXPECT_EQ(number_of(*classes, u"Ёлка"), -1);
    EXPECT_THAT(classes->getClassAliases(CLSID_B), IsEmpty());
    classes->addClassAlias(CLSID_A, u"ёлка");
    EXPECT_EQ(number_of(*classes, u"Ёлка"), 1);
}

TEST(Registrar, ListsCategoriesInTheOrderOfGuids) {
    const auto classes = table();
    add<Number<1>>(*classes, CLSID_A);
    for (const _GUID& category : {CATID_Y, CATID_X, CATID_Y})
        classes->addClassCategory(CLSID_A, category);
    classes->addClassCategory(CLSID_B, CATID_X);
    EXPECT_THAT(classes->getClassCategories(CLSID_A), ElementsAre(CATID_X, CATID_Y));
    EXPECT_THAT(classes->getClassesOfCategory(CATID_X), ElementsAre(CLSID_A));
    EXPECT_TRUE(classes->isClassInCategory(CATID_X, CLSID_A));
    EXPECT_FALSE(classes->isClassInCategory(CATID_X, CLSID_B));
}

TEST(Registrar, RevokesAClassWithAllThatBelongsToIt) {
    living = 0;
    const auto classes = table();
    add<Single>(*classes, CLSID_A, core::RegisterSingleton);
    classes->addClassAlias(CLSID_A, u"One");
    classes->addClassCategory(CLSID_A, CATID_X);
    EXPECT_EQ(number_of(*classes, CLSID_A), 0);
    EXPECT_EQ(living, 1);
    EXPECT_TRUE(classes->revokeClass(CLSID_A));
    EXPECT_EQ(living, 0);
    EXPECT_FALSE(classes->hasClass(CLSID_A));
    EXPECT_EQ(number_of(*classes, u"one"), -1);
    EXPECT_THAT(classes->getClassesOfCategory(CATID_X), IsEmpty());
    EXPECT_FALSE(classes->revokeClass(CLSID_A));
}

TEST(Registrar, AsksParentAndOwnTableInTheOrderOfItsStrategy) {
    const auto parent = table();
    add<Number<1>>(*parent, CLSID_A);
    parent->addClassAlias(CLSID_A, u"A");
    parent->addClassCategory(CLSID_A, CATID_X);
    const struct {
        Strategy strategy;
        int answer;
        std::vector<_GUID> ofCategory;
    } rows[] = {
        {Strategy::ParentFirst, 1, {CLSID_A, CLSID_A, CLSID_B}},
        {Strategy::OwnFirst, 2, {CLSID_B, CLSID_A}},
    };
    for (const auto& row : rows) {
        const auto child = table(parent.get(), row.strategy);
        add<Number<2>>(*child, CLSID_A);
        add<Number<3>>(*child, CLSID_B);
        child->addClassAlias(CLSID_A, u"A");
        child->addClassAlias(CLSID_A, u"Own");
        for (const _GUID& clsid : {CLSID_A, CLSID_B}) child->addClassCategory(clsid, CATID_X);
        EXPECT_EQ(number_of(*child, CLSID_A), row.answer);
        EXPECT_EQ(number_of(*child, u"a"), row.answer);
        EXPECT_EQ(number_of(*child, CLSID_B), 3);
        // Aliases are the parent's whenever it knows the class.
        EXPECT_THAT(child->getClassAliases(CLSID_A), ElementsAre(u"A"));
        const std::vector<_GUID> ofCategory = child->getClassesOfCategory(CATID_X);
        if (row.strategy == Strategy::OwnFirst)
            EXPECT_EQ(ofCategory, row.ofCategory);
        else
            EXPECT_THAT(ofCategory, testing::UnorderedElementsAreArray(row.ofCategory));
    }
}

TEST(Registrar, TellsAndTakesItsParent) {
    const auto parent = table();
    add<Number<1>>(*parent, CLSID_A);
    const auto child = table();
    const InterfacePtr<core::SCOM_ClassBundleHierarchy> place(child);
    ASSERT_TRUE(place);
    EXPECT_EQ(place->getParentBundle(), nullptr);
    place->setParentBundle(parent.get());
    EXPECT_EQ(place->getParentBundle(), parent.get());
    EXPECT_EQ(number_of(*child, CLSID_A), 1);
}

TEST(Registrar, AggregatesPlainClassesOnly) {
    living = 0;
    const auto classes = table();
    add<Number<1>>(*classes, CLSID_A);
    add<Single>(*classes, CLSID_B, core::RegisterSingleton);
    core::StaticObject<Number<9>> outer;
    IUnknown* part = nullptr;
    ASSERT_TRUE(classes->createAggregated(CLSID_A, &outer, &part));
    EXPECT_EQ(InterfacePtr<INumber>(part)->number(), 1);
    EXPECT_EQ(living, 2);
    // What the pointer held goes first, also when nothing takes its place.
    EXPECT_FALSE(classes->createAggregated(CLSID_B, &outer, &part));
    EXPECT_EQ(part, nullptr);
    EXPECT_EQ(living, 1);
}

TEST(Registrar, TurnsFailingMemoryIntoBadAlloc) {
    const auto classes = table();
    add<Number<1>>(*classes, CLSID_A);
    add<Single>(*classes, CLSID_B, core::RegisterSingleton);
    classes->addClassAlias(CLSID_A, u"A");
    void* out = nullptr;
    IUnknown* part = nullptr;
    core::StaticObject<Number<9>> outer;
    {
        const test::FailingMemory failing(0);
        EXPECT_THROW(classes->createObject(CLSID_A, IID_INumber, &out), std::bad_alloc);
        EXPECT_THROW(classes->createObject(CLSID_B, IID_INumber, &out), std::bad_alloc);
        EXPECT_THROW(classes->createObjectByAlias(u"A", IID_INumber, &out), std::bad_alloc);
        EXPECT_THROW(classes->createAggregated(CLSID_A, &outer, &part), std::bad_alloc);
    }
    EXPECT_EQ(number_of(*classes, CLSID_A), 1);
    EXPECT_EQ(number_of(*classes, CLSID_B), 0);
}

TEST(Singleton, IsOneObjectUntilItsTableEnds) {
    living = 0;
    auto classes = table();
    add<Single>(*classes, CLSID_A, core::RegisterSingleton);
    add<Number<5>>(*classes, CLSID_B, core::RegisterSingleton); // shared, but counted
    for (const _GUID& clsid : {CLSID_A, CLSID_B}) {
        void *first = nullptr, *second = nullptr;
        ASSERT_TRUE(classes->createObject(clsid, IID_INumber, &first));
        ASSERT_TRUE(classes->createObject(clsid, IID_INumber, &second));
        EXPECT_EQ(first, second);
        static_cast<INumber*>(first)->Release();
        static_cast<INumber*>(second)->Release();
    }
    EXPECT_EQ(living, 2);
    classes.reset();
    EXPECT_EQ(living, 0);
}

// Both threads are inside the constructor at once: both create, one object survives.
TEST(Singleton, SurvivesARaceAsOneObject) {
    static std::latch* bothInside = nullptr;
    living = 0;
    const auto classes = table();
    add<Single>(*classes, CLSID_A, core::RegisterSingleton);
    std::latch latch(2);
    bothInside = &latch;
    Single::duringConstruction = [] { bothInside->arrive_and_wait(); };
    void* results[2] = {};
    std::thread other([&] { classes->createObject(CLSID_A, IID_INumber, &results[0]); });
    classes->createObject(CLSID_A, IID_INumber, &results[1]);
    other.join();
    Single::duringConstruction = nullptr;
    EXPECT_NE(results[0], nullptr);
    EXPECT_EQ(results[0], results[1]);
    EXPECT_EQ(living, 1);
}

} // namespace
