// Storage, order, inspection and conversion of numbers.
#include <core/numbers/Numeric.h>

#include <core/numbers/NumericException.h>
#include <core/text/Hex.h>

#include "LimbDigits.h"
#include "NumericAccess.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace core {
namespace {

using Parts = NumericAccess::Parts;

// 10^(9 * power) for a power that is not negative, an infinity beyond long double.
constexpr long double power_of_base(std::int64_t power) noexcept {
    if (power > 600) return HUGE_VALL;
    long double result = 1;
    for (long double square = 1e9L; power != 0; power >>= 1, square *= square)
        if (power & 1) result *= square;
    return result;
}

constexpr auto kPowersOfBase = [] {
    std::array<long double, 16> powers{};
    for (std::size_t i = 0; i != powers.size(); ++i)
        powers[i] = power_of_base(static_cast<std::int64_t>(i));
    return powers;
}();

long double known_power_of_base(std::int64_t power) noexcept {
    const auto known = static_cast<std::size_t>(power);
    return known < kPowersOfBase.size() ? kPowersOfBase[known] : power_of_base(power);
}

// What nearly all numbers are: an integer of one limb or two, or zero.
bool is_short_integer(const Parts& number) noexcept {
    return number.exponent == 0 && number.size <= 2;
}

// Up to two limbs together, as if they were an integer.
std::uint64_t short_digits(const Parts& number) noexcept {
    if (number.size == 0) return 0;
    const std::uint64_t low = number.limbs[0];
    return number.size == 1 ? low : number.limbs[1] * kLimbBase + low;
}

} // namespace

// ---- Storage.

void Numeric::release() noexcept {
    kiln_delete(limbs_);
    limbs_ = inline_;
    capacity_ = kInlineLimbs;
}

// Room for so many limbs; what stood there is lost when it was less.
void Numeric::reserve(std::int64_t limbs) {
    if (limbs <= capacity_) return;
    if (limbs > kMostLimbs) throw std::bad_alloc();
    auto* const block =
        static_cast<Limb*>(kiln_new(static_cast<std::size_t>(limbs) * sizeof(Limb)));
    if (capacity_ != kInlineLimbs) kiln_delete(limbs_);
    limbs_ = block;
    capacity_ = static_cast<std::int32_t>(limbs);
}

void Numeric::copy_long(const Numeric& other) {
    size_ = 0; // nothing to destroy if there is no memory
    reserve(other.size_);
    std::memcpy(limbs_, other.limbs_, sizeof(Limb) * static_cast<std::size_t>(other.size_));
    size_ = other.size_;
}

void Numeric::assign_long(const Numeric& other) {
    reserve(other.size_);
    std::memcpy(limbs_, other.limbs_, sizeof(Limb) * static_cast<std::size_t>(other.size_));
    size_ = other.size_;
    exponent_ = other.exponent_;
    sign_ = other.sign_;
}

// The number that these limbs are, zeros at both ends taken off. They may be the number's own.
void Numeric::assign(const Limb* limbs, std::int64_t size, std::int64_t exponent, int sign) {
    while (size != 0 && limbs[size - 1] == 0) --size;
    if (size == 0) {
        size_ = 0;
        exponent_ = 0;
        sign_ = 1;
        return;
    }
    for (; *limbs == 0; ++limbs) {
        --size;
        --exponent;
    }
    if (size > capacity_) reserve(size);
    if (size <= kInlineLimbs)
        for (std::int64_t i = 0; i != size; ++i) limbs_[i] = limbs[i]; // faster than a call
    else
        std::memmove(limbs_, limbs, sizeof(Limb) * static_cast<std::size_t>(size));
    size_ = static_cast<std::int32_t>(size);
    exponent_ = static_cast<std::int32_t>(exponent);
    sign_ = static_cast<std::int8_t>(sign);
}

