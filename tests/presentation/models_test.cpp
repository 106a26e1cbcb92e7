#include <core/presentation/Color.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using core::HSL_Color;
using core::HSV_Color;
using core::RGB_Color;

constexpr std::uint8_t kBytes[] = {0, 1, 25, 26, 50, 51, 76, 77, 127, 128, 153, 254, 255};

unsigned word(unsigned r, unsigned g, unsigned b) {
    return r | g << 8 | b << 16;
}

unsigned word(const RGB_Color& color) {
    return static_cast<unsigned>(color);
}

TEST(ColorWord, HoldsRedInItsLowByte) {
    const RGB_Color color(0xAB332211u);
    EXPECT_FLOAT_EQ(color.red, 17 / 255.0f);
    EXPECT_FLOAT_EQ(color.green, 34 / 255.0f);
    EXPECT_FLOAT_EQ(color.blue, 51 / 255.0f);
    EXPECT_EQ(word(color), 0x332211u);
    EXPECT_EQ(word(RGB_Color(std::uint8_t{17}, std::uint8_t{34}, std::uint8_t{51})), 0x332211u);
    const core::tagRGBTRIPLE triple = color;
    EXPECT_EQ(triple.rgbtRed, 17);
    EXPECT_EQ(triple.rgbtGreen, 34);
    EXPECT_EQ(triple.rgbtBlue, 51);
    static_assert(sizeof triple == 3);
}

TEST(ColorWord, RoundsAndCutsEachChannel) {
    const float inf = std::numeric_limits<float>::infinity();
    const struct {
        float channel;
        unsigned byte;
    } rows[] = {
        {0.0f, 0},      {0.0019f, 0}, {0.002f, 1}, {0.5f, 128},  {0.9979f, 254},
        {0.9981f, 255}, {1.0f, 255},  {1.5f, 255}, {1e30f, 255}, {inf, 255},
        {-0.1f, 0},     {-inf, 0},    {NAN, 0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(word(RGB_Color(row.channel, 0, row.channel)), word(row.byte, 0, row.byte))
            << row.channel;
}

TEST(ColorWord, BecomesTheNearestColorOfTheWeb) {
    const struct {
        unsigned byte, web;
    } rows[] = {{0, 0},     {25, 0},    {26, 51},   {76, 51},   {77, 102},
                {127, 102}, {128, 153}, {229, 204}, {230, 255}, {255, 255}};
    for (const auto& row : rows) {
        RGB_Color color(word(row.byte, 255 - row.byte, row.byte));
        color.toWeb();
        EXPECT_EQ(word(color), word(row.web, 255 - row.web, row.web)) << row.byte;
    }
}

TEST(ColorModels, AgreeOnKnownColors) {
    const struct {
        unsigned word;
        float hue6, saturationV, value, degrees, saturationL, lightness;
    } rows[] = {
        {word(0, 0, 0), 0, 0, 0, 0, 0, 0},
        {word(255, 255, 255), 0, 0, 1, 0, 0, 1},
        {word(51, 51, 51), 0, 0, 0.2f, 0, 0, 0.2f},
        {word(255, 0, 0), 6, 1, 1, 0, 1, 0.5f},
        {word(255, 255, 0), 1, 1, 1, 60, 1, 0.5f},
        {word(0, 255, 0), 2, 1, 1, 120, 1, 0.5f},
        {word(0, 255, 255), 3, 1, 1, 180, 1, 0.5f},
        {word(0, 0, 255), 4, 1, 1, 240, 1, 0.5f},
        {word(255, 0, 255), 5, 1, 1, 300, 1, 0.5f},
        {word(204, 102, 51), 1.0f / 3, 0.75f, 0.8f, 20, 0.6f, 0.5f},
        {word(255, 204, 229), 5 + 26 / 51.0f, 0.2f, 1, 330 + 10 / 17.0f, 1, 0.9f},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << std::hex << row.word);
        const HSV_Color hsv = RGB_Color(row.word);
        EXPECT_NEAR(hsv.hue, row.hue6, 1e-5);
        EXPECT_NEAR(hsv.saturation, row.saturationV, 1e-6);
        EXPECT_NEAR(hsv.value, row.value, 1e-6);
        const HSL_Color hsl = RGB_Color(row.word);
        EXPECT_NEAR(hsl.hue, row.degrees, 1e-3);
        EXPECT_NEAR(hsl.saturation, row.saturationL, 1e-5);
        EXPECT_NEAR(hsl.lightness, row.lightness, 1e-6);
    }
}

TEST(ColorModels, GiveEveryColorBack) {
    for (const unsigned r : kBytes)
        for (unsigned g = 0; g != 256; ++g)
            for (unsigned b = 0; b != 256; ++b) {
                const unsigned color = word(r, g, b);
                ASSERT_EQ(word(HSV_Color(RGB_Color(color))), color) << r << ' ' << g << ' ' << b;
                ASSERT_EQ(word(HSL_Color(RGB_Color(color))), color) << r << ' ' << g << ' ' << b;
            }
}

TEST(ColorModels, TakeHuesFromTheWholeCircle) {
    const struct {
        HSV_Color hsv;
        unsigned word;
    } rows[] = {
        {{static_cast<unsigned short>(0), 255, 200}, word(200, 200, 200)}, // no hue
        {{static_cast<unsigned short>(1), 255, 255}, word(255, 4, 0)},
        {{static_cast<unsigned short>(60), 255, 255}, word(255, 255, 0)},
        {{static_cast<unsigned short>(90), 255, 255}, word(128, 255, 0)},
        {{static_cast<unsigned short>(150), 255, 255}, word(0, 255, 128)},
        {{static_cast<unsigned short>(210), 255, 255}, word(0, 128, 255)},
        {{static_cast<unsigned short>(270), 255, 255}, word(128, 0, 255)},
        {{static_cast<unsigned short>(330), 255, 255}, word(255, 0, 128)},
        {{static_cast<unsigned short>(360), 255, 255}, word(255, 0, 0)},
        {{static_cast<unsigned short>(390), 255, 255}, word(255, 128, 0)},
        {{static_cast<unsigned short>(420), 255, 255}, 0},
        {{static_cast<unsigned short>(65535), 255, 255}, 0},
        {{-0.5f, 1, 1}, 0},
        {{NAN, 1, 1}, 0},
        {{1e30f, 1, 1}, 0},
    };
    for (const auto& row : rows) EXPECT_EQ(word(RGB_Color(row.hsv)), row.word) << row.hsv.hue;
}

TEST(ColorModels, ComputeAChannelOfHSL) {
    const struct {
        float t, channel;
    } rows[] = {{0, 0.2f},         {1 / 12.0f, 0.5f}, {0.17f, 0.8f},      {0.49f, 0.8f},
                {7 / 12.0f, 0.5f}, {0.7f, 0.2f},      {-1 / 12.0f, 0.2f}, {13 / 12.0f, 0.5f}};
    for (const auto& row : rows)
        EXPECT_NEAR(HSL_Color::calcRGBComp(0.8f, 0.2f, row.t), row.channel, 1e-5) << row.t;
}

} // namespace
