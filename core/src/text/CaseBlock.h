// Case of sixteen bytes at a time: ASCII and the basic Cyrillic letters by vector. What lies
// outside is left as it is and named by lane, for the caller to look up one by one; without_case()
// does that itself.
#pragma once

#include "Lanes.h"

#include <core/text/Characters.h>

namespace core {

enum class Case { Upper, Lower };

template <Case C, class T> T in_case(T c) noexcept {
    return C == Case::Upper ? to_upper(c) : to_lower(c);
}

struct CaseBlock {
    __m128i units;
    unsigned others; // lanes outside the alphabets, unchanged in `units`
};

template <Case C, class T> CaseBlock in_case(__m128i block) noexcept {
    constexpr bool kUp = C == Case::Upper;
    constexpr unsigned kAllLanes = sizeof(T) == 1 ? 0xFFFF : 0x5555;
    // Both alphabets have the small letter 32 behind the capital.
    __m128i known = lanes_in<T>(block, 0, 0x80);
    __m128i changed = lanes_in<T>(block, kUp ? 'a' : 'A', 26);
    if constexpr (sizeof(T) == 2) {
        known = _mm_or_si128(known, lanes_in<T>(block, 0x410, 64));
        changed = _mm_or_si128(changed, lanes_in<T>(block, kUp ? 0x430 : 0x410, 32));
    }
    __m128i units;
    if constexpr (sizeof(T) == 1) {
        const __m128i distance = _mm_and_si128(changed, _mm_set1_epi8(32));
        units = kUp ? _mm_sub_epi8(block, distance) : _mm_add_epi8(block, distance);
    } else {
        const __m128i distance = _mm_and_si128(changed, _mm_set1_epi16(32));
        units = kUp ? _mm_sub_epi16(block, distance) : _mm_add_epi16(block, distance);
    }
    return {units, lane_bits<T>(known) ^ kAllLanes};
}

// What two units of different case have in common. In UTF-16 by way of the capital: letters like
// U+03C2 share their capital, not their small letter.
inline char16_t without_case(char16_t c) noexcept {
    return to_lower(to_upper(c));
}
inline char without_case(char c) noexcept {
    return to_lower(c);
}

// Seldom needed, and out of line, so that the loops with vectors keep theirs in registers.
template <class T> [[gnu::noinline]] __m128i without_case_one_by_one(__m128i block) noexcept {
    T units[kLanes<T>];
    store_block(units, block);
    for (T& unit : units) unit = without_case(unit);
    return load_block(units);
}

template <class T> __m128i without_case(__m128i block) noexcept {
    const CaseBlock small = in_case<Case::Lower, T>(block);
    return small.others == 0 ? small.units : without_case_one_by_one<T>(block);
}

} // namespace core
