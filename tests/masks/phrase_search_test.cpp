#include <core/component/Utf8.h>
#include <core/text/PhraseSearch.h>

#include <gmock/gmock.h>

namespace {

using namespace core;
using namespace stdx::literals;

using Ranges = std::vector<std::pair<unsigned, unsigned>>;
using Status = StringSearchStatus;

struct Row {
    const char* what;
    stdx::ustring phrase, text;
    StringMatchMode mode;
    bool ignoreCase;
    Status status;
    Ranges ranges;
};

constexpr auto kAnywhere = StringMatchMode::Anywhere;
constexpr auto kWordStart = StringMatchMode::WordStart;

TEST(PhraseSearch, FindsTheTermsOfAPhrase) {
    const Row rows[] = {
        {"sorted terms",
         u"ef ab",
         u"ab ef ab",
         kAnywhere,
         false,
         Status::All,
         {{0, 2}, {6, 8}, {3, 5}}},
        {"some", u"ab xy", u"abc", kAnywhere, false, Status::Some, {{0, 2}}},
        {"none", u"xy", u"abc", kAnywhere, false, Status::None, {}},
        {"blanks and tabs alone", u" \t ", u"abc", kAnywhere, false, Status::None, {}},
        {"empty text", u"a", u"", kAnywhere, false, Status::None, {}},
        {"no overlap", u"aa", u"aaaaa", kAnywhere, false, Status::All, {{0, 2}, {2, 4}}},
        {"the same twice", u"ab ab\tab", u"ab", kAnywhere, false, Status::All, {{0, 2}}},
        {"case counts", u"Ab", u"aB ab AB", kAnywhere, false, Status::None, {}},
        {"case ignored", u"ЁЖ Ab", u"ёж aB", kAnywhere, true, Status::All, {{3, 5}, {0, 2}}},
        {"same but for case", u"Ab aB", u"xAB", kAnywhere, true, Status::All, {{1, 3}}},
        {"inside a word", u"port", u"report port", kWordStart, false, Status::All, {{7, 11}}},
        {"digits are of the word",
         u"2",
         u"12 2-2",
         kWordStart,
         false,
         Status::All,
         {{3, 4}, {5, 6}}},
        {"behind a mark", u"a", u"e\u0301a a", kWordStart, false, Status::All, {{4, 5}}},
        {"behind a letter of two units", u"a", u"\U00010400a", kWordStart, false, Status::None, {}},
        {"behind a picture", u"a", u"\U0001F600a", kWordStart, false, Status::All, {{2, 3}}},
        {"overlaps one inside a word", u"-.-", u"x-.-.-", kWordStart, false, Status::All, {{3, 6}}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        const auto search = begin_string_search(row.phrase, row.mode, row.ignoreCase);
        EXPECT_EQ(search->getSearchStatus().first, Status::None);
        Ranges ranges;
        search->search(row.text, &ranges);
        EXPECT_EQ(search->getSearchStatus().first, row.status);
        EXPECT_EQ(ranges, row.ranges);
        search->search(row.text, nullptr);
        EXPECT_EQ(search->getSearchStatus().first, row.status);
    }
}

TEST(PhraseSearch, CountsDistinctTermsAndForgetsTheTextBefore) {
    const auto search = begin_string_search(std::vector<stdx::ustring>{u"b c", u"", u"a", u"b c"},
                                            kAnywhere, false);
    EXPECT_EQ(search->getSearchStatus(), std::pair(Status::None, 2u));
    search->search(u"a b c", nullptr);
    EXPECT_EQ(search->getSearchStatus(), std::pair(Status::All, 2u));
    search->search(u"b a", nullptr);
    EXPECT_EQ(search->getSearchStatus(), std::pair(Status::Some, 2u));
    Ranges ranges{{7, 9}};
    search->search(u"a", &ranges);
    EXPECT_THAT(ranges, testing::ElementsAre(std::pair(7u, 9u), std::pair(0u, 1u)));
}

TEST(PhraseSearch, CannotRecordMoreThanThirtyTwoTerms) {
    std::vector<stdx::ustring> terms;
    stdx::ustring all;
    for (int i = 0; i < 33; ++i) {
        terms.push_back({u'x', static_cast<char16_t>(u'A' + i)});
        all += terms.back().view();
    }
    const auto search = begin_string_search(terms, kAnywhere, false);
    EXPECT_THROW(search->search(all, nullptr), std::out_of_range);
    search->search(all.substr(0, 64), nullptr); // the last one does not occur
    EXPECT_EQ(search->getSearchStatus(), std::pair(Status::Some, 33u));
    terms.pop_back();
    const auto fewer = begin_string_search(terms, kAnywhere, false);
    fewer->search(all, nullptr);
    EXPECT_EQ(fewer->getSearchStatus(), std::pair(Status::All, 32u));
}

} // namespace
