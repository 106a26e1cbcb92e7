#include <core/values/Qualifiers.h>

namespace core {

NumericQualifiers NumericQualifiers::merge(const NumericQualifiers& a,
                                           const NumericQualifiers& b) noexcept {
    const bool isNonNegative = a.nonNegative && b.nonNegative;
    if (a.digits == 0 || b.digits == 0) return {0, 0, isNonNegative};
    const unsigned fractionCount = std::max(a.fraction, b.fraction);
    const unsigned whole = std::max(a.digits - a.fraction, b.digits - b.fraction);
    return {whole + fractionCount, fractionCount, isNonNegative};
}

LengthQualifiers LengthQualifiers::merge(const LengthQualifiers& a,
                                         const LengthQualifiers& b) noexcept {
    if (a.length == 0 || b.length == 0) return LengthQualifiers();
    return LengthQualifiers(std::max(a.length, b.length), a.variable || b.variable);
}

} // namespace core
