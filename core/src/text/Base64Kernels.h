// The inner loops of base64 by vector, and which of them the processor has. What they leave over is
// for the tables of Base64Alphabet.h.
#pragma once

#include "Base64Avx2.h"
#include "Base64Ssse3.h"

namespace core {

// The loops take whole groups, as many as they like, and return how many bytes or characters these
// are. They read nothing beyond the `n` given and write nothing beyond what those have room for.
template <class Unit> struct Base64Kernel {
    std::size_t (*encode)(const std::uint8_t* data, std::size_t n, Unit* to,
                          const Base64Alphabet&) noexcept;
    // Stops in front of a group with a character that is none of the alphabet; bytes behind those
    // of the groups taken may be overwritten.
    std::size_t (*decode)(const Unit* text, std::size_t n, std::uint8_t* to,
                          const Base64Alphabet&) noexcept;
};

template <class Unit>
inline constexpr Base64Kernel<Unit> kBase64Plain = {
    [](const std::uint8_t*, std::size_t, Unit*, const Base64Alphabet&) noexcept {
        return std::size_t{0};
    },
    [](const Unit*, std::size_t, std::uint8_t*, const Base64Alphabet&) noexcept {
        return std::size_t{0};
    },
};
template <class Unit>
inline constexpr Base64Kernel<Unit> kBase64Ssse3 = {base64_ssse3::encode<Unit>,
                                                    base64_ssse3::decode<Unit>};
template <class Unit>
inline constexpr Base64Kernel<Unit> kBase64Avx2 = {base64_avx2::encode<Unit>,
                                                   base64_avx2::decode<Unit>};

template <class Unit> const Base64Kernel<Unit>& base64_kernel() noexcept {
    static const Base64Kernel<Unit>& kernel = __builtin_cpu_supports("avx2") ? kBase64Avx2<Unit>
                                              : __builtin_cpu_supports("ssse3")
                                                  ? kBase64Ssse3<Unit>
                                                  : kBase64Plain<Unit>;
    return kernel;
}

} // namespace core
