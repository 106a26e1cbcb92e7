#include <core/text/Hex.h>

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

using namespace core;

TEST(Hex, GoesThereAndBack) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) {
        all.push_back(static_cast<char>(byte));
        stdx::ustring digits;
        bin_hex(static_cast<std::uint8_t>(byte), digits);
        char expected[3];
        std::snprintf(expected, sizeof expected, "%02x", static_cast<unsigned>(byte));
        EXPECT_EQ(digits, stdx::ustring(expected, expected + 2));
        EXPECT_EQ(hex_bin(digits.c_str()), byte);
    }
    stdx::ustring text(u"0x");
    bin_hex(all, text);
    EXPECT_EQ(text, u"0x" + bin_hex(all));
    stdx::string back;
    ASSERT_TRUE(hex_bin(text.c_str() + 2, text.size() - 2, back));
    EXPECT_EQ(back, all);
}

TEST(Hex, RefusesWhatIsNoDigit) {
    EXPECT_EQ(hex_bin(u"fF"), 255);
    for (const char16_t* digits : {u"", u"0", u"0g", u"g0", u"/0", u":0", u"@0", u"`0", u"\u01300",
                                   u"\uFF210", u"0\u0661"}) {
        EXPECT_EQ(hex_bin(digits), -1);
        EXPECT_EQ(hex_bin_check(digits), -1);
    }
    stdx::string data("untouched");
    for (const std::u16string_view text : {u"0", u"000", u"0x", u"00g0"})
        EXPECT_FALSE(hex_bin(text, data));
    EXPECT_EQ(data, "untouched");
    EXPECT_TRUE(hex_bin(u"", data));
    EXPECT_EQ(data, "");
}

// The sum as it is told: a byte at a time.
std::uint32_t plain_crc(std::string_view data, std::uint32_t crc, bool finish) {
    std::string bytes(data);
    if (finish) bytes.append(4, '\0');
    for (const char byte : bytes) {
        std::uint32_t entry = crc >> 24;
        for (int bit = 0; bit < 8; ++bit) entry = entry & 1 ? entry >> 1 ^ 0xEDB88320 : entry >> 1;
        crc = ((crc << 8) | static_cast<unsigned char>(byte)) ^ entry;
    }
    return crc;
}

TEST(Checksum, IsTheToldOneAtAnyLengthAndInParts) {
    EXPECT_EQ(get_crc_32("", 0, 7, false), 7u);
    EXPECT_EQ(get_crc_32("\x01", 1, 0, true), 0x77073096u) << "the table's entry 1";
    std::mt19937 random(8);
    std::string data;
    for (int n = 0; n < 100; ++n) {
        const auto seed = static_cast<std::uint32_t>(random());
        for (const bool finish : {false, true})
            ASSERT_EQ(get_crc_32(data.data(), n, seed, finish), plain_crc(data, seed, finish));
        const int half = n / 2;
        ASSERT_EQ(get_crc_32(data.data() + half, n - half,
                             get_crc_32(data.data(), half, seed, false), true),
                  plain_crc(data, seed, true));
        data.push_back(static_cast<char>(random()));
    }
}

} // namespace
