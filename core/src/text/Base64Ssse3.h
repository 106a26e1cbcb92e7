// Base64 by SSSE3: twelve bytes and sixteen characters at a time, in memory of exactly these sizes.
// The method is that of W. Mula and D. Lemire, "Faster Base64 Encoding and Decoding using AVX2
// Instructions", 2018.
#pragma once

#include "Base64Alphabet.h"
#include "Lanes.h"

#include <bit>
#include <cstring>

#include <tmmintrin.h>

namespace core::base64_ssse3 {

// Twelve bytes, in the lower part of a vector.
inline __m128i load_bytes(const std::uint8_t* data) noexcept {
    int last;
    std::memcpy(&last, data + 8, 4);
    return _mm_unpacklo_epi64(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(data)),
                              _mm_cvtsi32_si128(last));
}

[[gnu::target("ssse3")]] inline void store_bytes(std::uint8_t* to, __m128i bytes) noexcept {
    _mm_storel_epi64(reinterpret_cast<__m128i*>(to), bytes);
    const int last = _mm_cvtsi128_si32(_mm_srli_si128(bytes, 8));
    std::memcpy(to + 8, &last, 4);
}

// Units that are no byte become 0x00 or 0xFF, which no alphabet has.
template <class Unit> __m128i load_characters(const Unit* text) noexcept {
    if constexpr (sizeof(Unit) == 1)
        return load_block(text);
    else
        return _mm_packus_epi16(load_block(text), load_block(text + 8));
}

template <class Unit> void store_characters(Unit* to, __m128i characters) noexcept {
    if constexpr (sizeof(Unit) == 1) {
        store_block(to, characters);
    } else {
        store_block(to, _mm_unpacklo_epi8(characters, _mm_setzero_si128()));
        store_block(to + 8, _mm_unpackhi_epi8(characters, _mm_setzero_si128()));
    }
}

// Those of the groups in front of the first bit that is set.
inline std::size_t characters_before(unsigned foreign) noexcept {
    return static_cast<std::size_t>(std::countr_zero(foreign)) / 4 * 4;
}

template <class Unit>
[[gnu::target("ssse3")]] std::size_t encode(const std::uint8_t* data, std::size_t n, Unit* to,
                                            const Base64Alphabet& alphabet) noexcept {
    const __m128i spread = _mm_setr_epi8(1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10);
    const __m128i toCharacter = load_block(alphabet.toCharacter.data());
    std::size_t i = 0;
    for (; n - i >= 12; i += 12, to += 16) {
        // Each 16-bit half holds two values, which a multiplication moves into bytes of their own.
        const __m128i groups = _mm_shuffle_epi8(load_bytes(data + i), spread);
        const __m128i even = _mm_and_si128(groups, _mm_set1_epi32(0x0FC0FC00));
        const __m128i odd = _mm_and_si128(groups, _mm_set1_epi32(0x003F03F0));
        const __m128i values = _mm_or_si128(_mm_mulhi_epu16(even, _mm_set1_epi32(0x04000040)),
                                            _mm_mullo_epi16(odd, _mm_set1_epi32(0x01000010)));
        const __m128i capital = _mm_cmpgt_epi8(_mm_set1_epi8(26), values);
        const __m128i place = _mm_or_si128(_mm_subs_epu8(values, _mm_set1_epi8(51)),
                                           _mm_and_si128(capital, _mm_set1_epi8(13)));
        store_characters(to, _mm_add_epi8(values, _mm_shuffle_epi8(toCharacter, place)));
    }
    return i;
}

template <class Unit>
[[gnu::target("ssse3")]] std::size_t decode(const Unit* text, std::size_t n, std::uint8_t* to,
                                            const Base64Alphabet& alphabet) noexcept {
    const __m128i upper = load_block(alphabet.upper.data());
    const __m128i lower = load_block(alphabet.lower.data());
    const __m128i toValue = load_block(alphabet.toValue.data());
    const __m128i last = _mm_set1_epi8(alphabet.characters[63]);
    const __m128i join = _mm_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1);
    std::size_t i = 0;
    for (; n - i >= 16; i += 16, to += 12) {
        const __m128i block = load_characters(text + i);
        const __m128i high = _mm_and_si128(_mm_srli_epi32(block, 4), _mm_set1_epi8(15));
        // A code from 0x80 on finds a 0.
        const __m128i common =
            _mm_and_si128(_mm_shuffle_epi8(upper, high), _mm_shuffle_epi8(lower, block));
        const auto foreign =
            static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(common, _mm_setzero_si128())));
        const __m128i isLast = _mm_and_si128(_mm_cmpeq_epi8(block, last), _mm_set1_epi8(8));
        const __m128i values =
            _mm_add_epi8(block, _mm_shuffle_epi8(toValue, _mm_or_si128(high, isLast)));
        // Two values to twelve bits, two of these to the 24 of a group.
        const __m128i pairs = _mm_maddubs_epi16(values, _mm_set1_epi32(0x01400140));
        const __m128i groups = _mm_madd_epi16(pairs, _mm_set1_epi32(0x00011000));
        store_bytes(to, _mm_shuffle_epi8(groups, join));
        if (foreign != 0) return i + characters_before(foreign);
    }
    return i;
}

} // namespace core::base64_ssse3
