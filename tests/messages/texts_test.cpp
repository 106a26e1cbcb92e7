// Every key in the sources has a text in both languages, and every text a key.
#include <core/component/Messages.h>
#include <core/component/Utf8.h>

#include "support/MessageLanguage.h"
#include "support/ProcessTest.h"

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>

namespace {

namespace fs = std::filesystem;

std::string contents(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    EXPECT_TRUE(in) << file;
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

std::set<std::string> matches(const std::string& text, const char* pattern) {
    const std::regex regex(pattern);
    std::set<std::string> found;
    for (std::sregex_iterator it(text.begin(), text.end(), regex), end; it != end; ++it)
        found.insert((*it)[1]);
    return found;
}

std::set<std::string> keys_in_sources() {
    std::set<std::string> keys;
    for (const char* folder : {"core/src", "core/include"})
        for (const auto& entry : fs::recursive_directory_iterator(fs::path(SOURCE_TREE) / folder))
            if (entry.path().extension() == ".h" || entry.path().extension() == ".cpp")
                keys.merge(matches(contents(entry.path()), "\"(IDS_[A-Z0-9_]+)\""));
    return keys;
}

std::set<std::string> keys_in_texts(const char* locale) {
    return matches(
        contents(fs::path(SOURCE_TREE) / "resources/orbcore" / (std::string(locale) + ".txt")),
        "(IDS_[A-Z0-9_]+)[^\\n]*\\{");
}

std::size_t placeholders(const stdx::ustring& text) {
    std::size_t count = 0;
    for (unsigned at = 0; (at = text.find(u"%s", at)) != text.npos; ++at) ++count;
    return count;
}

TEST(MessageTexts, AreThoseThatTheCodeAsksFor) {
    const std::set<std::string> keys = keys_in_sources();
    EXPECT_GT(keys.size(), 20u);
    EXPECT_EQ(keys, keys_in_texts("root"));
    EXPECT_EQ(keys, keys_in_texts("ru"));
}

// What both languages call alike.
const std::set<std::string> kAlike = {"IDS_TYPE_PRESENTATION_NULL"};

TEST(MessageTexts, SayTheSameInBothLanguages) {
    const test::ManualProcess process;
    const auto text_in = [](const char16_t* locale, const std::string& key) {
        const test::MessageLanguage language(locale);
        return core::load_core_wstring(key.c_str());
    };
    for (const std::string& key : keys_in_sources()) {
        const stdx::ustring russian = text_in(u"ru", key);
        const stdx::ustring english = text_in(u"en", key);
        EXPECT_FALSE(english.empty()) << key;
        EXPECT_NE(english, core::from_utf8(key));
        EXPECT_EQ(english == russian, kAlike.contains(key)) << key << ": not translated";
        EXPECT_EQ(placeholders(english), placeholders(russian)) << key;
    }
}

} // namespace
