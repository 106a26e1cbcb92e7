// What dates are written with in a locale, and the writing and reading of the usual patterns.
//
// ICU's `udat_format` gives the same texts; the tests compare the two in all locales. Here nothing
// is shared, so that there is no lock.
#pragma once

#include <elm/string>

#include <optional>
#include <string_view>

namespace core {

class Date;

struct DateSymbols {
    char16_t digits[10];
    stdx::ustring months[12], shortMonths[12];           // beside a day
    stdx::ustring aloneMonths[12], aloneShortMonths[12]; // standing alone
    stdx::ustring weekDays[7], shortWeekDays[7];         // from Sunday
    stdx::ustring dayHalves[2];
};

// Nothing for a pattern with letters, or runs of them, that are left to ICU.
std::optional<stdx::ustring> write_date(const DateSymbols& symbols, const Date& date,
                                        std::u16string_view pattern);

// Reads what `write_date` writes, by patterns of numbers alone with years of four digits, and blanks
// behind it. False for anything else, which may be a date all the same.
bool read_date(const DateSymbols& symbols, std::u16string_view text, std::u16string_view pattern,
               Date& date);

// The pattern with each lone `y` replaced by the last two digits of the year, without a leading zero.
stdx::ustring with_short_year(const DateSymbols& symbols, int year, std::u16string_view pattern);

// The pattern with each year of fewer than four letters lengthened to four; cut at 512 units.
stdx::ustring with_full_years(std::u16string_view pattern);

} // namespace core
