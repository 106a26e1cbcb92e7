// Numbers from text. The described machine (white space, sign, integer, fraction) is a walk from one
// run of characters to the next; digits are turned into limbs once the runs are known.
#include <core/component/IllegalArgumentException.h>
#include <core/component/Messages.h>
#include <core/text/Characters.h>

#include "LimbDigits.h"
#include "NumericAccess.h"

#include <algorithm>
#include <string>
#include <vector>

namespace core {
namespace {

// Where no end is known the terminator ends a text: it is neither space, nor digit, nor point.
template <class T> bool is_digit_at(const T* at, const T* last) noexcept {
    return at != last && static_cast<unsigned>(*at) - '0' < 10;
}

template <class T> const T* skip_digits(const T* at, const T* last) noexcept {
    for (; last && last - at >= 8; at += 8)
        if (const int count = count_leading_digits(at); count != 8) return at + count;
    while (is_digit_at(at, last)) ++at;
    return at;
}

// Digits with at most one point, without the zeros that mean nothing.
template <class T> class DecimalText {
public:
    DecimalText(const T* first, const T* last) noexcept : integer_(first) {
        integerEnd_ = fraction_ = fractionEnd_ = end_ = skip_digits(first, last);
        if (end_ != last && *end_ == '.') {
            fraction_ = end_ + 1;
            fractionEnd_ = end_ = skip_digits(fraction_, last);
        }
        hasDigit_ = integerEnd_ != integer_ || fractionEnd_ != fraction_;
        while (integer_ != integerEnd_ && *integer_ == '0') ++integer_;
        while (fractionEnd_ != fraction_ && fractionEnd_[-1] == '0') --fractionEnd_;
    }

    const T* end() const noexcept { return end_; } // what stopped the reading
    bool has_digit() const noexcept { return hasDigit_; }

    void read(Numeric& number, bool negative) const {
        const auto integer = static_cast<std::size_t>(integerEnd_ - integer_);
        const auto fraction = static_cast<std::size_t>(fractionEnd_ - fraction_);
        const std::size_t behind = limbs_of(fraction), size = limbs_of(integer) + behind;
        if (size > static_cast<std::size_t>(kMostLimbs)) throw std::bad_alloc();
        LimbBuffer limbs(size);
        Limb* limb = limbs + behind;
        for (const T* end = integerEnd_; end != integer_;) {
            const std::size_t count = part_of(end - integer_);
            *limb++ = get_digits(end -= count, count);
        }
        limb = limbs + behind;
        for (const T* digits = fraction_; digits != fractionEnd_;) {
            const std::size_t count = part_of(fractionEnd_ - digits);
            *--limb = get_digits(digits, count) * kPowersOfTen[kLimbDigits - count];
            digits += count;
        }
        NumericAccess::assign(number, limbs, static_cast<std::int64_t>(size),
                              static_cast<std::int64_t>(behind), negative);
    }

private:
    static std::size_t part_of(std::ptrdiff_t digits) noexcept {
        return static_cast<std::size_t>(std::min<std::ptrdiff_t>(kLimbDigits, digits));
    }
    static std::size_t limbs_of(std::size_t digits) noexcept {
        return (digits + kLimbDigits - 1) / kLimbDigits;
    }

    const T *integer_, *integerEnd_;
    const T *fraction_, *fractionEnd_;
    const T* end_;
    bool hasDigit_;
};

template <class T> void read_text(Numeric& number, const T* text, const T** end) {
    const T* at = text;
    while (*at == ' ' || *at == '\t' || *at == '\n' || *at == '\r') ++at;
    const bool spaced = at != text;
    const bool negative = *at == '-';
    if (negative || *at == '+') ++at;
    const DecimalText<T> decimal(at, nullptr);
    decimal.read(number, negative);
    if (end) *end = spaced && !decimal.has_digit() ? text : decimal.end();
}

template <class T> std::optional<Numeric> parse_whole(std::basic_string_view<T> text) {
    const T* first = text.data();
    const T* const last = first + text.size();
    const bool negative = first != last && *first == '-';
    if (negative || (first != last && *first == '+')) ++first;
    const DecimalText<T> decimal(first, last);
    if (!decimal.has_digit() || decimal.end() != last) return {};
    std::optional<Numeric> number(std::in_place);
    decimal.read(*number, negative);
    return number;
}

template <class T>
NumericCharsResult<const T> get_chars(const T* first, const T* last, Numeric& value) {
    const bool negative = first != last && *first == '-';
    const DecimalText<T> decimal(first + negative, last);
    if (!decimal.has_digit()) return {first, std::errc::invalid_argument};
    decimal.read(value, negative);
    return {decimal.end(), std::errc()};
}

// The value of digits of `bits` bits each. Neighbours are joined, then their neighbours, so that
// long texts cost long products and not one short product a digit.
Numeric number_of_bits(std::u16string_view digits, unsigned int bits) {
    constexpr unsigned int kPartBits = 60;
    const std::size_t perPart = kPartBits / bits;
    std::vector<Numeric> parts; // the lowest first
    while (!digits.empty()) {
        const std::size_t count = std::min(digits.size(), perPart);
        std::uint64_t value = 0;
        for (const char16_t c : digits.substr(digits.size() - count)) {
            const int digit = c < 0x80 ? xdigit(c) : -1;
            if (digit < 0 || digit >= 1 << bits) throw IllegalArgumentException(ORB_HERE);
            value = value << bits | static_cast<std::uint64_t>(digit);
        }
        parts.emplace_back(value);
        digits.remove_suffix(count);
    }
    for (Numeric weight = std::uint64_t{1} << kPartBits; parts.size() > 1; weight *= weight) {
        const std::size_t joined = (parts.size() + 1) / 2;
        for (std::size_t i = 0; i != joined; ++i) {
            Numeric part = std::move(parts[2 * i]);
            if (2 * i + 1 != parts.size()) part += parts[2 * i + 1] * weight;
            parts[i] = std::move(part);
        }
        parts.resize(joined);
    }
    return std::move(parts[0]);
}

Numeric number_of_literal(const stdx::ustring& text, std::u16string_view prefix, unsigned int bits,
                          const char* formatError) {
    if (text.size() < 3 || !text.view().starts_with(prefix))
        throw IllegalArgumentException(ORB_HERE, load_core_wstring(formatError));
    return number_of_bits(text.view().substr(prefix.size()), bits);
}

} // namespace

void Numeric::fromString(const char16_t* text, const char16_t** end) {
    read_text(*this, text, end);
}

void Numeric::fromString(const char* text, const char** end) {
    read_text(*this, text, end);
}

std::optional<Numeric> Numeric::parse(std::string_view text) {
    return parse_whole(text);
}

std::optional<Numeric> Numeric::parse(std::u16string_view text) {
    return parse_whole(text);
}

NumericCharsResult<const char> from_chars(const char* first, const char* last, Numeric& value) {
    return get_chars(first, last, value);
}

NumericCharsResult<const char16_t> from_chars(const char16_t* first, const char16_t* last,
                                              Numeric& value) {
    return get_chars(first, last, value);
}

Numeric create_numeric_from_hex_literal_string(const stdx::ustring& text) {
    return number_of_literal(text, u"0x", 4, "IDS_ERR_INVALID_HEX_STRING_FORMAT");
}

Numeric create_numeric_from_binary_literal_string(const stdx::ustring& text) {
    return number_of_literal(text, u"0b", 1, "IDS_ERR_INVALID_BINARY_STRING_FORMAT");
}

Numeric detail::numeric_of_literal(std::string_view text) {
    std::string digits;
    std::copy_if(text.begin(), text.end(), std::back_inserter(digits),
                 [](char c) { return c != '\''; });
    Numeric number;
    from_chars(digits.data(), digits.data() + digits.size(), number);
    return number;
}

} // namespace core
