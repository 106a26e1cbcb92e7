#include <core/text/Characters.h>
#include <core/text/Compare.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace core;

// The rules as they are told, unit by unit.
char16_t plain_fold(char16_t c) {
    return to_lower(to_upper(c));
}
char plain_fold(char c) {
    return to_lower(c);
}

template <class T>
int plain_compare_nocase(std::basic_string_view<T> a, std::basic_string_view<T> b) {
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i)
        if (a[i] != b[i] && plain_fold(a[i]) != plain_fold(b[i]))
            return plain_fold(a[i]) - plain_fold(b[i]);
    return static_cast<int>(a.size()) - static_cast<int>(b.size());
}

template <class T> std::uint32_t plain_hash(std::basic_string_view<T> text) {
    std::uint32_t h = 0;
    for (const T c : text) h = h * 37 + static_cast<std::uint32_t>(static_cast<int>(c));
    return h;
}

// Pairs of texts that are nearly equal without regard to case.
template <class T> struct NearlyEqual {
    std::basic_string<T> a, b;

    NearlyEqual(std::mt19937& random, std::size_t n) {
        static constexpr char16_t kUnits[] =
            u"abcXYZ019@[`{\u0080\u00B5\u00E9\u00C9\u00FF\u0130\u0131\u017F\u0390\u03A3\u03C2\u03C3"
            u"\u0401\u0451\u040F\u0410\u042F\u0430\u044F\u0450\u1E9E\u212A\uE000\uFF21\uFF41\uFFFF";
        while (a.size() < n) {
            const auto c = static_cast<T>(kUnits[random() % (std::size(kUnits) - 1)]);
            a.push_back(c);
            b.push_back(random() % 2 ? to_upper(c) : to_lower(c));
        }
        if (n != 0 && random() % 2) b[random() % n] = static_cast<T>(kUnits[random() % 30]);
        if (random() % 4 == 0) b.resize(random() % (n + 2));
    }
};

template <class T> void expect_the_plain_rules() {
    using View = std::basic_string_view<T>;
    std::mt19937 random(2);
    for (int round = 0; round < 20'000; ++round) {
        const NearlyEqual<T> pair(random, random() % 70);
        const View a = pair.a, b = pair.b;
        ASSERT_EQ(compare_nocase(a, b), plain_compare_nocase(a, b));
        ASSERT_EQ(hash(a), plain_hash(a));
        std::basic_string<T> lowered = pair.a;
        for (T& c : lowered) c = plain_fold(c);
        ASSERT_EQ(hash_nocase(a), plain_hash(View(lowered)));
        if (compare_nocase(a, b) == 0) {
            ASSERT_EQ(hash_nocase(a), hash_nocase(b));
        }
    }
}

TEST(Comparison, FollowsThePlainRulesOnAllOffsetsOfAVector) {
    expect_the_plain_rules<char16_t>();
    expect_the_plain_rules<char>();
}

TEST(Comparison, WithoutCaseGoesByTheCapitalsFirst) {
    const struct {
        std::u16string_view a, b;
        int order;
    } rows[] = {
        {u"", u"", 0},
        {u"Count", u"cOUNT", 0},
        {u"count", u"counter", -2},
        {u"B", u"a", 1},
        {u"_", u"A", u'_' - u'a'}, // small letters stand behind "_"
        {u"\u0401\u043B\u043A\u0430", u"\u0451\u041B\u041A\u0410", 0},
        {u"\u03C2", u"\u03C3", 0}, // the two small sigmas
        {u"\u212A", u"k", 0},      // the kelvin sign
        {u"\u0131", u"I", 0},      // the dotless i
        {u"\u00DF", u"ss", 0xDF - u's'},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(compare_nocase(row.a, row.b), row.order) << narrow(row.a.begin(), row.a.end());
        EXPECT_EQ(compare_nocase(row.b, row.a), -row.order) << narrow(row.a.begin(), row.a.end());
    }
}

