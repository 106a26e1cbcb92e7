// What values become in a domain.
#include "SampleTypes.h"

#include <core/component/ClassDescriptor.h>
#include <core/concurrency/Thread.h>
#include <core/locale/BoolFormat.h>
#include <core/locale/DateFormat.h>
#include <core/locale/NumericFormat.h>
#include <core/values/TypedValue.h>

namespace {

using namespace core;
using namespace core::literals;
using namespace test;

class TypedValueTest : public ProcessTest {
protected:
    void SetUp() override {
        const Locale locale(u"ru");
        process().setNumericFormat(NumericFormat(locale));
        process().setDateFormat(DateFormat(locale));
        process().setBoolFormat(BoolFormat(locale));
    }
};

TypeDomain domain_of(const std::vector<_GUID>& types, const NumericQualifiers& number = {},
                     const StringQualifiers& string = {}, const DateQualifiers& date = {},
                     const BinaryQualifiers& binary = {}) {
    TypeDomainPattern pattern(types);
    pattern.setNumericQualifiers(number);
    pattern.setStringQualifiers(string);
    pattern.setDateQualifiers(date);
    pattern.setBinaryQualifiers(binary);
    return TypeDomain(pattern);
}

const Date kMoment(2020, 5, 15, 10, 20, 30);
const _GUID &U = CLSID_UndefinedType, &L = CLSID_NullType, &B = CLSID_BooleanType,
            &N = CLSID_NumericType, &S = CLSID_StringType, &D = CLSID_DateType, &T = CLSID_TypeType;

TEST_F(TypedValueTest, ConvertsByTheTable) {
    const Value null(create_null_value()), type = type_value(D), object = fixed_value(u"text");
    const Value numeral = u"12", word = u"x", moment = u"15.05.2020 10:20:30";
    const struct {
        Value given;
        std::vector<_GUID> domain;
        Value held;
    } rows[] = {
        // Undefined is never stored: one type gives its default, more give Undefined.
        {Value(), {}, Value()},
        {Value(), {N}, 0},
        {Value(), {N, S}, Value()},
        {null, {}, null},
        {null, {L}, null},
        {null, {L, S}, null},
        {null, {S}, u""},
        {null, {N, B}, Value()},
        {true, {B, S, N}, true},
        {true, {S, N}, u"Да"},
        {true, {N, D}, 1},
        {true, {D}, Date()},
        {5, {N, S, B}, 5},
        {5, {S, B}, u"5"},
        {5, {B, D}, true},
        {0, {B}, false},
        {5, {D}, Date()},
        {numeral, {S, N}, numeral},
        {moment, {D, N}, kMoment},
        {u"20200515102030", {D, N, B}, kMoment},
        {numeral, {D, N, B}, 12},
        {u"Да", {D, N, B}, true},
        {u"ложь", {B}, false},
        {word, {D, N, B}, Value()},
        {word, {N}, 0},
        {word, {T}, type_value(U)},
        {kMoment, {D, S}, kMoment},
        {kMoment, {S, N}, moment},
        {kMoment, {N}, 0},
        {type, {T, S}, type},
        {type, {S, N}, u"Date"},
        {type, {N}, 0},
        {type_value(kUUIDNull), {S}, u""}, // raises nothing
        {object, {CLSID_Fixed, S}, object},
        {object, {S, CLSID_Plain}, u"text"},
        {object, {N}, 0},
    };
    for (const auto& row : rows) {
        TypedValue value(domain_of(row.domain));
        value.setIValue(row.given.lentIValue());
        EXPECT_TRUE(value == row.held) << row.given << " gave " << value << ", not " << row.held;
        // The same by way of the domain.
        TypedValue changed;
        changed.setIValue(row.given.lentIValue());
        EXPECT_TRUE(changed == row.given);
        changed.changeDomain(domain_of(row.domain));
        EXPECT_TRUE(changed == row.held) << row.given;
    }
}

TEST_F(TypedValueTest, KeepsToTheQualifiersOfNumbers) {
    const struct {
        NumericQualifiers limits;
        Numeric given, held;
    } rows[] = {
        {{0, 0}, -1234.5_num, -1234.5_num},
        {{0, 0, true}, -1234.5_num, 0},
        {{3, 1}, 99.9_num, 99.9_num},
        {{3, 1}, 1000, 99.9_num},
        {{3, 1}, -1000, -99.9_num},
        {{3, 1, true}, -1000, 0},
        {{3, 1}, 12.34_num, 12.3_num},
        {{3, 1}, 12.35_num, 12.4_num},
        {{3, 1}, -12.35_num, -12.4_num},
        {{3, 1}, 99.96_num, 99.9_num}, // rounding takes it out of range
        {{3, 0}, 999.4_num, 999},
        {{3, 0}, 999.5_num, 999},
        {{3, 0}, 0.4_num, 0},
        {{2, 2}, 0, 0},
        {{2, 2}, 0.125_num, 0.13_num},
        {{2, 2}, 0.001_num, 0},
        {{2, 2}, -0.001_num, 0},
        {{2, 2}, 0.999_num, 0.99_num},
        {{2, 2}, 5, 0.99_num},
        {{64, 0}, 1.5_num, 2},
    };
    for (const auto& row : rows) {
        TypedValue value(domain_of({N}, row.limits));
        value.assign(row.given);
        EXPECT_TRUE(value == row.held) << row.given << " gave " << value << ", not " << row.held;
        value.assign(to_string(Value(row.given))); // converted on the way
        EXPECT_TRUE(value == row.held) << row.given << " as text gave " << value;
    }
    TypedValue most(domain_of({N}, {64, 32}));
    most.assign(Numeric(10).pow(40));
    const stdx::ustring nines(32, u'9');
    EXPECT_EQ(most.as<Numeric>().toString(), nines + u'.' + nines);
}

TEST_F(TypedValueTest, KeepsToTheQualifiersOfStrings) {
    const struct {
        StringQualifiers limits;
        const char16_t *given, *held, *empty;
    } rows[] = {
        {StringQualifiers(0), u"abcd", u"abcd", u""},
        {StringQualifiers(0, false), u"abcd", u"abcd", u""},
        {StringQualifiers(3), u"abcd", u"abc", u""},
        {StringQualifiers(3), u"a", u"a", u""},
        {StringQualifiers(3, false), u"abcd", u"abc", u"   "},
        {StringQualifiers(3, false), u"a", u"a  ", u"   "},
        {StringQualifiers(3, false), u"abc", u"abc", u"   "},
    };
    for (const auto& row : rows) {
        TypedValue value(domain_of({S}, {}, row.limits));
        EXPECT_TRUE(value == row.empty);
        EXPECT_TRUE(Value(value.getDefaultValue()) == row.empty);
        value.assign(row.given);
        EXPECT_TRUE(value == row.held) << value;
        value.setIValue(fixed_value(row.given).lentIValue());
        EXPECT_TRUE(value == row.held) << value;
        value.setDefaultValue();
        EXPECT_TRUE(value == row.empty);
    }
}

TEST_F(TypedValueTest, KeepsToTheQualifiersOfDates) {
    const Date day(2020, 5, 15), time(1, 1, 1, 10, 20, 30);
    const struct {
        int parts;
        Date given, held;
    } rows[] = {
        {3, kMoment, kMoment}, {1, kMoment, day}, {2, kMoment, time},
        {1, day, day},         {2, time, time},   {2, day, Date()},
    };
    for (const auto& row : rows) {
        TypedValue value(domain_of({D}, {}, {}, DateQualifiers(row.parts)));
        value.assign(row.given);
        EXPECT_TRUE(value == row.held) << value;
        value.assign(row.given.toString());
        EXPECT_TRUE(value == row.held) << value;
    }
}

TEST_F(TypedValueTest, KeepsToTheQualifiersOfBinaryData) {
    const struct {
        BinaryQualifiers limits;
        std::string given, held, empty;
    } rows[] = {
        {BinaryQualifiers(0), "abcd", "abcd", ""},
        {BinaryQualifiers(3), "abcd", "abc", ""},
        {BinaryQualifiers(3), "a", "a", ""},
        {BinaryQualifiers(3, false), "abcd", "abc", std::string(3, '\0')},
        {BinaryQualifiers(3, false), "a", std::string("a\0\0", 3), std::string(3, '\0')},
        {BinaryQualifiers(3, false), "", std::string(3, '\0'), std::string(3, '\0')},
    };
    const auto bytes_of = [](const TypedValue& value) {
        const auto binary = value.object<IBinaryValue>();
        std::string bytes(binary->size(), 'x');
        binary->read(bytes.data(), bytes.size());
        return bytes;
    };
    for (const auto& row : rows) {
        TypedValue value(domain_of({CLSID_BinaryDataType}, {}, {}, {}, row.limits));
        EXPECT_EQ(bytes_of(value), row.empty);
        const Value given = bytes_value(row.given);
        value.setIValue(given.lentIValue());
        EXPECT_EQ(bytes_of(value), row.held);
        EXPECT_EQ(value.lentIValue() == given.lentIValue(), row.given == row.held);
    }
}

TEST_F(TypedValueTest, SharesWhatFits) {
    const Value number = 12.5_num, text = u"a long text that has a block of its own";
    for (const Value& each : {number, text}) {
        TypedValue value(domain_of({N, S}, {5, 2}, StringQualifiers(100)));
        value.setIValue(each.lentIValue());
        EXPECT_EQ(value.lentIValue(), each.lentIValue());
        TypedValue copy = value, moved = std::move(value);
        EXPECT_EQ(copy.lentIValue(), moved.lentIValue());
        EXPECT_TRUE(value.typeDomain().empty() && is_undefined_value(value));
        copy.setDomain(TypeDomain(N));
        EXPECT_TRUE(copy == 0);
        copy = moved;
        EXPECT_TRUE(copy == each && copy.typeDomain().size() == 2);
        copy.setIValue(copy.lentIValue());
        EXPECT_TRUE(copy == each);
        copy.setIValue(nullptr);
        EXPECT_TRUE(is_undefined_value(copy));
    }
}

TEST_F(TypedValueTest, IsFormattedForForms) {
    const struct {
        Value given;
        TypeDomain domain;
        const char16_t* text;
    } rows[] = {
        {Value(), TypeDomain(), u""},
        {Value(create_null_value()), TypeDomain(), u""},
        {0, TypeDomain(), u""},
        {1234.5_num, TypeDomain(), u"1\u00A0234,5"},
        {1234.5_num, domain_of({N}, {6, 2}), u"1\u00A0234,50"},
        {12, domain_of({N}, {6, 0}), u"12"},
        {Date(), TypeDomain(), u""},
        {kMoment, TypeDomain(), u"15.05.2020 10:20:30"},
        {kMoment, domain_of({D}, {}, {}, DateQualifiers(1)), u"15.05.2020"},
        {kMoment, domain_of({D}, {}, {}, DateQualifiers(2)), u"10:20:30"},
        {true, TypeDomain(), u"Да"},
        {u"x", TypeDomain(), u"x"},
        {fixed_value(u"y"), TypeDomain(), u"y"},
    };
    for (const auto& row : rows) {
        TypedValue value(row.domain);
        value.setIValue(row.given.lentIValue());
        EXPECT_EQ(format(value), row.text) << value;
    }
}

} // namespace
