// What the kernels share: runs of ASCII by vector, and surrogates.
#pragma once

#include "Lanes.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace core {

constexpr bool is_surrogate(char16_t unit) noexcept {
    return (unit & 0xF800) == 0xD800;
}
constexpr bool is_lead(char16_t unit) noexcept {
    return (unit & 0xFC00) == 0xD800;
}
constexpr bool is_trail(char16_t unit) noexcept {
    return (unit & 0xFC00) == 0xDC00;
}
// Whether the text begins with the two halves of a character.
constexpr bool is_pair(const char16_t* text, const char16_t* end) noexcept {
    return end - text > 1 && is_lead(text[0]) && is_trail(text[1]);
}

// Eight units: whether there is half of a pair among them.
inline bool has_surrogates(__m128i units) noexcept {
    return lane_bits<char16_t>(lanes_in<char16_t>(units, 0xD800, 0x800)) != 0;
}

inline void store_widened(char16_t* to, __m128i bytes) noexcept {
    store_block(to, _mm_unpacklo_epi8(bytes, _mm_setzero_si128()));
    store_block(to + 8, _mm_unpackhi_epi8(bytes, _mm_setzero_si128()));
}

// All ones for each unit of ASCII.
inline __m128i ascii_lanes(__m128i units) noexcept {
    const __m128i beyond = _mm_and_si128(units, _mm_set1_epi16(static_cast<short>(0xFF80)));
    return _mm_cmpeq_epi16(beyond, _mm_setzero_si128());
}

// Both convert ASCII from the front in large blocks, up to the first that holds something else or is
// not full, and return how much. Long texts pay for stores that are not aligned: the first block
// gets as far as the output's alignment, and the next one overwrites the rest of it.
inline constexpr std::size_t kLongText = 512;

template <class To> std::size_t to_alignment(const To* out) noexcept {
    return (0 - reinterpret_cast<std::uintptr_t>(out)) % 16 / sizeof(To);
}

inline std::size_t widen_ascii_blocks(const char* in, std::size_t n, char16_t* out) noexcept {
    std::size_t i = 0;
    if (n >= kLongText && _mm_movemask_epi8(load_block(in)) == 0) {
        store_widened(out, load_block(in));
        i = to_alignment(out);
    }
    for (; n - i >= 32; i += 32) {
        const __m128i a = load_block(in + i), b = load_block(in + i + 16);
        if (_mm_movemask_epi8(_mm_or_si128(a, b)) != 0) break;
        store_widened(out + i, a);
        store_widened(out + i + 16, b);
    }
    return i;
}

inline std::size_t narrow_ascii_blocks(const char16_t* in, std::size_t n, char* out) noexcept {
    const auto is_ascii = [](__m128i units) {
        return _mm_movemask_epi8(ascii_lanes(units)) == 0xFFFF;
    };
    std::size_t i = 0;
    if (n >= kLongText) {
        const __m128i a = load_block(in), b = load_block(in + 8);
        if (!is_ascii(_mm_or_si128(a, b))) return 0;
        store_block(out, _mm_packus_epi16(a, b));
        i = to_alignment(out);
    }
    for (; n - i >= 32; i += 32) {
        const __m128i a = load_block(in + i), b = load_block(in + i + 8);
        const __m128i c = load_block(in + i + 16), d = load_block(in + i + 24);
        if (!is_ascii(_mm_or_si128(_mm_or_si128(a, b), _mm_or_si128(c, d)))) break;
        store_block(out + i, _mm_packus_epi16(a, b));
        store_block(out + i + 16, _mm_packus_epi16(c, d));
    }
    return i;
}

} // namespace core
