// Colors that keep apart: lighter and darker ones, and texts that can be read on their background.
// All take and give color words (core/presentation/Color.h).
//
//   ink = core::adjust_fore_color(paper, ink, 4.5);
#pragma once

#include <core/platform/api.h>

namespace core {

// Lighter for an amount from 0 to 1, which gives white, and darker for one from 0 to -1, black. A
// color near white that should become lighter becomes somewhat darker instead.
ORBCORE_API unsigned adjust_color_lightness(unsigned c, float amount) noexcept;

// Moves each channel by `percent` of 255: a light color down, a dark one up.
ORBCORE_API unsigned adjust_color_lightness2(unsigned c, int percent) noexcept;

// The contrast ratio of the Web Content Accessibility Guidelines, from 1 for equal colors to 21 for
// black and white; the order does not matter.
ORBCORE_API double compute_contrast(unsigned c1, unsigned c2) noexcept;

// `fore` if its contrast to the background is at least `contrast`, or else the color of mirrored
// lightness if that has it, or else what the search below gives.
ORBCORE_API unsigned adjust_fore_color(unsigned background, unsigned fore,
                                       double contrast) noexcept;

// Looks for the lightness at which `fore`, with its hue and saturation, has this contrast to the
// background, to 0.01 where 24-bit colors are that fine. False if neither black nor white would
// have it; `result` is then that one of the two that comes nearer. Where both would, the search
// goes to the side of the background on which `fore` is.
ORBCORE_API bool adjust_color_lightness(unsigned background, unsigned fore, double contrast,
                                        unsigned& result) noexcept;

// `c2`, moved in its lightness where it is nearer than 0.3 to that of `c1`.
ORBCORE_API unsigned adjust_fore_color_grid(unsigned c1, unsigned c2) noexcept;

} // namespace core
