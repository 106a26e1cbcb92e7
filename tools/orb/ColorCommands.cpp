// `orb color`: what the color arithmetic says of colors that are written as on web pages.

#include "Command.h"
#include "Json.h"
#include "SubCommand.h"

#include <core/presentation/Color.h>
#include <core/presentation/ColorBlending.h>
#include <core/presentation/ColorContrast.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <iomanip>
#include <iostream>

namespace orb {
namespace {

constexpr std::string_view kModes[] = {
    "invert",    "add",    "subtract", "difference", "mix",        "multiply", "divide", "screen",
    "softlight", "darken", "lighten",  "hue",        "saturation", "value",    "color",
};
static_assert(std::size(kModes) == static_cast<unsigned>(core::BlendingType::Color) + 1);

// A color as "#rgb", "#rrggbb", or the same without "#", which a shell may take for a comment.
core::RGB_Color color_of(std::string_view text) {
    std::string_view digits = text;
    if (digits.starts_with('#')) digits.remove_prefix(1);
    unsigned number = 0;
    const char* const end = digits.data() + digits.size();
    const bool isNumber = std::from_chars(digits.data(), end, number, 16).ptr == end;
    if (!isNumber || (digits.size() != 3 && digits.size() != 6))
        throw UsageError("'" + std::string(text) +
                         "' is no color; one is written 'rrggbb' or 'rgb'");
    const unsigned bits = digits.size() == 3 ? 4 : 8;
    const auto channel = [&](unsigned place) {
        const unsigned value = number >> (place * bits) & ((1u << bits) - 1);
        return static_cast<std::uint8_t>(bits == 4 ? value * 17 : value);
    };
    return {channel(2), channel(1), channel(0)};
}

unsigned word_of(std::string_view text) {
    return static_cast<unsigned>(color_of(text));
}

std::string web_name(unsigned word) {
    char name[8];
    std::snprintf(name, sizeof name, "#%02x%02x%02x", word & 0xff, word >> 8 & 0xff,
                  word >> 16 & 0xff);
    return name;
}

double ratio_of(std::string_view text) {
    double ratio = 0;
    const char* const end = text.data() + text.size();
    if (std::from_chars(text.data(), end, ratio).ptr != end || !(ratio >= 0 && ratio <= 1))
        throw UsageError("'" + std::string(text) +
                         "' is neither a ratio from 0 to 1 nor a mode of blending");
    return ratio;
}

void print_color(const Arguments& arguments, unsigned word) {
    if (arguments.json)
        std::cout << "{\"color\":" << Quoted{web_name(word)} << "}\n";
    else
        std::cout << web_name(word) << '\n';
}

int contrast(const Arguments& arguments) {
    const auto [a, b] = values_of<2>(arguments, "two colors");
    const double ratio = core::compute_contrast(word_of(a), word_of(b));
    std::cout << std::fixed << std::setprecision(2);
    if (arguments.json)
        std::cout << "{\"contrast\":" << ratio << "}\n";
    else
        std::cout << ratio << '\n';
    return kSuccess;
}

int blend(const Arguments& arguments) {
    const auto [a, b, how] = values_of<3>(arguments, "two colors and a ratio or a mode");
    const auto mode = std::find(std::begin(kModes), std::end(kModes), how);
    unsigned blended = 0;
    if (mode != std::end(kModes)) {
        blended = core::blendColors(core::BlendingType(mode - std::begin(kModes)), word_of(a),
                                    word_of(b), 128);
    } else {
        const auto alpha = static_cast<unsigned>(std::lround(ratio_of(how) * 255));
        blended = core::blendColors(core::BlendingType::Mix, word_of(a), word_of(b), alpha);
    }
    print_color(arguments, blended);
    return kSuccess;
}

int readable(const Arguments& arguments) {
    constexpr double kOrdinaryText = 4.5; // what the guidelines ask for
    const auto [background, fore] = values_of<2>(arguments, "the color of the background and one");
    print_color(arguments,
                core::adjust_fore_color(word_of(background), word_of(fore), kOrdinaryText));
    return kSuccess;
}

int convert(const Arguments& arguments) {
    const auto [text] = values_of<1>(arguments, "a color");
    const core::RGB_Color color = color_of(text);
    const core::HSV_Color hsv = color;
    const core::HSL_Color hsl = color;
    core::RGB_Color web = color;
    web.toWeb();
    const auto word = static_cast<unsigned>(color);
    std::cout << std::fixed << std::setprecision(4);
    if (arguments.json)
        std::cout << "{\"color\":" << Quoted{web_name(word)} << ",\"word\":" << word << ",\"rgb\":["
                  << color.red << ',' << color.green << ',' << color.blue << "],\"hsv\":["
                  << hsv.hue << ',' << hsv.saturation << ',' << hsv.value << "],\"hsl\":["
                  << hsl.hue << ',' << hsl.saturation << ',' << hsl.lightness
                  << "],\"web\":" << Quoted{web_name(static_cast<unsigned>(web))} << "}\n";
    else
        std::cout << "color  " << web_name(word) << "\nword   " << word << "\nrgb    " << color.red
                  << ' ' << color.green << ' ' << color.blue << "\nhsv    " << hsv.hue << ' '
                  << hsv.saturation << ' ' << hsv.value << "\nhsl    " << hsl.hue << ' '
                  << hsl.saturation << ' ' << hsl.lightness << "\nweb    "
                  << web_name(static_cast<unsigned>(web)) << '\n';
    return kSuccess;
}

constexpr Command kVerbs[] = {
    {"contrast", "A B", "the contrast ratio of two colors, 1 to 21", contrast},
    {"blend", "A B RATIO|MODE", "mix them, or blend by mode", blend},
    {"readable", "BACKGROUND COLOR", "the color, changed until it can be read", readable},
    {"convert", "COLOR", "the color in all models", convert},
};

} // namespace

int color_command(const Arguments& arguments) {
    return run_verb("color", kVerbs, arguments);
}

} // namespace orb
