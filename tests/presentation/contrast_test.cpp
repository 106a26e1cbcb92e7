#include <core/presentation/Color.h>
#include <core/presentation/ColorContrast.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr unsigned kBlack = 0;
constexpr unsigned kWhite = 0xffffff;

unsigned word(unsigned r, unsigned g, unsigned b) {
    return r | g << 8 | b << 16;
}

unsigned gray(unsigned byte) {
    return word(byte, byte, byte);
}

core::HSL_Color hsl(unsigned color) {
    return core::RGB_Color(color);
}

TEST(Contrast, IsThatOfTheGuidelines) {
    const struct {
        unsigned c1, c2;
        double ratio;
    } rows[] = {
        {kBlack, kWhite, 21},
        {kWhite, kWhite, 1},
        {word(255, 0, 0), kWhite, 3.9985},
        {word(0, 0, 255), kWhite, 8.5925},
        {word(0, 255, 0), kWhite, 1.3722},
        {gray(0x76), kWhite, 4.5415}, // the darkest grays that pass and do not pass 4.5
        {gray(0x77), kWhite, 4.4779},
        {gray(10), kBlack, 1.0607}, // the two sides of the linear part
        {gray(11), kBlack, 1.0669},
    };
    for (const auto& row : rows) {
        EXPECT_NEAR(core::compute_contrast(row.c1, row.c2), row.ratio, 1e-3) << std::hex << row.c1;
        EXPECT_EQ(core::compute_contrast(row.c1 | 0xff000000, row.c2),
                  core::compute_contrast(row.c2, row.c1));
    }
}

TEST(Lightness, GoesTowardsWhiteAndBlack) {
    const struct {
        unsigned color;
        float amount;
        unsigned adjusted;
    } rows[] = {
        {word(204, 102, 102), 0, word(204, 102, 102)},
        {word(204, 102, 102), 0.5f, word(230, 179, 179)}, // saturation 0.4 / 1.8, value 0.9
        {word(204, 102, 102), -0.5f, word(102, 71, 71)},  // saturation 0.4 / 1.3, value 0.4
        {word(204, 102, 102), 1, kWhite},
        {word(204, 102, 102), -1, kBlack},
        {kBlack, 0, kBlack},
        {kBlack, 0.5f, gray(128)},
        {kBlack, -0.5f, kBlack},
        {kWhite, 0.5f, gray(217)}, // near white: -0.15 instead
        {kWhite, 1, kWhite},
        {gray(229), 0.2f, gray(234)}, // just not near white
        {word(255, 0, 0), 0.5f, word(255, 128, 128)},
    };
    for (const auto& row : rows)
        EXPECT_EQ(core::adjust_color_lightness(row.color, row.amount), row.adjusted)
            << std::hex << row.color << ' ' << row.amount;
}

TEST(Lightness, MovesByPercentAwayFromItsEnd) {
    const struct {
        unsigned color;
        int percent;
        unsigned adjusted;
    } rows[] = {
        {word(10, 20, 30), 10, word(35, 45, 55)},
        {word(200, 220, 240), 10, word(175, 195, 215)},
        {word(200, 220, 250), -10, word(225, 245, 255)},
        {word(10, 20, 30), -10, word(0, 0, 5)},
        {gray(127), 100, kWhite},
        {gray(128), 100, kBlack},
        {word(255, 0, 0), 1, word(255, 2, 2)}, // lightness 0.5 is not above 0.5
        {gray(1), std::numeric_limits<int>::max(), kWhite},
        {gray(1), std::numeric_limits<int>::min(), kBlack},
        {gray(254), std::numeric_limits<int>::min(), kWhite},
    };
    for (const auto& row : rows)
        EXPECT_EQ(core::adjust_color_lightness2(row.color, row.percent), row.adjusted)
            << std::hex << row.color << ' ' << row.percent;
}

TEST(ForeColor, StaysOrIsMirroredWhereThatIsEnough) {
    EXPECT_EQ(core::adjust_fore_color(kWhite, 0x80000010, 4.5), 0x80000010);
    EXPECT_EQ(core::adjust_fore_color(kBlack, word(0, 0, 51), 4.5), word(204, 204, 255));
    EXPECT_EQ(core::adjust_fore_color(gray(30), gray(5), 4.5), gray(250));
}

