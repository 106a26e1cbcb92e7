// Limbs as decimal digits, in units of either width.
#pragma once

#include "LimbBuffer.h"

#include <array>
#include <bit>
#include <cstring>

#include <emmintrin.h>

namespace core {

// 10^0 to 10^9.
inline constexpr Limb kPowersOfTen[] = {
    1, 10, 100, 1'000, 10'000, 100'000, 1'000'000, 10'000'000, 100'000'000, 1'000'000'000,
};

// The digits of a limb without leading zeros; 1 for zero.
inline int count_digits(Limb limb) noexcept {
    const int guess = static_cast<int>(std::bit_width(limb | 1)) * 1233 >> 12; // times log10(2)
    return guess + (limb >= kPowersOfTen[guess]) + (limb == 0 && guess == 0);
}

// The zeros at the end of a limb, which is not zero.
inline int count_trailing_zeros(Limb limb) noexcept {
    int count = 0;
    for (int step = 4; step != 0; step /= 2) {
        if (limb % kPowersOfTen[step] != 0) continue;
        limb /= kPowersOfTen[step];
        count += step;
    }
    return count + (limb % 10 == 0);
}

// "00" to "99".
template <class T>
inline constexpr std::array<T, 200> kDigitPairs = [] {
    std::array<T, 200> table{};
    for (unsigned i = 0; i != 100; ++i) {
        table[2 * i] = static_cast<T>('0' + i / 10);
        table[2 * i + 1] = static_cast<T>('0' + i % 10);
    }
    return table;
}();

template <class T> void put_pair(T* out, Limb value) noexcept {
    std::memcpy(out, &kDigitPairs<T>[2 * value], 2 * sizeof(T));
}

// The nine digits of a limb; returns their end.
template <class T> T* put_limb(T* out, Limb limb) noexcept {
    const Limb low = limb % 100'000'000;
    *out = static_cast<T>('0' + limb / 100'000'000);
    const Limb a = low / 10'000, b = low % 10'000;
    put_pair(out + 1, a / 100);
    put_pair(out + 3, a % 100);
    put_pair(out + 5, b / 100);
    put_pair(out + 7, b % 100);
    return out + kLimbDigits;
}

// The lowest `count` digits; returns their end.
template <class T> T* put_digits(T* out, Limb value, int count) noexcept {
    T* const end = out + count;
    T* at = end;
    for (; at - out >= 2; value /= 100) put_pair(at -= 2, value % 100);
    if (at != out) *out = static_cast<T>('0' + value % 10);
    return end;
}

// Eight digits as bytes, the first one lowest.
inline std::uint64_t load_eight_digits(const char* digits) noexcept {
    std::uint64_t bytes;
    std::memcpy(&bytes, digits, sizeof bytes);
    return bytes;
}
inline std::uint64_t load_eight_digits(const char16_t* digits) noexcept {
    const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(digits));
    return static_cast<std::uint64_t>(_mm_cvtsi128_si64(_mm_packus_epi16(units, units)));
}

// Of eight units, how many in front are digits. Taken off "0", a digit is a byte of at most nine: adding
// 118 reaches the top bit for all others, unless it stood already.
template <class T> int count_leading_digits(const T* units) noexcept {
    const std::uint64_t value = load_eight_digits(units) ^ 0x3030303030303030;
    const std::uint64_t others = ((value & 0x7F7F7F7F7F7F7F7F) + 0x7676767676767676) | value;
    return std::countr_zero(others & 0x8080808080808080) / 8;
}

// The value of eight digits: neighbours are joined to pairs, to fours, to eight.
template <class T> Limb get_eight_digits(const T* digits) noexcept {
    std::uint64_t value = load_eight_digits(digits) - 0x3030303030303030;
    value = value * 10 + (value >> 8);
    constexpr std::uint64_t kEven = 0x000000FF000000FF;
    value = (value & kEven) * (100 + (std::uint64_t{1'000'000} << 32)) +
            (value >> 16 & kEven) * (1 + (std::uint64_t{10'000} << 32));
    return static_cast<Limb>(value >> 32);
}

// The same for four.
inline std::uint32_t load_four_digits(const char* digits) noexcept {
    std::uint32_t bytes;
    std::memcpy(&bytes, digits, sizeof bytes);
    return bytes;
}
inline std::uint32_t load_four_digits(const char16_t* digits) noexcept {
    const __m128i units = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(digits));
    return static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_packus_epi16(units, units)));
}

template <class T> Limb get_four_digits(const T* digits) noexcept {
    std::uint32_t value = load_four_digits(digits) - 0x30303030;
    value = value * 10 + (value >> 8);
    return (value & 0xFF) * 100 + (value >> 16 & 0xFF);
}

// The value of up to nine digits.
template <class T> Limb get_digits(const T* digits, std::size_t count) noexcept {
    Limb value = 0;
    if (count >= 8) {
        value = get_eight_digits(digits);
        digits += 8;
        count -= 8;
    } else if (count >= 4) {
        value = get_four_digits(digits);
        digits += 4;
        count -= 4;
    }
    for (; count != 0; --count) value = value * 10 + static_cast<Limb>(*digits++ - '0');
    return value;
}

} // namespace core
