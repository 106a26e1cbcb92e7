// Numbers as text.
#include <core/component/IllegalArgumentException.h>

#include "LimbDigits.h"
#include "NumericAccess.h"
#include "NumericSettings.h"

#include <algorithm>
#include <ostream>

namespace core {
namespace {

using Parts = NumericAccess::Parts;

// Nearly all texts are shorter: they are written first and measured then.
constexpr std::size_t kShortText = 64;

std::size_t integer_digits(const Parts& number) noexcept {
    const std::int64_t limbs = number.integer_limbs();
    if (limbs == 0) return 0;
    return static_cast<std::size_t>((limbs - 1) * kLimbDigits +
                                    count_digits(number.limbs[number.size - 1]));
}

std::size_t fraction_digits(const Parts& number) noexcept {
    if (number.exponent <= 0) return 0;
    return static_cast<std::size_t>(std::int64_t{number.exponent} * kLimbDigits -
                                    count_trailing_zeros(number.limbs[0]));
}

std::size_t text_size(const Parts& number) noexcept {
    const std::size_t fraction = fraction_digits(number);
    return number.negative + std::max<std::size_t>(integer_digits(number), 1) +
           (fraction != 0 ? fraction + 1 : 0);
}

// No limb, no digit.
template <class T> T* put_integer(const Parts& number, T* out) noexcept {
    std::int64_t place = number.integer_limbs();
    if (place == 0) return out;
    const Limb top = number.at(--place);
    out = put_digits(out, top, count_digits(top));
    while (place-- != 0) out = put_limb(out, number.at(place));
    return out;
}

// Without the point and without zeros at the end.
template <class T> T* put_fraction(const Parts& number, T* out) noexcept {
    if (number.exponent <= 0) return out;
    for (std::int32_t i = number.exponent; --i != 0;)
        out = put_limb(out, i < number.size ? number.limbs[i] : 0);
    const int zeros = count_trailing_zeros(number.limbs[0]);
    return put_digits(out, number.limbs[0] / kPowersOfTen[zeros], kLimbDigits - zeros);
}

template <class T> T* put_number(const Parts& number, T* out) noexcept {
    if (number.negative) *out++ = '-';
    if (number.integer_limbs() == 0) *out++ = '0';
    out = put_integer(number, out);
    if (number.exponent > 0) *out++ = '.';
    return put_fraction(number, out);
}

template <class String> String text_of(const Numeric& number) {
    using T = typename String::value_type;
    const Parts parts = NumericAccess::parts(number);
    if (number.digitsSize() <= kShortText) {
        T text[kShortText];
        T* const end = put_number(parts, text);
        return String(text, static_cast<unsigned int>(end - text));
    }
    const std::size_t size = text_size(parts);
    if (size > 0x7FFFFFFF) throw std::bad_alloc();
    String text(static_cast<unsigned int>(size), T{'0'});
    put_number(parts, text.data());
    return text;
}

template <class T>
NumericCharsResult<T> put_chars(T* first, T* last, const Numeric& value) noexcept {
    const Parts parts = NumericAccess::parts(value);
    const auto room = static_cast<std::size_t>(last - first);
    if (room < value.digitsSize() && room < text_size(parts))
        return {last, std::errc::value_too_large};
    return {put_number(parts, first), std::errc()};
}

} // namespace

stdx::ustring Numeric::toString() const {
    return text_of<stdx::ustring>(*this);
}

void Numeric::toString(stdx::string& text) const {
    text = text_of<stdx::string>(*this);
}

std::ostream& operator<<(std::ostream& out, const Numeric& number) {
    const auto text = text_of<stdx::string>(number);
    return out << text.view();
}

NumericCharsResult<char> to_chars(char* first, char* last, const Numeric& value) noexcept {
    return put_chars(first, last, value);
}

NumericCharsResult<char16_t> to_chars(char16_t* first, char16_t* last,
                                      const Numeric& value) noexcept {
    return put_chars(first, last, value);
}

// Nine digits a limb, sign, point and terminator; a number without integer limbs has a zero more.
std::size_t Numeric::digitsSize() const noexcept {
    const std::int64_t limbs =
        exponent_ < 0 ? std::int64_t{size_} - exponent_ : std::max(size_, exponent_);
    return static_cast<std::size_t>(limbs * kLimbDigits + 3 + (exponent_ >= size_));
}

std::size_t Numeric::digits(char* out) const noexcept {
    char* const end = put_number(NumericAccess::parts(*this), out);
    *end = 0;
    return static_cast<std::size_t>(end - out);
}

std::size_t Numeric::digits(char* out, unsigned int limit) const noexcept {
    if (text_size(NumericAccess::parts(*this)) < limit) return digits(out);
    if (limit != 0) *out = 0;
    return 0;
}

bool Numeric::digits(char* out, unsigned int width, unsigned int places) const {
    return digits(out, width, places, process_round_mode());
}

bool Numeric::digits(char* out, unsigned int width, unsigned int places,
                     NumericRoundMode mode) const {
    ORB_ASSERT(places <= width);
    constexpr unsigned int kMostPlaces = std::numeric_limits<int>::max();
    const Numeric rounded = round(static_cast<int>(std::min(places, kMostPlaces)), mode);
    const Parts parts = NumericAccess::parts(rounded);
    const std::size_t wanted = width - places;
    const std::size_t integer = integer_digits(parts);
    const bool fits = integer <= wanted;

    *out++ = sign_ < 0 ? '-' : '+';
    if (fits)
        out = put_integer(parts, std::fill_n(out, wanted - integer, '0'));
    else
        out = std::fill_n(out, wanted, '9');
    if (places != 0) {
        *out++ = '.';
        char* const end = out + places;
        std::fill(fits ? put_fraction(parts, out) : out, end, fits ? '0' : '9');
        out = end;
    }
    *out = 0;
    return fits;
}

} // namespace core
