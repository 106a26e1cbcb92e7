// Numbers: every line is read as a text of any content, and as a row of tests/cases/numbers.cases, on
// which the library must agree with the slow model, and with itself where the model is too slow.
#include "../tests/numbers/NumberCases.h"

#include <core/numbers/NumericException.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

using core::Numeric;

void expect(bool condition) {
    if (!condition) std::abort();
}

// Both widths and all ways to read agree, and what is printed reads back.
void read_and_print(const std::string& text) {
    Numeric number, wideNumber;
    const char* end;
    const char16_t* wideEnd;
    number.fromString(text.c_str(), &end);
    const std::u16string wide(text.begin(), text.end()); // bytes from 128 on become other units
    wideNumber.fromString(wide.c_str(), &wideEnd);
    expect(number == wideNumber && end - text.c_str() == wideEnd - wide.c_str());

    std::string printed(number.digitsSize(), '\0');
    printed.resize(number.digits(printed.data()));
    expect(Numeric::parse(printed) == number);
    expect(number.toString().view() == std::u16string(printed.begin(), printed.end()));
    unsigned int length, precision;
    number.lengthAndPrecision(length, precision);
    const auto parsed = Numeric::parse(text);
    expect(!parsed || *parsed == number);
}

// Of any bit pattern: fifteen digits, or a refusal of what is no number.
void convert(std::string_view text) {
    double value;
    if (text.size() < sizeof value) return;
    std::memcpy(&value, text.data(), sizeof value);
    try {
        const Numeric number = value;
        expect(std::isfinite(value) && number.sign() == (value > 0) - (value < 0));
        expect(Numeric(static_cast<double>(number)) == number || std::fabs(value) > 1.79e308);
    } catch (const core::NumericException&) {
        expect(!std::isfinite(value));
    }
}

void calculate(const test::NumberCase& row) {
    const auto a = Numeric::parse(row.a), b = Numeric::parse(row.b);
    if (!a || !b) return;
    const Numeric sum = *a + *b, product = *a * *b;
    expect(sum - *b == *a && sum - *a == *b && *a - *b == -(*b - *a));
    expect(product == *b * *a && (*a + 1) * *b == product + *b);
    expect((sum <=> *a) == (*b <=> 0) && product.sign() == a->sign() * b->sign());
    expect(a->floor() <= *a && *a < a->floor() + 1);
    if (!b->zero()) {
        const Numeric quotient = *a / *b, rest = *a % *b;
        const Numeric whole = quotient.sign() < 0 ? -(-quotient).floor() : quotient.floor();
        expect(rest == *a - whole * *b);
        expect(quotient.sign() == product.sign() || quotient.zero());
    }
    constexpr std::size_t kLongest = 200; // the model takes the square, and worse
    if (row.a.size() + row.b.size() > kLongest) return;
    long long places;
    const bool isPlaces = b->toInteger(places) && places > -1000 && places < 1000;
    const std::string x = test::text_of(*a), y = test::text_of(*b);
    for (const char* const operation : {"add", "sub", "mul", "div", "round0", "round1"}) {
        if (operation[0] == 'r' && !isPlaces) continue;
        const std::string expected = test::by_model(operation, x, y);
        expect(expected == "?" || test::by_numeric(operation, *a, *b) == expected);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    while (!rest.empty()) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        read_and_print(std::string(line));
        convert(line);
        if (const auto row = test::parse_number_case(line)) calculate(*row);
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
    }
    return 0;
}
