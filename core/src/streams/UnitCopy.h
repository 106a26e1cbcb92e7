// Copies of short runs of units. Where runs of all lengths follow each other, as lines do, branches
// on the length cost more than the copy.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include <immintrin.h>

namespace core {

// 16 to 128 units, always in eight blocks: those that are too many copy the last one again.
[[gnu::target("avx2")]] inline void copy_line_avx2(char16_t* to, const char16_t* from,
                                                   unsigned n) noexcept {
    constexpr std::size_t kBlock = 16;
    const std::size_t last = n - kBlock;
    for (std::size_t i = 0; i < 8; ++i) {
        const std::size_t at = std::min(i * kBlock, last);
        const auto* const block = reinterpret_cast<const __m256i*>(from + at);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(to + at), _mm256_loadu_si256(block));
    }
}
inline void copy_line_plain(char16_t* to, const char16_t* from, unsigned n) noexcept {
    std::memcpy(to, from, n * sizeof *to);
}
inline void copy_line(char16_t* to, const char16_t* from, unsigned n) noexcept {
    static const auto copy = __builtin_cpu_supports("avx2") ? copy_line_avx2 : copy_line_plain;
    copy(to, from, n);
}

// The memory does not overlap.
inline void copy_units(char16_t* to, const char16_t* from, unsigned n) noexcept {
    const auto ends_of = [&](auto part) { // two parts that may overlap
        constexpr unsigned kUnits = sizeof part / sizeof *to;
        auto last = part;
        std::memcpy(&part, from, sizeof part);
        std::memcpy(&last, from + n - kUnits, sizeof part);
        std::memcpy(to, &part, sizeof part);
        std::memcpy(to + n - kUnits, &last, sizeof part);
    };
    if (n > 128)
        std::memcpy(to, from, n * sizeof *to);
    else if (n > 16)
        copy_line(to, from, n);
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
