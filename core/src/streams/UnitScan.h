// Searches in runs of units by vector.
#pragma once

#include "text/Lanes.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace core {

// The top bits of 64 bytes.
inline std::uint64_t byte_mask(__m128i a, __m128i b, __m128i c, __m128i d) noexcept {
    const auto bits = [](__m128i bytes) {
        return static_cast<std::uint64_t>(static_cast<unsigned>(_mm_movemask_epi8(bytes)));
    };
    return bits(a) | bits(b) << 16 | bits(c) << 32 | bits(d) << 48;
}

// The place of the first `unit`; the size of the text if there is none.
inline std::size_t find_unit(std::u16string_view text, char16_t unit) noexcept {
    const char16_t* const begin = text.data();
    const std::size_t size = text.size();
    const __m128i wanted = _mm_set1_epi16(static_cast<short>(unit));
    std::size_t i = 0;
    for (; i + 8 <= size; i += 8) {
        const __m128i equal = _mm_cmpeq_epi16(load_block(begin + i), wanted);
        if (const auto bits = static_cast<unsigned>(_mm_movemask_epi8(equal)))
            return i + static_cast<std::size_t>(std::countr_zero(bits)) / 2;
    }
    while (i < size && begin[i] != unit) ++i;
    return i;
}

// One bit for each of the 64 units at a place: whether it is `unit`.
inline std::uint64_t unit_bits(const char16_t* at, char16_t unit) noexcept {
    const __m128i wanted = _mm_set1_epi16(static_cast<short>(unit));
    const auto equal = [&](const char16_t* units) {
        return _mm_packs_epi16(_mm_cmpeq_epi16(load_block(units), wanted),
                               _mm_cmpeq_epi16(load_block(units + 8), wanted));
    };
    return byte_mask(equal(at), equal(at + 16), equal(at + 32), equal(at + 48));
}

// The same for CR and LF. Units are narrowed to bytes first, which makes no other unit one of the
// two: what does not fit becomes 0 or 255.
inline std::uint64_t line_break_bits(const char16_t* at) noexcept {
    const __m128i lf = _mm_set1_epi8('\n');
    const __m128i cr = _mm_set1_epi8('\r');
    const auto breaks = [&](const char16_t* units) {
        const __m128i bytes = _mm_packus_epi16(load_block(units), load_block(units + 8));
        return _mm_or_si128(_mm_cmpeq_epi8(bytes, lf), _mm_cmpeq_epi8(bytes, cr));
    };
    return byte_mask(breaks(at), breaks(at + 16), breaks(at + 32), breaks(at + 48));
}

// Copies units to other memory; few of them without a call.
inline void copy_units(char16_t* to, const char16_t* from, unsigned n) noexcept {
    const auto ends_of = [&](auto part) { // two parts that may overlap
        constexpr unsigned kUnits = sizeof part / sizeof *to;
        auto last = part;
        std::memcpy(&part, from, sizeof part);
        std::memcpy(&last, from + n - kUnits, sizeof part);
        std::memcpy(to, &part, sizeof part);
        std::memcpy(to + n - kUnits, &last, sizeof part);
    };
    if (n > 16)
        std::memcpy(to, from, n * sizeof *to);
    else if (n >= 8)
        ends_of(__m128i());
    else if (n >= 4)
        ends_of(std::uint64_t());
    else if (n >= 2)
        ends_of(std::uint32_t());
    else if (n == 1)
        *to = *from;
}

} // namespace core
