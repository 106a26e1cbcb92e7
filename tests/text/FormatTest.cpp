#include <core/component/IllegalArgumentException.h>
#include <core/component/Utf8.h>
#include <core/text/Format.h>

#include <gtest/gtest.h>

#include <climits>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>

namespace {

using namespace core;

std::u16string wide(std::string_view text) {
    return {text.begin(), text.end()};
}

// The C library's text, in the locale "C" whatever the program's is.
template <class... Arguments>
std::string c_text(const std::string& format, Arguments... arguments) {
    static const locale_t kPlain = newlocale(LC_ALL_MASK, "C", nullptr);
    const locale_t before = uselocale(kPlain);
    const int size = std::snprintf(nullptr, 0, format.c_str(), arguments...);
    std::string text(static_cast<std::size_t>(size), '\0');
    std::snprintf(text.data(), text.size() + 1, format.c_str(), arguments...);
    uselocale(before);
    return text;
}

// All flags that C defines together, with widths and precisions.
template <class Check> void each_directive(std::string_view conversions, Check check) {
    const char* const widths[] = {"", "1", "5", "12", "300"};
    const char* const precisions[] = {"", ".", ".0", ".1", ".3", ".10", ".40", ".310"};
    const std::string_view letters = "-+ #0";
    for (unsigned flags = 0; flags < 32; ++flags)
        for (const char* width : widths)
            for (const char* precision : precisions)
                for (const char conversion : conversions) {
                    std::string directive = "%";
                    for (unsigned i = 0; i < 5; ++i)
                        if (flags & (1u << i)) directive += letters[i];
                    check(directive + width + precision, conversion);
                }
}

// The family's narrow, wide and typed forms beside the C library.
template <class Value>
void expect_like_c(std::string_view conversions, const char* length, const char* cLength,
                   std::initializer_list<Value> values) {
    each_directive(conversions, [&](const std::string& head, char conversion) {
        const std::string format = head + length + conversion;
        for (const Value value : values) {
            const std::string expected = c_text(head + cLength + conversion, value);
            stdx::string narrowed;
            stdx::ustring widened;
            ASSERT_EQ(string_printf(narrowed, format.c_str(), value), expected.size());
            ASSERT_EQ(narrowed, expected) << format;
            string_printf(widened, wide(format).c_str(), value);
            ASSERT_EQ(widened, wide(expected)) << format;
            ASSERT_EQ(format_string(format, value), expected) << format;
        }
    });
}

TEST(Printf, PrintsIntegersLikeTheCLibrary) {
    expect_like_c<int>("di", "", "", {0, 1, -1, 42, INT_MAX, INT_MIN});
    expect_like_c<int>("d", "I32", "", {0, -7, INT_MIN});
    expect_like_c<long>("di", "l", "l", {0, -1, LONG_MAX, LONG_MIN});
    expect_like_c<long long>("d", "I64", "ll", {0, -1, LLONG_MIN});
    expect_like_c<unsigned>("uoxX", "", "", {0, 1, 8, 0xBEEF, UINT_MAX});
    expect_like_c<unsigned long>("uoxX", "l", "l", {0, 1, ULONG_MAX});
    expect_like_c<unsigned long long>("uX", "I64", "ll", {0, ULLONG_MAX});
    stdx::string text;
    string_printf(text, "%hd %hu %hx", 70'000, 70'000, -1);
    EXPECT_EQ(text, c_text("%hd %hu %hx", 70'000, 70'000, -1));
}

TEST(Printf, PrintsRealNumbersLikeTheCLibrary) {
    using Limits = std::numeric_limits<double>;
    expect_like_c<double>("eEfgG", "", "",
                          {0.0, -0.0, 1.0, -2.5, 0.5, 1e-5, 123456.0, 1e6, 9.5e-5, 1e15,
                           Limits::max(), Limits::denorm_min(), 1.0 / 3});
    expect_like_c<double>("eEfgG", "", "", {HUGE_VAL, -HUGE_VAL, Limits::quiet_NaN()});
    expect_like_c<long double>("egf", "L", "L", {0.0L, -1.0L / 3, 1e300L * 1e300L});
}

// Rounding up gives one digit more; the C library then forgets the zeros that "#" keeps.
TEST(Printf, KeepsTrailingZerosThatRoundingMakes) {
    EXPECT_EQ(format_string("%#g %#.3g %#.2G %g", 999999.5, 99.95, 9.99e-5, 999999.5),
              "1.00000e+06 100. 0.00010 1e+06");
}

TEST(Printf, TakesWidthAndPrecisionFromArguments) {
    stdx::string text;
    string_printf(text, "[%*d|%-*d|%*d|%.*f|%.*d|%*.*s]", 5, 1, 5, 2, -5, 3, 2, 1.0, -1, 4, 4, 2,
                  "abc");
    EXPECT_EQ(text, "[    1|2    |3    |1.00|4|  ab]");
    EXPECT_EQ(format_string(u"[%*d|%.*f]", -4, 7, 1, 0.25), u"[7   |0.2]");
    string_printf(text, "%99999999999d", 1);
    EXPECT_EQ(text.size(), 65'535u);
    string_printf(text, "%*d", INT_MIN, 1);
    EXPECT_EQ(text.size(), 65'535u);
    EXPECT_EQ(string_printf(text, "%.99999999999s", "whole"), 5);
}

TEST(Printf, PrintsTextOfBothKinds) {
    const char unterminated[3] = {'a', 'b', 'c'};
    stdx::string narrowed;
    string_printf(narrowed, "%s|%5s|%-5s|%.2s|%.3s|%s|%ls|%hs|%c|%lc|%%", "text", "ab", "ab", "xyz",
                  unterminated, static_cast<const char*>(nullptr), u"\u0416", "n", 'c', u'\u0416');
    EXPECT_EQ(narrowed, "text|   ab|ab   |xy|abc|(null)|\u0416|n|c|\u0416|%");
    stdx::ustring widened;
    string_printf(widened, u"%s|%3s|%.1s|%hs|%ls|%c|%hc|%lc|%s", u"\u0416", u"\u0416",
                  u"\u0416\u0417", "\u0416", u"w", u'\u0416', 'h', u'l',
                  static_cast<const char16_t*>(nullptr));
    EXPECT_EQ(widened, u"\u0416|  \u0416|\u0416|\u0416|w|\u0416|h|l|(null)");
    EXPECT_EQ(string_printf(widened, u"%c", u'\0'), 1);
}

TEST(Printf, CountsAndCopiesWhatItDoesNotKnow) {
    stdx::string text;
    int n = -1;
    short s = -1;
    std::int64_t whole = -1;
    string_printf(text, "abc%n%3d%hn%I64n", &n, 1, &s, &whole);
    EXPECT_EQ(n, 3);
    EXPECT_EQ(s, 6);
    EXPECT_EQ(whole, 6);
    for (const char* format : {"%", "50%", "%y", "%5", "%-+.3k|", "%I16d", "%l", "a%\xD0"})
        EXPECT_EQ((string_printf(text, format), text), format);
    int target = 0;
    EXPECT_EQ((string_printf(text, "%p", static_cast<void*>(&target)), text),
              c_text("%p", static_cast<void*>(&target)));
    EXPECT_EQ(format_string("%8p", nullptr), "     0x0");
}

TEST(Printf, CutsAtTheEndOfMemory) {
    char16_t memory[6];
    for (std::size_t size = 0; size <= 6; ++size) {
        std::fill(std::begin(memory), std::end(memory), u'#');
        EXPECT_EQ(string_nprintf(memory, size, u"%d and more", 123), 12);
        const std::u16string_view whole = u"123 and more";
        for (std::size_t i = 0; i < 6; ++i)
            EXPECT_EQ(memory[i], i + 1 < size ? whole[i] : i + 1 == size ? u'\0' : u'#');
    }
    char bytes[600];
    EXPECT_EQ(string_nprintf(bytes, sizeof bytes, "%500d|%s", 7, "end"), 504);
    EXPECT_STREQ(bytes, c_text("%500d|%s", 7, "end").c_str());
}

TEST(FormatString, TellsTypesByItself) {
    EXPECT_EQ(format_string("%d %d %u %x", std::int64_t{-1} << 40, true, std::int8_t{-1},
                            std::int16_t{-2}),
              "-1099511627776 1 255 fffe");
    EXPECT_EQ(format_string(u"%d", ~std::uint64_t{0}), u"18446744073709551615");
    EXPECT_EQ(format_string(u"%s %s %s %s", "\u0416", u"\u0416", stdx::string("b"),
                            std::u16string_view(u"c\0d", 3)),
              stdx::ustring(std::u16string_view(u"\u0416 \u0416 b c\0d", 9)));
    EXPECT_EQ(format_string("%c%c%d", 'a', u'\u0416', 'a'), "a\u0416"
                                                            "97");
    EXPECT_EQ(format_string("%s", static_cast<const char*>(nullptr)), "(null)");
    EXPECT_EQ(format_string("%.1f %Lg %lf", 1.25f, 0.5L, 2.0), "1.2 0.5 2.000000");
    EXPECT_EQ(format_string(u"no arguments, 100%%"), u"no arguments, 100%");
}

template <class... Arguments>
std::string refusal(std::string_view format, const Arguments&... arguments) {
    try {
        return "gave " + std::string(format_string(format, arguments...).view());
    } catch (const IllegalArgumentException& exception) {
        return std::string(to_utf8(exception.description().view()).view());
    }
}

TEST(FormatString, RefusesWhatDoesNotFitAndNamesThePlace) {
    int n = 0;
    const struct {
        std::string text, expected;
    } rows[] = {
        {refusal("ab %d", "x"), "position 3: argument 1 is text, which does not fit %d"},
        {refusal("%d%s", 1, 2),
         "position 2: argument 2 is a signed integer, which does not fit %s"},
        {refusal("%f", 1), "argument 1 is a signed integer, which does not fit %f"},
        {refusal("%x", 1.0), "argument 1 is a real number, which does not fit %x"},
        {refusal("%c", 65), "argument 1 is a signed integer, which does not fit %c"},
        {refusal("%s", &n), "argument 1 is a pointer, which does not fit %s"},
        {refusal("%p", u"x"), "argument 1 is text, which does not fit %p"},
        {refusal("%d %d", 1), "position 3: there is no argument 2"},
        {refusal("%d!", 1, 2), "position 3: no directive takes argument 2"},
        {refusal("%n", &n), "position 0: %n is not for typed arguments"},
        {refusal("100%"), "position 3: there is no such directive"},
        {refusal("%y", 1), "position 0: there is no such directive"},
        {refusal("%*d", 1.5, 1), "argument 1 is no width or precision"},
        {refusal("%*d", std::int64_t{1} << 40, 1), "argument 1 is no width or precision"},
    };
    for (const auto& row : rows)
        EXPECT_NE(row.text.find(row.expected), std::string::npos) << row.text << "\n"
                                                                  << row.expected;
}

} // namespace
