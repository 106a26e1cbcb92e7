#include "masks/MaskCases.h"
#include "masks/NaiveLike.h"
#include "support/ProcessTest.h"

#include <core/component/ClassDescriptor.h>
#include <core/component/CompatibilityMode.h>
#include <core/component/IllegalArgumentException.h>
#include <core/text/LikeMask.h>

#include <chrono>
#include <fstream>
#include <random>

namespace {

using namespace core;

const CharacterOrderPtr& english() {
    static const CharacterOrderPtr order = open_character_order("en");
    return order;
}

std::shared_ptr<ILikeMask> compiled(bool noCase, std::u16string_view mask, char16_t escape,
                                    const CharacterOrderPtr& order = english()) {
    return noCase ? create_like_mask_nocase(mask, escape, order)
                  : create_like_mask(mask, escape, order);
}

bool matches(std::u16string_view mask, std::u16string_view text, char16_t escape = 0) {
    return compare_like(text, mask, escape, english());
}

// ---- The language.

TEST(LikeMask, AnswersAsTheTableOfCases) {
    std::ifstream in(CASES "masks.cases");
    int read = 0;
    for (std::string line; std::getline(in, line);) {
        const auto row = test::parse_mask_case(line);
        if (!row) {
            EXPECT_TRUE(line.starts_with('#')) << line;
            continue;
        }
        ++read;
        EXPECT_EQ(compiled(row->noCase, row->mask, row->escape)->match(row->text), row->answer)
            << line;
        EXPECT_EQ(test::NaiveLike(row->mask, row->escape, row->noCase, *english()).match(row->text),
                  row->answer)
            << "the model: " << line;
    }
    EXPECT_GT(read, 100);
}

TEST(LikeMask, OfOneFormAnswersLikeThoseOfTheOthers) {
    const char16_t* const text = u"Fill";
    EXPECT_TRUE(compare_like(text, u"F%", 0));
    EXPECT_FALSE(compare_like(text, u"f%", 0));
    EXPECT_TRUE(compare_like(text, 3, u"F%il", 0));
    EXPECT_TRUE(compare_like(text, u"F%x", 2, 0));
    EXPECT_TRUE(compare_like(text, 3, u"F%ilx", 4, 0));
    EXPECT_TRUE(compare_nocase_like(text, u"f%", 0));
    EXPECT_TRUE(compare_nocase_like(text, 3, u"f%IL", 0));
    EXPECT_TRUE(compare_nocase_like(text, u"f%x", 2, 0));
    EXPECT_TRUE(compare_nocase_like(text, 3, u"f%ILX", 4, 0));
    EXPECT_TRUE(compare_nocase_like(std::u16string_view(u"FILL"), u"fill", 0, english()));
    EXPECT_FALSE(compare_nocase_like(text, u"\\f%", 3, 0)); // no escape
    EXPECT_TRUE(compare_nocase_like(text, u"\\f%", 3, u'\\'));
}

TEST(LikeMask, TakesZerosAndHalvesOfPairsAsCharacters) {
    using namespace std::string_view_literals;
    EXPECT_TRUE(matches(u"%\0[\0-a]"sv, u"x\0\0"sv));
    EXPECT_FALSE(matches(u"_"sv, u"\U0001F600"sv));
    EXPECT_TRUE(matches(u"__"sv, u"\U0001F600"sv));
    EXPECT_TRUE(matches(u"%\xD83D_"sv, u"a\U0001F600"sv));
}

TEST(LikeMask, ReadsRangesInTheGivenOrder) {
    const CharacterOrderPtr swedish = open_character_order("sv");
    // In Swedish the letter stands behind z, in English beside a.
    EXPECT_TRUE(compare_like(u"ä", u"[a-c]", 0, english()));
    EXPECT_FALSE(compare_like(u"ä", u"[a-c]", 0, swedish));
    EXPECT_TRUE(compare_like(u"ä", u"[z-ö]", 0, swedish));
    // Capitals stand beside their small letters; an end is a member also where case parts it.
    EXPECT_TRUE(matches(u"[a-c]", u"B"));
    EXPECT_FALSE(matches(u"[a-c]", u"C"));
    EXPECT_TRUE(compare_nocase_like(u"C", u"[a-c]", 0, english()));
    // Where all capitals stand before all small letters, no case means either.
    const CharacterOrderPtr posix = open_character_order("en_US_POSIX");
    EXPECT_FALSE(compare_like(u"b", u"[A-C]", 0, posix));
    for (const char16_t* text : {u"b", u"B"})
        for (const char16_t* mask : {u"[A-C]", u"[a-c]"})
            EXPECT_TRUE(compare_nocase_like(std::u16string_view(text), mask, 0, posix));
    EXPECT_TRUE(compare_like(u"x", u"[w-y]", 0, open_character_order("no such locale")));
    EXPECT_THROW(create_like_mask(u"a", 0, nullptr), IllegalArgumentException);
    EXPECT_THROW(compare_like(u"a", u"a", 0, nullptr), IllegalArgumentException);
}

TEST(LikeMask, KeepsItsOrderAlive) {
    auto order = open_character_order("en");
    const auto mask = create_like_mask(u"%[k-m]", 0, order);
    order.reset();
    EXPECT_TRUE(mask->match(u"xl"));
}

TEST(LikeMask, TakesCharactersForEqualWithoutCaseAsTheirFoldingSays) {
    // Also those that only meet after upper and then lower case: the Kelvin and the Angstrom sign.
    const std::u16string_view pairs[] = {u"kK", u"k\u212A", u"\u00E5\u212B", u"s\u017F",
                                         u"ёЁ", u"ßẞ",      u"σς",           u"i\u0130"};
    const struct {
        std::u16string front, back, textFront;
    } forms[] = {
        {u"", u"", u""},        {u"%", u"", u"xyz"},     {u"%", u"%", u"xyz"},   {u"[", u"]", u""},
        {u"%[", u"]%", u"xyz"}, {u"%xyz", u"%", u"xyz"}, {u"%[xy]", u"%", u"x"},
    };
    for (const std::u16string_view pair : pairs)
        for (const auto& form : forms)
            for (const bool swap : {false, true}) {
                const std::u16string mask = form.front + pair[swap] + form.back;
                EXPECT_TRUE(compare_nocase_like(form.textFront + pair[!swap], mask, 0, english()))
                    << to_utf8(mask);
            }
    EXPECT_FALSE(compare_nocase_like(u"е", u"ё", 0, english()));
}

// ---- Beside the plain matcher.

class Random {
public:
    explicit Random(unsigned seed) : engine_(seed) {}
    std::size_t upto(std::size_t n) {
        return std::uniform_int_distribution<std::size_t>(0, n)(engine_);
    }
    std::u16string text(std::u16string_view alphabet, std::size_t longest) {
        std::u16string made;
        for (std::size_t n = upto(longest); n > 0; --n) made += alphabet[upto(alphabet.size() - 1)];
        return made;
    }

private:
    std::mt19937 engine_;
};

struct Mix {
    const char* what;
    std::u16string_view ofMask, ofText;
    std::size_t longestMask, longestText;
};

class LikeMaskBesideThePlainMatcher : public testing::TestWithParam<Mix> {};

TEST_P(LikeMaskBesideThePlainMatcher, AnswersAlike) {
    const Mix& mix = GetParam();
    Random any(20261);
    int yes = 0;
    constexpr int kMasks = 1500;
    for (int round = 0; round < kMasks; ++round) {
        const std::u16string mask = any.text(mix.ofMask, mix.longestMask);
        const bool noCase = any.upto(1) == 1;
        const char16_t escape = any.upto(2) == 0 ? u'\\' : u'\0';
        const auto like = compiled(noCase, mask, escape);
        const test::NaiveLike plain(mask, escape, noCase, *english());
        for (int i = 0; i < 12; ++i) {
            const std::u16string text = any.text(mix.ofText, mix.longestText);
            const bool answer = plain.match(text);
            yes += answer;
            ASSERT_EQ(like->match(text), answer)
                << (noCase ? "nocase \"" : "case \"") << to_utf8(mask) << "\" \"" << to_utf8(text)
                << "\" escape " << int{escape};
        }
    }
    EXPECT_GT(yes, kMasks / 10) << "the mix hardly ever matches";
}

INSTANTIATE_TEST_SUITE_P(
    Mixes, LikeMaskBesideThePlainMatcher,
    testing::Values(Mix{"two letters", u"ab%%_", u"ab", 9, 12},
                    Mix{"sets", u"ab%%_[]^-[]", u"abc", 12, 9},
                    Mix{"everything", u"aАbБё%%%__[]^-\\\\", u"aAbБбЁ[]-\\%_", 10, 8},
                    Mix{"other alphabets", u"aσςёµı%_", u"aAσΣςёЁµΜıIi", 4, 30},
                    Mix{"long texts", u"aab_%", u"aaab", 8, 300},
                    Mix{"many parts", u"ab%%%", u"aaab", 40, 60}),
    [](const auto& mix) {
        std::string name = mix.param.what;
        std::erase(name, ' ');
        return name;
    });

// A stretch with sets is looked for by words of 64 positions.
TEST(LikeMask, FindsStretchesOfAnyLength) {
    Random any(3);
    for (const std::size_t length : {1u, 2u, 3u, 4u, 63u, 64u, 65u, 127u, 128u, 129u, 200u}) {
        SCOPED_TRACE(length);
        for (int round = 0; round < 20; ++round) {
            std::u16string stretch;
            std::u16string mask = u"%";
            for (std::size_t i = 0; i < length; ++i) {
                stretch += u"abz"[any.upto(1)];
                mask += (i + static_cast<std::size_t>(round)) % 7 == 0
                            ? u"[" + stretch.substr(i) + u"]"
                            : stretch.substr(i);
            }
            const auto like = compiled(false, mask + u"%", 0);
            const std::u16string before = any.text(u"ab", 150);
            EXPECT_TRUE(like->match(before + stretch + u"zz"));
            std::u16string broken = stretch;
            broken[any.upto(length - 1)] = u'z';
            EXPECT_FALSE(like->match(broken));
            EXPECT_TRUE(like->match(broken + stretch));
        }
    }
}

// ---- Cost.

TEST(LikeMask, TakesLinearTimeOnHostileText) {
    const std::u16string text(1 << 20, u'a');
    std::u16string parts;
    for (int i = 0; i < 2000; ++i) parts += u"%a[ab]a";
    std::u16string stretch;
    for (int i = 0; i < 60; ++i) stretch += u"[ab]";
    const std::u16string masks[] = {
        u"%" + std::u16string(1000, u'a') + u"b" + std::u16string(1000, u'a') + u"%",
        u"%" + stretch + u"b%",
        parts + u"%b%",
        u"%a%a%a%a%a%a%a%b%a",
    };
    for (const std::u16string& mask : masks)
        for (const bool noCase : {false, true}) {
            const auto start = std::chrono::steady_clock::now();
            EXPECT_FALSE(compiled(noCase, mask, 0)->match(text));
            // A matcher that goes back takes minutes for some of these.
            EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
        }
}

TEST(LikeMask, ForgetsWhatItLearnedBeforeThatTakesAllMemory) {
    std::u16string alphabets;
    for (int c = 0x100; c < 0x3000; ++c) alphabets += static_cast<char16_t>(c);
    std::u16string stretch = u"%";
    for (int i = 0; i < 9000; ++i) stretch += u'_';
    const auto mask = compiled(false, stretch + u"[й]%", 0);
    const std::u16string filler(3000, u'.');
    EXPECT_TRUE(mask->match(alphabets + filler + u"й"));
    EXPECT_FALSE(mask->match(alphabets + filler + u"и"));
    EXPECT_TRUE(mask->match(alphabets + u"й"));
}

// ---- The mode of the process.

} // namespace

