// The Gregorian calendar as arithmetic on day numbers: day 0 is 0001-01-01, a Monday, and the
// calendar is the same for all years, 1 to 9999. `Date` is built on it; so is whatever counts days
// without a time of day.
//
//   core::CalendarDay day = core::calendar_day(730'179);                 // 2000-03-01
//   std::uint32_t number = core::day_number(day.year, day.month, day.day);
//
// No function checks its arguments; all are a handful of instructions, without a loop.
#pragma once

#include <array>
#include <cstdint>

namespace core {

inline constexpr std::uint32_t kDaysOfCalendar = 3'652'059; // 0001-01-01 to 9999-12-31

struct CalendarDay {
    std::uint32_t year;  // 1 to 9999
    std::uint32_t month; // 1 to 12
    std::uint32_t day;   // 1 to 31
};

// A day in its year, from 0.
struct YearDay {
    std::uint32_t year;
    std::uint32_t day;
    bool isLeap;
};

// A multiple of 4, and where it is a multiple of 25 too (of 100, then), of 16 (of 400).
constexpr bool is_leap_year(std::uint32_t year) noexcept {
    return (year & (year % 25 == 0 ? 15 : 3)) == 0;
}

// Without branches: dates come in no order, so a processor would guess wrongly.
//
// Year 1 is the first of its cycle of 4, of its century and of its cycle of 400 years, and in each
// the longer piece comes last. So "times 4 plus 3" over the length of four pieces gives the number
// of the piece, and the remainder over 4 the day in it.
constexpr YearDay year_day(std::uint32_t number) noexcept {
    const std::uint32_t ofCenturies = 4 * number + 3;
    const std::uint32_t century = ofCenturies / 146'097;
    const std::uint32_t ofYears = ofCenturies % 146'097 | 3;
    // The quotient and four times the remainder of a division by 1461, from one product: exact for
    // dividends below 28,825,529 (C. Neri, L. Schneider, "Euclidean affine functions and their
    // application to calendar algorithms", 2022).
    const std::uint64_t product = std::uint64_t{2'939'745} * ofYears;
    const auto year = static_cast<std::uint32_t>(product >> 32);
    const std::uint32_t day = static_cast<std::uint32_t>(product) / 2'939'745 / 4;
    const bool isLeap = ((year & 3) == 3) & ((year != 99) | ((century & 3) == 3));
    return {100 * century + year + 1, day, isLeap};
}

namespace detail {

// By month. In years that begin with March the leap day is the last, and moves no month.
inline constexpr std::array<std::uint16_t, 13> kDaysSinceMarch = {0,   306, 337, 0,   31,  61, 92,
                                                                  122, 153, 184, 214, 245, 275};
inline constexpr std::array<std::uint8_t, 13> kDaysOfMonth = {0,  31, 28, 31, 30, 31, 30,
                                                              31, 31, 30, 31, 30, 31};

// Month times 32 plus day of the month, for the days of a leap year.
inline constexpr auto kMonthAndDay = [] {
    std::array<std::uint16_t, 366> table{};
    unsigned at = 0;
    for (unsigned month = 1; month <= 12; ++month)
        for (unsigned day = 1; day <= kDaysOfMonth[month] + (month == 2 ? 1u : 0u); ++day)
            table[at++] = static_cast<std::uint16_t>(month * 32 + day);
    return table;
}();

} // namespace detail

constexpr std::uint32_t days_of_month(std::uint32_t year, std::uint32_t month) noexcept {
    return detail::kDaysOfMonth[month] + (month == 2 && is_leap_year(year) ? 1u : 0u);
}

constexpr std::uint32_t day_number(std::uint32_t year, std::uint32_t month,
                                   std::uint32_t day) noexcept {
    constexpr std::uint32_t kFirstMarch = 306; // of year 0; January 1 of year 1 is that far behind
    const std::uint32_t full = year - (month <= 2 ? 1 : 0);
    const std::uint32_t centuries = full / 100;
    return full * 1461 / 4 - centuries + centuries / 4 + detail::kDaysSinceMarch[month] + day - 1 -
           kFirstMarch;
}

constexpr CalendarDay calendar_day(std::uint32_t number) noexcept {
    const auto [year, day, isLeap] = year_day(number);
    const std::uint32_t packed = detail::kMonthAndDay[day + ((day >= 59) & !isLeap)];
    return {year, packed >> 5, packed & 31};
}

} // namespace core
