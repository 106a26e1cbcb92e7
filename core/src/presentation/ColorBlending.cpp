#include <core/presentation/ColorBlending.h>

#include <core/presentation/Color.h>

#include <algorithm>
#include <iterator>

namespace core {
namespace {

// A byte of the first color, one of the second, and the alpha of the call; all from 0 to 255.
using BlendChannel = unsigned (*)(unsigned a, unsigned b, unsigned alpha);

constexpr unsigned multiply(unsigned a, unsigned b) {
    return a * b / 255;
}

constexpr unsigned screen(unsigned a, unsigned b) {
    return 255 - (255 - a) * (255 - b) / 255;
}

// By `BlendingType`, from `Invert` to `Lighten`.
constexpr BlendChannel kChannels[] = {
    [](unsigned a, unsigned, unsigned) { return 255 - a; },
    [](unsigned a, unsigned b, unsigned) { return std::min(a + b, 255u); },
    [](unsigned a, unsigned b, unsigned) { return a - std::min(a, b); },
    [](unsigned a, unsigned b, unsigned) { return std::max(a, b) - std::min(a, b); },
    [](unsigned a, unsigned b, unsigned alpha) {
        return a * (255 - alpha) / 255 + b * alpha / 255;
    },
    [](unsigned a, unsigned b, unsigned) { return multiply(a, b); },
    [](unsigned a, unsigned b, unsigned) { return std::min(a * 256 / (b + 1), 255u); },
    [](unsigned a, unsigned b, unsigned) { return screen(a, b); },
    [](unsigned a, unsigned b, unsigned) {
        return (a * multiply(a, b) + (255 - a) * screen(a, b)) / 255;
    },
    [](unsigned a, unsigned b, unsigned) { return std::min(a, b); },
    [](unsigned a, unsigned b, unsigned) { return std::max(a, b); },
};
static_assert(std::size(kChannels) == static_cast<unsigned>(BlendingType::Hue));

unsigned blend_channels(BlendChannel blend, unsigned c1, unsigned c2, unsigned alpha) {
    unsigned blended = 0;
    for (const unsigned shift : {0u, 8u, 16u})
        blended |= blend(c1 >> shift & 0xff, c2 >> shift & 0xff, alpha) << shift;
    return blended;
}

HSV_Color hsv_of(unsigned word) {
    return RGB_Color(word);
}

unsigned word_of(const HSV_Color& color) {
    return static_cast<unsigned>(RGB_Color(color));
}

} // namespace

unsigned blendColors(BlendingType mode, unsigned c1, unsigned c2, unsigned alpha) noexcept {
    const auto row = static_cast<unsigned>(mode);
    if (row < std::size(kChannels))
        return blend_channels(kChannels[row], c1, c2, std::min(alpha, 255u));
    const HSV_Color a = hsv_of(c1);
    const HSV_Color b = hsv_of(c2);
    switch (mode) {
    case BlendingType::Hue:
        return word_of({b.hue, a.saturation, a.value});
    case BlendingType::Saturation:
        return word_of({a.hue, b.saturation, a.value});
    case BlendingType::Value:
        return word_of({a.hue, a.saturation, b.value});
    case BlendingType::Color:
        return word_of({b.hue, b.saturation, a.value});
    default:
        return 0;
    }
}

unsigned getDisableColor(unsigned c1, unsigned c2) noexcept {
    const HSV_Color a = hsv_of(c1);
    const HSV_Color b = hsv_of(c2);
    return word_of({b.hue, (a.saturation + b.saturation) / 2, (a.value + b.value) / 2});
}

} // namespace core