namespace core {

inline constexpr _GUID CLSID_ModeService = "7f6d3f0e-2f4b-4c4f-8a51-6f0f6d1d9a52"_guid;

class ModeService
    : public ObjectRoot
    , public SCOM_Service<ModeService, &CLSID_ModeService, &IID_IPresentationService>
    , public IPresentationService {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<ModeService, IPresentationService>();
    }
    int getCompatibilityMode() override { return mode; }

    static inline int mode = 0;
};

} // namespace core

ORBCORE_REGISTER(core::ModeService);

namespace {

using LikeMaskInAProcess = test::ProcessTest;

TEST_F(LikeMaskInAProcess, LetsAnEscapeWorkInASetFromTheVersionThatBroughtIt) {
    const struct {
        std::u16string_view mask, text;
        bool before, since;
    } rows[] = {
        {u"[\\]]", u"]", false, true},   {u"[\\]]", u"\\]", true, false},
        {u"[\\^a]", u"\\", true, false}, {u"[a\\-z]", u"m", true, false},
        {u"\\[a]", u"[a]", true, true},
    };
    process().unbindService(CLSID_ModeService);
    EXPECT_EQ(compatibility_mode(), kNewestCompatibilityMode);
    for (const auto& row : rows) EXPECT_EQ(matches(row.mask, row.text, u'\\'), row.since);

    ASSERT_TRUE(process().bindService(CLSID_ModeService, IID_IPresentationService));
    for (const int mode : {80314, 80315}) {
        SCOPED_TRACE(mode);
        ModeService::mode = mode;
        for (const auto& row : rows)
            EXPECT_EQ(matches(row.mask, row.text, u'\\'), mode < 80315 ? row.before : row.since)
                << to_utf8(row.mask) << ' ' << to_utf8(row.text);
    }
}

} // namespace
