// Patterns: the set and its order, what qualifiers say, merging, subsets, and handles that share.
#include "SampleTypes.h"

#include <core/component/SCOM_Process.h>

#include <gmock/gmock.h>

#include <random>
#include <set>

namespace {

using namespace core;
using namespace test;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

_GUID type_number(std::uint32_t n) {
    return {n, 0, 0, {}};
}

// In ascending order; each differs from the one before in another field.
constexpr _GUID kAscending[] = {
    "00000001-0000-0000-0000-000000000000"_guid, "00000001-0000-0000-0000-000000000001"_guid,
    "00000001-0000-0000-8000-000000000000"_guid, "00000001-0000-8000-0000-000000000000"_guid,
    "00000001-8000-0000-0000-000000000000"_guid, "80000000-0000-0000-0000-000000000000"_guid,
    "ffffffff-ffff-ffff-ffff-ffffffffffff"_guid,
};

TEST(PatternSet, IsInTheOrderOfItsFields) {
    TypeDomainPattern pattern;
    for (const unsigned i : {3u, 0u, 6u, 2u, 5u, 1u, 4u, 3u, 0u}) pattern.addType(kAscending[i]);
    EXPECT_THAT(pattern.types(), ElementsAreArray(kAscending));
    EXPECT_EQ(pattern.front(), kAscending[0]);
    for (const _GUID& type : kAscending) EXPECT_TRUE(pattern.contains(type));
    EXPECT_FALSE(pattern.contains("00000001-8000-0000-0000-000000000001"_guid));
    EXPECT_EQ(pattern.find([](const _GUID& type) { return type.Data2 != 0; }), kAscending[4]);
    EXPECT_EQ(pattern.find([](const _GUID&) { return false; }), kUUIDNull);
}

TEST(PatternSet, NeverHoldsUndefinedOrTheNullGuid) {
    for (const TypeDomainPattern& pattern :
         {TypeDomainPattern(), TypeDomainPattern(CLSID_UndefinedType), TypeDomainPattern(kUUIDNull),
          TypeDomainPattern({kUUIDNull, CLSID_UndefinedType})}) {
        EXPECT_EQ(pattern.size(), 0u);
        EXPECT_EQ(pattern.front(), kUUIDNull);
        EXPECT_EQ(pattern, TypeDomainPattern());
        EXPECT_FALSE(pattern.contains(kUUIDNull) || pattern == kUUIDNull);
        EXPECT_EQ(TypeDomain(pattern).defaultTypeId(), kUUIDNull);
        EXPECT_EQ(TypeDomain(pattern).defaultType(), Type());
    }
}

TEST(PatternSet, AgreesWithASetOfTheStandardLibrary) {
    std::mt19937 random(1);
    for (int round = 0; round != 200; ++round) {
        TypeDomainPattern pattern;
        std::set<_GUID> model;
        for (auto step = random() % 40; step != 0; --step) {
            std::vector<_GUID> types(1 + random() % 3);
            for (_GUID& type : types)
                type = {static_cast<std::uint32_t>(1 + random() % 8),
                        0,
                        0,
                        {static_cast<std::uint8_t>(random() % 3)}};
            if (types.size() == 1)
                pattern.addType(types[0]);
            else if (random() % 2)
                pattern.addTypes(types);
            else
                pattern.merge(TypeDomainPattern(types));
            model.insert(types.begin(), types.end());
        }
        EXPECT_THAT(pattern.types(), ElementsAreArray(model));
        for (std::uint32_t n = 0; n != 10; ++n)
            for (std::uint8_t last = 0; last != 4; ++last) {
                const _GUID type = {n, 0, 0, {last}};
                EXPECT_EQ(pattern.contains(type), model.contains(type));
            }
    }
}

TEST(PatternSet, HashesTheFirstWordsAndComparesTheSets) {
    const auto pattern_of = [](std::initializer_list<std::uint32_t> words) {
        TypeDomainPattern pattern;
        for (const std::uint32_t word : words) pattern.addType(type_number(word));
        return pattern;
    };
    EXPECT_EQ(TypeDomainPattern().hash(), 0u);
    EXPECT_EQ(pattern_of({3, 1, 2}).hash(), 38u); // (1 * 5 + 2) * 5 + 3
    EXPECT_EQ(pattern_of({0xFFFFFFFF, 0xFFFFFFFE}).hash(), 0xFFFFFFF5u);
    EXPECT_EQ(pattern_of({1, 2}), pattern_of({2, 1}));
    EXPECT_NE(pattern_of({1, 2}), pattern_of({1, 3}));
    EXPECT_NE(pattern_of({1, 2}), pattern_of({1}));
    EXPECT_TRUE(pattern_of({1}) == type_number(1));
    EXPECT_FALSE(pattern_of({1, 2}) == type_number(1) || pattern_of({2}) == type_number(1));

    TypeDomainPattern narrow(CLSID_NumericType), wide(CLSID_NumericType);
    narrow.setNumericQualifiers({5, 2});
    EXPECT_EQ(narrow, wide);
    EXPECT_EQ(narrow.hash(), wide.hash());
}

// ---- Qualifiers

TEST(PatternQualifiers, AreCutToWhatCanBe) {
    const struct {
        unsigned digits, fraction;
        NumericQualifiers expected;
    } rows[] = {
        {0, 0, {}},         {0, 5, {0, 0}},     {5, 2, {5, 2}},       {5, 7, {5, 5}},
        {64, 64, {64, 64}}, {65, 65, {64, 64}}, {~0u, ~0u, {64, 64}}, {70, 10, {64, 10}},
    };
    for (const auto& row : rows) {
        const NumericQualifiers cut(row.digits, row.fraction);
        EXPECT_EQ(cut, row.expected) << row.digits << ' ' << row.fraction;
        EXPECT_LE(cut.digits, 64u);
        EXPECT_LE(cut.fraction, cut.digits);
    }
    EXPECT_EQ(NumericQualifiers(static_cast<unsigned>(-1), 3).digits, 64u);
    for (const auto& [bits, parts] : {std::pair(0, 3), {1, 1}, {2, 2}, {3, 3}, {4, 3}, {-2, 2}})
        EXPECT_EQ(DateQualifiers(bits).parts, parts) << bits;
}

TEST(PatternQualifiers, OfNumbersAndLengthsMergeToTheWider) {
    const struct {
        NumericQualifiers a, b, expected;
    } numbers[] = {
        {{5, 2}, {5, 2}, {5, 2}},
        {{5, 2}, {6, 0}, {8, 2}}, // 6 before the point, 2 behind
        {{5, 2, true}, {6, 3, true}, {6, 3, true}},
        {{5, 2, true}, {5, 2, false}, {5, 2, false}},
        {{0, 0, true}, {5, 2, true}, {0, 0, true}}, // no limit stays none
        {{5, 2, true}, {0, 0, false}, {0, 0, false}},
        {{60, 0}, {30, 30}, {64, 30}}, // cut
        {{64, 0}, {64, 64}, {64, 64}},
    };
    for (const auto& row : numbers) {
        EXPECT_EQ(NumericQualifiers::merge(row.a, row.b), row.expected);
        EXPECT_EQ(NumericQualifiers::merge(row.b, row.a), row.expected);
    }
    using Length = LengthQualifiers;
    const struct {
        Length a, b, expected;
    } lengths[] = {
        {Length(5), Length(3), Length(5)},
        {Length(5, false), Length(5, false), Length(5, false)},
        {Length(5, false), Length(7, true), Length(7, true)},
        {Length(0, false), Length(7, false), Length(0, true)},
        {Length(0, false), Length(0, false), Length(0, true)},
    };
    for (const auto& row : lengths) {
        EXPECT_EQ(Length::merge(row.a, row.b), row.expected);
        EXPECT_EQ(Length::merge(row.b, row.a), row.expected);
    }
}

// A pattern of each type that has qualifiers, each with the given ones.
struct Qualified {
    NumericQualifiers numeric;
    StringQualifiers string;
    DateQualifiers date;
    BinaryQualifiers binary;

