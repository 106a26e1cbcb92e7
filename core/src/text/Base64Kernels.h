// The inner loops of base64: whole groups between bytes and characters. Three forms with the same
// results: by table, for what is left over; by SSE2, which every processor has; by SSSE3, whose
// byte shuffle spares a third of the work. `base64_kernel()` chooses once.
#pragma once

#include "Lanes.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include <emmintrin.h>
#include <tmmintrin.h>

namespace core {

// Both alphabets are letters, digits and two characters of their own.
struct Base64Alphabet {
    std::array<char, 64> characters;
    std::array<std::int8_t, 128> values; // -1: no character of the alphabet

    constexpr Base64Alphabet(char c62, char c63) noexcept : characters(), values() {
        for (int i = 0; i < 26; ++i) {
            characters[static_cast<std::size_t>(i)] = static_cast<char>('A' + i);
            characters[static_cast<std::size_t>(26 + i)] = static_cast<char>('a' + i);
        }
        for (int i = 0; i < 10; ++i)
            characters[static_cast<std::size_t>(52 + i)] = static_cast<char>('0' + i);
        characters[62] = c62;
        characters[63] = c63;
        values.fill(-1);
        for (std::size_t i = 0; i < 64; ++i)
            values[static_cast<std::size_t>(characters[i])] = static_cast<std::int8_t>(i);
    }

    int value(char16_t c) const noexcept { return c < values.size() ? values[c] : -1; }
};

inline constexpr Base64Alphabet kBase64Alphabets[2] = {{'+', '/'}, {'-', '_'}};

// --- by table ---

// Characters of one group of three bytes.
inline void encode_group(const std::uint8_t* data, char* to, const Base64Alphabet& alphabet) {
    const unsigned group = unsigned{data[0]} << 16 | unsigned{data[1]} << 8 | data[2];
    for (unsigned i = 0; i < 4; ++i) to[i] = alphabet.characters[group >> (18 - 6 * i) & 63];
}

// Bytes of one group of four characters; false if one is none of the alphabet.
inline bool decode_group(const char16_t* text, std::uint8_t* to, const Base64Alphabet& alphabet) {
    int group = 0;
    for (int i = 0; i < 4; ++i) group = group * 64 | alphabet.value(text[i]);
    if (group < 0) return false;
    to[0] = static_cast<std::uint8_t>(group >> 16);
    to[1] = static_cast<std::uint8_t>(group >> 8);
    to[2] = static_cast<std::uint8_t>(group);
    return true;
}

namespace base64 {

// The two characters in which alphabets differ, as a copy: what a loop writes to memory cannot
// change it, so the compiler keeps it in registers.
struct OwnCharacters {
    int c62, c63;

