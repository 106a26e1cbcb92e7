#include <core/component/Utf8.h>
#include <core/locale/Locale.h>
#include <core/locale/LocaleException.h>

#include "support/MessageLanguage.h"
#include "support/ProcessTest.h"

#include <unicode/uloc.h>

#include <algorithm>
#include <map>
#include <string>

namespace {

using namespace core;
using namespace stdx::literals;

std::string pages_of(const Locale& locale) {
    if (!locale.winANSIEncoding() || !locale.winOEMEncoding())
        return locale.winANSIEncoding() == locale.winOEMEncoding() ? "none" : "half";
    return std::string(to_utf8(locale.winANSIEncoding())) + ' ' +
           std::string(to_utf8(locale.winOEMEncoding()));
}

TEST(LocaleTable, HasTheToldNumberOfRowsForEachPairOfPages) {
    const std::map<std::string, int> told = {
        {"cp-1252 cp-850", 84}, {"none", 50},           {"cp-1256 cp-720", 25},
        {"cp-1251 cp-866", 21}, {"cp-1250 cp-852", 21}, {"cp-1252 cp-437", 21},
        {"cp-1251 cp-855", 10}, {"cp-1254 cp-857", 9},  {"cp-950 cp-950", 9},
        {"cp-1257 cp-775", 6},  {"cp-936 cp-936", 4},   {"cp-1253 cp-737", 3},
        {"cp-1255 cp-862", 2},  {"cp-932 cp-932", 2},   {"cp-949 cp-949", 2},
        {"cp-874 cp-874", 2},   {"cp-1258 cp-1258", 2},
    };
    std::map<std::string, int> counted;
    for (const Locale& locale : Locale::all()) ++counted[pages_of(locale)];
    EXPECT_EQ(counted, told);
}

TEST(LocaleTable, HasTheToldPagesOfKnownLanguages) {
    const std::map<std::u16string, std::string> rows = {
        {u"af_NA", "cp-1252 cp-850"}, {u"am", "none"},
        {u"ar_AE", "cp-1256 cp-720"}, {u"az_Cyrl", "cp-1251 cp-866"},
        {u"hr_HR", "cp-1250 cp-852"}, {u"en_BZ", "cp-1252 cp-437"},
        {u"sr_BA", "cp-1251 cp-855"}, {u"az", "cp-1254 cp-857"},
        {u"zh", "cp-950 cp-950"},     {u"zh_SG", "cp-936 cp-936"},
    };
    for (const auto& [name, pages] : rows) EXPECT_EQ(pages_of(Locale(name.c_str())), pages);
}

TEST(LocaleTable, FindsEachRowInAnyCaseOfLetters) {
    for (const Locale& locale : Locale::all()) {
        std::u16string name = locale.name();
        EXPECT_EQ(to_utf8(name), locale.key());
        for (char16_t& c : name)
            if (c >= u'a' && c <= u'z') c = static_cast<char16_t>(c - 32);
        EXPECT_EQ(Locale(name.c_str()), locale) << locale.key();
        EXPECT_EQ(Locale::all()[locale.index()], locale);
    }
}

TEST(LocaleTable, FindsOldNames) {
    const std::map<std::u16string, std::u16string> rows = {
        {u"es_ES_Tr", u"es_ES"},        {u"sr_Cyrl_YU", u"sr_Cyrl_RS"},
        {u"sr_Latn_YU", u"sr_Latn_RS"}, {u"SR_sp_CY", u"sr_Cyrl_RS"},
        {u"sr_SP_Lt", u"sr_Latn_RS"},   {u"sr_YU", u"sr_RS"},
        {u"sr_YU_cy", u"sr_Cyrl_RS"},   {u"sr_YU_lt", u"sr_Latn_RS"},
    };
    for (const auto& [old, current] : rows) EXPECT_EQ(Locale(old.c_str()).name(), current);
}

using LocaleExceptionTest = test::ProcessTest;

TEST_F(LocaleExceptionTest, ComesForEveryOtherNameAndIsKeptByItsTwin) {
    const test::MessageLanguage english(u"en");
    const stdx::ustring names[] = {
        u"",
        u"xx",
        u"ru_",
        u"ru-RU",
        u"ru_RU ",
        u"root",
        u"zz_zz",
        u"r",
        u"ru_RU\0x"_us,
        u"en_US_POSIX_",
        u"\u0440\u0443",
        u"\uFFFF",
        stdx::ustring(100'000, u'r'),
    };
    for (const stdx::ustring& name : names) {
        InterfacePtr<IExceptionObject> kept;
        try {
            const Locale found(name);
            FAIL() << found.key();
        } catch (const Exception& exception) {
            kept = exception.object();
        }
        ASSERT_TRUE(kept);
        try {
            kept->rethrow();
        } catch (const LocaleException& exception) {
            EXPECT_EQ(exception.localeName(), name);
            EXPECT_EQ(exception.description(), u"The locale is unknown: '" + name + u"'");
        }
    }
    EXPECT_THROW(Locale(static_cast<const char16_t*>(nullptr)), LocaleException);
}

TEST(LocaleNames, AreShownInTheLanguageThatIsAskedFor) {
    EXPECT_EQ(to_utf8(Locale(u"ru_RU").displayName(Locale::invariant())), "Russian (Russia)"_s);
    EXPECT_EQ(to_utf8(Locale(u"en_GB").displayName(Locale(u"ru"))),
              "английский (Великобритания)"_s);
}

TEST(LocaleDirection, IsThatOfTheScript) {
    for (const char16_t* const name : {u"ar", u"ar_EG", u"he_IL", u"fa", u"ps", u"yi", u"uz_Arab"})
        EXPECT_TRUE(Locale::isRTL(name)) << to_utf8(name);
    for (const char16_t* const name : {u"ru", u"en", u"zh_TW", u"", u"no such locale", u"\u05E2"})
        EXPECT_FALSE(Locale::isRTL(name)) << to_utf8(name);
    EXPECT_FALSE(Locale::isRTL(std::u16string(100'000, u'a')));
}

TEST(SystemLocale, IsTheBestOfTheTableForTheOneThatICUTells) {
    const std::string told = uloc_getDefault();
    const std::string key = Locale::system().key();
    const bool isBeginning = told.compare(0, key.size(), key) == 0;
    EXPECT_TRUE(isBeginning || key == "en") << told;
    for (const Locale& longer : Locale::all())
        if (told.compare(0, std::string(longer.key()).size(), longer.key()) == 0) {
            EXPECT_LE(std::string(longer.key()).size(), key.size()) << told;
        }
    EXPECT_EQ(Locale(true), Locale::system());
    EXPECT_EQ(Locale(false), Locale::system());
    EXPECT_STREQ(Locale::invariant().key(), "en");
}

} // namespace
