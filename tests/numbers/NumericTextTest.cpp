#include "NumberCases.h"

#include <core/component/IllegalArgumentException.h>

#include <gtest/gtest.h>

namespace {

using namespace core;
using namespace core::literals;
using test::text_of;

std::u16string wide(std::string_view text) {
    return {text.begin(), text.end()};
}

// What reading gives: the number and how many units it took; the same in both widths.
std::pair<std::string, std::ptrdiff_t> read(const std::string& text) {
    Numeric number = 77, wideNumber = 77;
    const char* end = nullptr;
    const char16_t* wideEnd = nullptr;
    const std::u16string wideText = wide(text);
    number.fromString(text.c_str(), &end);
    wideNumber.fromString(wideText.c_str(), &wideEnd);
    EXPECT_EQ(number, wideNumber) << text;
    EXPECT_EQ(end - text.c_str(), wideEnd - wideText.c_str()) << text;
    return {text_of(number), end - text.c_str()};
}

// A text that leads into each state, and what follows for each class of characters: the number and
// the units that were read.
TEST(NumericFromText, GoesThroughItsStates) {
    static constexpr char kClasses[][2] = {" ", "+", "-", "0", "7", ".", "x"};
    using Result = std::pair<std::string, std::ptrdiff_t>;
    const struct {
        std::string before;
        Result after[std::size(kClasses)]; // the text goes on with "5"
    } states[] = {
        {"", {{"5", 2}, {"5", 2}, {"-5", 2}, {"5", 2}, {"75", 2}, {"0.5", 2}, {"0", 0}}},
        {" \t\r\n", {{"5", 6}, {"5", 6}, {"-5", 6}, {"5", 6}, {"75", 6}, {"0.5", 6}, {"0", 0}}},
        {"-", {{"0", 1}, {"0", 1}, {"0", 1}, {"-5", 3}, {"-75", 3}, {"-0.5", 3}, {"0", 1}}},
        {"00", {{"0", 2}, {"0", 2}, {"0", 2}, {"5", 4}, {"75", 4}, {"0.5", 4}, {"0", 2}}},
        {"12", {{"12", 2}, {"12", 2}, {"12", 2}, {"1205", 4}, {"1275", 4}, {"12.5", 4}, {"12", 2}}},
        {".", {{"0", 1}, {"0", 1}, {"0", 1}, {"0.05", 3}, {"0.75", 3}, {"0", 1}, {"0", 1}}},
        {"-1.20",
         {{"-1.2", 5},
          {"-1.2", 5},
          {"-1.2", 5},
          {"-1.2005", 7},
          {"-1.2075", 7},
          {"-1.2", 5},
          {"-1.2", 5}}},
    };
    for (const auto& state : states)
        for (std::size_t i = 0; i != std::size(kClasses); ++i)
            EXPECT_EQ(read(state.before + kClasses[i] + "5"), state.after[i])
                << state.before << kClasses[i];
}

TEST(NumericFromText, LeavesTheEndWhereItStopped) {
    const struct {
        const char* text;
        const char* value;
        std::ptrdiff_t end;
    } rows[] = {
        {"", "0", 0},
        {"  ", "0", 0},
        {"  x", "0", 0},
        {"  +", "0", 0},
        {"+", "0", 1},
        {"+-1", "0", 1},
        {"1e5", "1", 1},
        {"  -12.50x", "-12.5", 8},
        {"-0", "0", 2},
        {"-0.000", "0", 6},
        {"1'000", "1", 1},
        {"\v1", "0", 0},
        {"000000000000000000001", "1", 21},
        {"5.", "5", 2},
        {"1.000000000", "1", 11},
    };
    for (const auto& row : rows)
        EXPECT_EQ(read(row.text), std::make_pair(std::string(row.value), row.end)) << row.text;

    Numeric number = 5;
    const char16_t* end;
    const char16_t wideDigit[] = u"12\u0660\u0131";
    number.fromString(wideDigit, &end);
    EXPECT_EQ(number, 12) << "units from 256 on are no digits";
    EXPECT_EQ(end, wideDigit + 2);
    number.fromString(u"-8");
    EXPECT_EQ(number, -8);
}

// Every count of digits on both sides of the point: groups of nine begin and end everywhere.
TEST(NumericText, ReadsBackWhatItPrints) {
    const std::string digits = "123456789012345678901234567890123456789012345";
    for (std::size_t integer = 1; integer != 30; ++integer)
        for (std::size_t fraction = 0; fraction != 30; ++fraction) {
            std::string text = digits.substr(0, integer);
            if (fraction != 0) text += '.' + digits.substr(integer % 9, fraction);
            if (text.back() == '0') text.back() = '3';
            EXPECT_EQ(read(text).first, text);
            EXPECT_EQ(read("-" + text).first, "-" + text);
            EXPECT_EQ(Numeric::parse(wide(text)).value().toString().view(), wide(text));
        }
    for (const char* const text :
         {"0", "1000000000", "100000000000000000000000000000", "0.000000000000000001",
          "10000000000.000000001", "-0.123456789", "999999999"})
        EXPECT_EQ(read(text).first, text);
    EXPECT_EQ(read("1" + std::string(100'000, '0') + ".5").first.size(), 100'003u);
}

TEST(NumericText, FillsTheBufferItAsksForAndNoMore) {
    for (const char* const text : {"0", "-0.123456789", "-123456789.123456789", "-1000000000",
                                   "-0.000000000123456789", "999999999999999999"}) {
        const Numeric number = Numeric::parse(text).value();
        std::string buffer(number.digitsSize(), '#');
        EXPECT_EQ(number.digits(buffer.data()), std::strlen(text));
        EXPECT_STREQ(buffer.c_str(), text);

        const auto size = static_cast<unsigned>(std::strlen(text));
        std::string exact(size, '#');
        EXPECT_EQ(number.digits(exact.data(), size), 0u);
        EXPECT_STREQ(exact.c_str(), "");
        exact.assign(size + 1, '#');
        EXPECT_EQ(number.digits(exact.data(), size + 1), size);
        EXPECT_STREQ(exact.c_str(), text);

        std::u16string chars(size, u'#');
        EXPECT_EQ(to_chars(chars.data(), chars.data() + size, number).ptr, chars.data() + size);
        EXPECT_EQ(chars, wide(text));
        const auto failed = to_chars(chars.data(), chars.data() + size - 1, number);
        EXPECT_EQ(failed.ec, std::errc::value_too_large);
        EXPECT_EQ(failed.ptr, chars.data() + size - 1);
    }
}

TEST(NumericText, ParsesRangesStrictly) {
    const struct {
        std::string_view text;
        std::ptrdiff_t taken; // by from_chars; 0: no number
        bool whole;           // for parse
    } rows[] = {
        {"", 0, false},    {"-", 0, false},   {".", 0, false},    {"-.", 0, false},
        {" 1", 0, false},  {"+1", 0, true},   {"1", 1, true},     {"-1.5", 4, true},
        {".5", 2, true},   {"5.", 2, true},   {"1.5.", 3, false}, {"1 ", 1, false},
        {"1e5", 1, false}, {"--1", 0, false}, {"+-1", 0, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        Numeric number = 77;
        const char* const first = row.text.data();
        const auto result = from_chars(first, first + row.text.size(), number);
        EXPECT_EQ(result.ptr - first, row.taken);
        EXPECT_EQ(result.ec, row.taken == 0 ? std::errc::invalid_argument : std::errc());
        EXPECT_EQ(number == 77, row.taken == 0);
        EXPECT_EQ(Numeric::parse(row.text).has_value(), row.whole);
        EXPECT_EQ(Numeric::parse(wide(row.text)).has_value(), row.whole);
    }
}

TEST(NumericText, FillsFixedShapes) {
    const struct {
        const char* number;
        unsigned width, places;
        const char* text;
        bool fits;
    } rows[] = {
        {"12.345", 6, 2, "+0012.35", true},
        {"-12.345", 6, 2, "-0012.35", true},
        {"0", 5, 2, "+000.00", true},
        {"0", 2, 2, "+.00", true},
        {"-0.4", 1, 0, "-0", true},
        {"9999.5", 4, 0, "+9999", false},
        {"-99.995", 4, 2, "-99.99", false},
        {"99.994", 4, 2, "+99.99", true},
        {"0.05", 3, 3, "+.050", true},
        {"1000000000", 12, 2, "+1000000000.00", true},
        {"1000000000", 9, 0, "+999999999", false},
        {"1", 0, 0, "+", false},
        {"1.5", 14, 12, "+01.500000000000", true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.number);
        std::string text(row.width + 3, '#');
        EXPECT_EQ(Numeric::parse(row.number)
                      .value()
                      .digits(text.data(), row.width, row.places, NumericRoundMode::HalfUp),
                  row.fits);
        EXPECT_STREQ(text.c_str(), row.text);
    }
    char text[8];
    EXPECT_THROW(Numeric(1).digits(text, 1, 2), IllegalArgumentException);
}

TEST(NumericText, ReadsHexadecimalAndBinaryLiterals) {
    EXPECT_EQ(create_numeric_from_hex_literal_string(u"0xFF"), 255);
    EXPECT_EQ(create_numeric_from_hex_literal_string(u"0x00fFfFfFfFfFfFfFfF"), ~0ull);
    EXPECT_EQ(create_numeric_from_binary_literal_string(u"0b101"), 5);
    std::u16string hex = u"0x", binary = u"0b";
    Numeric expected = 0;
    for (int i = 1; i != 70; ++i) {
        const int digit = i % 16;
        hex += u"0123456789aBcDeF"[digit];
        for (int bit = 8; bit != 0; bit /= 2) binary += (digit & bit) != 0 ? u'1' : u'0';
        expected = expected * 16 + digit;
        ASSERT_EQ(create_numeric_from_hex_literal_string(stdx::ustring(hex)), expected) << i;
        ASSERT_EQ(create_numeric_from_binary_literal_string(stdx::ustring(binary)), expected) << i;
    }
    for (const char16_t* const text :
         {u"", u"0x", u"0X1", u"FF1", u"0xG", u"0x1 ", u"0x\uFF21", u"0b1"})
        EXPECT_THROW(create_numeric_from_hex_literal_string(text), IllegalArgumentException);
    for (const char16_t* const text : {u"0b", u"0b2", u"0x1", u"0B1"})
        EXPECT_THROW(create_numeric_from_binary_literal_string(text), IllegalArgumentException);
}

} // namespace
