// Base64 by AVX2: the steps of Base64Ssse3.h on both halves of a vector, which takes what is left.
#pragma once

#include "Base64Ssse3.h"

#include <immintrin.h>

namespace core::base64_avx2 {

// A step takes 24 bytes but reads or writes 28, sixteen from the twelfth on.
inline constexpr std::size_t kEncodeMargin = 28;
inline constexpr std::size_t kDecodeMargin = 40; // characters that need room for 28 bytes

template <class T>
[[gnu::target("avx2")]] inline __m256i load_halves(const T* low, const T* high) noexcept {
    return _mm256_inserti128_si256(_mm256_castsi128_si256(load_block(low)), load_block(high), 1);
}

template <class T>
[[gnu::target("avx2")]] inline void store_halves(T* low, T* high, __m256i block) noexcept {
    store_block(low, _mm256_castsi256_si128(block));
    store_block(high, _mm256_extracti128_si256(block, 1));
}

template <class T> [[gnu::target("avx2")]] inline __m256i load_twice(const T* table) noexcept {
    return _mm256_broadcastsi128_si256(load_block(table));
}

template <class Unit>
[[gnu::target("avx2")]] inline __m256i load_characters(const Unit* text) noexcept {
    if constexpr (sizeof(Unit) == 1)
        return load_halves(text, text + 16);
    else
        return _mm256_packus_epi16(load_halves(text, text + 16), load_halves(text + 8, text + 24));
}

template <class Unit>
[[gnu::target("avx2")]] inline void store_characters(Unit* to, __m256i characters) noexcept {
    if constexpr (sizeof(Unit) == 1) {
        store_halves(to, to + 16, characters);
    } else {
        const __m256i zero = _mm256_setzero_si256();
        store_halves(to, to + 16, _mm256_unpacklo_epi8(characters, zero));
        store_halves(to + 8, to + 24, _mm256_unpackhi_epi8(characters, zero));
    }
}

template <class Unit>
[[gnu::target("avx2")]] std::size_t encode(const std::uint8_t* data, std::size_t n, Unit* to,
                                           const Base64Alphabet& alphabet) noexcept {
    if (n < kEncodeMargin) return base64_ssse3::encode(data, n, to, alphabet);
    const __m256i spread = _mm256_broadcastsi128_si256(
        _mm_setr_epi8(1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10));
    const __m256i toCharacter = load_twice(alphabet.toCharacter.data());
    std::size_t i = 0;
    for (; n - i >= kEncodeMargin; i += 24, to += 32) {
        const __m256i groups = _mm256_shuffle_epi8(load_halves(data + i, data + i + 12), spread);
        const __m256i even = _mm256_and_si256(groups, _mm256_set1_epi32(0x0FC0FC00));
        const __m256i odd = _mm256_and_si256(groups, _mm256_set1_epi32(0x003F03F0));
        const __m256i values =
            _mm256_or_si256(_mm256_mulhi_epu16(even, _mm256_set1_epi32(0x04000040)),
                            _mm256_mullo_epi16(odd, _mm256_set1_epi32(0x01000010)));
        const __m256i capital = _mm256_cmpgt_epi8(_mm256_set1_epi8(26), values);
        const __m256i place = _mm256_or_si256(_mm256_subs_epu8(values, _mm256_set1_epi8(51)),
                                              _mm256_and_si256(capital, _mm256_set1_epi8(13)));
        store_characters(to, _mm256_add_epi8(values, _mm256_shuffle_epi8(toCharacter, place)));
    }
    return i + base64_ssse3::encode(data + i, n - i, to, alphabet);
}

template <class Unit>
[[gnu::target("avx2")]] std::size_t decode(const Unit* text, std::size_t n, std::uint8_t* to,
                                           const Base64Alphabet& alphabet) noexcept {
    if (n < kDecodeMargin) return base64_ssse3::decode(text, n, to, alphabet);
    const __m256i upper = load_twice(alphabet.upper.data());
    const __m256i lower = load_twice(alphabet.lower.data());
    const __m256i toValue = load_twice(alphabet.toValue.data());
    const __m256i last = _mm256_set1_epi8(alphabet.characters[63]);
    const __m256i join = _mm256_broadcastsi128_si256(
        _mm_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1));
    std::size_t i = 0;
    for (; n - i >= kDecodeMargin; i += 32, to += 24) {
        const __m256i block = load_characters(text + i);
        const __m256i high = _mm256_and_si256(_mm256_srli_epi32(block, 4), _mm256_set1_epi8(15));
        const __m256i common =
            _mm256_and_si256(_mm256_shuffle_epi8(upper, high), _mm256_shuffle_epi8(lower, block));
        const auto foreign = static_cast<unsigned>(
            _mm256_movemask_epi8(_mm256_cmpeq_epi8(common, _mm256_setzero_si256())));
        const __m256i isLast =
            _mm256_and_si256(_mm256_cmpeq_epi8(block, last), _mm256_set1_epi8(8));
        const __m256i values =
            _mm256_add_epi8(block, _mm256_shuffle_epi8(toValue, _mm256_or_si256(high, isLast)));
        const __m256i pairs = _mm256_maddubs_epi16(values, _mm256_set1_epi32(0x01400140));
        const __m256i groups = _mm256_madd_epi16(pairs, _mm256_set1_epi32(0x00011000));
        store_halves(to, to + 12, _mm256_shuffle_epi8(groups, join));
        if (foreign != 0) return i + base64_ssse3::characters_before(foreign);
    }
    return i + base64_ssse3::decode(text + i, n - i, to, alphabet);
}

} // namespace core::base64_avx2
