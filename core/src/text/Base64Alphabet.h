// The alphabets of base64, and single groups of three bytes and four characters by table. Characters
// are of type `char` or `char16_t`.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace core {

// Both alphabets are letters, digits and two characters of their own.
struct Base64Alphabet {
    std::array<char, 64> characters;
    std::array<std::int8_t, 128> values; // -1: no character of the alphabet

    // What the vector forms look up. From a value to its character: what to add for 26 to 51
    // (place 0), for each value from 52 on (1 to 12) and for those up to 25 (13).
    alignas(16) std::array<std::int8_t, 16> toCharacter;
    // Whether a character is one of the alphabet: then the entries of its upper and its lower four
    // bits have a bit in common, the bit of the upper four.
    alignas(16) std::array<std::uint8_t, 16> upper;
    alignas(16) std::array<std::uint8_t, 16> lower;
    // From a character to its value: what to add, by the upper four bits; the last character of
    // the alphabet, which is like none of its neighbours, has a place 8 behind.
    alignas(16) std::array<std::int8_t, 16> toValue;

    constexpr Base64Alphabet(char c62, char c63) noexcept
        : characters(), values(), toCharacter(), upper(), lower(), toValue() {
        for (unsigned i = 0; i < 26; ++i) {
            characters[i] = static_cast<char>('A' + i);
            characters[26 + i] = static_cast<char>('a' + i);
        }
        for (unsigned i = 0; i < 10; ++i) characters[52 + i] = static_cast<char>('0' + i);
        characters[62] = c62;
        characters[63] = c63;
        values.fill(-1);
        for (unsigned i = 0; i < 64; ++i) add(i, static_cast<unsigned>(characters[i]));
    }

    int value(char16_t c) const noexcept { return c < values.size() ? values[c] : -1; }

private:
    constexpr void add(unsigned value, unsigned c) noexcept {
        const auto distance = static_cast<std::int8_t>(static_cast<int>(c - value));
        const auto bit = static_cast<std::uint8_t>(1u << (c >> 4));
        values[c] = static_cast<std::int8_t>(value);
        toCharacter[value < 26 ? 13 : value < 52 ? 0 : value - 51] = distance;
        upper[c >> 4] = bit;
        lower[c & 15] |= bit;
        toValue[(c >> 4) + (value == 63 ? 8 : 0)] = static_cast<std::int8_t>(-distance);
    }
};

inline constexpr Base64Alphabet kBase64Alphabets[2] = {{'+', '/'}, {'-', '_'}};

// --- by table ---

// Characters of one group of three bytes.
template <class Unit>
void encode_group(const std::uint8_t* data, Unit* to, const Base64Alphabet& alphabet) noexcept {
    const unsigned group = unsigned{data[0]} << 16 | unsigned{data[1]} << 8 | data[2];
    for (unsigned i = 0; i < 4; ++i)
        to[i] = static_cast<Unit>(alphabet.characters[group >> (18 - 6 * i) & 63]);
}

// Bytes of one group of four characters; false if one is none of the alphabet.
template <class Unit>
bool decode_group(const Unit* text, std::uint8_t* to, const Base64Alphabet& alphabet) noexcept {
    const auto code = [text](int i) -> unsigned { return std::make_unsigned_t<Unit>(text[i]); };
    if ((code(0) | code(1) | code(2) | code(3)) >= alphabet.values.size()) return false;
    const auto value = [&](int i) -> int { return alphabet.values[code(i)]; };
    const int group = value(0) << 18 | value(1) << 12 | value(2) << 6 | value(3);
    if (group < 0) return false;
    to[0] = static_cast<std::uint8_t>(group >> 16);
    to[1] = static_cast<std::uint8_t>(group >> 8);
    to[2] = static_cast<std::uint8_t>(group);
    return true;
}

} // namespace core
