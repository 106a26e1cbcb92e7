// Conversions of our own, for the encodings that most text is in: UTF-8, UTF-16 of a named byte
// order, and the encodings of one byte a character. A kernel has no state and takes only what is
// beyond doubt; its callers decide on the rest, or ask ICU.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace core {

// What is still to be converted, and the room for it. A kernel moves `in` and `out`.
template <class From, class To> struct Conversion {
    const From* in;
    const From* inEnd;
    To* out;
    To* outEnd;
};

// Bytes or units of one character, at most. A kernel that stops with less room may lack it.
inline constexpr std::ptrdiff_t kLongestCharacter = 4;

template <class From, class To> bool is_full(const Conversion<From, To>& text) noexcept {
    return text.outEnd - text.out < kLongestCharacter;
}

// Characters of one byte and one unit that are there and have room, at most.
template <class From, class To> std::size_t common_size(const Conversion<From, To>& text) noexcept {
    return static_cast<std::size_t>(
        std::min<std::ptrdiff_t>(text.inEnd - text.in, text.outEnd - text.out));
}

using Widening = Conversion<char, char16_t>;
using Narrowing = Conversion<char16_t, char>;

class ConverterKernel {
public:
    // Converts whole characters. Stops at the end of the input, and in front of a character that is
    // bad, cut off by the end, or has no room.
    virtual void widen(Widening& text) const noexcept = 0;
    // The same; it stops in front of surrogates that the encoding has no form for, and writes
    // `substitute()` for other characters that the encoding lacks.
    virtual void narrow(Narrowing& text) const noexcept = 0;

    // What stands for a character that the encoding lacks.
    virtual std::string_view substitute() const noexcept = 0;

protected:
    ~ConverterKernel() = default; // not by a pointer to the base
};

const ConverterKernel& utf8_kernel() noexcept;
const ConverterKernel& utf16_little_kernel() noexcept;
const ConverterKernel& utf16_big_kernel() noexcept;

// An encoding of one byte a character, by table.
class SingleByteKernel final : public ConverterKernel {
public:
    static constexpr char16_t kNoCharacter = 0xFFFF; // a byte that is no text
    static constexpr char kSubstitute = '?';

    SingleByteKernel(); // with no characters
    void set_character(std::uint8_t byte, char16_t unit) { characters_[byte] = unit; }
    void set_byte(char16_t unit, char byte) { bytes_[unit] = byte; }
    // To be called when the tables are full.
    void finish();

    void widen(Widening& text) const noexcept override;
    void narrow(Narrowing& text) const noexcept override;
    std::string_view substitute() const noexcept override { return {&kSubstitute, 1}; }

private:
    // Neighbours among the bytes from 0x80 on that are neighbours in Unicode too, such as letters
    // in the order of their alphabet.
    struct Stretch {
        int first = 0x80;
        int size = 0;
        int distance = 0; // from the byte to the unit
    };
    Stretch longest_stretch() const noexcept;
    std::size_t widen_blocks(const char* in, std::size_t n, char16_t* out) const noexcept;

    Stretch stretch_;
    bool holdsAscii_ = false; // the first 128 codes are those of ASCII, both ways
    std::array<char16_t, 256> characters_;
    std::array<char, 0x10000> bytes_;
};

} // namespace core
