// Mixing two color words (core/presentation/Color.h).
//
//   unsigned half = core::blendColors(core::BlendingType::Mix, paper, ink, 128);
#pragma once

#include <core/platform/api.h>

namespace core {

// What becomes of the first color, `a`, with the second one, `b`. The first eleven work on each
// channel as a byte, with integer division; the last four on the parts of the HSV model.
enum class BlendingType : unsigned {
    Invert = 0,     // 255 - a
    Add = 1,        // a + b, at most 255
    Subtract = 2,   // a - b, at least 0
    Difference = 3, // |a - b|
    Mix = 4,        // from a to b as alpha goes from 0 to 255
    Multiply = 5,   // a * b / 255
    Divide = 6,     // a * 256 / (b + 1), at most 255
    Screen = 7,     // the inverse of the product of the inverses
    SoftLight = 8,  // from Screen to Multiply as a goes from 0 to 255
    Darken = 9,     // the smaller
    Lighten = 10,   // the larger
    Hue = 11,       // the hue of b, the rest of a
    Saturation = 12,
    Value = 13,
    Color = 14, // hue and saturation of b, the value of a
};

// The blended word. `alpha` counts in `Mix` alone and at most as 255. 0 for an unknown mode.
ORBCORE_API unsigned blendColors(BlendingType mode, unsigned c1, unsigned c2,
                                 unsigned alpha) noexcept;

// For elements that are disabled: the hue of `c2`; saturation and value, in HSV, are the means of
// both colors.
ORBCORE_API unsigned getDisableColor(unsigned c1, unsigned c2) noexcept;

} // namespace core
