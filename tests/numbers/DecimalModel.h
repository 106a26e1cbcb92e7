// Exact decimals the slow way: strings of digits, one digit at a time. Texts are as Numeric prints
// them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace test {

// Natural numbers: digits, the highest first, no leading zeros; "" is zero.
class Natural {
public:
    Natural(std::string digits = "") : digits_(std::move(digits)) {
        digits_.erase(0, std::min(digits_.find_first_not_of('0'), digits_.size()));
    }
    const std::string& digits() const { return digits_; }
    bool zero() const { return digits_.empty(); }
    Natural shifted(std::size_t zeros) const { return digits_ + std::string(zeros, '0'); }

    friend bool operator<(const Natural& a, const Natural& b) {
        return a.digits_.size() != b.digits_.size() ? a.digits_.size() < b.digits_.size()
                                                    : a.digits_ < b.digits_;
    }
    friend Natural operator+(const Natural& a, const Natural& b) {
        std::string sum;
        int carry = 0;
        for (std::size_t i = 0; i < std::max(a.digits_.size(), b.digits_.size()) || carry; ++i) {
            carry += a.at(i) + b.at(i);
            sum += static_cast<char>('0' + carry % 10);
            carry /= 10;
        }
        return Natural({sum.rbegin(), sum.rend()});
    }
    friend Natural operator-(const Natural& a, const Natural& b) { // a >= b
        std::string difference;
        int borrow = 0;
        for (std::size_t i = 0; i < a.digits_.size(); ++i) {
            const int digit = a.at(i) - b.at(i) - borrow;
            borrow = digit < 0;
            difference += static_cast<char>('0' + (digit + 10) % 10);
        }
        return Natural({difference.rbegin(), difference.rend()});
    }
    friend Natural operator*(const Natural& a, const Natural& b) {
        Natural product;
        for (const char digit : b.digits_) {
            product = product.shifted(1);
            for (char i = '0'; i < digit; ++i) product = product + a;
        }
        return product;
    }
    friend Natural operator/(const Natural& a, const Natural& b) {
        std::string quotient;
        Natural rest;
        for (const char digit : a.digits_) {
            rest = Natural(rest.digits_ + digit);
            quotient += '0';
            for (; !(rest < b); ++quotient.back()) rest = rest - b;
        }
        return Natural(quotient);
    }

private:
    int at(std::size_t i) const { // from the lowest
        return i < digits_.size() ? digits_[digits_.size() - 1 - i] - '0' : 0;
    }
    std::string digits_;
};

// sign * natural / 10^scale.
struct Decimal {
    bool negative = false;
    Natural natural;
    std::size_t scale = 0;

    static Decimal of(std::string_view text) {
        Decimal result;
        if ((result.negative = text.starts_with('-'))) text.remove_prefix(1);
        const std::size_t point = std::min(text.find('.'), text.size());
        std::string digits(text);
        if (point != text.size()) {
            digits.erase(point, 1);
            result.scale = digits.size() - point;
        }
        result.natural = Natural(digits);
        return result;
    }
    std::string text() const {
        std::string digits = natural.digits();
        if (digits.size() <= scale) digits.insert(0, scale + 1 - digits.size(), '0');
        if (scale != 0) {
            digits.insert(digits.size() - scale, 1, '.');
            digits.erase(digits.find_last_not_of('0') + 1);
            if (digits.back() == '.') digits.pop_back();
        }
        return natural.zero() ? "0" : (negative ? "-" : "") + digits;
    }
    Natural at_scale(std::size_t wanted) const { return natural.shifted(wanted - scale); }
};

inline Decimal operator-(Decimal a) {
    a.negative = !a.negative;
    return a;
}

inline Decimal operator+(const Decimal& a, const Decimal& b) {
    const std::size_t scale = std::max(a.scale, b.scale);
    const Natural x = a.at_scale(scale), y = b.at_scale(scale);
    if (a.negative == b.negative) return {a.negative, x + y, scale};
    return x < y ? Decimal{b.negative, y - x, scale} : Decimal{a.negative, x - y, scale};
}

inline Decimal operator*(const Decimal& a, const Decimal& b) {
    return {a.negative != b.negative, a.natural * b.natural, a.scale + b.scale};
}

// A number as the limbs of nine digits that Numeric has.
struct Limbs {
    explicit Limbs(const Decimal& number)
        : natural(number.at_scale((number.scale + 8) / 9 * 9)),
          exponent(static_cast<long>((number.scale + 8) / 9)) {
        const std::size_t zeros =
            natural.zero() ? 0
                           : natural.digits().size() - 1 - natural.digits().find_last_not_of('0');
        natural = Natural(natural.digits().substr(0, natural.digits().size() - zeros / 9 * 9));
        exponent -= static_cast<long>(zeros / 9);
        size = static_cast<long>((natural.digits().size() + 8) / 9);
    }
    Natural natural;
    long exponent;
    long size = 0;
};

// The rule of division to its last limb; b is not zero.
inline Decimal operator/(const Decimal& a, const Decimal& b) {
    const Limbs x(a), y(b);
    const long more = std::max(-x.exponent, 0L);
    const long exponent = y.size + 2 + x.exponent - y.exponent + more;
    const auto shift = static_cast<std::size_t>(9 * (y.size + 2 + more + 1));
    std::string digits = (x.natural.shifted(shift) / y.natural).digits();
    digits.insert(0, 9, '0'); // a quotient of the lowest limb alone
    const bool up = digits[digits.size() - 9] >= '5';
    Natural quotient(digits.substr(0, digits.size() - 9));
    if (up) quotient = quotient + Natural("1");
    if (exponent < 0)
        return {a.negative != b.negative, quotient.shifted(static_cast<std::size_t>(-9 * exponent)),
                0};
    return {a.negative != b.negative, quotient, static_cast<std::size_t>(9 * exponent)};
}

// Half up or half down by the digits that go.
inline Decimal round(const Decimal& number, int places, bool halfUp) {
    if (places >= static_cast<int>(number.scale)) return number;
    const auto cut = static_cast<std::size_t>(static_cast<int>(number.scale) - places);
    std::string digits = number.natural.digits();
    if (digits.size() <= cut) digits.insert(0, cut + 1 - digits.size(), '0');
    const std::string gone = digits.substr(digits.size() - cut);
    const std::string half = '5' + std::string(cut - 1, '0');
    Natural kept(digits.substr(0, digits.size() - cut));
    if (halfUp ? gone >= half : gone > half) kept = kept + Natural("1");
    if (places < 0) return {number.negative, kept.shifted(static_cast<std::size_t>(-places)), 0};
    return {number.negative, kept, static_cast<std::size_t>(places)};
}

} // namespace test