TEST(Comparison, GoesByCodeThenByLength) {
    EXPECT_LT(compare(u"a\u00FF", u"a\u0100"), 0);
    EXPECT_GT(compare("\xFF", "a"), 0);
    EXPECT_EQ(compare(u"abcd", 4, u"abXY", 2), 2);
    EXPECT_EQ(compare("ab", 2, "abcde", 5), -3);
    EXPECT_EQ(compare(std::u16string_view(), u"abc"), -3);
}

TEST(Comparison, WithATermTakesEitherSpelling) {
    const Term both = {u"Count", u"\u0427\u0438\u0441\u043B\u043E"}, english = {u"Count", nullptr};
    EXPECT_TRUE(compare_term(u"COUNT", both));
    EXPECT_TRUE(compare_term(u"\u0427\u0418\u0421\u041B\u041E", both));
    EXPECT_TRUE(compare_term(u"count", english));
    EXPECT_FALSE(compare_term(u"Counts", both));
    EXPECT_FALSE(compare_term(u"", english));
}

TEST(Hashes, HaveKnownValues) {
    EXPECT_EQ(hash(u""), 0u);
    EXPECT_EQ(hash("a"), 97u);
    EXPECT_EQ(hash("\xFF"), 0xFFFFFFFF) << "bytes are signed";
    EXPECT_EQ(hash(u"\uFFFF"), 0xFFFFu);
    EXPECT_EQ(hash(u"abx", 2), 97u * 37 + 98);
    EXPECT_EQ(hash_nocase(stdx::ustring(u"AB")), 97u * 37 + 98);
    EXPECT_EQ(hash_nocase(u"\u0451"), hash_nocase(u"\u0401"));
}

std::u16string wide(const std::string& text) {
    return {text.begin(), text.end()};
}

// Each beside the C library on the same text.
TEST(CStrings, DoWhatTheCLibraryDoes) {
    const std::string texts[] = {"", "a", "abcabc", "a rather longer text, beyond one vector"};
    for (const std::string& text : texts) {
        const std::u16string wideText = wide(text);
        const char16_t* const s = wideText.c_str();
        SCOPED_TRACE(text);
        EXPECT_EQ(string_len(s), std::strlen(text.c_str()));
        for (const char c : {'a', 'b', 'x', '\0'}) {
            const auto offset = [](auto* hit, auto* start) { return hit ? hit - start : -1; };
            EXPECT_EQ(offset(string_chr(s, widen(c)), s),
                      offset(std::strchr(text.c_str(), c), text.c_str()));
            EXPECT_EQ(offset(string_rchr(s, widen(c)), s),
                      offset(std::strrchr(text.c_str(), c), text.c_str()));
        }
        for (const char* needle : {"", "b", "abc", "bca", "text", "abcabcabc"}) {
            const char* const hit = std::strstr(text.c_str(), needle);
            EXPECT_EQ(string_str(s, wide(needle).c_str()),
                      hit ? s + (hit - text.c_str()) : nullptr);
        }
        for (std::size_t n = 0; n < 9; ++n) {
            EXPECT_EQ(string_nlen(s, n), strnlen(text.c_str(), n));
            std::string plain(60, '#');
            std::u16string ours(60, u'#');
            plain[1] = '\0', ours[1] = u'\0';
            std::strncat(plain.data(), text.c_str(), n);
            EXPECT_EQ(string_ncat(ours.data(), s, n), ours.data());
            EXPECT_EQ(ours, wide(plain));
            std::strncpy(plain.data() + 2, text.c_str(), n);
            string_ncpy(ours.data() + 2, s, n);
            EXPECT_EQ(ours, wide(plain));
        }
        char16_t joined[100];
        string_cat(string_cpy(joined, s), u"!");
        EXPECT_EQ(joined, wideText + u"!");
    }
}

} // namespace
