#include <core/presentation/ColorBlending.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

using core::blendColors;
using core::BlendingType;

unsigned word(int r, int g, int b) {
    return static_cast<unsigned>(r | g << 8 | b << 16);
}

// What a mode makes of one byte, written out over signed numbers.
int expected(int mode, int a, int b, int alpha) {
    const int product = a * b / 255;
    const int screened = 255 - (255 - a) * (255 - b) / 255;
    const int results[] = {
        255 - a,
        std::min(a + b, 255),
        std::max(a - b, 0),
        std::abs(a - b),
        a * (255 - alpha) / 255 + b * alpha / 255,
        product,
        std::min((a * 256) / (b + 1), 255),
        screened,
        (a * product + (255 - a) * screened) / 255,
        std::min(a, b),
        std::max(a, b),
    };
    return results[mode];
}

TEST(Blending, OfBytesFollowsItsFormula) {
    for (int mode = 0; mode <= 10; ++mode)
        for (int a = 0; a != 256; ++a)
            for (int b = 0; b != 256; ++b) {
                const int alpha = (a * 7 + b * 13) % 256;
                const unsigned blended =
                    blendColors(BlendingType(mode), word(a, b, 255 - a) | 0x7f000000,
                                word(b, a, 255 - b), static_cast<unsigned>(alpha));
                ASSERT_EQ(blended, word(expected(mode, a, b, alpha), expected(mode, b, a, alpha),
                                        expected(mode, 255 - a, 255 - b, alpha)))
                    << "mode " << mode << ", a " << a << ", b " << b;
            }
}

TEST(Blending, OfKnownColors) {
    const unsigned c1 = word(200, 100, 0), c2 = word(50, 200, 255);
    const struct {
        int mode;
        unsigned alpha, blended;
    } rows[] = {
        {0, 0, word(55, 155, 255)},
        {1, 0, word(250, 255, 255)},
        {2, 0, word(150, 0, 0)},
        {3, 0, word(150, 100, 255)},
        {4, 0, c1},
        {4, 255, c2},
        {4, 128, word(124, 149, 128)},
        {4, 0xffffffff, c2},
        {5, 0, word(39, 78, 0)},
        {6, 0, word(255, 127, 0)},
        {7, 0, word(211, 222, 255)},
        {8, 0, word(76, 165, 255)},
        {9, 0, word(50, 100, 0)},
        {10, 0, word(200, 200, 255)},
        {6, 0, word(255, 127, 0)},
    };
    for (const auto& row : rows)
        EXPECT_EQ(blendColors(BlendingType(row.mode), c1, c2, row.alpha), row.blended) << row.mode;
    EXPECT_EQ(blendColors(BlendingType::Divide, word(0, 1, 255), word(0, 0, 0), 0),
              word(0, 255, 255));
    for (const unsigned mode : {15u, 16u, 255u, 0xffffffffu})
        EXPECT_EQ(blendColors(BlendingType(mode), c1, c2, 128), 0u);
}

TEST(Blending, OfHuesTakesThePartsOfTwoColors) {
    const unsigned brick = word(204, 102, 102); // hue 6, saturation 0.5, value 0.8
    const unsigned blue = word(0, 0, 153);      // hue 4, saturation 1, value 0.6
    const unsigned gray = word(51, 51, 51);     // no hue, saturation 0, value 0.2
    const struct {
        BlendingType mode;
        unsigned c1, c2, blended;
    } rows[] = {
        {BlendingType::Hue, brick, blue, word(102, 102, 204)},
        {BlendingType::Saturation, brick, blue, word(204, 0, 0)},
        {BlendingType::Value, brick, blue, word(153, 77, 77)},
        {BlendingType::Color, brick, blue, word(0, 0, 204)},
        {BlendingType::Hue, blue, brick, word(153, 0, 0)},
        {BlendingType::Hue, brick, gray, word(204, 204, 204)},
        {BlendingType::Saturation, gray, brick, gray}, // without a hue it does not show
        {BlendingType::Saturation, brick, gray, word(204, 204, 204)},
        {BlendingType::Value, brick, gray, word(51, 26, 26)},
        {BlendingType::Color, gray, blue, word(0, 0, 51)},
    };
    for (const auto& row : rows)
        EXPECT_EQ(blendColors(row.mode, row.c1, row.c2, 0), row.blended)
            << "mode " << static_cast<unsigned>(row.mode) << std::hex << ' ' << row.c1;

    EXPECT_EQ(core::getDisableColor(brick, blue), word(45, 45, 179));
    EXPECT_EQ(core::getDisableColor(blue, brick), word(179, 45, 45));
    EXPECT_EQ(core::getDisableColor(brick, gray), word(128, 128, 128));
}

} // namespace
