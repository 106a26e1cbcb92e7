// Units below 256 as bytes, and back. Short runs of all lengths follow each other in lists, so none of
// them is finished unit by unit: its last part is done where it ends, over what is done already.
#pragma once

#include "text/Lanes.h"

#include <cstdint>
#include <cstring>

namespace core {

namespace detail {

inline constexpr std::size_t kUnit = sizeof(char16_t);
inline constexpr std::size_t kBlock = kLanes<char16_t>;

// The first bytes of a block; the rest of it is 0.
template <std::size_t kSize> __m128i load_part(const void* from) noexcept {
    if constexpr (kSize == sizeof(__m128i)) {
        return _mm_loadu_si128(static_cast<const __m128i*>(from));
    } else {
        std::int64_t part = 0; // in a register: a block set in part would go through memory
        std::memcpy(&part, from, kSize);
        return _mm_cvtsi64_si128(part);
    }
}
template <std::size_t kSize> void store_part(void* to, __m128i block) noexcept {
    std::memcpy(to, &block, kSize);
}

inline bool all_narrow(__m128i units) noexcept {
    const __m128i high = _mm_srli_epi16(units, 8);
    return _mm_movemask_epi8(_mm_cmpeq_epi8(high, _mm_setzero_si128())) == 0xFFFF;
}

// 0 if all units are narrow, `n` if not, without a branch.
inline std::size_t unless_narrow(__m128i units, std::size_t n) noexcept {
    return (std::size_t{all_narrow(units)} - 1) & n;
}

// The copy of copy_narrowest() for at least two blocks, by two at a time.
inline std::size_t copy_blocks(std::uint8_t* to, const char16_t* from, std::size_t n) noexcept {
    constexpr std::size_t kStep = 2 * kBlock;
    const std::size_t last = n - kStep;
    __m128i all = _mm_setzero_si128();
    const auto copy = [&](std::size_t at) {
        const __m128i low = load_block(from + at), high = load_block(from + at + kBlock);
        all = _mm_or_si128(all, _mm_or_si128(low, high));
        store_block(to + at * kUnit, low);
        store_block(to + (at + kBlock) * kUnit, high);
    };
    for (std::size_t at = 0; at < last; at += kStep) copy(at);
    copy(last);

    const std::size_t wide = unless_narrow(all, n);
    to += wide * kUnit;
    const auto narrow = [&](std::size_t at) {
        const __m128i low = load_block(from + at), high = load_block(from + at + kBlock);
        store_block(to + at, _mm_packus_epi16(low, high));
    };
    for (std::size_t at = 0; at < last; at += kStep) narrow(at);
    narrow(last);
    return n + wide;
}

// The same for one to two times `kUnits` units.
template <std::size_t kUnits>
std::size_t copy_ends(std::uint8_t* to, const char16_t* from, std::size_t n) noexcept {
    const std::size_t tail = n - kUnits;
    const __m128i first = load_part<kUnits * kUnit>(from),
                  last = load_part<kUnits * kUnit>(from + tail);
    store_part<kUnits * kUnit>(to, first);
    store_part<kUnits * kUnit>(to + tail * kUnit, last);

    const std::size_t wide = unless_narrow(_mm_or_si128(first, last), n);
    to += wide * kUnit;
    store_part<kUnits>(to, _mm_packus_epi16(first, first));
    store_part<kUnits>(to + tail, _mm_packus_epi16(last, last));
    return n + wide;
}

// widen_units() for one to two times `kSize` bytes.
template <std::size_t kSize>
void widen_ends(char16_t* to, const std::uint8_t* from, std::size_t n) noexcept {
    for (const std::size_t at : {std::size_t{0}, n - kSize}) {
        const __m128i bytes = load_part<kSize>(from + at);
        store_part<kSize * kUnit>(to + at, _mm_unpacklo_epi8(bytes, _mm_setzero_si128()));
    }
}

} // namespace detail

// Whether all units are below 256.
inline bool is_narrow(const char16_t* units, std::size_t n) noexcept {
    std::size_t i = 0;
    for (; i + detail::kBlock <= n; i += detail::kBlock)
        if (!detail::all_narrow(load_block(units + i))) return false;
    while (i != n && units[i] < 256) ++i;
    return i == n;
}

// Writes units below 256 as bytes.
inline void narrow_units(std::uint8_t* to, const char16_t* from, std::size_t n) noexcept {
    std::size_t i = 0;
    for (; i + detail::kBlock <= n; i += detail::kBlock) {
        const __m128i units = load_block(from + i);
        detail::store_part<detail::kBlock>(to + i, _mm_packus_epi16(units, units));
    }
    for (; i != n; ++i) to[i] = static_cast<std::uint8_t>(from[i]);
}

// Copies one unit or more, as bytes if all of them are below 256, and gives the size of the copy.
// There is room for three bytes a unit.
//
// Which of the two it will be a processor cannot foretell, and a branch on it would have it wait for
// the text. So there is none: both are written, the bytes over the units or, if they will not do,
// behind them.
inline std::size_t copy_narrowest(std::uint8_t* to, const char16_t* from, std::size_t n) noexcept {
    if (n >= 2 * detail::kBlock) return detail::copy_blocks(to, from, n);
    if (n >= 8) return detail::copy_ends<8>(to, from, n);
    if (n >= 4) return detail::copy_ends<4>(to, from, n);
    if (n >= 2) return detail::copy_ends<2>(to, from, n);
    return detail::copy_ends<1>(to, from, n);
}

// Writes bytes as units.
inline void widen_units(char16_t* to, const std::uint8_t* from, std::size_t n) noexcept {
    constexpr std::size_t kStep = 2 * detail::kBlock;
    for (; n > kStep; n -= kStep, from += kStep, to += kStep) {
        const __m128i bytes = load_block(from), none = _mm_setzero_si128();
        store_block(to, _mm_unpacklo_epi8(bytes, none));
        store_block(to + detail::kBlock, _mm_unpackhi_epi8(bytes, none));
    }
    if (n >= 8)
        detail::widen_ends<8>(to, from, n);
    else if (n >= 4)
        detail::widen_ends<4>(to, from, n);
    else if (n >= 2)
        detail::widen_ends<2>(to, from, n);
    else if (n == 1)
        *to = *from;
}

} // namespace core