// Over many pairs: the color found has the contrast where any lightness has it, keeps its hue, and
// lies on the border: a step back towards the background loses the contrast.
TEST(ForeColor, IsFoundWhereverThereIsOne) {
    int searched = 0;
    for (unsigned background = 0; background <= kWhite; background += 0x2f3a1)
        for (unsigned fore = 0x123; fore <= kWhite; fore += 0x5d4e7)
            for (const double target : {1.5, 3.0, 4.5, 7.0, 15.0}) {
                unsigned found = 0xdeadbeef;
                const bool reached = core::adjust_color_lightness(background, fore, target, found);
                const double dark = core::compute_contrast(background, kBlack);
                const double light = core::compute_contrast(background, kWhite);
                ASSERT_EQ(reached, dark >= target || light >= target);
                if (!reached) {
                    ASSERT_EQ(found, dark > light ? kBlack : kWhite);
                    continue;
                }
                ++searched;
                const double contrast = core::compute_contrast(background, found);
                ASSERT_GE(contrast, target - 0.01)
                    << std::hex << background << ' ' << fore << ' ' << found;
                if (hsl(fore).saturation > 0.2f && hsl(found).saturation > 0.2f &&
                    std::abs(hsl(found).lightness - 0.5f) < 0.3f) {
                    ASSERT_NEAR(std::remainder(hsl(found).hue - hsl(fore).hue, 360), 0, 5);
                }
                const bool lighter = core::compute_contrast(kBlack, found) >
                                     core::compute_contrast(kBlack, background);
                core::HSL_Color nearer = hsl(fore);
                nearer.lightness = hsl(found).lightness + (lighter ? -0.02f : 0.02f);
                if (nearer.lightness < 0 || nearer.lightness > 1) continue;
                const auto step = static_cast<unsigned>(core::RGB_Color(nearer));
                ASSERT_LT(core::compute_contrast(background, step), target + 0.01)
                    << std::hex << background << ' ' << fore << ' ' << found;
            }
    EXPECT_GT(searched, 5000);
}

TEST(ForeColor, SearchesOnItsOwnSideWhereBothWouldDo) {
    unsigned found = 0;
    EXPECT_TRUE(core::adjust_color_lightness(gray(118), gray(130), 3, found));
    EXPECT_GT(found, gray(130));
    EXPECT_TRUE(core::adjust_color_lightness(gray(118), gray(110), 3, found));
    EXPECT_LT(found, gray(110));
    // Between them the neither-nor: a text that nothing makes readable becomes what is next to it.
    EXPECT_EQ(core::adjust_fore_color(gray(118), gray(110), 10), kBlack);
    EXPECT_EQ(core::adjust_fore_color(gray(100), gray(110), 10), kWhite);
    EXPECT_FALSE(core::adjust_color_lightness(gray(100), gray(9), NAN, found));
}

TEST(ForeColor, KeepsItsDistanceInTheGrid) {
    const struct {
        unsigned c1, c2;
        float lightness; // of the result
    } rows[] = {
        {gray(51), gray(128), 128 / 255.0f}, // far enough already
        {gray(204), gray(153), 0.5f},        // a darker one moves down
        {gray(51), gray(26), 0.5f},          // no room below: above instead
        {gray(102), gray(102), 0.7f},        // equal: up
        {gray(153), gray(204), 0.9f},        // a lighter one moves up
        {gray(204), gray(230), 0.5f},        // no room above: below instead
        {kWhite, kWhite, 0.7f},
        {kBlack, kBlack, 0.3f},
    };
    for (const auto& row : rows)
        EXPECT_NEAR(hsl(core::adjust_fore_color_grid(row.c1, row.c2)).lightness, row.lightness,
                    0.003)
            << std::hex << row.c1 << ' ' << row.c2;
    EXPECT_EQ(core::adjust_fore_color_grid(kBlack, 0xff123456 | 0x808080), 0xff123456 | 0x808080);
    EXPECT_EQ(core::adjust_fore_color_grid(gray(102), word(51, 102, 153)), word(140, 179, 217));
}

} // namespace
