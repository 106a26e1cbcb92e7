#include <core/component/Utf8.h>
#include <core/locale/Collator.h>
#include <core/text/LikeMask.h>

#include "support/ProcessTest.h"

#include <unicode/ucol.h>

#include <memory>
#include <random>
#include <string>

namespace {

using namespace core;

struct CloseCollator {
    void operator()(UCollator* collator) const { ucol_close(collator); }
};

int sign(int n) {
    return (n > 0) - (n < 0);
}

TEST(Collator, OrdersAsTheLanguageDoes) {
    const struct {
        const char16_t *locale, *a, *b;
        int order, orderNocase;
    } rows[] = {
        {u"en", u"", u"", 0, 0},
        {u"en", u"", u"a", -1, -1},
        {u"en", u"a", u"A", -1, 0},
        {u"en", u"resume", u"r\u00E9sum\u00E9", -1, -1}, // accents count
        {u"en", u"r\u00E9sum\u00E9", u"R\u00C9SUM\u00C9", -1, 0},
        {u"en", u"a", u"\u0430", -1, -1}, // Latin and Cyrillic
        {u"ru", u"\u0435\u043B\u044C", u"\u0451\u043B\u043A\u0430", 1, 1},
        {u"ru", u"\u0401\u043B\u043A\u0430", u"\u0451\u043B\u043A\u0430", 1, 0},
        {u"sv", u"z", u"\u00F6", -1, -1},
        {u"de", u"z", u"\u00F6", 1, 1},
        {u"lt", u"y", u"j", -1, -1},
        {u"en_US_POSIX", u"B", u"a", -1, -1},
    };
    for (const auto& row : rows) {
        const Collator collator{Locale(row.locale)};
        SCOPED_TRACE(std::string(to_utf8(row.a)) + " " + std::string(to_utf8(row.b)));
        EXPECT_EQ(collator.compare(row.a, row.b), row.order);
        EXPECT_EQ(collator.compare(row.b, row.a), -row.order);
        EXPECT_EQ(collator.compareNocase(row.a, row.b), row.orderNocase);
        EXPECT_EQ(collator.compareNocase(row.b, row.a), -row.orderNocase);
    }
    const Collator english{Locale(u"en")};
    EXPECT_EQ(english.compare(u"abc", 2, u"abd", 2), 0);
    EXPECT_EQ(english.compareNocase(u"ABc", 2, u"abd", 2), 0);
}

int icu_order(const UCollator* icu, const std::u16string& a, const std::u16string& b) {
    return ucol_strcoll(icu, a.data(), static_cast<int>(a.size()), b.data(),
                        static_cast<int>(b.size()));
}

// Pairs of texts that share their beginnings, from alphabets in which many units are alike, go
// together, or expand.
struct Pairs {
    std::mt19937 random{5};

    std::u16string text() {
        constexpr std::u16string_view kAlphabets[] = {
            u"aAcChHlLzZdDnNjJgGyYsS\u00E9\u017E 09",
            u"\u0438\u0439\u0418\u0306\u0435\u0451\u0401\u0446\u0301aZ",
            u"aA\u00E4\u00C4\u00DF\u00E6\u0301-_\U0001F600\0\u0E40\u0E01\u00AA"};
        const std::u16string_view alphabet = kAlphabets[random() % 3];
        std::u16string made(random() % (random() % 50 == 0 ? 600 : 8), u'\0');
        for (char16_t& c : made)
            c = random() % 4 ? alphabet[random() % alphabet.size()]
                             : static_cast<char16_t>(random() % 0x530);
        return made;
    }
    std::u16string other(const std::u16string& a) {
        std::u16string b = random() % 3 ? a.substr(0, random() % (a.size() + 1)) + text() : a;
        for (char16_t& c : b)
            if (random() % 8 == 0 && c < 0x7F && (c | 32) >= u'a') c ^= 32;
        return b;
    }
};

TEST(Collator, OrdersEveryPairAsICUDoesInEveryLocale) {
    Pairs pairs;
    for (const Locale& locale : Locale::all()) {
        const Collator collator(locale);
        UErrorCode status = U_ZERO_ERROR;
        const std::unique_ptr<UCollator, CloseCollator> icu(ucol_open(locale.key(), &status));
        for (const bool byCase : {true, false}) {
            ucol_setStrength(icu.get(), byCase ? UCOL_TERTIARY : UCOL_SECONDARY);
            for (int round = 0; round != 500; ++round) {
                const std::u16string a = pairs.text(), b = pairs.other(a);
                ASSERT_EQ(byCase ? collator.compare(a, b) : collator.compareNocase(a, b),
                          icu_order(icu.get(), a, b))
                    << locale.key() << " '" << to_utf8(a) << "' '" << to_utf8(b) << "' " << byCase;
            }
        }
    }
}

TEST(Collator, MakesKeysThatCompareAsTheirTextsDo) {
    Pairs pairs;
    for (const char16_t* const name : {u"en", u"ru", u"sv", u"th"}) {
        const Collator collator{Locale(name)};
        for (int round = 0; round != 1'000; ++round) {
            const std::u16string a = pairs.text(), b = pairs.other(a);
            const stdx::string key = collator.transform(a);
            ASSERT_EQ(sign(key.compare(collator.transform(b))), collator.compare(a, b));
            ASSERT_EQ(sign(collator.transformNocase(a).compare(collator.transformNocase(b))),
                      collator.compareNocase(a, b));
            ASSERT_EQ(key.find('\0'), stdx::string::npos);
        }
    }
}

TEST(Collator, EqualsThoseThatOrderAlike) {
    const struct {
        const char16_t *a, *b;
        bool equal;
    } rows[] = {
        {u"en", u"en", true},  {u"en", u"en_GB", true}, {u"ru", u"ru_RU", true},
        {u"en", u"de", true}, // both the root's
        {u"en", u"ru", false}, {u"sv", u"da", false},   {u"en", u"en_US_POSIX", false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Collator{Locale(row.a)} == Collator{Locale(row.b)}, row.equal)
            << to_utf8(row.a) << ' ' << to_utf8(row.b);
}

TEST(Collator, IsTheOrderOfMasks) {
    EXPECT_TRUE(create_like_mask(u"[a-z]", 0, Collator{Locale(u"en")})->match(u"\u00E4"));
    EXPECT_FALSE(create_like_mask(u"[a-z]", 0, Collator{Locale(u"sv")})->match(u"\u00E4"));
    const test::ManualProcess process;
    process->setLocale(Locale(u"sv"));
    EXPECT_FALSE(compare_like(u"\u00E4", u"[a-z]", 0));
    process->setLocale(Locale(u"en"));
    EXPECT_TRUE(compare_like(u"\u00E4", u"[a-z]", 0));
}

} // namespace
