// Sixteen bytes of text in a vector register, as lanes of one unit each.
#pragma once

#include <bit>
#include <cstddef>

#include <emmintrin.h>

namespace core {

template <class T> constexpr std::ptrdiff_t kLanes = 16 / sizeof(T);

template <class T> __m128i load_block(const T* at) noexcept {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
}

template <class T> void store_block(T* at, __m128i block) noexcept {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(at), block);
}

// The lanes that hold one of the `n` codes from `first` on, as all ones.
template <class T> __m128i lanes_in(__m128i block, int first, int n) noexcept {
    if constexpr (sizeof(T) == 1) {
        const __m128i offset = _mm_sub_epi8(block, _mm_set1_epi8(static_cast<char>(first)));
        const __m128i beyond = _mm_subs_epu8(offset, _mm_set1_epi8(static_cast<char>(n - 1)));
        return _mm_cmpeq_epi8(beyond, _mm_setzero_si128());
    } else {
        const __m128i offset = _mm_sub_epi16(block, _mm_set1_epi16(static_cast<short>(first)));
        const __m128i beyond = _mm_subs_epu16(offset, _mm_set1_epi16(static_cast<short>(n - 1)));
        return _mm_cmpeq_epi16(beyond, _mm_setzero_si128());
    }
}

// One bit a lane, the bit of its first byte.
template <class T> unsigned lane_bits(__m128i lanes) noexcept {
    return static_cast<unsigned>(_mm_movemask_epi8(lanes)) & (sizeof(T) == 1 ? 0xFFFF : 0x5555);
}

// Takes the first lane out of `bits`, which is not 0.
template <class T> std::size_t take_lane(unsigned& bits) noexcept {
    const auto lane = static_cast<std::size_t>(std::countr_zero(bits)) / sizeof(T);
    bits &= bits - 1;
    return lane;
}

} // namespace core
