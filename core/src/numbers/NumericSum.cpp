// Addition and subtraction. What is common, limbs at equal places, is done in place without a look
// at anything else.
#include "NumericAccess.h"

#include <algorithm>

namespace core {
namespace {

using Parts = NumericAccess::Parts;

constexpr Limb kBase = kLimbBase;

// Carries are signs, not branches, which random limbs would mispredict half of the time: a sum less
// the base is negative when it does not carry, a difference when it borrows. The state between two
// limbs is -1 or 0, so that two operations a limb wait for each other and no more.
constexpr Limb all_ones_if_negative(Limb value) noexcept {
    return static_cast<Limb>(static_cast<std::int32_t>(value) >> 31);
}

// to += what from its first limb on; 1 if it carries out of the end.
Limb add_limbs(Limb* to, std::size_t size, const Limb* what, std::size_t count) noexcept {
    Limb none = ~Limb{0}; // -1: no carry
    for (std::size_t i = 0; i != count; ++i) {
        const Limb sum = (to[i] + what[i] + 1 - kBase) + none;
        none = all_ones_if_negative(sum);
        to[i] = sum + (none & kBase);
    }
    std::size_t i = count;
    for (; none == 0 && i != size; ++i) {
        if (to[i] != kBase - 1) none = ~Limb{0};
        to[i] = none != 0 ? to[i] + 1 : 0;
    }
    return none + 1;
}

// to -= what; whether the result is below zero, then it wants 10^(9 * size) added.
bool subtract_limbs(Limb* to, std::size_t size, const Limb* what, std::size_t count) noexcept {
    Limb borrow = 0; // -1: a borrow
    for (std::size_t i = 0; i != count; ++i) {
        const Limb difference = (to[i] - what[i]) + borrow;
        borrow = all_ones_if_negative(difference);
        to[i] = difference + (borrow & kBase);
    }
    for (std::size_t i = count; borrow != 0 && i != size; ++i) {
        if (to[i] != 0) borrow = 0;
        to[i] = borrow != 0 ? kBase - 1 : to[i] - 1;
    }
    return borrow != 0;
}

// 10^(9 * size) - limbs.
void complement(Limb* limbs, std::size_t size) noexcept {
    std::size_t i = 0;
    while (i != size && limbs[i] == 0) ++i;
    if (i == size) return;
    limbs[i] = kBase - limbs[i];
    for (++i; i != size; ++i) limbs[i] = kBase - 1 - limbs[i];
}

// The places that two numbers reach over. Throws std::bad_alloc for too many.
struct Span {
    Span(const Numeric& a, const Numeric& b) {
        const Parts x = NumericAccess::parts(a), y = NumericAccess::parts(b);
        if (x.size == 0) { // zero reaches over none
            exponent = y.exponent;
            size = y.size;
        } else {
            exponent = std::max(x.exponent, y.exponent);
            size = std::max(x.size + (std::int64_t{exponent} - x.exponent),
                            y.size + (std::int64_t{exponent} - y.exponent));
        }
        if (size > kMostLimbs) throw std::bad_alloc();
    }

    std::int32_t exponent;
    std::int64_t size;
};

// Copies limbs to their places in the span, with zeros around them. They may be in `to` already.
void spread(const Parts& number, const Span& span, Limb* to) noexcept {
    const std::int64_t below = number.size == 0 ? 0 : std::int64_t{span.exponent} - number.exponent;
    std::memmove(to + below, number.limbs, sizeof(Limb) * static_cast<std::size_t>(number.size));
    std::fill_n(to, below, Limb{0});
    std::fill(to + below + number.size, to + span.size, Limb{0});
}

} // namespace

// With unlike signs a sum is a difference of magnitudes, and the reverse.
Numeric& Numeric::operator+=(const Numeric& other) {
    if (sign_ == other.sign_)
        add_magnitude(other);
    else
        subtract_magnitude(other);
    return *this;
}

Numeric& Numeric::operator-=(const Numeric& other) {
    if (sign_ == other.sign_)
        subtract_magnitude(other);
    else
        add_magnitude(other);
    return *this;
}

// The sign stays.
void Numeric::add_magnitude(const Numeric& other) {
    if (other.size_ == 0) return;
    const std::int64_t at = std::int64_t{exponent_} - other.exponent_;
    const std::int64_t end = at + other.size_;
    const auto count = static_cast<std::size_t>(other.size_);
    if (at >= 0 && end <= size_ &&
        limbs_[size_ - 1] + (end == size_ ? other.limbs_[count - 1] : 0) < kLimbBase - 1) {
        add_limbs(limbs_ + at, static_cast<std::size_t>(size_ - at), other.limbs_, count);
        if (limbs_[0] == 0) delUnsigned();
        return;
    }
    const Span span(*this, other);
    const bool inPlace = span.size < capacity_; // with a limb for the carry
    LimbBuffer buffer(inPlace ? 0 : static_cast<std::size_t>(span.size) + 1);
    Limb* const sum = inPlace ? limbs_ : buffer;
    spread(NumericAccess::parts(*this), span, sum);
    const std::int64_t start = std::int64_t{span.exponent} - other.exponent_;
    sum[span.size] =
        add_limbs(sum + start, static_cast<std::size_t>(span.size - start), other.limbs_, count);
    assign(sum, span.size + 1, span.exponent, sign_);
}

// The sign is of this number less the other; it changes when the other is larger.
void Numeric::subtract_magnitude(const Numeric& other) {
    if (other.size_ == 0) return;
    const std::int64_t at = std::int64_t{exponent_} - other.exponent_;
    const auto count = static_cast<std::size_t>(other.size_);
    if (at >= 0 && at + other.size_ <= size_) {
        if (subtract_limbs(limbs_ + at, static_cast<std::size_t>(size_ - at), other.limbs_,
                           count)) {
            complement(limbs_, static_cast<std::size_t>(size_));
            sign_ = static_cast<std::int8_t>(-sign_);
        }
        if (limbs_[0] == 0 || limbs_[size_ - 1] == 0) delUnsigned();
        return;
    }
    const Span span(*this, other);
    const bool inPlace = span.size <= capacity_;
    LimbBuffer buffer(inPlace ? 0 : static_cast<std::size_t>(span.size));
    Limb* const difference = inPlace ? limbs_ : buffer;
    spread(NumericAccess::parts(*this), span, difference);
    const std::int64_t start = std::int64_t{span.exponent} - other.exponent_;
    const bool negative = subtract_limbs(
        difference + start, static_cast<std::size_t>(span.size - start), other.limbs_, count);
    if (negative) complement(difference, static_cast<std::size_t>(span.size));
    assign(difference, span.size, span.exponent, negative ? -sign_ : sign_);
}

} // namespace core
