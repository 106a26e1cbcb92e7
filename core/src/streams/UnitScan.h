// Searches in runs of units by vector.
#pragma once

#include "text/Lanes.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include <immintrin.h>

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

// Of each of `groups` groups of 64 units, a bit a unit: whether it is the one looked for.

inline void find_units_sse2(const char16_t* at, unsigned groups, char16_t unit,
                            std::uint64_t* bits) noexcept {
    const __m128i wanted = _mm_set1_epi16(static_cast<short>(unit));
    const auto equal = [&](const char16_t* units) {
        return _mm_packs_epi16(_mm_cmpeq_epi16(load_block(units), wanted),
                               _mm_cmpeq_epi16(load_block(units + 8), wanted));
    };
    for (; groups != 0; --groups, at += 64)
        *bits++ = byte_mask(equal(at), equal(at + 16), equal(at + 32), equal(at + 48));
}

// Any CR or LF. Units are narrowed to bytes first, which makes no other unit one of the two: what
// does not fit becomes 0 or 255.
inline void find_line_breaks_sse2(const char16_t* at, unsigned groups,
                                  std::uint64_t* bits) noexcept {
    const __m128i lf = _mm_set1_epi8('\n'), cr = _mm_set1_epi8('\r');
    const auto breaks = [&](const char16_t* units) {
        const __m128i bytes = _mm_packus_epi16(load_block(units), load_block(units + 8));
        return _mm_or_si128(_mm_cmpeq_epi8(bytes, lf), _mm_cmpeq_epi8(bytes, cr));
    };
    for (; groups != 0; --groups, at += 64)
        *bits++ = byte_mask(breaks(at), breaks(at + 16), breaks(at + 32), breaks(at + 48));
}

// The same two. Narrowing here takes turns between the quarters of its two sources; byte_mask_in_order
// puts them right.

[[gnu::target("avx2")]] inline unsigned byte_mask_in_order(__m256i bytes) noexcept {
    const __m256i ordered = _mm256_permute4x64_epi64(bytes, 0b11'01'10'00);
    return static_cast<unsigned>(_mm256_movemask_epi8(ordered));
}

[[gnu::target("avx2")]] inline void find_units_avx2(const char16_t* at, unsigned groups,
                                                    char16_t unit, std::uint64_t* bits) noexcept {
    const __m256i wanted = _mm256_set1_epi16(static_cast<short>(unit));
    const auto* block = reinterpret_cast<const __m256i*>(at);
    for (unsigned half = 0; half < 2 * groups; ++half, block += 2) {
        const __m256i low = _mm256_cmpeq_epi16(_mm256_loadu_si256(block), wanted);
        const __m256i high = _mm256_cmpeq_epi16(_mm256_loadu_si256(block + 1), wanted);
        const std::uint64_t mask = byte_mask_in_order(_mm256_packs_epi16(low, high));
        bits[half / 2] = half % 2 == 0 ? mask : bits[half / 2] | mask << 32;
    }
}

[[gnu::target("avx2")]] inline void find_line_breaks_avx2(const char16_t* at, unsigned groups,
                                                          std::uint64_t* bits) noexcept {
    const __m256i lf = _mm256_set1_epi8('\n'), cr = _mm256_set1_epi8('\r');
    const auto* block = reinterpret_cast<const __m256i*>(at);
    for (unsigned half = 0; half < 2 * groups; ++half, block += 2) {
        const __m256i bytes =
            _mm256_packus_epi16(_mm256_loadu_si256(block), _mm256_loadu_si256(block + 1));
        const std::uint64_t mask = byte_mask_in_order(
            _mm256_or_si256(_mm256_cmpeq_epi8(bytes, lf), _mm256_cmpeq_epi8(bytes, cr)));
        bits[half / 2] = half % 2 == 0 ? mask : bits[half / 2] | mask << 32;
    }
}

// By what the processor has.

inline void find_units(const char16_t* at, unsigned groups, char16_t unit,
                       std::uint64_t* bits) noexcept {
    static const auto find = __builtin_cpu_supports("avx2") ? find_units_avx2 : find_units_sse2;
    find(at, groups, unit, bits);
}

inline void find_line_breaks(const char16_t* at, unsigned groups, std::uint64_t* bits) noexcept {
    static const auto find =
        __builtin_cpu_supports("avx2") ? find_line_breaks_avx2 : find_line_breaks_sse2;
    find(at, groups, bits);
}

} // namespace core
