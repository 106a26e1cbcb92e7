// What a number is written with, and the writing and reading that needs no more than that.
//
// ICU's `unum_formatDecimal` gives the same texts; the tests compare the two in all locales. Here
// nothing is shared, so that there is no lock, and nothing is set up for a call.
#pragma once

#include <elm/string>

#include <string_view>

namespace core {

class Numeric;

struct NumberSymbols {
    // No locale of the table has digits or separators of more than one unit.
    char16_t digits[10];
    char16_t decimalSeparator;
    char16_t groupingSeparator;
    unsigned groupingSize;
    unsigned secondaryGroupingSize;
    // The digits in front of the lowest group, so that there are groups at all; 1 or more.
    unsigned minimumGroupingDigits;
    stdx::ustring positivePrefix;
    stdx::ustring positiveSuffix;
    stdx::ustring negativePrefix;
    stdx::ustring negativeSuffix;

    // The size of all groups but the lowest.
    unsigned upper_group() const noexcept {
        return secondaryGroupingSize != 0 ? secondaryGroupingSize : groupingSize;
    }
};

struct NumberLimits {
    unsigned maxInteger;
    unsigned minInteger;
    unsigned minFraction;
};

// `decimal` is as `Numeric` writes it: "-" or nothing, integer digits without zeros in front, or "0"
// or none, and a fraction behind ".". The integer digits above the limit are not written; a number
// of no digits at all has one zero. Throws std::bad_alloc.
stdx::ustring write_number(const NumberSymbols& symbols, std::string_view decimal,
                           const NumberLimits& limits);

// Reads what `write_number` writes, with all groups or with none, and blanks behind it. False for
// anything else, which may be a number all the same.
bool read_number(const NumberSymbols& symbols, std::u16string_view text, Numeric& value);

} // namespace core
