// The inner loops of UTF-8: stretches of text by vector. Three forms: by SSE2, which every processor
// has, for ASCII alone; by SSSE3, whose byte shuffle drops the places that carry no character, for
// everything but pairs of surrogates; the same with AVX2 for the ASCII in it. `utf8_blocks()` chooses
// once.
//
// A loop converts whole characters from the front, as far as its form goes, and may stop in front
// of any character: what it leaves is looked at one by one.
#pragma once

#include "ConverterKernel.h"
#include "UtfRuns.h"

#include <array>

#include <immintrin.h>

namespace core {

struct Utf8Blocks {
    void (*widen)(Widening& text) noexcept;
    void (*narrow)(Narrowing& text) noexcept;
};

namespace utf8 {

// ---- ASCII.

inline void widen_sse2(Widening& text) noexcept {
    const std::size_t size = widen_ascii_blocks(text.in, common_size(text), text.out);
    text.in += size;
    text.out += size;
}

// As widen_ascii_blocks().
[[gnu::target("avx2")]] inline std::size_t widen_ascii_avx2(const char* in, std::size_t n,
                                                            char16_t* out) noexcept {
    constexpr std::size_t kBlock = 32;
    const auto widen_block = [=](std::size_t at) __attribute__((target("avx2"))) {
        const __m256i bytes = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(in + at));
        if (_mm256_movemask_epi8(bytes) != 0) return false;
        auto* const to = reinterpret_cast<__m256i*>(out + at);
        _mm256_storeu_si256(to, _mm256_cvtepu8_epi16(_mm256_castsi256_si128(bytes)));
        _mm256_storeu_si256(to + 1, _mm256_cvtepu8_epi16(_mm256_extracti128_si256(bytes, 1)));
        return true;
    };
    std::size_t i = 0;
    if (n >= kLongText && widen_block(0)) i = to_alignment(out);
    while (n - i >= kBlock && widen_block(i)) i += kBlock;
    return i;
}

inline void narrow_sse2(Narrowing& text) noexcept {
    const std::size_t size = narrow_ascii_blocks(text.in, common_size(text), text.out);
    text.in += size;
    text.out += size;
}

// ---- Shuffles that move what is kept to the front; a row for each set of what is kept.

using Shuffle = std::array<std::uint8_t, 16>;
using Shuffles = std::array<Shuffle, 256>;

// `keep(row, byte)`: whether a row keeps a byte of the block.
template <class Keep> constexpr Shuffles make_shuffles(Keep keep) {
    Shuffles rows{};
    for (unsigned row = 0; row < 256; ++row) {
        std::size_t kept = 0;
        for (unsigned byte = 0; byte < 16; ++byte)
            if (keep(row, byte)) rows[row][kept++] = static_cast<std::uint8_t>(byte);
        while (kept < 16) rows[row][kept++] = 0x80; // a zero
    }
    return rows;
}

// Units: bit i keeps unit i.
inline constexpr Shuffles kUnits =
    make_shuffles([](unsigned row, unsigned byte) { return row >> byte / 2 & 1; });
// Characters of one or two bytes in lanes of 16 bits: bit i keeps the second byte of lane i.
inline constexpr Shuffles kOneOrTwo =
    make_shuffles([](unsigned row, unsigned byte) { return byte % 2 == 0 || row >> byte / 2 & 1; });
// Characters of one to three bytes in lanes of 32 bits: bit i keeps the second byte of lane i, bit
// 4 + i the third.
inline constexpr Shuffles kOneToThree = make_shuffles([](unsigned row, unsigned byte) {
    const unsigned lane = byte / 4, place = byte % 4;
    return place == 0 || (place == 1 && row >> lane & 1) || (place == 2 && row >> (4 + lane) & 1);
});

[[gnu::target("ssse3")]] inline __m128i shuffled(__m128i block, const Shuffles& rows,
                                                 unsigned row) noexcept {
    return _mm_shuffle_epi8(block, load_block(rows[row].data()));
}

inline __m128i units_of(int value) noexcept {
    return _mm_set1_epi16(static_cast<short>(value));
}
inline unsigned byte_bits(__m128i bytes) noexcept {
    return static_cast<unsigned>(_mm_movemask_epi8(bytes));
}
// A lane of `yes` where the lane of the mask is all ones, otherwise of `no`.
inline __m128i choose(__m128i mask, __m128i yes, __m128i no) noexcept {
    return _mm_or_si128(_mm_and_si128(mask, yes), _mm_andnot_si128(mask, no));
}

// ---- From UTF-8.

// Each place of the block as if a character began there, from its byte and the two behind it.
inline __m128i units_at(__m128i first, __m128i second, __m128i third, bool threes) noexcept {
    const __m128i low = _mm_and_si128(second, units_of(0x3F));
    const __m128i two = _mm_or_si128(_mm_slli_epi16(_mm_and_si128(first, units_of(0x1F)), 6), low);
    const __m128i units = choose(_mm_cmplt_epi16(first, units_of(0x80)), first, two);
    if (!threes) return units;
    const __m128i three =
        _mm_or_si128(_mm_or_si128(_mm_slli_epi16(first, 12), _mm_slli_epi16(low, 6)),
                     _mm_and_si128(third, units_of(0x3F)));
    return choose(_mm_cmpgt_epi16(first, units_of(0xDF)), three, units);
}

// Whether a byte of the block begins what no character may: C0 and C1, and E0 and ED in front of
// the wrong half of the continuations (RFC 3629, section 4).
inline bool has_bad_lead(__m128i first, __m128i second, bool threes) noexcept {
    const auto all = [](int value) { return _mm_set1_epi8(static_cast<char>(value)); };
    __m128i bad = _mm_cmpeq_epi8(_mm_and_si128(first, all(0xFE)), all(0xC0));
    if (threes) {
        const __m128i upper = _mm_cmpgt_epi8(second, all(0x9F)); // among continuations: from A0 on
        bad = _mm_or_si128(bad, _mm_andnot_si128(upper, _mm_cmpeq_epi8(first, all(0xE0))));
        bad = _mm_or_si128(bad, _mm_and_si128(upper, _mm_cmpeq_epi8(first, all(0xED))));
    }
    return byte_bits(bad) != 0;
}

// Sixteen bytes at a time, wherever characters begin in them. `due` has a bit for each byte at the
// front of the next block that belongs to a character of the last one; it was checked with that.
template <std::size_t (*kWidenAscii)(const char*, std::size_t, char16_t*) noexcept>
[[gnu::target("ssse3,popcnt")]] void widen_ssse3(Widening& text) noexcept {
    constexpr std::ptrdiff_t kBytes = 18, kUnitRoom = 16; // a character ends behind its block
    const auto all = [](int value) { return _mm_set1_epi8(static_cast<char>(value)); };
    const char* in = text.in;
    char16_t* out = text.out;
    unsigned due = 0;
    while (text.inEnd - in >= kBytes && text.outEnd - out >= kUnitRoom) {
        const __m128i first = load_block(in);
        const unsigned high = byte_bits(first);
        if (high == 0) {
            store_widened(out, first);
            in += 16;
            out += 16;
            const std::size_t size =
                kWidenAscii(in, common_size(Widening{in, text.inEnd, out, text.outEnd}), out);
            in += size;
            out += size;
            continue;
        }
        const __m128i second = load_block(in + 1), third = load_block(in + 2);
        const auto continues = [&](__m128i bytes) {
            return byte_bits(_mm_cmplt_epi8(bytes, all(0xC0)));
        };
        const unsigned others = continues(first);
        const unsigned threes = byte_bits(_mm_cmpeq_epi8(_mm_max_epu8(first, all(0xE0)), first));
        const unsigned leads = high & ~others;
        const unsigned expected = due | leads << 1 | threes << 2;
        if (others != (expected & 0xFFFF) || (leads & ~continues(second)) != 0 ||
            (threes & ~continues(third)) != 0 ||
            byte_bits(_mm_cmpeq_epi8(_mm_max_epu8(first, all(0xF0)), first)) != 0 ||
            has_bad_lead(first, second, threes != 0))
            break;
        const __m128i zero = _mm_setzero_si128();
        const auto put = [&](__m128i units, unsigned keep) __attribute__((target("ssse3,popcnt"))) {
            store_block(out, shuffled(units, kUnits, keep));
            out += __builtin_popcount(keep);
        };
        put(units_at(_mm_unpacklo_epi8(first, zero), _mm_unpacklo_epi8(second, zero),
                     _mm_unpacklo_epi8(third, zero), threes != 0),
            ~others & 0xFF);
        put(units_at(_mm_unpackhi_epi8(first, zero), _mm_unpackhi_epi8(second, zero),
                     _mm_unpackhi_epi8(third, zero), threes != 0),
            ~others >> 8 & 0xFF);
        due = expected >> 16;
        in += 16;
    }
    text.in = in + std::countr_one(due);
    text.out = out;
}

// ---- To UTF-8.

// Four units of up to three bytes, each in a lane of 32 bits.
inline __m128i three_bytes_of(__m128i units, __m128i beyondOne, __m128i beyondTwo) noexcept {
    const auto all = [](int value) { return _mm_set1_epi32(value); };
    const __m128i low = _mm_and_si128(units, all(0x3F));
    const __m128i middle = _mm_and_si128(_mm_srli_epi32(units, 6), all(0x3F));
    const __m128i two =
        _mm_or_si128(_mm_or_si128(_mm_srli_epi32(units, 6), _mm_slli_epi32(low, 8)), all(0x80C0));
    const __m128i three =
        _mm_or_si128(_mm_or_si128(_mm_srli_epi32(units, 12), _mm_slli_epi32(middle, 8)),
                     _mm_or_si128(_mm_slli_epi32(low, 16), all(0x8080E0)));
    return choose(beyondTwo, three, choose(beyondOne, two, units));
}

[[gnu::target("ssse3,popcnt")]] inline void narrow_ssse3(Narrowing& text) noexcept {
    constexpr std::ptrdiff_t kByteRoom = 32; // what is stored for eight units, to its end
    const char16_t* in = text.in;
    char* out = text.out;
    while (text.inEnd - in >= 8 && text.outEnd - out >= kByteRoom) {
        const __m128i units = load_block(in);
        const __m128i ascii = ascii_lanes(units);
        const __m128i shorter =
            _mm_cmpeq_epi16(_mm_and_si128(units, units_of(0xF800)), _mm_setzero_si128());
        const auto row_of = [](__m128i lanes) { // a bit for each lane that is not all ones
            return ~byte_bits(_mm_packs_epi16(lanes, lanes)) & 0xFF;
        };
        const unsigned beyondOne = row_of(ascii);
        if (beyondOne == 0) {
            _mm_storel_epi64(reinterpret_cast<__m128i*>(out), _mm_packus_epi16(units, units));
            in += 8;
            out += 8;
            const std::size_t size = narrow_ascii_blocks(
                in, common_size(Narrowing{in, text.inEnd, out, text.outEnd}), out);
            in += size;
            out += size;
            continue;
        }
        const unsigned beyondTwo = row_of(shorter);
        if (beyondTwo == 0) {
            const __m128i low = _mm_slli_epi16(_mm_and_si128(units, units_of(0x3F)), 8);
            const __m128i two =
                _mm_or_si128(_mm_or_si128(_mm_srli_epi16(units, 6), low), units_of(0x80C0));
            store_block(out, shuffled(choose(ascii, units, two), kOneOrTwo, beyondOne));
            in += 8;
            out += 8 + __builtin_popcount(beyondOne);
            continue;
        }
        if (has_surrogates(units)) break;
        const __m128i zero = _mm_setzero_si128(), ones = _mm_cmpeq_epi16(zero, zero);
        const __m128i notAscii = _mm_andnot_si128(ascii, ones);
        const __m128i notShorter = _mm_andnot_si128(shorter, ones);
        const auto put = [&](__m128i bytes, unsigned row) __attribute__((target("ssse3,popcnt"))) {
            store_block(out, shuffled(bytes, kOneToThree, row));
            out += 4 + __builtin_popcount(row);
        };
        put(three_bytes_of(_mm_unpacklo_epi16(units, zero), _mm_unpacklo_epi16(notAscii, notAscii),
                           _mm_unpacklo_epi16(notShorter, notShorter)),
            (beyondOne & 0xF) | (beyondTwo & 0xF) << 4);
        put(three_bytes_of(_mm_unpackhi_epi16(units, zero), _mm_unpackhi_epi16(notAscii, notAscii),
                           _mm_unpackhi_epi16(notShorter, notShorter)),
            beyondOne >> 4 | (beyondTwo & 0xF0));
        in += 8;
    }
    text.in = in;
    text.out = out;
}

} // namespace utf8

inline constexpr Utf8Blocks kUtf8Sse2 = {utf8::widen_sse2, utf8::narrow_sse2};
inline constexpr Utf8Blocks kUtf8Ssse3 = {utf8::widen_ssse3<widen_ascii_blocks>,
                                          utf8::narrow_ssse3};
inline constexpr Utf8Blocks kUtf8Avx2 = {utf8::widen_ssse3<utf8::widen_ascii_avx2>,
                                         utf8::narrow_ssse3};

inline const Utf8Blocks& utf8_blocks() noexcept {
    static const Utf8Blocks& blocks = []() -> const Utf8Blocks& {
        if (!__builtin_cpu_supports("ssse3") || !__builtin_cpu_supports("popcnt")) return kUtf8Sse2;
        return __builtin_cpu_supports("avx2") ? kUtf8Avx2 : kUtf8Ssse3;
    }();
    return blocks;
}

} // namespace core
