// Limbs two by two: long products and quotients work in base 10^18, on 64-bit words, and need a
// quarter of the multiplications.
#pragma once

#include "LimbBuffer.h"

namespace core {

__extension__ using Wide = unsigned __int128;
using Pair = std::uint64_t;
inline constexpr Pair kPairBase = kLimbBase * kLimbBase;

constexpr std::size_t pairs_of(std::size_t limbs) noexcept {
    return (limbs + 1) / 2;
}

inline void to_pairs(const Limb* limbs, std::size_t size, Pair* pairs) noexcept {
    for (std::size_t i = 0; i + 1 < size; i += 2) *pairs++ = limbs[i] + kLimbBase * limbs[i + 1];
    if (size % 2 != 0) *pairs = limbs[size - 1];
}

// The lowest `size` limbs of the pairs.
inline void to_limbs(const Pair* pairs, Limb* limbs, std::size_t size) noexcept {
    for (std::size_t i = 0; i < size; ++i) {
        const Pair pair = pairs[i / 2];
        limbs[i] = static_cast<Limb>(i % 2 == 0 ? pair % kLimbBase : pair / kLimbBase);
    }
}

// value / 10^18 for a value below 2^64 * 10^18; `rest` gets the remainder. Multiplies by the inverse:
// the first guess of the quotient is at most three too small.
inline std::uint64_t divide_by_pair_base(Wide value, Pair& rest) noexcept {
    constexpr auto kInverse =
        static_cast<std::uint64_t>(((Wide{1} << 124) / kPairBase) - (Wide{1} << 64));
    const auto high = static_cast<std::uint64_t>(value >> 60);
    std::uint64_t quotient = high + static_cast<std::uint64_t>((Wide{high} * kInverse) >> 64);
    rest = static_cast<std::uint64_t>(value) - quotient * kPairBase;
    while (rest >= kPairBase) {
        rest -= kPairBase;
        ++quotient;
    }
    return quotient;
}

} // namespace core
