// Domains: which types they take over from patterns, their defaults, and that all domains of one
// pattern share a body.
#include "SampleTypes.h"
#include "support/MessageLanguage.h"
#include "support/ProcessTest.h"

#include <core/concurrency/Thread.h>
#include <core/values/ContextException.h>

#include <gmock/gmock.h>

#include <latch>

namespace {

using namespace core;
using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

class Domains : public ProcessTest {
protected:
    Domains() {
        providerFails = false;
        provided = TypeDomainPattern();
    }
    ~Domains() override { provided = TypeDomainPattern(); }
};

TypeDomainPattern number(const NumericQualifiers& qualifiers) {
    TypeDomainPattern pattern(CLSID_NumericType);
    pattern.setNumericQualifiers(qualifiers);
    return pattern;
}

TEST_F(Domains, HaveADefaultByTheNumberOfTypes) {
    const struct {
        std::vector<_GUID> types;
        _GUID expected;
        bool holdsUndefined;
    } rows[] = {
        {{}, kUUIDNull, false},
        {{CLSID_UndefinedType, kUUIDNull}, kUUIDNull, false},
        {{CLSID_NumericType}, CLSID_NumericType, false},
        {{CLSID_WidgetType, CLSID_WidgetType}, CLSID_WidgetType, false},
        {{CLSID_NumericType, CLSID_StringType}, CLSID_UndefinedType, true},
    };
    for (const auto& row : rows) {
        TypeDomain added, listed;
        for (const _GUID& type : row.types) added.addType(type);
        listed.addTypes(row.types);
        for (const TypeDomain& domain : {TypeDomain(TypeDomainPattern(row.types)), added, listed}) {
            EXPECT_EQ(domain.defaultTypeId(), row.expected);
            EXPECT_EQ(domain.contains(CLSID_UndefinedType), row.holdsUndefined);
            EXPECT_EQ(domain.defaultType(),
                      row.expected == kUUIDNull ? Type() : Type(row.expected));
        }
    }
}

TEST_F(Domains, LeaveOutWhatTheProcessDoesNotKnow) {
    TypeDomain domain(TypeDomainPattern({kUnknownType, CLSID_WidgetType}));
    EXPECT_THAT(domain.types(), ElementsAre(CLSID_WidgetType));
    domain.addType(kUnknownType);
    domain.addTypes({kUnknownType, kUUIDNull, CLSID_UndefinedType});
    EXPECT_EQ(domain.size(), 1u);
    EXPECT_FALSE(domain.contains(kUnknownType) || domain.contains(kUUIDNull));
    EXPECT_TRUE(TypeDomain(kUnknownType).empty());
}

TEST_F(Domains, TakeTheQualifiersOfTheTypesOfThePattern) {
    TypeDomainPattern pattern = number({5, 2});
    pattern.setStringQualifiers(StringQualifiers(3, false)); // of a type that is not there
    const TypeDomain domain(pattern);
    EXPECT_EQ(domain.getNumericQualifiers(), NumericQualifiers(5, 2));
    EXPECT_EQ(domain.getStringQualifiers(), StringQualifiers());
}

TEST_F(Domains, PutThePatternOfAProviderInItsPlace) {
    provided = number({6, 0});
    provided.addTypes({CLSID_WidgetType, kUnknownType});
    TypeDomainPattern pattern = number({5, 2});
    pattern.addType(CLSID_Provider);
    const TypeDomain domain(pattern);
    EXPECT_EQ(domain.types(),
              TypeDomain(TypeDomainPattern({CLSID_NumericType, CLSID_WidgetType})).types());
    EXPECT_EQ(domain.getNumericQualifiers(), NumericQualifiers(8, 2)) << "both are widened";

    // One level deep: a provider that a provider names is a type like others.
    provided = TypeDomainPattern(CLSID_DateType);
    EXPECT_EQ(TypeDomain(TypeDomainPattern(CLSID_OuterProvider)).types(),
              TypeDomainPattern({CLSID_Provider, CLSID_BooleanType}).types());

    EXPECT_THAT(TypeDomain(TypeDomainPattern({CLSID_EmptyProvider, CLSID_DateType})).types(),
                ElementsAre(CLSID_DateType));
}

// The provider writes to the pattern that the domain is made of.
TEST_F(Domains, AreOfThePatternAsItWas) {
    TypeDomainPattern pattern({CLSID_Provider, CLSID_DateType});
    provided = TypeDomainPattern(CLSID_StringType);
    whileProviding = [&pattern] {
        for (std::uint32_t i = 1; i != 20; ++i) pattern.addType({i, 0, 0, {}});
        pattern.addType(CLSID_NullType);
    };
    const TypeDomain domain(pattern);
    whileProviding = nullptr;
    EXPECT_EQ(domain.types(), TypeDomainPattern({CLSID_StringType, CLSID_DateType}).types());
    EXPECT_TRUE(TypeDomain(pattern).contains(CLSID_NullType));
}

TEST_F(Domains, OfAPatternWhoseProviderFailsAreRefused) {
    const TypeDomainPattern pattern({CLSID_Provider, CLSID_DateType});
    const MessageLanguage language(u"en");
    providerFails = true;
    try {
        TypeDomain{pattern};
        FAIL() << "nothing was thrown";
    } catch (const TypeDomainPatternProviderException& exception) {
        EXPECT_EQ(exception.description(), u"The class " + to_string(CLSID_Provider) +
                                               u" did not give the types that it stands for");
        ASSERT_TRUE(exception.inner());
        EXPECT_EQ(exception.inner()->exception()->description(), u"no data");
    }
    providerFails = false;
    provided = TypeDomainPattern(CLSID_StringType);
    EXPECT_EQ(TypeDomain(pattern).size(), 2u) << "the failure is not kept";
}

TEST_F(Domains, MergeTypesAndQualifiers) {
    TypeDomain domain(number({5, 2}));
    TypeDomainPattern other = number({6, 0});
    other.addType(CLSID_StringType);
    other.setStringQualifiers(StringQualifiers(7));
    domain.merge(TypeDomain(other));
    EXPECT_EQ(domain.getNumericQualifiers(), NumericQualifiers(8, 2));
    EXPECT_EQ(domain.getStringQualifiers(), StringQualifiers(7));
    EXPECT_EQ(domain.defaultTypeId(), CLSID_UndefinedType);
    domain.merge(domain);
    domain.merge(TypeDomain());
    EXPECT_EQ(domain.size(), 2u);
}

TEST_F(Domains, OfOnePatternShareABodyUntilOneIsWritten) {
    TypeDomainPattern pattern = number({5, 2});
    const TypeDomainPattern copy = pattern;
    const TypeDomain first(pattern);
    TypeDomain second(copy);
    EXPECT_EQ(&first.reference(), &second.reference());

    second.setNumericQualifiers({});
    second.addType(CLSID_DateType);
    EXPECT_EQ(first.size(), 1u);
    EXPECT_EQ(first.getNumericQualifiers(), NumericQualifiers(5, 2));
    EXPECT_EQ(&TypeDomain(copy).reference(), &first.reference()) << "the cached one was written";

    // A pattern that is written forgets its domain, alone or not.
    pattern.addType(CLSID_DateType);
    EXPECT_EQ(TypeDomain(pattern).size(), 2u);
    pattern.setNumericQualifiers({7, 1});
    EXPECT_EQ(TypeDomain(pattern).getNumericQualifiers(), NumericQualifiers(7, 1));
    pattern.unique();
    EXPECT_EQ(&TypeDomain(copy).reference(), &first.reference());
}

// Each round all threads make the domain of a new pattern at once, each from a handle of its own.
TEST_F(Domains, MadeByManyThreadsAtOnceAreOne) {
    constexpr int kThreads = 4, kRounds = 300;
    std::vector<TypeDomainPattern> patterns;
    for (int round = 0; round != kRounds; ++round)
        patterns.push_back(number({5, static_cast<unsigned>(round % 5)}));
    std::vector<std::unique_ptr<std::latch>> starts;
    for (int round = 0; round != kRounds; ++round)
        starts.push_back(std::make_unique<std::latch>(kThreads));
    std::vector<const TypeDomainBody*> bodies[kThreads];
    std::vector<TypeDomain> kept[kThreads];
    std::vector<InterfacePtr<Thread>> threads;
    for (int i = 0; i != kThreads; ++i) {
        threads.push_back(create_thread([&, i, own = patterns]() mutable {
            for (std::size_t round = 0; round != kRounds; ++round) {
                starts[round]->arrive_and_wait();
                kept[i].emplace_back(own[round]);
                bodies[i].push_back(&kept[i].back().reference());
                own[round].addType(CLSID_DateType); // lets go of the shared pattern
                EXPECT_EQ(TypeDomain(own[round]).size(), 2u);
            }
        }));
        threads.back()->start();
    }
    for (const auto& thread : threads) thread->join();
    for (int i = 1; i != kThreads; ++i) EXPECT_EQ(bodies[i], bodies[0]);
    EXPECT_EQ(bodies[0].size(), std::size_t{kRounds});
    for (std::size_t round = 0; round != kRounds; ++round)
        EXPECT_EQ(&TypeDomain(patterns[round]).reference(), bodies[0][round]);
}

} // namespace
