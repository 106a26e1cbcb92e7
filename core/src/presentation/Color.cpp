#include <core/presentation/Color.h>

#include <algorithm>
#include <cmath>

namespace core {
namespace {

constexpr float kThird = 1.0f / 3.0f;

std::uint8_t to_byte(float channel) noexcept {
    const float scaled = std::floor(255.0f * channel + 0.5f);
    if (!(scaled > 0)) return 0; // takes what is no number, too
    return static_cast<std::uint8_t>(std::min(scaled, 255.0f));
}

float from_byte(unsigned byte) noexcept {
    return static_cast<float>(byte & 0xff) / 255.0f;
}

float to_web_step(float channel) noexcept {
    return from_byte((to_byte(channel) + 25u) / 51u * 51u);
}

struct Range {
    explicit Range(const RGB_Color& c) noexcept
        : min(std::min({c.red, c.green, c.blue})), max(std::max({c.red, c.green, c.blue})) {}

    float min, max;
    float width() const noexcept { return max - min; }
};

} // namespace

// ---- RGB

RGB_Color::RGB_Color(std::uint8_t r, std::uint8_t g, std::uint8_t b) noexcept
    : red(from_byte(r)), green(from_byte(g)), blue(from_byte(b)) {}

RGB_Color::RGB_Color(unsigned word) noexcept
    : red(from_byte(word)), green(from_byte(word >> 8)), blue(from_byte(word >> 16)) {}

RGB_Color::operator unsigned() const noexcept {
    return to_byte(red) | unsigned{to_byte(green)} << 8 | unsigned{to_byte(blue)} << 16;
}

RGB_Color::operator tagRGBTRIPLE() const noexcept {
    return {.rgbtBlue = to_byte(blue), .rgbtGreen = to_byte(green), .rgbtRed = to_byte(red)};
}

void RGB_Color::toWeb() noexcept {
    for (float* const channel : {&red, &green, &blue}) *channel = to_web_step(*channel);
}

// ---- HSV

HSV_Color::HSV_Color(unsigned short degrees, std::uint8_t s, std::uint8_t v) noexcept
    : hue(static_cast<float>(degrees) / 60.0f), saturation(from_byte(s)), value(from_byte(v)) {}

HSV_Color::HSV_Color(const RGB_Color& c) noexcept {
    const Range range(c);
    value = range.max;
    if (range.min == range.max) return;
    const float d = range.width();
    if (c.red == range.min)
        hue = 3 - (c.green - c.blue) / d;
    else if (c.green == range.min)
        hue = 5 - (c.blue - c.red) / d;
    else
        hue = 1 - (c.red - c.green) / d;
    saturation = d / range.max;
}

HSV_Color::operator RGB_Color() const noexcept {
    if (hue == 0) return {value, value, value};
    if (!(hue > 0 && hue < 7)) return {};
    const int i = static_cast<int>(hue);
    const float past = hue - static_cast<float>(i);
    const float f = i % 2 == 0 ? 1 - past : past;
    const float m = value * (1 - saturation);
    const float n = value * (1 - saturation * f);
    switch (i) {
    case 1:
        return {n, value, m};
    case 2:
        return {m, value, n};
    case 3:
        return {m, n, value};
    case 4:
        return {n, m, value};
    case 5:
        return {value, m, n};
    default:
        return {value, n, m}; // 0 and 6
    }
}

// ---- HSL

HSL_Color::HSL_Color(const RGB_Color& c) noexcept {
    const Range range(c);
    const float sum = range.max + range.min;
    lightness = sum / 2;
    if (range.min == range.max) return;
    const float d = range.width();
    if (c.red == range.max)
        hue = 60 * (c.green - c.blue) / d + (c.green < c.blue ? 360.0f : 0.0f);
    else if (c.green == range.max)
        hue = 60 * (c.blue - c.red) / d + 120;
    else
        hue = 60 * (c.red - c.green) / d + 240;
    saturation = lightness <= 0.5f ? d / sum : d / (2 - sum);
}

HSL_Color::operator RGB_Color() const noexcept {
    const float q = lightness < 0.5f ? lightness * (1 + saturation)
                                     : lightness + saturation - saturation * lightness;
    const float p = 2 * lightness - q;
    const float turn = hue / 360;
    return {calcRGBComp(q, p, turn + kThird), calcRGBComp(q, p, turn),
            calcRGBComp(q, p, turn - kThird)};
}

float HSL_Color::calcRGBComp(float q, float p, float t) noexcept {
    if (t < 0)
        t += 1;
    else if (t > 1)
        t -= 1;
    if (t < 0.16666667f) return p + (q - p) * 6 * t;
    if (t < 0.5f) return q;
    if (t < 0.6666667f) return p + (q - p) * 6 * (0.6666667f - t);
    return p;
}

} // namespace core