void Numeric::delUnsigned() noexcept {
    while (size_ != 0 && limbs_[size_ - 1] == 0) --size_;
    if (size_ == 0) {
        exponent_ = 0;
        sign_ = 1;
        return;
    }
    std::int32_t zeros = 0;
    while (limbs_[zeros] == 0) ++zeros;
    if (zeros == 0) return;
    size_ -= zeros;
    exponent_ -= zeros;
    std::memmove(limbs_, limbs_ + zeros, sizeof(Limb) * static_cast<std::size_t>(size_));
}

// ---- Order.

int Numeric::compareMod(const Numeric& other) const noexcept {
    const std::int64_t top = std::int64_t{size_} - exponent_;
    const std::int64_t otherTop = std::int64_t{other.size_} - other.exponent_;
    if (size_ == 0 || other.size_ == 0) return (size_ != 0) - (other.size_ != 0);
    if (top != otherTop) return top < otherTop ? -1 : 1; // no highest limb is zero
    const Limb* a = limbs_ + size_;
    const Limb* b = other.limbs_ + other.size_;
    for (std::int32_t left = std::min(size_, other.size_); left != 0; --left)
        if (*--a != *--b) return *a < *b ? -1 : 1;
    return (size_ > other.size_) - (size_ < other.size_); // no lowest limb is zero
}

int Numeric::compare(const Numeric& other) const noexcept {
    if (sign_ != other.sign_) return sign_;
    return sign_ * compareMod(other);
}

std::size_t Numeric::hash() const noexcept {
    constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15; // 2^64 divided by the golden ratio
    auto code = (static_cast<std::uint64_t>(exponent_) * 2 + (sign_ < 0)) * kFactor;
    for (std::int32_t i = 0; i != size_; ++i) {
        code = (code ^ limbs_[i]) * kFactor;
        code ^= code >> 32;
    }
    return code;
}

// ---- Inspection.

void Numeric::lengthAndPrecision(unsigned int& length, unsigned int& precision) const noexcept {
    if (size_ == 0) {
        length = 1;
        precision = 0;
        return;
    }
    const auto cut = [](std::int64_t count) {
        return static_cast<unsigned int>(std::min<std::int64_t>(count, 0xFFFFFFFF));
    };
    const std::int64_t fraction =
        exponent_ > 0 ? std::int64_t{exponent_} * kLimbDigits - count_trailing_zeros(limbs_[0]) : 0;
    std::int64_t integer = 0;
    if (size_ > exponent_)
        integer =
            (std::int64_t{size_} - exponent_ - 1) * kLimbDigits + count_digits(limbs_[size_ - 1]);
    precision = cut(fraction);
    length = cut(fraction + integer);
}

bool Numeric::toInteger(long long& value) const noexcept {
    if (exponent_ > 0 || std::int64_t{size_} - exponent_ > 2) return false;
    value = static_cast<long long>(*this);
    return true;
}

std::uint32_t Numeric::calculateChecksum(unsigned long seed) const noexcept {
    const auto sum = [&](const void* data, std::size_t size) {
        seed = get_crc_32(static_cast<const char*>(data), static_cast<int>(size), seed, false);
    };
    sum(&exponent_, sizeof exponent_);
    sum(&sign_, sizeof sign_);
    constexpr std::int32_t kPart = 1 << 20; // get_crc_32 counts bytes in an int
    for (std::int32_t i = 0; i < size_; i += kPart)
        sum(limbs_ + i, sizeof(Limb) * static_cast<std::size_t>(std::min(kPart, size_ - i)));
    return static_cast<std::uint32_t>(seed);
}

// ---- double.

Numeric::Numeric(double value) : Numeric() {
    if (!std::isfinite(value)) throw NumericException(NumericException::Error::Overflow);
    const double magnitude = std::fabs(value);
    if (magnitude < 1e15 && magnitude == std::trunc(magnitude)) {
        *this = Numeric(static_cast<long long>(value));
        return;
    }
    // "d.dddddddddddddde-308": the first digit has the weight 10^power.
    char text[32];
    const auto end =
        std::to_chars(text, text + sizeof text, magnitude, std::chars_format::scientific, 14);
    int power = 0;
    const char* const e = text + 17;
    std::from_chars(e + (*e == '+'), end.ptr, power);
    // The digit of weight 10^place, and the limb it belongs to.
    Limb limbs[3] = {};
    const auto limb_of = [](int place) { return (place + 999 * kLimbDigits) / kLimbDigits - 999; };
    const int lowest = limb_of(power - 14);
    for (int i = 0; i != 15; ++i) {
        const int place = power - i;
        const auto digit = static_cast<Limb>(text[i == 0 ? 0 : i + 1] - '0');
        const int limb = limb_of(place);
        limbs[limb - lowest] += digit * kPowersOfTen[place - limb * kLimbDigits];
    }
    assign(limbs, 3, -lowest, value < 0 ? -1 : 1);
}

