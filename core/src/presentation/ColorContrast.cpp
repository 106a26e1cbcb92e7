// The search for a lightness rests on this: with hue and saturation held, all three channels grow
// with the lightness, and so does the luminance. On either side of the background the contrast
// therefore only grows towards black or white.
#include <core/presentation/ColorContrast.h>

#include <core/presentation/Color.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

namespace core {
namespace {

constexpr float kGridStep = 0.3f;

HSL_Color hsl_of(unsigned word) {
    return RGB_Color(word);
}

unsigned with_lightness(HSL_Color color, float lightness) {
    color.lightness = lightness;
    return static_cast<unsigned>(RGB_Color(color));
}

// The linear light of each byte of a channel.
std::array<double, 256> linear_light() {
    std::array<double, 256> light{};
    for (unsigned byte = 0; byte != light.size(); ++byte) {
        const double x = byte / 255.0;
        light[byte] = x <= 0.03928 ? x / 12.92 : std::pow((x + 0.055) / 1.055, 2.4);
    }
    return light;
}

double luminance(unsigned word) {
    static const std::array<double, 256> kLight = linear_light();
    return 0.2126 * kLight[word & 0xff] + 0.7152 * kLight[word >> 8 & 0xff] +
           0.0722 * kLight[word >> 16 & 0xff];
}

double contrast_of(double luminance1, double luminance2) {
    return (std::max(luminance1, luminance2) + 0.05) / (std::min(luminance1, luminance2) + 0.05);
}

} // namespace

unsigned adjust_color_lightness(unsigned c, float amount) noexcept {
    HSV_Color color = RGB_Color(c);
    float& s = color.saturation;
    float& v = color.value;
    const bool nearWhite = v > 0.9f && s < 0.1f;
    if (amount > 0 && nearWhite) amount = -(1 - amount) * 0.3f;
    if (amount > 0) {
        s = s * v / (amount / (1 - amount) + v);
        v += amount * (1 - v);
    } else {
        s = s * v / (v - amount);
        v += amount * v;
    }
    return static_cast<unsigned>(RGB_Color(color));
}

unsigned adjust_color_lightness2(unsigned c, int percent) noexcept {
    const std::int64_t d = std::int64_t{percent} * 255 / 100;
    const std::int64_t step = hsl_of(c).lightness > 0.5f ? -d : d;
    unsigned adjusted = 0;
    for (const unsigned shift : {0u, 8u, 16u}) {
        const std::int64_t moved = std::int64_t{c >> shift & 0xff} + step;
        adjusted |= static_cast<unsigned>(std::clamp<std::int64_t>(moved, 0, 255)) << shift;
    }
    return adjusted;
}

double compute_contrast(unsigned c1, unsigned c2) noexcept {
    return contrast_of(luminance(c1), luminance(c2));
}

unsigned adjust_fore_color(unsigned background, unsigned fore, double contrast) noexcept {
    if (compute_contrast(background, fore) >= contrast) return fore;
    const HSL_Color color = hsl_of(fore);
    const unsigned mirrored = with_lightness(color, 1 - color.lightness);
    if (compute_contrast(background, mirrored) >= contrast) return mirrored;
    unsigned found = 0;
    adjust_color_lightness(background, fore, contrast, found);
    return found;
}

bool adjust_color_lightness(unsigned background, unsigned fore, double contrast,
                            unsigned& result) noexcept {
    constexpr double kNearEnough = 0.01;
    const HSL_Color color = hsl_of(fore);
    const double ground = luminance(background);
    const double dark = contrast_of(ground, luminance(with_lightness(color, 0)));
    const double light = contrast_of(ground, luminance(with_lightness(color, 1)));
    if (!(dark >= contrast) && !(light >= contrast)) {
        result = with_lightness(color, light > dark ? 1 : 0);
        return false;
    }
    const bool both = dark >= contrast && light >= contrast;
    const bool lighter = both ? luminance(fore) > ground : light >= contrast;

    // The color at `beyond` lies on the chosen side and has the contrast; that at `before` has not.
    float beyond = lighter ? 1 : 0;
    float before = 1 - beyond;
    while (std::abs(beyond - before) >= std::numeric_limits<float>::epsilon()) {
        const float mean = (beyond + before) / 2;
        const double shade = luminance(with_lightness(color, mean));
        const double measured = contrast_of(ground, shade);
        const bool onSide = lighter ? shade > ground : shade < ground;
        if (std::abs(measured - contrast) <= kNearEnough) {
            beyond = mean;
            break;
        }
        (onSide && measured >= contrast ? beyond : before) = mean;
    }
    result = with_lightness(color, beyond);
    return true;
}

unsigned adjust_fore_color_grid(unsigned c1, unsigned c2) noexcept {
    const float fixed = hsl_of(c1).lightness;
    const HSL_Color color = hsl_of(c2);
    const float d = fixed - color.lightness;
    if (std::abs(d) >= kGridStep) return c2;
    float moved;
    if (d > 0) {
        moved = color.lightness - (kGridStep - d);
        if (moved < 0) moved = std::min(fixed + kGridStep, 1.0f);
    } else {
        moved = color.lightness + (kGridStep + d);
        if (moved > 1) moved = std::max(fixed - kGridStep, 0.0f);
    }
    return with_lightness(color, moved);
}

} // namespace core
