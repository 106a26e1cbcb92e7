#include <core/component/Messages.h>
#include <core/component/SCOM_Process.h>
#include <core/component/Utf8.h>
#include <core/resources/ResourceBundle.h>

#include "support/MessageLanguage.h"
#include "support/ProcessTest.h"

#include <string>
#include <thread>

namespace {

using namespace core;
using namespace stdx::literals;

class Bundle : public testing::Test {
protected:
    std::string text(const char* key, const char* locale) {
        unsigned length = 99;
        const char16_t* const found = bundle_.getString(key, locale, length);
        if (!found) return length == 0 ? "(none)" : "(none, but a length)";
        return std::string(to_utf8({found, length}));
    }

    SCOM_ResourceBundle bundle_{"sample", SAMPLE_BUNDLES};
};

TEST_F(Bundle, FallsBackFromCountryToLanguageToRoot) {
    const struct {
        const char *key, *locale, *text;
    } rows[] = {
        {"TITLE", "root", "Sample"},
        {"TITLE", "", "Sample"},
        {"TITLE", nullptr, "Sample"},
        {"TITLE", "ru", "Пример"},
        {"TITLE", "ru_RU", "Пример"},
        {"TITLE", "ru-RU", "Пример"},
        {"TITLE", "ru_UA", "Пример"},
        {"TITLE", "RU", "Пример"},
        {"TITLE", "ru@collation=phonebook", "Пример"},
        {"TITLE", "fr_FR", "Sample"},
        {"ONLY_ROOT", "ru_UA", "root"},
        {"ONLY_UA", "ru_UA", "ua"},
        {"ONLY_UA", "ru", "(none)"},
        {"EMPTY", "ru", ""},
        {"MISSING", "ru", "(none)"},
        {"", "ru", "(none)"},
        {nullptr, "ru", "(none)"},
        {"BYTES", "ru", "(none)"}, // no text
    };
    for (const auto& row : rows)
        EXPECT_EQ(text(row.key, row.locale), row.text)
            << (row.key ? row.key : "-") << ' ' << (row.locale ? row.locale : "-");
}

TEST_F(Bundle, TakesNoPathForALocale) {
    for (const char* locale :
         {"../sample/ru", "/etc/passwd", "..", "ru/../ru", "ru.res", "%s%n", "\xff\xfe",
          "this_is_a_very_long_locale_id_that_nobody_ever_made_but_"
          "that_somebody_could_send_to_see_what_becomes_of_the_"
          "buffer_in_which_it_is_kept_and_of_the_stack_below_it"})
        EXPECT_EQ(text("TITLE", locale), "Sample") << locale;
}

TEST_F(Bundle, HoldsBinaries) {
    unsigned length = 0;
    const std::byte* const bytes = bundle_.getBinary("BYTES", "ru", length);
    ASSERT_NE(bytes, nullptr);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(bytes), length),
              std::string("\0\xff\x7f", 3));
    EXPECT_EQ(bundle_.getBinary("TITLE", "ru", length), nullptr);
    EXPECT_EQ(length, 0u);
}

TEST_F(Bundle, OpensAgainAfterItsCleanup) {
    EXPECT_EQ(text("TITLE", "ru"), "Пример");
    bundle_.cleanup();
    EXPECT_EQ(text("TITLE", "ru"), "Пример");
}

TEST_F(Bundle, IsSafeOnManyThreads) {
    std::vector<std::thread> threads;
    for (int i = 0; i != 4; ++i)
        threads.emplace_back([&] {
            for (const char* locale : {"ru", "ru_UA", "de", "root"})
                for (int n = 0; n != 200; ++n) EXPECT_EQ(text("ONLY_ROOT", locale), "root");
        });
    for (std::thread& thread : threads) thread.join();
}

TEST_F(Bundle, LoadsWithKeyNamesExpanded) {
    const test::ManualProcess process;
    EXPECT_EQ(load_wstring(&bundle_, "SHORTCUT"), u"%CTRL%+%SHIFT%+C, %ALT%%CTRL%, %ctrl%"_us);
    EXPECT_EQ(load_wstring(&bundle_, "SHORTCUT", true), u"Ctrl+Shift+C, AltCtrl, %ctrl%"_us);
    EXPECT_EQ(load_wstring(&bundle_, "MISSING"), u""_us);
    EXPECT_EQ(load_wstring(&bundle_, nullptr), u""_us);
    const test::MessageLanguage russian(u"ru_RU");
    EXPECT_EQ(load_wstring(&bundle_, "TITLE"), u"Пример"_us);
    unsigned length = 0;
    EXPECT_NE(bundle_.getString("ONLY_UA", Locale(u"ru_UA"), length), nullptr);
}

TEST(MissingBundle, LeavesTheKey) {
    SCOM_ResourceBundle missing("absent", SAMPLE_BUNDLES);
    unsigned length = 0;
    EXPECT_EQ(missing.getString("TITLE", "ru", length), nullptr);
    EXPECT_FALSE(missing.exists("ru"));
    EXPECT_EQ(load_wstring(&missing, "TITLE", true), u"TITLE"_us);
    EXPECT_EQ(load_wstring(nullptr, "%ALT%", true), u"%ALT%"_us);
    EXPECT_EQ(load_module_wstring("sample", "TITLE"), u"TITLE"_us); // no process
    EXPECT_EQ(load_module_wstring(nullptr, "TITLE"), u"TITLE"_us);
}

TEST_F(Bundle, IsFoundByTheNameOfItsModule) {
    test::ManualProcess process;
    process->addResourceBundle(&bundle_);
    EXPECT_EQ(load_module_wstring("sample", "TITLE"), u"Sample"_us);
    EXPECT_EQ(load_module_wstring("SAMPLE", "SHORTCUT", true), u"Ctrl+Shift+C, AltCtrl, %ctrl%"_us);
    EXPECT_EQ(load_module_wstring("core", "IDS_ERR_THREAD_CANCELLED"), u"The job was cancelled"_us);
    const struct {
        int part;
        const char16_t* text;
    } rows[] = {
        {-1, u""}, {0, u"one"}, {1, u"two"}, {2, u"three"}, {3, u""}, {2147483647, u""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(load_module_part_wstring("sample", "PARTS", row.part), row.text) << row.part;
    EXPECT_EQ(load_module_part_wstring("sample", "EMPTY", 0), u""_us);
    process->removeResourceBundle(&bundle_);
    EXPECT_EQ(load_module_wstring("sample", "TITLE"), u"TITLE"_us);
}

} // namespace
