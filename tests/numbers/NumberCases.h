// Lines of tests/cases/numbers.cases: operation, two operands, result, with a tab between them. The
// operations are the rows below; of those with one operand the second is a number of places or has
// no meaning. Lines that begin with "#" are remarks.
#pragma once

#include "DecimalModel.h"

#include <core/numbers/Numeric.h>

#include <optional>
#include <string>
#include <string_view>

namespace test {

struct NumberCase {
    std::string_view operation, a, b, result;
};

inline std::optional<NumberCase> parse_number_case(std::string_view line) {
    NumberCase row;
    for (std::string_view* field : {&row.operation, &row.a, &row.b, &row.result}) {
        const std::size_t end = std::min(line.find('\t'), line.size());
        *field = line.substr(0, end);
        line.remove_prefix(std::min(end + 1, line.size()));
    }
    if (row.operation.starts_with('#') || row.b.empty()) return {};
    return row;
}

inline std::string text_of(const core::Numeric& number) {
    stdx::string text;
    number.toString(text);
    return text.c_str();
}

// What Numeric makes of a row; "?" for an operation that there is not.
inline std::string by_numeric(std::string_view operation, const core::Numeric& a,
                              const core::Numeric& b) {
    using core::Numeric, core::NumericRoundMode;
    const auto places = static_cast<int>(static_cast<long>(b));
    if (operation == "add") return text_of(a + b);
    if (operation == "sub") return text_of(a - b);
    if (operation == "mul") return text_of(a * b);
    if (operation == "div") return text_of(a / b);
    if (operation == "mod") return text_of(a % b);
    if (operation == "pow") return text_of(a.pow(b));
    if (operation == "floor") return text_of(a.floor());
    if (operation == "compare") return std::to_string(a.compare(b));
    if (operation == "round0") return text_of(a.round(places, NumericRoundMode::HalfDown));
    if (operation == "round1") return text_of(a.round(places, NumericRoundMode::HalfUp));
    return "?";
}

// What the model makes of a row; "?" for what it does not know. Operands as Numeric prints them.
inline std::string by_model(std::string_view operation, std::string_view a, std::string_view b) {
    const Decimal x = Decimal::of(a), y = Decimal::of(b);
    if (operation == "add") return (x + y).text();
    if (operation == "sub") return (x + -y).text();
    if (operation == "mul") return (x * y).text();
    if (operation == "div" && !y.natural.zero()) return (x / y).text();
    if (operation == "round0" || operation == "round1")
        return round(x, std::stoi(std::string(b)), operation == "round1").text();
    return "?";
}

} // namespace test
