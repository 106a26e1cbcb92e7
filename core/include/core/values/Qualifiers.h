// What a domain says of the values of a type beyond the type: how many digits, how long, which parts.
// A length or a count of digits of 0 is no limit.
#pragma once

#include <core/platform/api.h>

#include <algorithm>

namespace core {

// `digits` in all, of which `fraction` behind the point: (5, 2) holds 999.99.
struct NumericQualifiers {
    static constexpr unsigned kMostDigits = 64;

    constexpr NumericQualifiers() noexcept = default;
    // Digits above 64, or negative as a signed number, are 64; no more of them are behind the point
    // than there are at all. Without digits there is no fraction.
    constexpr NumericQualifiers(unsigned digitCount, unsigned fractionCount,
                                bool isNonNegative = false) noexcept
        : digits(std::min(digitCount, kMostDigits)),
          fraction(std::min(fractionCount, digits)),
          nonNegative(isNonNegative) {}

    // What holds the numbers of both.
    ORBCORE_API static NumericQualifiers merge(const NumericQualifiers& a,
                                               const NumericQualifiers& b) noexcept;

    friend constexpr bool operator==(const NumericQualifiers&,
                                     const NumericQualifiers&) noexcept = default;

    unsigned digits = 0;
    unsigned fraction = 0;
    bool nonNegative = false;
};

// Of a string in units, of binary data in bytes.
struct LengthQualifiers {
    constexpr LengthQualifiers() noexcept = default;
    constexpr explicit LengthQualifiers(unsigned limit, bool isVariable = true) noexcept
        : length(limit), variable(isVariable) {}

    ORBCORE_API static LengthQualifiers merge(const LengthQualifiers& a,
                                              const LengthQualifiers& b) noexcept;

    friend constexpr bool operator==(const LengthQualifiers&,
                                     const LengthQualifiers&) noexcept = default;

    unsigned length = 0;
    bool variable = true; // shorter ones are not filled up
};
using StringQualifiers = LengthQualifiers;
using BinaryQualifiers = LengthQualifiers;

struct DateQualifiers {
    static constexpr int kDate = 1;
    static constexpr int kTime = 2;

    constexpr DateQualifiers() noexcept = default;
    // No part at all means both.
    constexpr explicit DateQualifiers(int bits) noexcept
        : parts((bits & (kDate | kTime)) != 0 ? bits & (kDate | kTime) : kDate | kTime) {}

    static constexpr DateQualifiers merge(const DateQualifiers& a,
                                          const DateQualifiers& b) noexcept {
        return DateQualifiers(a.parts | b.parts);
    }

    friend constexpr bool operator==(const DateQualifiers&,
                                     const DateQualifiers&) noexcept = default;

    int parts = kDate | kTime;
};

} // namespace core
