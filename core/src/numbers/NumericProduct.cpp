// Multiplication, division and what is made of them: remainders and powers. Products of up to four
// limbs, which nearly all amounts have, are made here; LimbProduct.h has the others.
#include <core/numbers/NumericException.h>

#include "LimbPairs.h"
#include "LimbProduct.h"
#include "LimbQuotient.h"
#include "NumericAccess.h"
#include "NumericSettings.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace core {
namespace {

using Error = NumericException::Error;

constexpr Limb kHalfLimb = kLimbBase / 2;

// Refuses sizes before memory is taken for them.
std::size_t checked_size(std::int64_t limbs) {
    if (limbs > kMostLimbs) throw std::bad_alloc();
    return static_cast<std::size_t>(limbs);
}

std::int64_t checked_exponent(std::int64_t exponent) {
    if (exponent > kMostLimbs || exponent < -kMostLimbs) throw std::bad_alloc();
    return exponent;
}

// limbs + 1; the limb behind them takes the carry.
void increment(Limb* limbs, std::size_t size) noexcept {
    limbs[size] = 0;
    while (*limbs == kLimbBase - 1) *limbs++ = 0;
    ++*limbs;
}

// A number of up to four limbs as two pairs.
struct TwoPairs {
    explicit TwoPairs(const NumericAccess::Parts& number) noexcept {
        const auto at = [&](std::int32_t i) { return Pair{i < number.size ? number.limbs[i] : 0}; };
        low = number.limbs[0] + kLimbBase * at(1);
        high = number.size > 2 ? number.limbs[2] + kLimbBase * at(3) : 0;
    }
    Pair low, high;
};

void put_pair(Pair pair, Limb* limbs) noexcept {
    limbs[0] = static_cast<Limb>(pair % kLimbBase);
    limbs[1] = static_cast<Limb>(pair / kLimbBase);
}

// All eight limbs of the product; returns how many may be other than zero.
std::int64_t multiply_two_pairs(const TwoPairs& a, const TwoPairs& b, Limb* product) noexcept {
    Pair digit;
    Pair carry = divide_by_pair_base(Wide{a.low} * b.low, digit);
    put_pair(digit, product);
    if ((a.high | b.high) == 0) {
        put_pair(carry, product + 2);
        return 4;
    }
    carry = divide_by_pair_base(Wide{a.low} * b.high + Wide{a.high} * b.low + carry, digit);
    put_pair(digit, product + 2);
    carry = divide_by_pair_base(Wide{a.high} * b.high + carry, digit);
    put_pair(digit, product + 4);
    put_pair(carry, product + 6);
    return 8;
}

} // namespace

void Numeric::set_product(const Numeric& a, const Numeric& b) {
    const std::int64_t size = std::int64_t{a.size_} + b.size_;
    const std::int64_t exponent = checked_exponent(std::int64_t{a.exponent_} + b.exponent_);
    const int sign = a.sign_ * b.sign_;
    if (a.size_ == 0 || b.size_ == 0) {
        size_ = 0;
        delUnsigned();
        return;
    }
    if (a.size_ <= kInlineLimbs && b.size_ <= kInlineLimbs) {
        Limb product[2 * kInlineLimbs];
        const auto used = multiply_two_pairs(TwoPairs(NumericAccess::parts(a)),
                                             TwoPairs(NumericAccess::parts(b)), product);
        return assign(product, used, exponent, sign);
    }
    LimbBuffer product(checked_size(size));
    multiply_limbs(a.limbs_, static_cast<std::size_t>(a.size_), b.limbs_,
                   static_cast<std::size_t>(b.size_), product);
    assign(product, size, exponent, sign);
}

// The quotient is cut behind its lowest limb and rounded by the next limb alone, half up on the
// magnitude, whatever the mode: that limb carries the whole precision of a division.
void Numeric::set_quotient(const Numeric& a, const Numeric& b) {
    if (b.size_ == 0) throw NumericException(Error::DivideByZero);
    if (a.size_ == 0) {
        *this = a;
        return;
    }
    std::int64_t size = std::int64_t{a.size_} + 3;
    std::int64_t exponent = std::int64_t{b.size_} + 2 + a.exponent_ - b.exponent_;
    if (a.exponent_ < 0) {
        size -= a.exponent_;
        exponent -= a.exponent_;
    }
    checked_exponent(exponent);
    // One limb more below, which rounds, and one above for the carry.
    const std::size_t count = checked_size(size);
    LimbBuffer quotient(count + 2);
    divide_limbs(a.limbs_, static_cast<std::size_t>(a.size_), b.limbs_,
                 static_cast<std::size_t>(b.size_), quotient, count + 1);
    quotient[count + 1] = 0;
    if (quotient[0] >= kHalfLimb) increment(quotient + 1, count);
    assign(quotient + 1, size + 1, exponent, a.sign_ * b.sign_);
}

// This number less the integer part of the quotient, as division rounds it, times the other.
Numeric& Numeric::operator%=(const Numeric& other) {
    if (size_ == 1 && other.size_ == 1 && exponent_ == 0 && other.exponent_ == 0) {
        limbs_[0] %= other.limbs_[0];
        delUnsigned();
        return *this;
    }
    const Numeric quotient = *this / other;
    Numeric whole = quotient.floor();
    if (quotient.sign_ < 0 && whole != quotient) whole += 1;
    whole *= other;
    return *this -= whole;
}

namespace {

// Square and multiply from the highest bit of the exponent down.
Numeric integer_power(const Numeric& base, std::uint32_t exponent) {
    const std::optional<unsigned int> limit = numeric_limit();
    Numeric result = 1;
    for (int bit = static_cast<int>(std::bit_width(exponent)); bit-- != 0;) {
        result *= result;
        if (exponent >> bit & 1) result *= base;
        if (!limit) continue;
        unsigned int length, precision;
        result.lengthAndPrecision(length, precision);
        if (length - precision > *limit) throw NumericException(Error::Overflow);
    }
    return result;
}

Numeric double_power(const Numeric& base, const Numeric& exponent) {
    if (base.sign() < 0) throw NumericException(Error::NegativePow);
    if (base.zero() && exponent.sign() < 0) throw NumericException(Error::DivideByZero);
    const double power = std::pow(static_cast<double>(base), static_cast<double>(exponent));
    if (!std::isfinite(power)) throw NumericException(Error::Overflow);
    return power;
}

} // namespace

Numeric Numeric::pow(const Numeric& exponent) const {
    unsigned int length, precision;
    exponent.lengthAndPrecision(length, precision);
    if (precision != 0 || length > 9) return double_power(*this, exponent);
    const auto value = static_cast<long long>(exponent);
    Numeric power = integer_power(*this, static_cast<std::uint32_t>(value < 0 ? -value : value));
    return value < 0 ? 1 / power : power;
}

} // namespace core
