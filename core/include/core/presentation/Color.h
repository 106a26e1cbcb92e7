// Colors in three models, and as words.
//
//   core::HSL_Color color = core::RGB_Color(word);
//   color.lightness /= 2;
//   word = unsigned(core::RGB_Color(color));
//
// A color word has red in bits 0 to 7, green in bits 8 to 15 and blue in bits 16 to 23. The top
// byte is not looked at when a word is read, and 0 in a word that is made.
//
// All of it is plain arithmetic on values, safe on any thread. The fields are not checked: what
// lies outside its range is carried on, and becomes the nearest byte in a word.
#pragma once

#include <core/platform/api.h>

#include <cstdint>

namespace core {

// Three bytes in the order of bitmap files.
struct tagRGBTRIPLE {
    std::uint8_t rgbtBlue;
    std::uint8_t rgbtGreen;
    std::uint8_t rgbtRed;
};

// Red, green and blue, each from 0 to 1.
struct ORBCORE_API RGB_Color {
    RGB_Color() = default;
    RGB_Color(float r, float g, float b) noexcept : red(r), green(g), blue(b) {}
    RGB_Color(std::uint8_t r, std::uint8_t g, std::uint8_t b) noexcept;
    explicit RGB_Color(unsigned word) noexcept;

    explicit operator unsigned() const noexcept;
    operator tagRGBTRIPLE() const noexcept;

    // Moves each channel to the nearest of the six steps 0, 51, 102, 153, 204 and 255.
    void toWeb() noexcept;

    float red = 0;
    float green = 0;
    float blue = 0;
};

// Hue from 0 to 6, where 0 is no hue and 6 is red; saturation and value from 0 to 1.
struct ORBCORE_API HSV_Color {
    HSV_Color() = default;
    HSV_Color(float h, float s, float v) noexcept : hue(h), saturation(s), value(v) {}
    // The hue in degrees, saturation and value from 0 to 255.
    HSV_Color(unsigned short degrees, std::uint8_t s, std::uint8_t v) noexcept;
    HSV_Color(const RGB_Color& color) noexcept;

    // Black for a hue below 0, or of 7 and more.
    operator RGB_Color() const noexcept;

    float hue = 0;
    float saturation = 0;
    float value = 0;
};

// Hue in degrees, from 0 to 360; saturation and lightness from 0 to 1.
struct ORBCORE_API HSL_Color {
    HSL_Color() = default;
    HSL_Color(float h, float s, float l) noexcept : hue(h), saturation(s), lightness(l) {}
    HSL_Color(const RGB_Color& color) noexcept;

    operator RGB_Color() const noexcept;

    // One channel: `q` and `p` are its greatest and its least value, `t` is the hue seen from
    // that channel, in turns.
    static float calcRGBComp(float q, float p, float t) noexcept;

    float hue = 0;
    float saturation = 0;
    float lightness = 0;
};

} // namespace core
