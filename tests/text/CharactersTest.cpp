#include <core/text/Characters.h>

#include <gtest/gtest.h>

#include <unicode/uchar.h>

#include <random>
#include <string>

namespace {

using namespace core;

char16_t folded(char16_t c) {
    return static_cast<char16_t>(u_foldCase(c, U_FOLD_CASE_DEFAULT));
}

// Latin-1 has letters whose other case it has not.
char in_latin1(char c, UChar32 changed) {
    return changed > 0xFF ? c : static_cast<char>(changed);
}

TEST(Characters, OfTheBasicPlaneAreWhatUnicodeSays) {
    const struct {
        const char* what;
        bool (*ours)(char16_t) noexcept;
        UBool (*icu)(UChar32);
    } kinds[] = {
        {"space", is_space, u_isspace}, {"cntrl", is_cntrl, u_iscntrl},
        {"upper", is_upper, u_isupper}, {"lower", is_lower, u_islower},
        {"punct", is_punct, u_ispunct}, {"alpha", is_alpha, u_isalpha},
        {"alnum", is_alnum, u_isalnum}, {"print", is_print, u_isprint},
        {"graph", is_graph, u_isgraph}, {"title", is_title, u_istitle},
        {"digit", is_digit, u_isdigit},
    };
    for (const auto& kind : kinds)
        for (unsigned c = 0; c <= 0xFFFF; ++c)
            ASSERT_EQ(kind.ours(static_cast<char16_t>(c)), kind.icu(static_cast<UChar32>(c)) != 0)
                << kind.what << " U+" << std::hex << c;
}

TEST(Characters, OfTheBasicPlaneChangeCaseAndCountAsUnicodeSays) {
    for (unsigned code = 0; code <= 0xFFFF; ++code) {
        const auto c = static_cast<char16_t>(code);
        SCOPED_TRACE(code);
        ASSERT_EQ(to_upper(c), u_toupper(c));
        ASSERT_EQ(to_lower(c), u_tolower(c));
        ASSERT_EQ(to_title(c), u_totitle(c));
        ASSERT_EQ(fold_case(c), folded(c));
        ASSERT_EQ(digit(c), u_charDigitValue(c));
        ASSERT_EQ(xdigit(c), u_digit(c, 16));
        ASSERT_EQ(is_xdigit(c), u_digit(c, 16) >= 0);
    }
}

TEST(Characters, OfEightBitsAreLatin1) {
    for (int code = 0; code <= 0xFF; ++code) {
        const char c = static_cast<char>(code);
        SCOPED_TRACE(code);
        EXPECT_EQ(widen(c), code);
        EXPECT_EQ(is_space(c), u_isspace(code) != 0);
        EXPECT_EQ(is_alpha(c), u_isalpha(code) != 0);
        EXPECT_EQ(is_print(c), u_isprint(code) != 0);
        EXPECT_EQ(is_digit(c), code >= '0' && code <= '9');
        EXPECT_EQ(xdigit(c), code < 0x80 ? u_digit(code, 16) : -1);
        EXPECT_EQ(to_upper(c), in_latin1(c, u_toupper(code)));
        EXPECT_EQ(to_lower(c), in_latin1(c, u_tolower(code)));
        EXPECT_EQ(to_title(c), in_latin1(c, u_totitle(code)));
        EXPECT_EQ(fold_case(c), in_latin1(c, folded(static_cast<char16_t>(code))));
    }
}

TEST(Characters, OfDigitsAndBack) {
    for (unsigned v = 0; v < 10; ++v) EXPECT_EQ(digit(for_digit(v)), static_cast<int>(v));
    for (unsigned v = 0; v < 16; ++v) EXPECT_EQ(xdigit(for_xdigit<char>(v)), static_cast<int>(v));
    EXPECT_EQ(for_xdigit(15), u'f');
    EXPECT_EQ(for_digit(10), 0);
    EXPECT_EQ(for_xdigit(16), 0);
    EXPECT_EQ(xdigit(u'\uFF21'), 10);
    EXPECT_EQ(xdigit(u'\uFF46'), 15);
    EXPECT_EQ(xdigit(u'\uFF47'), -1);
    EXPECT_EQ(digit(u'\u0663'), 3);
    EXPECT_EQ(digit(u'\u00B2'), -1) << "a superscript is no decimal digit";
}

TEST(Characters, NarrowToAsciiOnly) {
    EXPECT_EQ(narrow(u'\u007F'), '\x7F');
    EXPECT_EQ(narrow(u'\u00E9'), '?');
    const std::u16string text = u"a\u00E9\u0416z";
    EXPECT_EQ(narrow(text.data(), text.data() + text.size()), "a??z");
    EXPECT_EQ(narrow(text.data(), text.data()), "");
}

// Text in which the alphabets of the fast path mix with everything else, at all offsets of a
// vector.
template <class T> std::basic_string<T> mixed_text(std::mt19937& random, std::size_t n) {
    const unsigned ranges[][2] = {
        {0, 0x7F},      {0x60, 0x7B}, {0x40, 0x5B},   {0x40F, 0x450},
        {0x400, 0x460}, {0, 0xFFFF},  {0x430, 0x44F}, {0x80, 0xFF},
    };
    std::basic_string<T> text;
    while (text.size() < n) {
        const auto& range = ranges[random() % std::size(ranges)];
        for (std::size_t run = random() % 20; run != 0 && text.size() < n; --run)
            text.push_back(static_cast<T>(range[0] + random() % (range[1] - range[0] + 1)));
    }
    return text;
}

template <class T> void expect_ranges_change_unit_by_unit() {
    using String = elm::BasicString<T, 0u, 0u, std::allocator>;
    const struct {
        String (*range)(const T*, const T*);
        T (*unit)(T) noexcept;
    } functions[] = {
        {to_upper, to_upper}, {to_lower, to_lower}, {to_title, to_title}, {fold_case, fold_case}};
    std::mt19937 random(1);
    for (std::size_t n = 0; n < 400; ++n) {
        const auto text = mixed_text<T>(random, n);
        const T* const end = text.data() + n;
        for (const auto& function : functions) {
            String expected;
            for (const T c : text) expected.push_back(function.unit(c));
            ASSERT_EQ(function.range(text.data(), end), expected) << "length " << n;
        }
        auto inPlace = text;
        to_upper(inPlace.data(), inPlace.data() + n, inPlace.data());
        ASSERT_EQ(to_upper(text.data(), end), inPlace);
        to_lower(text.data(), end, inPlace.data());
        ASSERT_EQ(to_lower(text.data(), end), inPlace);
    }
}

TEST(CharacterRanges, ChangeUnitByUnit) {
    expect_ranges_change_unit_by_unit<char16_t>();
    expect_ranges_change_unit_by_unit<char>();
}

TEST(CharacterRanges, KeepTheirLength) {
    const std::u16string_view text = u"stra\u00DFe \u0451\u0416\U00010428";
    EXPECT_EQ(to_upper(text.data(), text.data() + text.size()),
              u"STRA\u00DFE \u0401\u0416\U00010428");
    EXPECT_TRUE(empty_string().empty());
    EXPECT_EQ(&empty_string(), &empty_string());
}

} // namespace
