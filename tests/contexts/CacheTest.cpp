// The ways to find members by name, against the plain form: a sorted vector searched by halves.
#include "SampleContexts.h"
#include "support/ProcessTest.h"

#include <core/component/ClassDescriptor.h>
#include <core/component/Utf8.h>
#include <core/concurrency/Thread.h>

#include <algorithm>
#include <random>
#include <thread>

namespace {

using namespace core;
using namespace test;
using Rules = ContextDefCachedRules;

class PlainIndex {
public:
    explicit PlainIndex(const Names& names) {
        for (std::size_t member = 0; member < names.size(); ++member)
            for (const stdx::ustring& name : names[member]) {
                const auto at = lower_bound(name);
                if (at == entries_.end() || compare_nocase(at->first, name) != 0)
                    entries_.insert(at, {name, static_cast<int>(member)});
            }
    }
    int find(const stdx::ustring& name) {
        const auto at = lower_bound(name);
        return at != entries_.end() && compare_nocase(at->first, name) == 0 ? at->second : -1;
    }

private:
    using Entries = std::vector<std::pair<stdx::ustring, int>>;
    Entries::iterator lower_bound(const stdx::ustring& name) {
        return std::partition_point(entries_.begin(), entries_.end(), [&](const auto& entry) {
            return compare_nocase(entry.first, name) < 0;
        });
    }
    Entries entries_;
};

template <class Cache> class ContextCache : public ProcessTest {};
using Caches =
    testing::Types<ContextDefCached<Sample, Rules::Eager>, ContextDefCached<Sample, Rules::Lazy>,
                   ContextDefHashCached, ContextDefNoncached>;
TYPED_TEST_SUITE(ContextCache, Caches);

// Letters whose case is plain, those whose capitals or small letters fall together (sigma, long s,
// Kelvin, dotted I, micro), and no letters.
constexpr char16_t kUnits[] = u"aAbBzZ_09жЖёЁяЯσςΣſsSkK\u212AiIİıµμ\u039C\xDFﬁ\xD83D\x4E2D";

TYPED_TEST(ContextCache, FindsWhatTheSortedVectorFinds) {
    std::mt19937 random(7);
    const auto word = [&] {
        stdx::ustring text(static_cast<unsigned>(random() % 4 + (random() % 8 == 0 ? 16 : 0)),
                           u'a');
        for (char16_t& unit : text) unit = kUnits[random() % (std::size(kUnits) - 1)];
        return text;
    };
    for (int round = 0; round < 60; ++round) {
        Names names(static_cast<std::size_t>(round));
        for (auto& all : names)
            for (unsigned i = random() % 4; i > 0; --i) all.push_back(word());
        PlainIndex plain(names);
        const auto context = make_object<Listed<TypeParam>>(names);
        for (int i = 0; i < 200; ++i) {
            const stdx::ustring wanted = word();
            ASSERT_EQ(context->findProp(wanted), plain.find(wanted)) << to_utf8(wanted);
            ASSERT_EQ(context->findMethod(wanted), plain.find(wanted)) << to_utf8(wanted);
        }
        for (const auto& all : names)
            for (const stdx::ustring& name : all)
                ASSERT_EQ(context->findProp(name), plain.find(name)) << to_utf8(name);
    }
}

TYPED_TEST(ContextCache, KeepsToTheFirstMemberOfAName) {
    const auto context = make_object<Listed<TypeParam>>(
        Names{{u"Count", u"Количество"}, {u"Same", u"same"}, {u"COUNT", u"Ещё"}, {}, {u""}});
    const struct {
        const char16_t* name;
        int member;
    } rows[] = {{u"Count", 0}, {u"кОЛИЧЕСТВО", 0}, {u"SAME", 1}, {u"еЩЁ", 2},
                {u"", 4},      {u"Coun", -1},      {u"Еще", -1}, {u"Count ", -1}};
    for (const auto& row : rows) EXPECT_EQ(context->findProp(row.name), row.member);
}

TEST(ContextCaches, AreFilledAgainAfterAReset) {
    const auto context = make_object<Listed<ContextDefHashCached>>(Names{{u"Old"}});
    EXPECT_EQ(context->findProp(u"Old"), 0);
    context->rename({{u"New"}, {u"Old"}});
    EXPECT_EQ(context->findProp(u"Old"), 1);
    EXPECT_EQ(context->findMethod(u"new"), 0);
}

TEST(ContextCachesDeathTest, StopTheProcessWhenAnEagerOneWasNotFilled) {
    const auto context =
        make_object<Listed<ContextDefCached<Sample, Rules::Eager>>>(Names{{u"A"}}, u"", false);
    EXPECT_DEATH(context->findMethod(u"A"), "before its cache was filled");
}

// Names of a description that gives them as strings are taken from there.
class Renamed
    : public ObjectRoot
    , public SCOM_InternalClass<Renamed>
    , public IContextImpl<ContextDefIntern<Renamed, ContextDefCached<Renamed, Rules::Eager>,
                                           ContextStability::Stable>>
    , public IContextNames {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<Renamed, IContext_, IContextNames>();
    }
    Renamed() { fillCaches(); }
    int getNProps() override { return 1; }
    const char16_t* getPropName(int, int) override { return nullptr; }
    const stdx::ustring* getName(int, int language) override {
        return language == 0 ? &name_ : nullptr;
    }

private:
    stdx::ustring name_ = u"Key";
};