    explicit OwnCharacters(const Base64Alphabet& alphabet) noexcept
        : c62(alphabet.characters[62]), c63(alphabet.characters[63]) {}
};

// --- by vector: what both instruction sets share ---

// Four groups, each spread over 32 bits as bytes 1, 0, 2, 1, to the characters: each 16-bit half
// holds two values, which a multiplication moves into bytes of their own.
inline __m128i to_characters(__m128i spread, OwnCharacters own) noexcept {
    const __m128i even = _mm_and_si128(spread, _mm_set1_epi32(0x0FC0FC00));
    const __m128i odd = _mm_and_si128(spread, _mm_set1_epi32(0x003F03F0));
    const __m128i values = _mm_or_si128(_mm_mulhi_epu16(even, _mm_set1_epi32(0x04000040)),
                                        _mm_mullo_epi16(odd, _mm_set1_epi32(0x01000010)));
    // The distance from a value to its character, range upon range.
    const auto step = [](__m128i lanes, int by) {
        return _mm_and_si128(lanes, _mm_set1_epi8(static_cast<char>(by)));
    };
    const auto above = [&](int v) {
        return _mm_cmpgt_epi8(values, _mm_set1_epi8(static_cast<char>(v)));
    };
    constexpr int kCapital = 'A', kSmall = 'a' - 26, kDigit = '0' - 52;
    const int k62 = own.c62 - 62, k63 = own.c63 - 63;
    __m128i distance = _mm_set1_epi8(kCapital);
    distance = _mm_add_epi8(distance, step(above(25), kSmall - kCapital));
    distance = _mm_add_epi8(distance, step(above(51), kDigit - kSmall));
    distance = _mm_add_epi8(distance, step(above(61), k62 - kDigit));
    distance = _mm_add_epi8(distance, step(above(62), k63 - k62));
    return _mm_add_epi8(values, distance);
}

// Sixteen characters to their values; false if one is none of the alphabet.
inline bool to_values(const char16_t* text, OwnCharacters own, __m128i& values) noexcept {
    // Units that are no byte become 0x00 or 0xFF, which no alphabet has.
    const __m128i block = _mm_packus_epi16(load_block(text), load_block(text + 8));
    __m128i known = _mm_setzero_si128(), distance = known;
    const auto range = [&](int first, int n, int value) {
        const __m128i lanes = lanes_in<char>(block, first, n);
        known = _mm_or_si128(known, lanes);
        const __m128i by = _mm_set1_epi8(static_cast<char>(value - first));
        distance = _mm_or_si128(distance, _mm_and_si128(lanes, by));
    };
    range('A', 26, 0);
    range('a', 26, 26);
    range('0', 10, 52);
    range(own.c62, 1, 62);
    range(own.c63, 1, 63);
    values = _mm_add_epi8(block, distance);
    return lane_bits<char>(known) == 0xFFFF;
}

// Four values each to the 24 bits of their group, most significant first.
inline __m128i to_groups(__m128i values) noexcept {
    const __m128i first = _mm_slli_epi16(_mm_and_si128(values, _mm_set1_epi16(0xFF)), 6);
    const __m128i pairs = _mm_or_si128(first, _mm_srli_epi16(values, 8));
    return _mm_madd_epi16(pairs, _mm_set1_epi32(0x00011000));
}

// The loops take whole groups and return how many bytes or characters they have taken. A vector
// reads 16 bytes for 12 and writes 16 for 12: the margins keep both inside the caller's memory,
// which has room for three bytes to every four characters still to come.
inline constexpr std::size_t kEncodeMargin = 16, kDecodeMargin = 24;

inline std::size_t encode_sse2(const std::uint8_t* data, std::size_t n, char* to,
                               const Base64Alphabet& alphabet) noexcept {
    const OwnCharacters own(alphabet);
    std::size_t i = 0;
    for (; n - i >= kEncodeMargin; i += 12, to += 16) {
        std::int32_t groups[4];
        for (std::size_t g = 0; g < 4; ++g) std::memcpy(&groups[g], data + i + 3 * g, 4);
        const __m128i bytes = load_block(groups);
        const auto only = [&](int mask) { return _mm_and_si128(bytes, _mm_set1_epi32(mask)); };
        const __m128i low =
            _mm_or_si128(_mm_slli_epi32(only(0xFF), 8), _mm_srli_epi32(only(0xFF00), 8));
        const __m128i high = _mm_or_si128(only(0xFF0000), _mm_slli_epi32(only(0xFF00), 16));
        store_block(to, to_characters(_mm_or_si128(low, high), own));
    }
    return i;
}

inline std::size_t decode_sse2(const char16_t* text, std::size_t n, std::uint8_t* to,
                               const Base64Alphabet& alphabet) noexcept {
    const OwnCharacters own(alphabet);
    std::size_t i = 0;
    for (__m128i values; n - i >= kDecodeMargin && to_values(text + i, own, values);
         i += 16, to += 12) {
        std::uint32_t groups[4];
        store_block(groups, to_groups(values));
        for (std::size_t g = 0; g < 4; ++g) {
            const std::uint32_t bytes = __builtin_bswap32(groups[g] << 8);
            std::memcpy(to + 3 * g, &bytes, 4);
        }
    }
    return i;
}

[[gnu::target("ssse3")]] inline std::size_t encode_ssse3(const std::uint8_t* data, std::size_t n,
                                                         char* to,
                                                         const Base64Alphabet& alphabet) noexcept {
    const __m128i spread = _mm_setr_epi8(1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10);
    const OwnCharacters own(alphabet);
    std::size_t i = 0;
    for (; n - i >= kEncodeMargin; i += 12, to += 16)
        store_block(to, to_characters(_mm_shuffle_epi8(load_block(data + i), spread), own));
    return i;
}

[[gnu::target("ssse3")]] inline std::size_t decode_ssse3(const char16_t* text, std::size_t n,
                                                         std::uint8_t* to,
                                                         const Base64Alphabet& alphabet) noexcept {
    const __m128i join = _mm_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1);
    const OwnCharacters own(alphabet);
    std::size_t i = 0;
    for (__m128i values; n - i >= kDecodeMargin && to_values(text + i, own, values);
         i += 16, to += 12)
        store_block(to, _mm_shuffle_epi8(to_groups(values), join));
    return i;
}

} // namespace base64

struct Base64Kernel {
    std::size_t (*encode)(const std::uint8_t* data, std::size_t n, char* to,
                          const Base64Alphabet&) noexcept;
    // Stops in front of the first sixteen characters that are not all of the alphabet.
    std::size_t (*decode)(const char16_t* text, std::size_t n, std::uint8_t* to,
                          const Base64Alphabet&) noexcept;
};

inline constexpr Base64Kernel kBase64Sse2 = {base64::encode_sse2, base64::decode_sse2};
inline constexpr Base64Kernel kBase64Ssse3 = {base64::encode_ssse3, base64::decode_ssse3};

inline const Base64Kernel& base64_kernel() noexcept {
    static const bool hasSsse3 = __builtin_cpu_supports("ssse3");
    return hasSsse3 ? kBase64Ssse3 : kBase64Sse2;
}

} // namespace core
