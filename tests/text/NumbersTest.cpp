#include <core/component/IllegalArgumentException.h>
#include <core/text/Characters.h>
#include <core/text/Numbers.h>

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

namespace {

using namespace core;

std::u16string wide(std::string_view text) {
    return {text.begin(), text.end()};
}

// What reading gave: the value, and how many units it took.
template <class Value> struct Read {
    Value value;
    std::ptrdiff_t taken;
    bool operator==(const Read&) const = default;
};

template <class Value, class T>
Read<Value> read(Value (*function)(const T*, const T**), const T* text) {
    const T* end = nullptr;
    const Value value = function(text, &end);
    return {value, end - text};
}

TEST(NumbersFromText, TakeDigitsBehindSpaceAndSign) {
    const struct {
        const char* text;
        Read<std::int32_t> asSigned;
        Read<std::uint32_t> asUnsigned;
    } rows[] = {
        {"", {0, 0}, {0, 0}},
        {"0", {0, 1}, {0, 1}},
        {"  -", {0, 0}, {0, 0}},
        {"  - 5", {0, 0}, {0, 0}},
        {"+-5", {0, 0}, {0, 0}},
        {" \t\n42 pieces", {42, 5}, {42, 5}},
        {"-42", {-42, 3}, {0, 0}},
        {"+7", {7, 2}, {0, 0}},
        {"0x10", {0, 1}, {0, 1}},
        {"010", {10, 3}, {10, 3}},
        {"2147483648", {std::numeric_limits<std::int32_t>::min(), 10}, {2147483648u, 10}},
        {"4294967297", {1, 10}, {1, 10}},
        {"18446744073709551617", {1, 20}, {1, 20}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const std::u16string text = wide(row.text);
        EXPECT_EQ(read<std::int32_t>(string_tol, row.text), row.asSigned);
        EXPECT_EQ(read<std::int32_t>(string_tol, text.c_str()), row.asSigned);
        EXPECT_EQ(read<std::uint32_t>(string_toul, row.text), row.asUnsigned);
        EXPECT_EQ(read<std::uint32_t>(string_toul, text.c_str()), row.asUnsigned);
    }
    EXPECT_EQ(string_toi64(u"-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(string_toi64("9223372036854775808"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(string_toui64("18446744073709551615"), ~std::uint64_t{0});
    EXPECT_EQ(string_toui64(u"18446744073709551616"), 0u);
    EXPECT_EQ(string_tol(u"\u00A0\u0664\u0662"), 42) << "digits of another script";
}

TEST(DoublesFromText, TakeWhatANumberIs) {
    const struct {
        const char* text;
        Read<double> expected;
    } rows[] = {
        {"", {0, 0}},
        {".", {0, 0}},
        {"-.", {0, 0}},
        {"e5", {0, 0}},
        {"inf", {0, 0}},
        {"0x10", {0, 1}},
        {"  -12.5e1x", {-125, 9}},
        {".5", {0.5, 2}},
        {"5.", {5, 2}},
        {"+1e", {1, 2}},
        {"1e+", {1, 1}},
        {"1e-2", {0.01, 4}},
        {"1.5.5", {1.5, 3}},
        {"1e400", {HUGE_VAL, 5}},
        {"-1e99999999999999999999", {-HUGE_VAL, 23}},
        {"1e-99999999999999999999", {0, 23}},
        {"0e99999999999", {0, 13}},
        {"00000.00001e312", {1e307, 15}},
        {"2.2250738585072011e-308", {2.2250738585072011e-308, 23}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(read<double>(string_tod, row.text), row.expected);
        EXPECT_EQ(read<double>(string_tod, wide(row.text).c_str()), row.expected);
    }
    EXPECT_TRUE(std::signbit(string_tod("-0")));
    EXPECT_EQ(string_tod((std::string(400, '9') + "e-400").c_str()), 1.0);
    EXPECT_EQ(string_tod((std::string(400, '9')).c_str()), HUGE_VAL);
    EXPECT_EQ(string_tod(("0." + std::string(400, '0') + "1").c_str()), 0.0);
    EXPECT_EQ(string_tod(("0." + std::string(400, '0') + "1e401").c_str()), 1.0);
}

TEST(NumbersToText, ShowABareSignInRadixTenOnly) {
    EXPECT_EQ(string_lto(-1, 16), u"ffffffff");
    EXPECT_EQ(string_lto(-1, 10), u"-1");
    EXPECT_EQ(string_lto(std::numeric_limits<std::int32_t>::min()), u"-2147483648");
    EXPECT_EQ(string_lto(std::numeric_limits<std::int32_t>::min(), 2),
              u"1" + stdx::ustring(31, u'0'));
    EXPECT_EQ(string_ulto(4294967295u, 36), u"1z141z3");
    EXPECT_EQ(string_i64to(std::numeric_limits<std::int64_t>::min()), u"-9223372036854775808");
    EXPECT_EQ(string_i64to(-1, 8), u"1777777777777777777777");
    EXPECT_EQ(string_ui64to(~std::uint64_t{0}, 2), stdx::ustring(64, u'1'));
    EXPECT_EQ(string_ui64to(0), u"0");
    EXPECT_THROW(string_lto(1, 1), IllegalArgumentException);
    EXPECT_THROW(string_lto(1, 37), IllegalArgumentException);
}

TEST(NumbersToText, GoToMemoryAndStringsAlike) {
    char narrowed[70] = {};
    char16_t widened[70] = {};
    EXPECT_EQ(string_lto(-77, narrowed), narrowed + 3);
    EXPECT_STREQ(narrowed, "-77");
    EXPECT_EQ(string_ui64to(~std::uint64_t{0}, widened, 2), widened + 64);
    EXPECT_EQ(widened, stdx::ustring(64, u'1'));
    stdx::ustring text(u"was there");
    stdx::string bytes("was there");
    string_i64to(-5, text);
    string_ulto(255, bytes, 16);
    EXPECT_EQ(text, u"-5");
    EXPECT_EQ(bytes, "ff");
}

TEST(DoublesToText, HaveSixteenDigitsAndAnExponentOnlyWhereNeeded) {
    const struct {
        double value;
        const char16_t* text;
    } rows[] = {
        {0.0, u"0"},
        {-0.0, u"0"},
        {100000.0, u"1e5"},
        {12.5, u"12.5"},
        {-12.5, u"-12.5"},
        {120.0, u"1.2e2"},
        {0.5, u"5e-1"},
        {5.0, u"5"},
        {123.0, u"123"},
        {0.0123, u"1.23e-2"},
        {0.1, u"1e-1"},
        {1.0 / 3, u"3.333333333333333e-1"},
        {2.0 / 3, u"6.666666666666666e-1"}, // 0.66666666666666662966
        {9999999999999998.0, u"9999999999999998"},
        {99999999999999984.0, u"9.999999999999998e16"},
        {999999999999999950.0, u"1e18"}, // rounds up to one digit more
        {1.7976931348623157e308, u"1.797693134862316e308"},
        {5e-324, u"4.940656458412465e-324"},
        {4503599627370496.5, u"4503599627370496"}, // a tie goes to the even digit
        {4503599627370497.5, u"4503599627370498"},
        {0.5000000000000002220446049250313, u"5.000000000000002e-1"},
        {HUGE_VAL, u"inf"},
        {-HUGE_VAL, u"-inf"},
        {std::nan(""), u"nan"},
    };
    for (const auto& row : rows) {
        stdx::ustring text(u"was there");
        string_dto(row.value, text);
        EXPECT_EQ(text, row.text) << row.value;
        EXPECT_EQ(string_dto(row.value), row.text);
    }
}

// Sixteen digits name the value that C prints with them; reading gives the nearest double.
TEST(DoublesToText, ComeBackAsTheirSixteenDigits) {
    std::mt19937_64 random(3);
    for (int i = 0; i < 20'000; ++i) {
        const auto value = std::bit_cast<double>(random());
        if (!std::isfinite(value)) continue;
        char expected[40];
        std::snprintf(expected, sizeof expected, "%.15e", value);
        const stdx::ustring text = string_dto(value);
        const double back = std::strtod(expected, nullptr);
        ASSERT_EQ(string_tod(text.c_str()), back) << expected;
        ASSERT_EQ(string_tod(narrow(text.cbegin(), text.cend()).c_str()), back) << expected;
    }
}

} // namespace