TEST(ContextCaches, TakeNamesThatAreNoConstants) {
    EXPECT_EQ(make_object<Renamed>()->findProp(u"KEY"), 0);
    ContextDefHashCached asked;
    const auto context = make_object<Renamed>();
    EXPECT_EQ(asked.findProp(static_cast<IContextDefBase*>(context.get()), u"key"), 0);
}

// ---- Descriptions of types

inline constexpr _GUID CLSID_SharedType = "3bb2a6b5-9d0d-4a39-8b5b-9a8e2d9a4c11"_guid;
inline constexpr _GUID CLSID_Nobody = "3bb2a6b5-9d0d-4a39-8b5b-9a8e2d9a4c12"_guid;

class SharedType
    : public ObjectRoot
    , public SCOM_Singleton<SharedType, &CLSID_SharedType>
    , public IContextDefImpl<SharedType> {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<SharedType, IContextDef, IContextDefBase>();
    }
    SharedType() { fillCaches(); }
    int getNProps() override { return 2; }
    const char16_t* getPropName(int property, int language) override {
        constexpr Term kNames[] = {{u"Count", u"Количество"}, {u"Size", nullptr}};
        return property >= 0 && property < 2 ? term_string(kNames[property], language) : nullptr;
    }
    bool isPropWritable(int property) override { return property == 1; }
};

template <const _GUID* type>
class Described
    : public ObjectRoot
    , public SCOM_InternalClass<Described<type>>
    , public IContextExtImpl<type> {
public:
    static const InterfaceEntry* _GetEntries() { return interface_map<Described, IContext_>(); }
};

// Finds names as the type does, by a cache of its own.
template <class Cache>
class Extern
    : public ObjectRoot
    , public SCOM_InternalClass<Extern<Cache>>
    , public IContextImpl<ContextDefIntern<Extern<Cache>, Cache, ContextStability::Stable>> {
public:
    static const InterfaceEntry* _GetEntries() { return interface_map<Extern, IContext_>(); }
    explicit Extern(const _GUID& type) : Extern::IContextImpl(type) {}
};

using ExternalDescription = ProcessTest;

TEST_F(ExternalDescription, AnswersForTheValuesOfAType) {
    const auto value = make_object<Described<&CLSID_SharedType>>();
    EXPECT_EQ(value->findProp(u"КОЛИЧЕСТВО"), 0);
    EXPECT_STREQ(to_utf8(value->getPropName(1, 1)).c_str(), "Size");
    EXPECT_EQ(value->getPropName(1, 2), nullptr);
    EXPECT_FALSE(value->isPropWritable(0));
    EXPECT_EQ(value->getIContextDef(),
              static_cast<IContextDefBase*>(create_object<IContextDef>(CLSID_SharedType).get()));
    EXPECT_EQ(make_object<Extern<ContextDefExternBase>>(CLSID_SharedType)->findProp(u"size"), 1);
    const auto lazed = make_object<Extern<ContextDefExternLazed>>(CLSID_SharedType);
    EXPECT_EQ(lazed->findProp(u"size"), 1);
    EXPECT_EQ(lazed->findMethod(u"size"), -1);
}

TEST_F(ExternalDescription, OfATypeThatIsNotThereHasNoMembers) {
    const auto value = make_object<Described<&CLSID_Nobody>>();
    EXPECT_EQ(value->getIContextDef(), nullptr);
    EXPECT_EQ(value->getNProps(), 0);
    EXPECT_EQ(value->findMethod(u"Count"), -1);
    EXPECT_EQ(ContextDefExternBase(CLSID_Nobody).findProp(nullptr, u"Count"), -1);
    EXPECT_EQ(ContextDefExternLazed(CLSID_Nobody).findProp(nullptr, u"Count"), -1);
}

// The first question to one value, to the lazy form and to the type itself, by threads that race.
TEST_F(ExternalDescription, IsFoundByThreadsThatRace) {
    for (int round = 0; round < 50; ++round) {
        ManualProcess fresh;
        const auto value = make_object<Described<&CLSID_SharedType>>();
        ContextDefExternLazed lazed(CLSID_SharedType);
        std::vector<InterfacePtr<core::Thread>> threads;
        std::atomic<int> right = 0;
        for (int i = 0; i < 4; ++i) {
            threads.emplace_back(create_thread([&] {
                right += value->findProp(u"size") == 1;
                right += lazed.findProp(nullptr, u"КОЛИЧЕСТВО") == 0;
                right += value->getIContextDef() != nullptr;
            }));
            threads.back()->start();
        }
        for (const auto& thread : threads) thread->join();
        EXPECT_EQ(right, 12);
    }
}

} // namespace

ORBCORE_REGISTER(SharedType);
