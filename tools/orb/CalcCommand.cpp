// `orb calc`: exact decimal arithmetic on the command line.
//
//   sum:     product { ("+" | "-") product }
//   product: sign { ("*" | "/" | "%") sign }
//   sign:    { "+" | "-" } power
//   power:   value [ "^" sign ]
//   value:   number | "0x" digits | "0b" digits | "(" sum ")" | "round" "(" sum "," sum ")"

#include "Command.h"

#include <core/component/Utf8.h>
#include <core/numbers/Numeric.h>
#include <core/numbers/NumericException.h>
#include <core/numbers/NumericLimits.h>

#include <iostream>

namespace orb {
namespace {

using core::Numeric;

constexpr unsigned int kMostDigits = 100'000; // of every number on the way
constexpr int kMostNesting = 200;

std::string with_position(std::string text, std::size_t at) {
    return text + " at position " + std::to_string(at + 1);
}

class Calculator {
public:
    explicit Calculator(std::string_view text) : text_(text) {}

    Numeric result() {
        const Numeric number = sum();
        if (peek() != 0) fail("expected an operator");
        return number;
    }

private:
    // ---- Characters.

    char peek() noexcept {
        while (at_ != text_.size() && text_[at_] == ' ') ++at_;
        return at_ != text_.size() ? text_[at_] : '\0';
    }
    bool take(char wanted) noexcept {
        if (peek() != wanted) return false;
        ++at_;
        return true;
    }
    void expect(char wanted) {
        if (!take(wanted)) fail(std::string("expected '") + wanted + "'");
    }
    [[noreturn]] void fail(const std::string& what) const {
        throw UsageError(with_position(what, at_));
    }

    // ---- The grammar.

    Numeric sum() {
        Numeric left = product();
        for (;;) {
            const char operation = peek();
            if (operation != '+' && operation != '-') return left;
            const std::size_t at = at_++;
            const Numeric right = product();
            left = checked(at, [&] { return operation == '+' ? left + right : left - right; });
        }
    }

    Numeric product() {
        Numeric left = sign();
        for (;;) {
            const char operation = peek();
            if (operation != '*' && operation != '/' && operation != '%') return left;
            const std::size_t at = at_++;
            const Numeric right = sign();
            left = checked(at, [&] {
                if (operation == '*') return left * right;
                return operation == '/' ? left / right : left % right;
            });
        }
    }

    Numeric sign() {
        bool negative = false;
        while (peek() == '+' || peek() == '-') negative ^= text_[at_++] == '-';
        const Numeric number = power();
        return negative ? -number : number;
    }

    Numeric power() {
        const Numeric base = value();
        if (peek() != '^') return base;
        const std::size_t at = at_++;
        const Numeric exponent = nested([&] { return sign(); });
        return checked(at, [&] {
            // The limit of the thread counts integer digits; those of a fraction grow alike.
            unsigned int length, precision;
            base.lengthAndPrecision(length, precision);
            if (exponent.abs() * precision > kMostDigits)
                throw core::NumericException(core::NumericException::Error::Overflow);
            const core::NumericLimits limit(kMostDigits);
            return base.pow(exponent);
        });
    }

    Numeric value() {
        if (take('(')) return parentheses();
        const std::string_view rest = text_.substr(at_);
        if (rest.starts_with("round")) return round();
        if (rest.starts_with("0x")) return literal(core::create_numeric_from_hex_literal_string);
        if (rest.starts_with("0b")) return literal(core::create_numeric_from_binary_literal_string);
        Numeric number;
        const char* const first = rest.data();
        const auto end = core::from_chars(first, first + rest.size(), number);
        if (end.ec != std::errc()) fail("expected a number");
        at_ += static_cast<std::size_t>(end.ptr - first);
        return number;
    }

    Numeric parentheses() {
        const Numeric number = nested([&] { return sum(); });
        expect(')');
        return number;
    }

    Numeric round() {
        const std::size_t at = at_;
        at_ += std::string_view("round").size();
        expect('(');
        const Numeric number = nested([&] { return sum(); });
        expect(',');
        const Numeric places = nested([&] { return sum(); });
        expect(')');
        long long count;
        if (!places.toInteger(count) || places.abs() > kMostDigits)
            throw Failure(with_position("the places to round to are no small integer", at));
        return number.round(static_cast<int>(count));
    }

    template <class Create> Numeric literal(Create create) {
        const auto end = text_.find_first_not_of("0123456789abcdefABCDEFx", at_);
        const std::string_view digits = text_.substr(at_, end - at_);
        const Numeric number = checked(at_, [&] { return create(core::from_utf8(digits)); });
        at_ += digits.size();
        return number;
    }

    // ---- Bounds.

    template <class Body> Numeric nested(Body body) {
        if (++depth_ > kMostNesting) fail("too deeply nested");
        Numeric number = body();
        --depth_;
        return number;
    }

    // The result of an operation that stands at `at`.
    template <class Operation> Numeric checked(std::size_t at, Operation operation) const {
        try {
            Numeric number = operation();
            unsigned int length, precision;
            number.lengthAndPrecision(length, precision);
            if (length > kMostDigits)
                throw core::NumericException(core::NumericException::Error::Overflow);
            return number;
        } catch (const core::Exception& exception) {
            throw Failure(with_position(core::to_utf8(exception.description()).c_str(), at));
        }
    }

    std::string_view text_;
    std::size_t at_ = 0;
    int depth_ = 0;
};

} // namespace

int calculate(const Arguments& arguments) {
    std::string text;
    for (const char* const word : arguments.values) (text += word) += ' ';
    if (text.empty()) throw UsageError("expected an expression, such as '1.50 * (2 + 3)'");
    const Numeric result = Calculator(text).result();
    if (arguments.json)
        std::cout << "{\"result\":\"" << result << "\"}\n";
    else
        std::cout << result << '\n';
    return kSuccess;
}

} // namespace orb
