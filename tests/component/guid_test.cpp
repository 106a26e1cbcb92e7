#include <core/component/Guid.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

using namespace core::literals;

namespace {

constexpr _GUID kMixed = "00112233-4455-6677-8899-AABBCCDDEEFF"_guid;
constexpr std::string_view kMixedText = "00112233-4455-6677-8899-aabbccddeeff";
constexpr std::string_view
    kMixedBytes("\x00\x11\x22\x33\x44\x55\x66\x77\x88\x99\xaa\xbb\xcc\xdd\xee\xff", 16);

// Both text widths and both forms must agree; the result is the common answer.
bool parses(std::string_view text, _GUID& guid) {
    const std::u16string wide(text.begin(), text.end());
    _GUID results[4];
    std::fill(std::begin(results), std::end(results), kMixed);
    const bool answers[] = {core::from_string(std::string(text).c_str(), results[0]),
                            core::from_string(wide.c_str(), results[1]),
                            core::from_string(stdx::string(text), results[2]),
                            core::from_string(stdx::ustring(wide), results[3])};
    for (int i = 1; i != 4; ++i) {
        EXPECT_EQ(answers[i], answers[0]) << text;
        EXPECT_EQ(results[i], results[0]) << text;
    }
    guid = results[0];
    return answers[0];
}

TEST(GuidText, IsLowerCaseInBothWidths) {
    EXPECT_EQ(std::string_view(core::to_cstring(kMixed)), kMixedText);
    EXPECT_EQ(core::to_string(kMixed), u"00112233-4455-6677-8899-aabbccddeeff");
    char narrow[37];
    char16_t wide[37];
    EXPECT_EQ(core::to_string(kMixed, narrow), narrow);
    EXPECT_STREQ(narrow, kMixedText.data());
    EXPECT_EQ(std::u16string(core::to_string(kMixed, wide)),
              u"00112233-4455-6677-8899-aabbccddeeff");
}

TEST(GuidText, ReadsEitherCaseAndIgnoresWhatFollows) {
    _GUID guid;
    EXPECT_TRUE(parses("00112233-4455-6677-8899-AABBCCDDEEFF", guid));
    EXPECT_EQ(guid, kMixed);
    EXPECT_TRUE(parses("00112233-4455-6677-8899-aabbccddeeff}", guid));
    EXPECT_EQ(guid, kMixed);
}

TEST(GuidText, EveryWrongCharacterAndEveryLengthGivesTheNullGuid) {
    _GUID guid;
    for (std::size_t length = 0; length != 36; ++length) {
        EXPECT_FALSE(parses(kMixedText.substr(0, length), guid)) << length;
        EXPECT_EQ(guid, core::kUUIDNull);
    }
    for (std::size_t at = 0; at != 36; ++at)
        for (const char wrong : {'g', 'G', '/', ':', '@', '`', ' ', '\0', '\xff', '-', '0'}) {
            std::string text(kMixedText);
            const bool isDash = text[at] == '-';
            text[at] = wrong;
            const bool valid = isDash ? wrong == '-' : wrong == '0';
            EXPECT_EQ(parses(text, guid), valid) << at << ' ' << int(wrong);
            if (!valid) {
                EXPECT_EQ(guid, core::kUUIDNull);
            }
        }
    // Wide characters whose low bytes are digits.
    EXPECT_FALSE(core::from_string(u"\u0130\u0130112233-4455-6677-8899-aabbccddeeff", guid));
    EXPECT_FALSE(core::from_string(static_cast<const char*>(nullptr), guid));
    EXPECT_FALSE(core::from_string(static_cast<const char16_t*>(nullptr), guid));
    EXPECT_EQ(guid, core::kUUIDNull);
}

TEST(GuidBytes, AreBigEndian) {
    EXPECT_EQ(std::string_view(core::to_binary(kMixed)), kMixedBytes);
    _GUID guid;
    core::from_binary(kMixedBytes.data(), guid);
    EXPECT_EQ(guid, kMixed);
}

TEST(GuidBytes, AreAppendedAlsoFromWithinTheStringItself) {
    stdx::string text("prefix");
    core::to_binary(kMixed, text);
    EXPECT_EQ(std::string_view(text).substr(6), kMixedBytes);

    // A GUID whose own memory moves while the string grows.
    stdx::string aliased(16, '\0');
    std::memcpy(aliased.data(), &kMixed, 16);
    core::to_binary(*reinterpret_cast<const _GUID*>(aliased.c_str()), aliased);
    EXPECT_EQ(std::string_view(aliased).substr(16), kMixedBytes);
}

TEST(GuidDigits, AreTheHalvesOfTheMemoryLayout) {
    unsigned long long hi = 0, lo = 0;
    core::to_digits(kMixed, hi, lo);
    EXPECT_EQ(hi, 0x6677445500112233u);
    EXPECT_EQ(lo, 0xffeeddccbbaa9988u);
}

TEST(GuidOrder, ComparesFieldsUnsignedAndBytesAsInMemory) {
    const std::vector<_GUID> ascending = {
        core::kUUIDNull,
        "00000001-0000-0000-0000-000000000000"_guid,
        "00000001-0000-0000-0000-000000000001"_guid,
        "00000001-0000-0000-0100-000000000000"_guid,
        "00000001-0000-0000-ff00-000000000000"_guid,
        "00000001-0000-8000-0000-000000000000"_guid,
        "00000001-ffff-0000-0000-000000000000"_guid,
        "80000000-0000-0000-0000-000000000000"_guid,
    };
    std::vector<_GUID> shuffled = ascending;
    std::shuffle(shuffled.begin(), shuffled.end(), std::minstd_rand(1));
    std::sort(shuffled.begin(), shuffled.end());
    EXPECT_EQ(shuffled, ascending);
    EXPECT_EQ(std::hash<_GUID>()("80000000-1111-2222-3333-444444444444"_guid), 0x80000000u);
}

} // namespace
