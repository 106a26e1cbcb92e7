#include <core/numbers/Date.h>

#include "support/ProcessTest.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <tuple>

namespace {

using namespace core;
using namespace std::chrono_literals;
namespace chrono = std::chrono;

static_assert(sizeof(Date) == 8 && sizeof(DateSpan) == 8);

// The calendar by counting on, a day at a time.
struct Walk {
    int year = 1, month = 1, day = 1, yearDay = 1, weekDay = 1;

    bool leap() const { return year % 400 == 0 || (year % 4 == 0 && year % 100 != 0); }
    int month_length() const {
        if (month == 2) return leap() ? 29 : 28;
        return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
    }
    void step() {
        weekDay = weekDay % 7 + 1;
        ++yearDay;
        if (++day <= month_length()) return;
        day = 1;
        if (++month <= 12) return;
        month = yearDay = 1;
        ++year;
    }
};

Date last_second(int year, int month, int day) {
    return Date(year, month, day, 23, 59, 59);
}

TEST(DateCalendar, IsThatOfCountingOnForAllDays) {
    Walk at;
    for (std::uint64_t number = 0; number < kDaysOfCalendar; ++number, at.step()) {
        const Date date = Date::fromTicks(number * kTicksPerDay);
        int year = 0, month = 0, day = 0;
        date.split(year, month, day);
        ASSERT_EQ(std::tie(year, month, day), std::tie(at.year, at.month, at.day)) << number;
        ASSERT_EQ(Date(year, month, day), date);
        ASSERT_EQ(date.getYearDay(), at.yearDay) << date;
        ASSERT_EQ(static_cast<int>(date.getWeekDay()), at.weekDay) << date;
    }
    EXPECT_EQ(at.year, 10'000);
}

TEST(DatePeriods, BeginAndEndForAllMonths) {
    Walk at;
    for (; at.year < 10'000; at.day = at.month_length(), at.step()) {
        const int last = at.month_length();
        const int quarter = (at.month + 2) / 3;
        for (const int day : {1, 15, last}) {
            const Date date = Date(at.year, at.month, day, 13, 14, 15) + DateSpan(77);
            ASSERT_EQ(Date(date).begOfMonth(), Date(at.year, at.month, 1));
            ASSERT_EQ(Date(date).endOfMonth(), last_second(at.year, at.month, last));
            ASSERT_EQ(Date(date).begOfQuart(), Date(at.year, quarter * 3 - 2, 1));
            ASSERT_EQ(Date(date).endOfQuart(),
                      last_second(at.year, quarter * 3, quarter == 1 || quarter == 4 ? 31 : 30));
            ASSERT_EQ(Date(date).begOfYear(), Date(at.year, 1, 1));
            ASSERT_EQ(Date(date).endOfYear(), last_second(at.year, 12, 31));
            ASSERT_EQ(date.getQuarter(), quarter);
        }
    }
}

TEST(DatePeriods, EndWithTheirLastWholeSecond) {
    const Date date = Date(2021, 3, 4, 5, 6, 7) + DateSpan(89);
    EXPECT_EQ(Date(date).begOfMinute(), Date(2021, 3, 4, 5, 6, 0));
    EXPECT_EQ(Date(date).endOfMinute(), Date(2021, 3, 4, 5, 6, 59));
    EXPECT_EQ(Date(date).begOfHour(), Date(2021, 3, 4, 5, 0, 0));
    EXPECT_EQ(Date(date).endOfHour(), Date(2021, 3, 4, 5, 59, 59));
    EXPECT_EQ(Date(date).begOfDay(), Date(2021, 3, 4));
    EXPECT_EQ(Date(date).endOfDay(), last_second(2021, 3, 4));
    EXPECT_EQ(Date::latest().endOfYear(), last_second(9999, 12, 31));
}

// A week number is one more than the count of days `firstDay` since the day after January 1.
TEST(DateWeeks, AreThoseOfAPlainCount) {
    Walk at;
    std::array<int, 8> weeks{};
    for (; at.year <= 401; at.step()) {
        const Date date(at.year, at.month, at.day, 12, 0, 0);
        for (int first = 1; first <= 7; ++first) {
            int& week = weeks[static_cast<std::size_t>(first)];
            week = at.yearDay == 1 ? 1 : week + (at.weekDay == first ? 1 : 0);
            const auto firstDay = static_cast<WeekDay>(first);
            ASSERT_EQ(date.getYearWeek(firstDay), week) << date << " by " << first;

            const Date begin = Date(date).begOfWeek(firstDay);
            ASSERT_EQ(begin.ticks() % kTicksPerDay, 0u);
            ASSERT_LT(date - begin, DateSpan::fromDays(7));
            ASSERT_TRUE(begin.getWeekDay() == firstDay || begin.empty()) << date;
            ASSERT_EQ(Date(date).endOfWeek(firstDay), begin + DateSpan(6'047'990'000)) << date;
        }
    }
}

class DateInProcess : public test::ProcessTest {};

TEST_F(DateInProcess, TakesTheFirstDayOfTheWeekFromTheProcess) {
    const Date sunday(2021, 3, 7);
    process().setFirstDayOfWeek(7);
    EXPECT_EQ(Date(sunday).begOfWeek(), sunday);
    EXPECT_EQ(Date(sunday).endOfWeek(), last_second(2021, 3, 13));
    EXPECT_EQ(sunday.getYearWeek(), sunday.getYearWeek(WeekDay::Sunday));
    process().setFirstDayOfWeek(99);
    EXPECT_EQ(Date(sunday).begOfWeek(), Date(2021, 3, 1)) << "nonsense counts as Monday";
}

TEST(DateWeeks, BeginWithMondayWithoutAProcess) {
    EXPECT_EQ(Date(2021, 3, 7).begOfWeek(), Date(2021, 3, 1));
    EXPECT_EQ(Date(2021, 3, 7).getYearWeek(), Date(2021, 3, 7).getYearWeek(WeekDay::Monday));
}

TEST(DateComponents, ThatAreNoDateGiveTheEmptyDate) {
    constexpr int kLow = std::numeric_limits<int>::min(), kHigh = std::numeric_limits<int>::max();
    const int rows[][6] = {
        {0, 1, 1, 0, 0, 0},       {10'000, 1, 1, 0, 0, 0},   {kLow, 1, 1, 0, 0, 0},
        {kHigh, 1, 1, 0, 0, 0},   {2020, 0, 1, 0, 0, 0},     {2020, 13, 1, 0, 0, 0},
        {2020, kLow, 1, 0, 0, 0}, {2020, kHigh, 1, 0, 0, 0}, {2020, 1, 0, 0, 0, 0},
        {2020, 1, 32, 0, 0, 0},   {2020, 4, 31, 0, 0, 0},    {1900, 2, 29, 0, 0, 0},
        {2023, 2, 29, 0, 0, 0},   {2000, 2, 30, 0, 0, 0},    {2020, 1, kLow, 0, 0, 0},
        {2020, 1, 1, 24, 0, 0},   {2020, 1, 1, -1, 0, 0},    {2020, 1, 1, 0, 60, 0},
        {2020, 1, 1, 0, -1, 0},   {2020, 1, 1, 0, 0, 60},    {2020, 1, 1, 0, 0, -1},
    };
    for (const auto& [year, month, day, hour, minute, second] : rows) {
        Date date(2000, 1, 1);
        EXPECT_FALSE(Date::compose(year, month, day, hour, minute, second, date)) << year;
        EXPECT_TRUE(date.empty()) << year << '-' << month << '-' << day;
    }
    EXPECT_FALSE(Date(2000, 2, 29).empty());
    EXPECT_TRUE(Date(1, 1, 1).empty());
    EXPECT_EQ(Date(9999, 12, 31, 23, 59, 59) + DateSpan(9'999), Date::latest());
    EXPECT_EQ(Date::latest().ticks(), 3'155'378'975'999'999u);

    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    Date::latest().split(year, month, day, hour, minute, second);
    EXPECT_EQ((std::array{year, month, day, hour, minute, second}),
              (std::array{9999, 12, 31, 23, 59, 59}));
    EXPECT_FALSE(Date::isLeapYear(0) || Date::isLeapYear(-4) || Date::isLeapYear(1900));
    EXPECT_TRUE(Date::isLeapYear(4) && Date::isLeapYear(2000));
    EXPECT_EQ(Date::daysPerMonth(2020, 2) + Date::daysPerMonth(2021, 0), 29);
}

TEST(DateArithmetic, StaysWithinTheRange) {
    constexpr DateSpan kLowest(std::numeric_limits<std::int64_t>::min());
    constexpr DateSpan kHighest(std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(Date(9999, 12, 31, 12, 0, 0) + DateSpan::fromDays(1), Date::latest());
    EXPECT_EQ(Date(1, 1, 1) - DateSpan::fromDays(1), Date());
    EXPECT_EQ(Date(2000, 1, 1) + kHighest, Date::latest());
    EXPECT_EQ(Date(2000, 1, 1) - kLowest, Date::latest());
    EXPECT_EQ(Date(2000, 1, 1) + kLowest, Date());
    EXPECT_EQ(Date(2000, 1, 1) - kHighest, Date());
    EXPECT_EQ(Date(2000, 1, 1) + 36h - 1min, Date(2000, 1, 2, 11, 59, 0));
    EXPECT_EQ(Date(2000, 1, 1) - Date(2000, 1, 2), -DateSpan(24h));
    EXPECT_EQ(kHighest + DateSpan(1), kHighest);
    EXPECT_EQ(kLowest - DateSpan(1), kLowest);
    EXPECT_EQ(-kLowest, kHighest);
    EXPECT_EQ(kLowest * -2, kHighest);
    EXPECT_EQ(kHighest * -2, kLowest);
}

TEST(DateArithmetic, AddsMonths) {
    const struct {
        Date from;
        int months;
        Date to;
    } rows[] = {
        {"20210131"_date, 1, "20210228"_date},
        {"20200131"_date, 1, "20200229"_date},
        {"20200331"_date, -1, "20200229"_date},
        {"20200229"_date, 12, "20210228"_date},
        {"20200229"_date, -1200, "19200229"_date},
        {"20200229"_date, -1440, "19000228"_date},
        {"20211231"_date, 2, "20220228"_date},
        {"00010115"_date, -1, "00010115"_date},
        {"00010315"_date, std::numeric_limits<int>::min(), "00010115"_date},
        {"99991231"_date, 1, Date::latest()},
        {"99991130"_date, 1, "99991230"_date},
        {"20200101"_date, std::numeric_limits<int>::max(), Date::latest()},
        {Date(), 13, "00020201"_date},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Date(row.from).addMonth(row.months), row.to) << row.from << ' ' << row.months;
    const DateSpan clock(8h + 7min + DateTicks(1));
    EXPECT_EQ(("20210131"_date + clock).addMonth(1), "20210228"_date + clock);
}

TEST(DateOutOfRange, SplitsIntoZerosAndCountsFromYearOne) {
    for (const std::uint64_t ticks : {Date::kLastTicks + 1, ~std::uint64_t{0}}) {
        const Date date = Date::fromTicks(ticks);
        int year = 1, month = 1, day = 1, hour = 1, minute = 1, second = 1;
        date.split(year, month, day, hour, minute, second);
        EXPECT_EQ((std::array{year, month, day, hour, minute, second}), (std::array<int, 6>{}));
        EXPECT_EQ(
            (std::array{date.getYear(), date.getMonth(), date.getMonthDay(), date.getYearDay(),
                        date.getQuarter(), date.getYearWeek(), static_cast<int>(date.getWeekDay()),
                        date.getHour(), date.getMinute(), date.getSecond()}),
            (std::array<int, 10>{}));
        EXPECT_EQ(Date(date).endOfMonth(), last_second(1, 1, 31));
        EXPECT_EQ(Date(date).begOfWeek(), Date());
        EXPECT_EQ(Date(date).addMonth(1), Date(1, 2, 1));
        EXPECT_EQ(date + DateSpan(1), Date::latest());
        EXPECT_EQ(date.toString(), u"00000000000000");
    }
}

TEST(DateAndChrono, MeetWithinTheRange) {
    const chrono::sys_seconds moment = chrono::sys_days(2021y / 3 / 4) + 5h + 6min + 7s;
    const Date date("20210304050607"_date);
    EXPECT_EQ(Date(moment), date);
    EXPECT_EQ(Date(moment + 1ns), date);
    EXPECT_EQ(Date(moment - 1ns), date - DateSpan(1));
    EXPECT_EQ(Date(chrono::local_days(1969y / 12 / 31) + 23h), Date(1969, 12, 31, 23, 0, 0));
    EXPECT_EQ(static_cast<chrono::sys_time<DateTicks>>(date), moment);
    EXPECT_EQ(static_cast<chrono::local_time<DateTicks>>(Date()), chrono::local_days(1y / 1 / 1));
    EXPECT_EQ(static_cast<chrono::year_month_day>(date), 2021y / 3 / 4);
    EXPECT_EQ(Date(2021y / 3 / 4), Date(2021, 3, 4));
    EXPECT_TRUE(Date(2021y / 2 / 29).empty());
    EXPECT_EQ(Date(chrono::sys_seconds::max()), Date::latest());
    EXPECT_EQ(Date(chrono::sys_seconds::min()), Date());
    EXPECT_EQ(Date(chrono::sys_time<chrono::nanoseconds>::min()),
              Date(1677, 9, 21, 0, 12, 43) + DateSpan(1'452));
    EXPECT_EQ(Date(chrono::sys_time<chrono::hours>::max()), Date::latest());
}

TEST(DateNow, IsTheSystemsClock) {
    const auto seconds = [](const DateSpan& span) { return span.ticks() / 10'000; };
    const Date before(chrono::floor<chrono::seconds>(chrono::system_clock::now()));
    const Date universal = Date::getCurrentDateUTC();
    const Date local = Date::getCurrentDate();
    const std::uint64_t milliseconds = Date::getAbsoluteDateAsMilliseconds();
    EXPECT_LE(std::abs(seconds(universal - before)), 2);
    EXPECT_LE(std::abs(static_cast<std::int64_t>(milliseconds - local.ticks() / 10)), 2'000);
    const std::time_t now = std::time(nullptr);
    EXPECT_LE(std::abs(seconds(local - universal) - std::localtime(&now)->tm_gmtoff), 2);
}

} // namespace