    TypeDomainPattern of(const std::vector<_GUID>& types) const {
        TypeDomainPattern pattern(types);
        pattern.setNumericQualifiers(numeric);
        pattern.setStringQualifiers(string);
        pattern.setDateQualifiers(date);
        pattern.setBinaryQualifiers(binary);
        return pattern;
    }
};
const Qualified kSmall = {
    {5, 2, true}, StringQualifiers(3, false), DateQualifiers(1), BinaryQualifiers(4, false)};
const Qualified kLarge = {{9, 3}, StringQualifiers(8), DateQualifiers(2), BinaryQualifiers(6)};
const std::vector<_GUID> kAll = {CLSID_NumericType, CLSID_StringType, CLSID_DateType,
                                 CLSID_BinaryDataType, CLSID_BooleanType};

void expect_qualifiers(const TypeDomainPattern& pattern, const Qualified& expected) {
    EXPECT_EQ(pattern.getNumericQualifiers(), expected.numeric);
    EXPECT_EQ(pattern.getStringQualifiers(), expected.string);
    EXPECT_EQ(pattern.getDateQualifiers(), expected.date);
    EXPECT_EQ(pattern.getBinaryQualifiers(), expected.binary);
}

TEST(PatternMerge, TakesQualifiersOfTypesThatTheOtherHolds) {
    TypeDomainPattern both = kSmall.of(kAll);
    both.merge(kLarge.of(kAll));
    expect_qualifiers(both, {{9, 3}, StringQualifiers(8), DateQualifiers(3), BinaryQualifiers(6)});
    EXPECT_EQ(both.size(), kAll.size());

    TypeDomainPattern taken = kSmall.of({CLSID_BooleanType});
    taken.merge(kLarge.of(kAll));
    expect_qualifiers(taken, kLarge);
    EXPECT_EQ(taken, TypeDomainPattern(kAll));

    TypeDomainPattern kept = kSmall.of(kAll);
    kept.merge(kLarge.of({CLSID_BooleanType}));
    kept.merge(TypeDomainPattern());
    expect_qualifiers(kept, kSmall);

    TypeDomainPattern self = kSmall.of(kAll);
    self.merge(self);
    expect_qualifiers(self, kSmall);
    EXPECT_EQ(self, TypeDomainPattern(kAll));
}

TEST(PatternCompare, LooksAtTheQualifiersOfOneType) {
    for (const _GUID& type : kAll) {
        SCOPED_TRACE(to_cstring(type).c_str());
        const TypeDomainPattern small = kSmall.of({type}), large = kLarge.of({type});
        EXPECT_TRUE(small.hasEqualQualifier(kSmall.of(kAll), type));
        EXPECT_EQ(small.hasEqualQualifier(large, type), type == CLSID_BooleanType);
    }
    const auto equal = [](const Qualified& a, const Qualified& b, const _GUID& type) {
        return a.of(kAll).hasEqualQualifier(b.of(kAll), type);
    };
    Qualified other = kSmall;
    other.numeric.nonNegative = false;
    other.string.variable = true;
    EXPECT_FALSE(equal(kSmall, other, CLSID_NumericType));
    EXPECT_FALSE(equal(kSmall, other, CLSID_StringType));
    EXPECT_TRUE(equal(kSmall, other, CLSID_BinaryDataType));
}

TEST(PatternCompare, KnowsSubsetsBySetAndQualifiers) {
    const auto number = [](const NumericQualifiers& qualifiers) {
        TypeDomainPattern pattern(CLSID_NumericType);
        pattern.setNumericQualifiers(qualifiers);
        return pattern;
    };
    const auto string = [](unsigned length, bool variable) {
        TypeDomainPattern pattern(CLSID_StringType);
        pattern.setStringQualifiers(StringQualifiers(length, variable));
        return pattern;
    };
    const auto binary = [](unsigned length, bool variable) {
        TypeDomainPattern pattern(CLSID_BinaryDataType);
        pattern.setBinaryQualifiers(BinaryQualifiers(length, variable));
        return pattern;
    };
    const auto date = [](int parts) {
        TypeDomainPattern pattern(CLSID_DateType);
        pattern.setDateQualifiers(DateQualifiers(parts));
        return pattern;
    };
    const TypeDomainPattern none, boolean(CLSID_BooleanType),
        two({CLSID_BooleanType, CLSID_NumericType});
    const struct {
        const char* what;
        TypeDomainPattern inner, outer;
        bool expected;
    } rows[] = {
        {"empty in empty", none, none, true},
        {"empty in one", none, boolean, false},
        {"without qualifiers in empty", boolean, none, true},
        {"equal", boolean, boolean, true},
        {"one in two", boolean, two, true},
        {"two in one", two, boolean, false},
        {"another", string(0, true), two, false},

        {"number in empty, which has no digits", number({5, 2}), none, false},
        {"number without limit in empty", number({}), none, true},
        {"equal numbers", number({5, 2}), number({5, 2}), true},
        {"more digits before the point", number({6, 2}), number({5, 2}), false},
        {"more behind, fewer before", number({5, 3}), number({6, 2}), false},
        {"fewer of both", number({4, 1}), number({5, 2}), true},
        {"no limit in a limit", number({}), number({5, 2}), true},
        {"a limit in none, which counts as 0", number({5, 2}), number({}), false},
        {"negative in nonNegative", number({5, 2}), number({5, 2, true}), false},
        {"nonNegative in negative", number({5, 2, true}), number({5, 2}), true},

        {"shorter string", string(3, true), string(5, true), true},
        {"longer string", string(6, true), string(5, true), false},
        {"variable in fixed", string(3, true), string(5, false), false},
        {"fixed in variable", string(3, false), string(5, true), true},
        {"fixed in longer fixed", string(3, false), string(5, false), true},
        {"length in none, which counts as 0", string(10, true), string(0, true), false},
        {"string in empty", string(10, true), none, false},

        {"shorter bytes", binary(3, true), binary(5, true), true},
        {"longer bytes", binary(6, true), binary(5, true), false},
        {"variable bytes in fixed", binary(3, true), binary(5, false), false},

        {"date in both", date(1), date(3), true},
        {"both in date", date(3), date(1), false},
        {"time in date", date(2), date(1), false},
        {"time in empty", date(2), none, true},
    };
    for (const auto& row : rows) EXPECT_EQ(row.inner.isSubset(row.outer), row.expected) << row.what;
}

// ---- Sharing

TEST(PatternHandles, ShareABodyUntilOneIsWritten) {
    const TypeDomainPattern original = kSmall.of({CLSID_NumericType});
    const auto writes = std::to_array<void (*)(TypeDomainPattern&)>({
        [](TypeDomainPattern& pattern) { pattern.addType(CLSID_StringType); },
        [](TypeDomainPattern& pattern) { pattern.addTypes({CLSID_StringType}); },
        [](TypeDomainPattern& pattern) { pattern.merge(kLarge.of(kAll)); },
        [](TypeDomainPattern& pattern) { pattern.setNumericQualifiers({}); },
        [](TypeDomainPattern& pattern) { pattern.setStringQualifiers({}); },
        [](TypeDomainPattern& pattern) { pattern.setDateQualifiers({}); },
        [](TypeDomainPattern& pattern) { pattern.setBinaryQualifiers({}); },
    });
    for (const auto& write : writes) {
        TypeDomainPattern copy = original;
        EXPECT_EQ(&copy.reference(), &original.reference());
        write(copy);
        EXPECT_NE(&copy.reference(), &original.reference());
        EXPECT_EQ(original, CLSID_NumericType);
        expect_qualifiers(original, kSmall);
        const auto* const own = &copy.reference();
        write(copy);
        EXPECT_EQ(&copy.reference(), own) << "a body of one handle is written in place";
    }
    TypeDomainPattern source = original;
    const TypeDomainPattern moved = std::move(source);
    EXPECT_TRUE(source.empty());
    EXPECT_EQ(&moved.reference(), &original.reference());
    EXPECT_EQ(&source.reference(), &TypeDomainPattern().reference());
}

TEST(PatternHandles, MayBeWrittenWhileTheirTypesAreVisited) {
    TypeDomainPattern pattern({type_number(1), type_number(2), type_number(3)});
    std::vector<_GUID> seen;
    pattern.forEach([&](const _GUID& type) {
        seen.push_back(type);
        for (std::uint32_t n = 0; n != 100; ++n) pattern.addType(type_number(type.Data1 + n));
    });
    EXPECT_THAT(seen, ElementsAre(type_number(1), type_number(2), type_number(3)));
    EXPECT_EQ(pattern.size(), 102u);
    EXPECT_EQ(pattern.find([&](const _GUID& type) {
        pattern = TypeDomainPattern();
        return type.Data1 == 50;
    }),
              type_number(50));
    EXPECT_THAT(pattern.types(), IsEmpty());
}

} // namespace
