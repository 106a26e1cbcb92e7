#include <core/text/Split.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

using namespace core;
using testing::ElementsAre;

using Pieces = std::vector<stdx::ustring>;

TEST(Pieces, BetweenDelimitersAreKeptOrSkippedWhenEmpty) {
    const struct {
        std::u16string_view text, delimiters;
        Pieces split, tokens;
    } rows[] = {
        {u"", u",", {u""}, {}},
        {u",,a,,", u",", {u"", u"", u"a", u"", u""}, {u"a"}},
        {u"a b,c", u", ", {u"a", u"b", u"c"}, {u"a", u"b", u"c"}},
        {u"a, b", u", ", {u"a", u"", u"b"}, {u"a", u"b"}},
        {u"whole", u"", {u"whole"}, {u"whole"}},
        {u"\u0430\u0431\u0432", u"\u0431", {u"\u0430", u"\u0432"}, {u"\u0430", u"\u0432"}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(string_split(row.text, row.delimiters), row.split);
        EXPECT_EQ(string_tokenize(row.text, row.delimiters), row.tokens);
    }
    const std::string_view bytes = "a;;b", delimiter = ";";
    EXPECT_THAT(string_split(bytes.begin(), bytes.end(), delimiter.begin(), delimiter.end()),
                ElementsAre("a", "", "b"));
    EXPECT_THAT(string_tokenize(bytes.begin(), bytes.end(), delimiter.begin(), delimiter.end()),
                ElementsAre("a", "b"));
}

TEST(Replacing, TakesTheFirstOrEveryOccurrence) {
    const struct {
        const char *text, *from, *to, *first, *all;
    } rows[] = {
        {"", "a", "b", "", ""},
        {"abcabc", "b", "XX", "aXXcabc", "aXXcaXXc"},
        {"aaaa", "aa", "a", "aaa", "aa"}, // what was put in is not read again
        {"abc", "", "x", "abc", "abc"},
        {"abc", "abc", "", "", ""},
        {"abc", "abcd", "x", "abc", "abc"},
        {"xabcx", "x", "", "abcx", "abc"},
    };
    const auto wide = [](std::string_view s) { return stdx::ustring(s.begin(), s.end()); };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(replace(stdx::string(row.text), row.from, row.to), row.first);
        EXPECT_EQ(replace_all(stdx::string(row.text), row.from, row.to), row.all);
        EXPECT_EQ(replace(wide(row.text), wide(row.from), wide(row.to)), wide(row.first));
        EXPECT_EQ(replace_all(wide(row.text), wide(row.from), wide(row.to)), wide(row.all));
    }
    const stdx::ustring text(u"a text that is shared, not copied");
    EXPECT_EQ(replace_all(text, u"#", u"-").c_str(), text.c_str());
}

TEST(Paths, ComeApartAndTogether) {
    const struct {
        const char16_t *path, *drive, *dir, *name, *ext;
    } rows[] = {
        {u"", u"", u"", u"", u""},
        {u"C:/reports/may.txt", u"C:", u"/reports/", u"may", u".txt"},
        {u"d:\\a/b\\c.d.e", u"d:", u"\\a/b\\", u"c.d", u".e"},
        {u"/home/user.x/file", u"", u"/home/user.x/", u"file", u""},
        {u"file", u"", u"", u"file", u""},
        {u".profile", u"", u"", u"", u".profile"},
        {u"dir/", u"", u"dir/", u"", u""},
        {u"1:x", u"", u"", u"1:x", u""},
        {u"c:", u"c:", u"", u"", u""},
    };
    for (const auto& row : rows) {
        stdx::ustring drive, dir, name, ext;
        string_splitpath(row.path, drive, dir, name, ext);
        EXPECT_THAT((Pieces{drive, dir, name, ext}),
                    ElementsAre(row.drive, row.dir, row.name, row.ext));
        EXPECT_EQ(string_makepath(drive, dir, name, ext), row.path);
    }
    EXPECT_EQ(string_makepath(u"C", u"dir", u"name", u"ext"), u"C:dir/name.ext");
    EXPECT_EQ(string_makepath("", "dir\\", "name", ""), "dir\\name");
    stdx::string self("C:/x/y.z"), dir, name, ext;
    string_splitpath(self, self, dir, name, ext);
    EXPECT_EQ(self + dir + name + ext, "C:/x/y.z");
}

} // namespace