Numeric::operator double() const noexcept {
    const Parts parts = NumericAccess::parts(*this);
    // Two limbs are exact in 63 bits: an integer of them is rounded once, with or without the
    // extended precision that the others go through.
    if (is_short_integer(parts)) {
        const auto magnitude = static_cast<double>(static_cast<std::int64_t>(short_digits(parts)));
        return sign_ < 0 ? -magnitude : magnitude;
    }
    const std::int32_t used = std::min(size_, 3);
    long double top = 0;
    if (used <= 2)
        top = static_cast<long double>(static_cast<std::int64_t>(short_digits(parts)));
    else
        for (std::int32_t i = 0; i != used; ++i)
            top = top * 1e9L + static_cast<long double>(limbs_[size_ - 1 - i]);
    const std::int64_t power = std::int64_t{size_} - used - exponent_;
    top = power < 0 ? top / known_power_of_base(-power) : top * known_power_of_base(power);
    return static_cast<double>(sign_ < 0 ? -top : top);
}

// ---- Integers.

// The integer part of the magnitude modulo 2^64.
std::uint64_t Numeric::integer_part() const noexcept {
    const Parts parts = NumericAccess::parts(*this);
    if (is_short_integer(parts)) return short_digits(parts);
    // Limbs from the eighth on are multiples of 2^64: 10^9 has nine factors of two.
    std::uint64_t result = 0;
    for (std::int64_t place = std::min<std::int64_t>(parts.integer_limbs(), 8); place-- > 0;)
        result = result * kLimbBase + parts.at(place);
    return result;
}

Numeric::operator long long() const noexcept {
    const std::uint64_t magnitude = integer_part();
    return static_cast<long long>(sign_ < 0 ? 0 - magnitude : magnitude);
}

Numeric::operator long() const noexcept {
    return static_cast<std::int32_t>(static_cast<long long>(*this));
}

// The magnitude, which is an integer of at most `most`.
std::uint64_t Numeric::checked_integer(std::uint64_t most) const {
    // Three limbs hold 2^64 and more, so the product below cannot pass for a small number.
    const Parts parts = NumericAccess::parts(*this);
    if (exponent_ <= 0 && parts.integer_limbs() <= 3) {
        __extension__ unsigned __int128 value = 0;
        for (std::int64_t place = 3; place-- > 0;) value = value * kLimbBase + parts.at(place);
        if (value <= most) return static_cast<std::uint64_t>(value);
    }
    throw NumericException(NumericException::Error::Overflow);
}

std::uint64_t Numeric::safeAsUInt64() const {
    return checked_integer(sign_ < 0 ? 0 : std::numeric_limits<std::uint64_t>::max());
}

std::uint8_t Numeric::safeAsByte() const {
    return static_cast<std::uint8_t>(checked_integer(sign_ < 0 ? 0 : 0xFF));
}

std::uint16_t Numeric::safeAsUInt16() const {
    return static_cast<std::uint16_t>(checked_integer(sign_ < 0 ? 0 : 0xFFFF));
}

std::uint32_t Numeric::safeAsUInt32() const {
    return static_cast<std::uint32_t>(checked_integer(sign_ < 0 ? 0 : 0xFFFFFFFF));
}

std::int64_t Numeric::safeAsInt64() const {
    constexpr auto kMost = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    const std::uint64_t magnitude = checked_integer(kMost + (sign_ < 0));
    return static_cast<std::int64_t>(sign_ < 0 ? 0 - magnitude : magnitude);
}

} // namespace core
