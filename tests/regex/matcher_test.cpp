#include <core/text/Matcher.h>
#include <core/text/RegexException.h>

#include <core/component/Utf8.h>

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <optional>
#include <thread>
#include <vector>

namespace {

using namespace stdx::literals;
using core::Matcher;
using core::RegexException;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr int kIllegalArgument = 1;
constexpr int kInvalidState = 0x10302;
constexpr int kOutOfBounds = 8;
constexpr int kStackOverflow = 0x10311;
constexpr int kTimeOut = 0x10312;

// The status of the exception that `body` throws; empty when it throws none.
template <class Body> std::optional<int> status_of(Body&& body) {
    try {
        body();
    } catch (const RegexException& exception) {
        return exception.status();
    }
    return std::nullopt;
}

std::vector<stdx::ustring> all_matches(Matcher matcher) {
    std::vector<stdx::ustring> found;
    while (matcher.find()) found.push_back(matcher.group());
    return found;
}

TEST(Matching, AsksForTheWholeTheStartOrAnyPlace) {
    const struct {
        const char16_t *pattern, *text;
        bool matches, lookingAt, find;
    } rows[] = {
        {u"a+", u"aaa", true, true, true},   {u"a+", u"aab", false, true, true},
        {u"a+", u"baa", false, false, true}, {u"a+", u"bbb", false, false, false},
        {u"", u"", true, true, true},        {u"", u"x", false, true, true},
        {u"a|ab", u"ab", true, true, true},  {u"(?i)строка", u"СТРОКА", true, true, true},
        {u".", u"😀", true, true, true},      {u"a\\x00b", u"a", false, false, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(core::to_utf8(row.pattern) + " on " + core::to_utf8(row.text));
        EXPECT_EQ(Matcher(row.pattern, row.text).matches(), row.matches);
        EXPECT_EQ(Matcher(row.pattern, row.text).lookingAt(), row.lookingAt);
        EXPECT_EQ(Matcher(row.pattern, row.text).find(), row.find);
        EXPECT_EQ(core::matches_pattern(row.pattern, row.text), row.matches);
    }
}

TEST(Matching, ObeysItsFlags) {
    const struct {
        const char16_t *pattern, *text;
        unsigned flags; // without any one of them there is no match
    } rows[] = {
        {u"straße", u"STRASSE", Matcher::kIgnoreCase},
        {u"a b # two letters", u"ab", Matcher::kComments},
        {u"a.b", u"a\nb", Matcher::kDotAll},
        {u"a\\n^b$\\nc", u"a\nb\nc", Matcher::kMultiLine},
        {u"A . ^B$ # c", u"a\nb", 15},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(core::to_utf8(row.pattern));
        EXPECT_TRUE(core::matches_pattern(row.pattern, row.text, row.flags));
        EXPECT_TRUE(core::matches_pattern(row.pattern, row.text, row.flags | ~15u));
        for (unsigned bit = 1; bit <= 8; bit *= 2)
            if (row.flags & bit) {
                EXPECT_FALSE(core::matches_pattern(row.pattern, row.text, row.flags & ~bit)) << bit;
                EXPECT_FALSE(core::matches_pattern(row.pattern, row.text, ~15u)) << bit;
            }
    }
    // No flag reaches ICU as it is: its 16 is "literal", its 1 "Unix lines".
    EXPECT_TRUE(core::matches_pattern(u"a.", u"ab", 16));
}

TEST(Finding, GoesThroughTheTextAndEndsWithoutAnError) {
    Matcher matcher(u"(\\d+)(-\\d+)?(x)?", u"12-7, 45, 6-");
    EXPECT_EQ(matcher.groupCount(), 3u);
    const struct {
        int start, end, secondStart, secondEnd;
        const char16_t *whole, *second;
    } rows[] = {
        {0, 4, 2, 4, u"12-7", u"-7"},
        {6, 8, -1, -1, u"45", u""},
        {10, 11, -1, -1, u"6", u""},
    };
    for (const auto& row : rows) {
        ASSERT_TRUE(matcher.find());
        EXPECT_EQ(matcher.start(), row.start);
        EXPECT_EQ(matcher.end(), row.end);
        EXPECT_EQ(matcher.start(2), row.secondStart);
        EXPECT_EQ(matcher.end(2), row.secondEnd);
        EXPECT_EQ(matcher.group(), row.whole);
        EXPECT_EQ(matcher.group(2), row.second);
        EXPECT_EQ(matcher.group(3), u""_us);
    }
    EXPECT_FALSE(matcher.find());
    EXPECT_FALSE(matcher.find());
}

TEST(Finding, PassesOverEmptyMatches) {
    EXPECT_EQ(all_matches(Matcher(u"a*", u"baa😀")),
              (std::vector{u""_us, u"aa"_us, u""_us, u""_us}));
    EXPECT_EQ(all_matches(Matcher(u"x*")), std::vector{u""_us});
}

TEST(Finding, FromAPlaceLeavesTheRegion) {
    Matcher matcher(u"a", u"abaca");
    matcher.region(1, 2);
    EXPECT_FALSE(matcher.find());
    EXPECT_TRUE(matcher.find(3));
    EXPECT_EQ(matcher.start(), 4);
    EXPECT_TRUE(matcher.find(2));
    EXPECT_EQ(matcher.start(), 2);
    EXPECT_FALSE(matcher.find(5));
    EXPECT_EQ(status_of([&] { matcher.find(6); }), kOutOfBounds);
    EXPECT_EQ(status_of([&] { matcher.find(0xffffffff); }), kOutOfBounds);
    EXPECT_TRUE(matcher.find(0));
}

// A search may begin inside of a character. Positions are where it matched; a text is never cut
// inside of a character, as ICU has it.
TEST(Finding, InsideOfACharacterGivesTheTextOfWholeOnes) {
    Matcher matcher(u".", u"😀a");
    EXPECT_TRUE(matcher.find(1));
    EXPECT_EQ(matcher.start(), 1);
    EXPECT_EQ(matcher.end(), 2);
    EXPECT_EQ(matcher.group(), u"😀"_us);
    EXPECT_TRUE(matcher.region(0, 1).find());
    EXPECT_EQ(matcher.end(), 1);
    EXPECT_EQ(matcher.group(), u""_us);
}

TEST(Region, BoundsMatchesAndAnchors) {
    Matcher matcher(u"^a+$", u"baaab");
    EXPECT_FALSE(matcher.find());
    EXPECT_EQ(matcher.regionEnd(), 5u);
    EXPECT_TRUE(matcher.region(1, 3).matches());
    EXPECT_EQ(matcher.regionStart(), 1u);
    EXPECT_EQ(matcher.regionEnd(), 3u);
    EXPECT_EQ(matcher.start(), 1);
    EXPECT_EQ(matcher.group(), u"aa"_us);
    EXPECT_EQ(status_of([&] { matcher.region(2, 6); }), kIllegalArgument);
    EXPECT_EQ(status_of([&] { matcher.region(3, 2); }), kIllegalArgument);
    matcher.reset();
    EXPECT_EQ(matcher.regionStart(), 0u);
    EXPECT_FALSE(matcher.matches());
}

TEST(Region, TellsWhatMoreTextMightChange) {
    const struct {
        const char16_t *pattern, *text;
        bool hitEnd, requireEnd;
    } rows[] = {
        {u"ab", u"xaby", false, false}, {u"ab+", u"xab", true, false}, {u"ab$", u"ab", true, true}};
    for (const auto& row : rows) {
        Matcher matcher(row.pattern, row.text);
        ASSERT_TRUE(matcher.find());
        EXPECT_EQ(matcher.hitEnd(), row.hitEnd) << core::to_utf8(row.pattern);
        EXPECT_EQ(matcher.requireEnd(), row.requireEnd) << core::to_utf8(row.pattern);
    }
}

TEST(Resetting, StartsOverWithTheSamePattern) {
    Matcher matcher(u"[a-c]+", u"xxabc");
    EXPECT_TRUE(matcher.find());
    EXPECT_FALSE(matcher.find());
    EXPECT_TRUE(matcher.reset().find());
    EXPECT_EQ(matcher.start(), 2);
    // Short and long texts lie in different places, and the matcher has its own of each.
    for (stdx::ustring text : {u"b"_us, u"cb, and a text that is long"_us, u"a"_us}) {
        matcher.reset(text);
        text.resize(0);
        text += u"the caller's string is changed";
        ASSERT_TRUE(matcher.find());
        EXPECT_EQ(matcher.start(), 0);
    }
    EXPECT_FALSE(matcher.reset(u"").find());
    matcher.reset(u"ab");
    EXPECT_TRUE(matcher.matches());
    EXPECT_EQ(matcher.reset(matcher.group()).regionEnd(), 2u);
}

TEST(Copies, ShareOneState) {
    Matcher original(u"\\w", u"abc");
    Matcher copy = original;
    EXPECT_TRUE(original.find());
    EXPECT_EQ(copy.group(), u"a"_us);
    EXPECT_TRUE(copy.find());
    EXPECT_EQ(original.group(), u"b"_us);

    Matcher other(u"x", u"x");
    other = original;
    { const Matcher gone = std::move(original); }
    other.reset(u"z");
    EXPECT_TRUE(original.find()); // moving took nothing away
    EXPECT_EQ(copy.group(), u"z"_us);
}

TEST(Copies, MayEndOnAnotherThread) {
    for (int i = 0; i != 200; ++i) {
        std::optional<Matcher> here(std::in_place, u"a+b", u"a text that is long enough");
        std::thread there([copy = *here] {});
        here.reset();
        there.join();
    }
}

TEST(Replacing, LeavesTheTextAlone) {
    const struct {
        const char16_t *pattern, *text, *replacement, *all, *first;
    } rows[] = {
        {u"b", u"abcb", u"-", u"a-c-", u"a-cb"},
        {u"(\\w)(\\w)", u"abcd!", u"$2$1", u"badc!", u"bacd!"},
        {u"(?<n>\\d)", u"1 2", u"<${n}>", u"<1> <2>", u"<1> 2"},
        {u"x", u"x.x", u"\\$1", u"$1.$1", u"$1.x"},
        {u"x", u"abc", u"$0$0", u"abc", u"abc"},
        {u"", u"ab", u"-", u"-a-b-", u"-ab"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(core::to_utf8(row.pattern));
        Matcher matcher(row.pattern, row.text);
        EXPECT_EQ(matcher.replaceAll(row.replacement), row.all);
        EXPECT_EQ(matcher.replaceFirst(row.replacement), row.first);
        EXPECT_EQ(matcher.replaceAll(row.replacement), row.all);
        EXPECT_EQ(matcher.regionEnd(), std::u16string_view(row.text).size());
    }
}

TEST(Errors, OfAPatternAreThrownWithThePattern) {
    const struct {
        const char16_t* pattern;
        int status;
        const char *name, *hexadecimal;
    } rows[] = {
        {u"(abc", 0x10306, "U_REGEX_MISMATCHED_PAREN", "0x10306"},
        {u"a{3,2}", 0x10309, "U_REGEX_MAX_LT_MIN", "0x10309"},
        {u"[a", 0x1030f, "U_REGEX_MISSING_CLOSE_BRACKET", "0x1030f"},
        {u"(?<=a*)b", 0x1030c, "U_REGEX_LOOK_BEHIND_LIMIT", "0x1030c"},
        {u"*", 0x10301, "U_REGEX_RULE_SYNTAX", "0x10301"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        try {
            Matcher matcher(row.pattern, u"text");
            ADD_FAILURE() << "the pattern was accepted";
        } catch (const RegexException& exception) {
            EXPECT_EQ(exception.status(), row.status);
            EXPECT_EQ(exception.pattern(), row.pattern);
            const std::string text(core::to_utf8(exception.description()).c_str());
            for (const std::string part : {row.name, row.hexadecimal})
                EXPECT_NE(text.find(part), text.npos) << text;
            EXPECT_NE(text.find(core::to_utf8(row.pattern).c_str()), text.npos) << text;
        }
        EXPECT_EQ(status_of([&] { core::matches_pattern(row.pattern, u""); }), row.status);
    }
}

TEST(Errors, MeetPatternsThatNestDeeply) {
    const auto repeated = [](std::u16string_view part) {
        stdx::ustring all;
        for (int i = 0; i != 100'000; ++i) all += part;
        return all;
    };
    for (const std::u16string_view part : {u"(", u"[", u"(?=", u"[^a", u"\\p{["})
        EXPECT_TRUE(status_of([&] { Matcher matcher(repeated(part)); })) << core::to_utf8(part);
    EXPECT_TRUE(Matcher(repeated(u"a|"), u"b").find());
}

TEST(Errors, AtRunTimeLeaveTheMatcherUsable) {
    Matcher matcher(u"(b)", u"abc");
    const std::function<void()> questions[] = {
        [&] { matcher.start(); },  [&] { matcher.end(); },  [&] { matcher.group(); },
        [&] { matcher.start(1); }, [&] { matcher.end(1); }, [&] { matcher.group(1); },
    };
    for (const auto& question : questions) EXPECT_EQ(status_of(question), kInvalidState);
    EXPECT_FALSE(matcher.lookingAt());
    for (const auto& question : questions) EXPECT_EQ(status_of(question), kInvalidState);

    ASSERT_TRUE(matcher.find());
    for (const unsigned group : {2u, 0x80000000u, 0xffffffffu}) {
        EXPECT_EQ(status_of([&] { matcher.start(group); }), kOutOfBounds);
        EXPECT_EQ(status_of([&] { matcher.end(group); }), kOutOfBounds);
        EXPECT_EQ(status_of([&] { matcher.group(group); }), kOutOfBounds);
    }
    EXPECT_EQ(status_of([&] { matcher.replaceAll(u"$7"); }), kOutOfBounds);
    EXPECT_TRUE(matcher.find(0));
    EXPECT_EQ(matcher.group(1), u"b"_us);
}

// ---- Runaway patterns.

const stdx::ustring kRunaway = u"(a+)+b";

TEST(Limits, StopWhatTakesTooLong) {
    const struct {
        const char* what;
        stdx::ustring pattern, text;
    } rows[] = {
        {"tries all partitions", kRunaway, stdx::ustring(40, u'a')},
        // Takes no step that ICU counts, but a long comparison at each place.
        {"a long word at each place", stdx::ustring(20'000, u'a') + u"b"_us,
         stdx::ustring(4'000'000, u'a')},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Matcher matcher(row.pattern, row.text);
        matcher.setTimeLimit(milliseconds(50));
        for (int repeat = 0; repeat != 2; ++repeat) { // each call has the whole time
            const auto begin = steady_clock::now();
            EXPECT_EQ(status_of([&] { matcher.find(0); }), kTimeOut);
            const auto taken = steady_clock::now() - begin;
            EXPECT_GE(taken, milliseconds(50));
            EXPECT_LT(taken, milliseconds(2000));
        }
        EXPECT_EQ(status_of([&] { matcher.start(); }), kInvalidState);
        EXPECT_EQ(status_of([&] { matcher.replaceAll(u"x"); }), kTimeOut);
        matcher.reset(row.text.substr(0, 3)).setTimeLimit(std::chrono::hours(1));
        EXPECT_FALSE(matcher.find());
    }
}

TEST(Limits, OfTimeAreOffWhenZeroAndMayBeAnyNumber) {
    Matcher matcher(kRunaway, stdx::ustring(20, u'a')); // a million steps
    for (const milliseconds limit :
         {milliseconds(0), milliseconds(-1), milliseconds::max(), milliseconds::min()}) {
        matcher.setTimeLimit(limit);
        EXPECT_FALSE(matcher.matches());
    }
    matcher.setTimeLimit(milliseconds(1));
    EXPECT_EQ(status_of([&] { matcher.reset(stdx::ustring(40, u'a')).matches(); }), kTimeOut);
    matcher.setTimeLimit(milliseconds(0));
    EXPECT_TRUE(matcher.reset(u"aab").matches());
}

TEST(Limits, BoundTheMemoryOfAMatch) {
    Matcher matcher(u"(?:a|b)*c", stdx::ustring(1'000'000, u'a'));
    EXPECT_EQ(status_of([&] { matcher.matches(); }), kStackOverflow);
    EXPECT_EQ(status_of([&] { matcher.replaceAll(u"-"); }), kStackOverflow);
    EXPECT_EQ(status_of([&] { matcher.replaceFirst(u"-"); }), kStackOverflow);
    matcher.setStackLimit(0);
    EXPECT_FALSE(matcher.matches());
    matcher.reset(stdx::ustring(10'000, u'a'));
    EXPECT_FALSE(matcher.matches());
    matcher.setStackLimit(1000);
    EXPECT_EQ(status_of([&] { matcher.matches(); }), kStackOverflow);
    EXPECT_TRUE(matcher.reset(u"abc").matches());
    EXPECT_EQ(status_of([&] { matcher.setStackLimit(0x80000000); }), kIllegalArgument);
}

// ---- Quoting.

TEST(QuotePattern, PutsABackslashBeforeTheseUnitsAlone) {
    const std::u16string_view quoted = u"$&()*+-.?[\\]^{}";
    for (unsigned unit = 0; unit != 0x10000; ++unit) {
        const stdx::ustring text(1, static_cast<char16_t>(unit));
        const bool special = quoted.find(static_cast<char16_t>(unit)) != quoted.npos;
        EXPECT_EQ(core::quote_pattern(text), special ? u"\\"_us + text : text) << unit;
    }
    EXPECT_EQ(core::quote_pattern(u"a.b"), u"a\\.b"_us);
    EXPECT_EQ(core::quote_pattern(u""), u""_us);
}

TEST(QuotePattern, MatchesItsTextLiterally) {
    for (unsigned unit = 0; unit != 0x3000; ++unit) {
        if (unit == u'|') continue;
        const char16_t c = static_cast<char16_t>(unit);
        const stdx::ustring text{u'a', c, u'b', c, c};
        EXPECT_TRUE(core::matches_pattern(core::quote_pattern(text), text)) << unit;
    }
    EXPECT_FALSE(core::matches_pattern(core::quote_pattern(u"a.b"), u"axb"));
    EXPECT_FALSE(core::matches_pattern(core::quote_pattern(u"a|b"), u"a|b"));
}

} // namespace
