// A date with a time of day, from year 1 to year 9999, without a time zone.
//
//   core::Date date(2021, 1, 31, 12, 0, 0);
//   date.addMonth(1).endOfDay();                            // 2021-02-28 23:59:59
//   date += std::chrono::hours(2);                          // 2021-03-01 01:59:59
//   int year, month, day;
//   date.split(year, month, day);
//   stdx::ustring text = date.toString();                   // 20210301015959
//
// A date is one word, the number of ticks of 1/10,000 second since 0001-01-01 00:00:00, so dates are
// compared and hashed as numbers. Zero ticks is the empty date: 0001-01-01 00:00:00 is no date that
// anybody filled in.
//
// Nothing here throws, but for std::bad_alloc where a string is made. What is no date gives the
// empty date, and arithmetic stays within the range. All functions may be called from any thread.
// The calendar is the Gregorian one for all years. `TimeZone` turns dates from universal to local
// time.
#pragma once

#include <core/numbers/Calendar.h>
#include <core/numbers/DateSpan.h>
#include <core/numbers/WeekDay.h>
#include <core/platform/api.h>
#include <elm/string>

#include <chrono>
#include <concepts>

namespace core {

class IListInStream;
class IListOutStream;
class IReader;
class IWriter;

namespace detail {
// Whole numbers of a unit that is a day at most.
template <class Duration>
concept DurationOfDate = std::integral<typename Duration::rep> &&
    std::ratio_less_equal_v<typename Duration::period, std::ratio<86'400>>;
} // namespace detail

class Date {
public:
    static constexpr std::uint64_t kLastTicks = kDaysOfCalendar * kTicksPerDay - 1;

    constexpr Date() noexcept = default;
    // Empty unless the year is 1 to 9999 and the other components exist in it.
    constexpr Date(int year, int month, int day) noexcept : Date(year, month, day, 0, 0, 0) {}
    constexpr Date(int year, int month, int day, int hour, int minute, int second) noexcept {
        compose(year, month, day, hour, minute, second, *this);
    }
    constexpr explicit Date(const std::chrono::year_month_day& day) noexcept
        : Date(int{day.year()}, as_int(day.month()), as_int(day.day())) {}
    // Rounded down to ticks, clamped to the range.
    template <detail::DurationOfDate Duration>
    constexpr explicit Date(const std::chrono::local_time<Duration>& time) noexcept
        : ticks_(ticks_of(time.time_since_epoch())) {}
    // The date in universal time.
    template <detail::DurationOfDate Duration>
    constexpr explicit Date(const std::chrono::sys_time<Duration>& time) noexcept
        : ticks_(ticks_of(time.time_since_epoch())) {}

    // Any number is taken. One above `kLastTicks` is no date: it splits into zeros, and what is
    // derived from it is 0 or begins with year 1.
    static constexpr Date fromTicks(std::uint64_t ticks) noexcept {
        Date date;
        date.ticks_ = ticks;
        return date;
    }
    constexpr std::uint64_t ticks() const noexcept { return ticks_; }
    constexpr bool empty() const noexcept { return ticks_ == 0; }

    static constexpr Date latest() noexcept { return fromTicks(kLastTicks); }

    // As the constructor does; tells whether the components make a date. Without one `to` is empty.
    static constexpr bool compose(int year, int month, int day, int hour, int minute, int second,
                                  Date& to) noexcept;

    static constexpr bool isLeapYear(int year) noexcept {
        return year > 0 && is_leap_year(static_cast<std::uint32_t>(year));
    }
    // 0 for a month that does not exist.
    static constexpr int daysPerMonth(int year, int month) noexcept {
        if (month < 1 || month > 12) return 0;
        return detail::kDaysOfMonth[static_cast<std::size_t>(month)] +
               (month == 2 && isLeapYear(year) ? 1 : 0);
    }

    // Now, in whole seconds, in the time of this machine and in universal time.
    ORBCORE_API static Date getCurrentDate() noexcept;
    ORBCORE_API static Date getCurrentDateUTC() noexcept;
    // Now, in the time of this machine, in milliseconds since 0001-01-01. It jumps where the clocks
    // of this machine are put forward or back.
    ORBCORE_API static std::uint64_t getAbsoluteDateAsMilliseconds() noexcept;

    // --- arithmetic ---

    // Stays at `latest()` above and at the empty date below.
    constexpr Date& operator+=(const DateSpan& span) noexcept;
    constexpr Date& operator-=(const DateSpan& span) noexcept;
    friend constexpr Date operator+(Date date, const DateSpan& span) noexcept {
        return date += span;
    }
    friend constexpr Date operator-(Date date, const DateSpan& span) noexcept {
        return date -= span;
    }
    friend constexpr DateSpan operator-(const Date& a, const Date& b) noexcept {
        return DateSpan(static_cast<std::int64_t>(a.ticks_ - b.ticks_));
    }
    // Keeps the time of day, and the day where the month has it, else takes the month's last. Stays
    // in month 1 of year 1 below and at `latest()` above.
    constexpr Date& addMonth(int months) noexcept;

    // --- periods: these change the date into the first or the last second of its period ---

    constexpr Date& begOfMinute() noexcept { return cut(kTicksPerMinute, 0); }
    constexpr Date& endOfMinute() noexcept { return cut(kTicksPerMinute, 59); }
    constexpr Date& begOfHour() noexcept { return cut(kTicksPerHour, 0); }
    constexpr Date& endOfHour() noexcept { return cut(kTicksPerHour, 3'599); }
    constexpr Date& begOfDay() noexcept { return cut(kTicksPerDay, 0); }
    constexpr Date& endOfDay() noexcept { return cut(kTicksPerDay, 86'399); }
    constexpr Date& begOfMonth() noexcept;
    constexpr Date& endOfMonth() noexcept;
    constexpr Date& begOfQuart() noexcept;
    constexpr Date& endOfQuart() noexcept;
    constexpr Date& begOfYear() noexcept;
    constexpr Date& endOfYear() noexcept;
    // A week that begins before the calendar does begins with it.
    constexpr Date& begOfWeek(WeekDay firstDay) noexcept;
    // Six days and 23:59:59 behind `begOfWeek`.
    constexpr Date& endOfWeek(WeekDay firstDay) noexcept {
        return begOfWeek(firstDay) += DateSpan::fromSeconds(7 * 86'400 - 1);
    }
    // By the first day of the week of the current process; Monday without a process.
    Date& begOfWeek() noexcept { return begOfWeek(first_day_of_process()); }
    Date& endOfWeek() noexcept { return endOfWeek(first_day_of_process()); }

    // --- components ---

    // Fractions of a second are dropped.
    constexpr void split(int& year, int& month, int& day) const noexcept;
    constexpr void split(int& year, int& month, int& day, int& hour, int& minute,
                         int& second) const noexcept;

    constexpr int getYear() const noexcept {
        return valid() ? static_cast<int>(year_day(days()).year) : 0;
    }
    constexpr int getMonth() const noexcept {
        return valid() ? static_cast<int>(calendar_day(days()).month) : 0;
    }
    constexpr int getMonthDay() const noexcept {
        return valid() ? static_cast<int>(calendar_day(days()).day) : 0;
    }
    constexpr int getYearDay() const noexcept { // from 1
        return valid() ? static_cast<int>(year_day(days()).day) + 1 : 0;
    }
    constexpr int getQuarter() const noexcept { return (getMonth() + 2) / 3; } // 1 to 4
    constexpr WeekDay getWeekDay() const noexcept {
        return static_cast<WeekDay>(valid() ? days() % 7 + 1 : 0);
    }
    // Counts the weeks from January 1, which lies in week 1; each `firstDay` behind it begins the
    // next one. Not the weeks of ISO 8601.
    constexpr int getYearWeek(WeekDay firstDay) const noexcept;
    int getYearWeek() const noexcept { return getYearWeek(first_day_of_process()); }
    constexpr int getHour() const noexcept { return valid() ? part(kTicksPerHour, 24) : 0; }
    constexpr int getMinute() const noexcept { return valid() ? part(kTicksPerMinute, 60) : 0; }
    constexpr int getSecond() const noexcept { return valid() ? part(kTicksPerSecond, 60) : 0; }

    // --- std::chrono: without a zone, or taken as universal time ---

    constexpr explicit operator std::chrono::local_time<DateTicks>() const noexcept {
        return std::chrono::local_time<DateTicks>(since_unix());
    }
    constexpr explicit operator std::chrono::sys_time<DateTicks>() const noexcept {
        return std::chrono::sys_time<DateTicks>(since_unix());
    }
    constexpr explicit operator std::chrono::year_month_day() const noexcept;

    // --- text ---
    //
    // "YYYYMMDDhhmmss", the form of a date in every text of the system, and
    // "YYYY-MM-DDThh:mm:ss", that of XML. Fractions of a second are dropped.

    static constexpr std::size_t kTextSize = 14;
    static constexpr std::size_t kXMLTextSize = 19;

    ORBCORE_API stdx::ustring toString() const;
    ORBCORE_API stdx::ustring toXMLString() const;
    // The same into memory, without a terminator; returns the end.
    ORBCORE_API char16_t* toChars(char16_t* to) const noexcept;
    ORBCORE_API char* toChars(char* to) const noexcept;
    ORBCORE_API char16_t* toXMLChars(char16_t* to) const noexcept;
    ORBCORE_API char* toXMLChars(char* to) const noexcept;

    // These read a terminated text, skipping white space in front, and tell whether a date stood
    // there; if not, this date becomes empty. `end`, which may be null, is set behind what was
    // taken, and to the beginning of the text where nothing was.

    // 8, 12 or 14 digits are taken, the most that stand there; zeros alone are the empty date.
    // Digits that are no date set `end` to the first of them.
    ORBCORE_API bool fromString(const char16_t* text, const char16_t** end = nullptr) noexcept;
    ORBCORE_API bool fromString(const char* text, const char** end = nullptr) noexcept;
    // Exactly the form of `toXMLString`.
    ORBCORE_API bool fromXMLString(const char16_t* text, char16_t** end = nullptr) noexcept;
    // The forms of ISO 8601 that docs/dates.md lists, "2021-03", "20210304T050607" and
    // "2021-03-04T05:06:07.5+03:00" among them. Fractions are rounded to seconds. A time with a
    // zone is turned into universal time, and unless `keepUniversal` into that of
    // `TimeZone::system()`. Behind the date stands white space or the end.
    ORBCORE_API bool fromISOString(const char16_t* text, char16_t** end = nullptr,
                                   bool keepUniversal = false);

    // --- streams: an item of lists, see `DateSerializer` ---

    ORBCORE_API void toStream(IWriter* writer) const;
    // Takes 15 digits at most; false, and the empty date, where they are no date.
    ORBCORE_API bool fromStream(IReader* reader);
    // The ticks. What they are is not checked.
    ORBCORE_API void toBinary(IListOutStream* stream) const;
    ORBCORE_API void fromBinary(IListInStream* stream);

    friend constexpr bool operator==(const Date&, const Date&) noexcept = default;
    friend constexpr auto operator<=>(const Date&, const Date&) noexcept = default;

private:
    static constexpr std::int64_t kUnixDay = 719'162; // 1970-01-01

    static constexpr int as_int(auto component) noexcept {
        return static_cast<int>(static_cast<unsigned>(component));
    }

    template <class Duration> static constexpr std::uint64_t ticks_of(Duration sinceUnix) noexcept;

    ORBCORE_API static WeekDay first_day_of_process() noexcept;

    constexpr bool valid() const noexcept { return ticks_ <= kLastTicks; }
    // What periods and months are counted from: the ticks, or 0 where they are no date.
    constexpr std::uint64_t settled() const noexcept { return valid() ? ticks_ : 0; }
    constexpr std::uint32_t days() const noexcept {
        return static_cast<std::uint32_t>(ticks_ / kTicksPerDay);
    }
    constexpr int part(std::uint64_t unit, std::uint64_t count) const noexcept {
        return static_cast<int>(ticks_ / unit % count);
    }
    constexpr DateTicks since_unix() const noexcept {
        return DateTicks(static_cast<std::int64_t>(ticks_ - kUnixDay * kTicksPerDay));
    }

    constexpr Date& cut(std::uint64_t unit, std::uint64_t secondsBehind) noexcept {
        ticks_ = settled() - settled() % unit + secondsBehind * kTicksPerSecond;
        return *this;
    }
    constexpr std::uint32_t settled_days() const noexcept {
        return static_cast<std::uint32_t>(settled() / kTicksPerDay);
    }
    constexpr Date& set_beginning(std::uint32_t day) noexcept {
        return *this = fromTicks(day * kTicksPerDay);
    }
    constexpr Date& set_end(std::uint32_t day) noexcept {
        return *this = fromTicks(day * kTicksPerDay + 86'399 * kTicksPerSecond);
    }

    std::uint64_t ticks_ = 0;
};

// As in XML, with the fraction of a second where there is one; for logs and tests.
ORBCORE_API std::ostream& operator<<(std::ostream& out, const Date& date);

// --- bodies ---

constexpr bool Date::compose(int year, int month, int day, int hour, int minute, int second,
                             Date& to) noexcept {
    const auto number = [](int value) { return static_cast<std::uint32_t>(value); };
    to = Date();
    // In unsigned numbers, where 0 less 1 is too large for everything.
    if (number(year) - 1 >= 9999 || number(month) - 1 >= 12 ||
        number(day) - 1 >= days_of_month(number(year), number(month)) || number(hour) >= 24 ||
        number(minute) >= 60 || number(second) >= 60)
        return false;
    const std::uint64_t days = day_number(number(year), number(month), number(day));
    const std::uint32_t seconds = (number(hour) * 60 + number(minute)) * 60 + number(second);
    to.ticks_ = (days * 86'400 + seconds) * kTicksPerSecond;
    return true;
}

template <class Duration> constexpr std::uint64_t Date::ticks_of(Duration sinceUnix) noexcept {
    using namespace std::chrono;
    if constexpr (std::ratio_less_v<typename Duration::period, DateTicks::period>) {
        return ticks_of(floor<DateTicks>(sinceUnix));
    } else {
        using Days = duration<std::int64_t, std::ratio<86'400>>;
        const auto day = floor<Days>(sinceUnix);
        if (day.count() < -kUnixDay) return 0;
        if (day.count() >= kDaysOfCalendar - kUnixDay) return kLastTicks;
        const auto rest = duration_cast<DateTicks>(sinceUnix - day);
        return static_cast<std::uint64_t>(day.count() + kUnixDay) * kTicksPerDay +
               static_cast<std::uint64_t>(rest.count());
    }
}

constexpr Date& Date::operator+=(const DateSpan& span) noexcept {
    const std::uint64_t size = span.magnitude();
    if (span.ticks() < 0)
        ticks_ = size > ticks_ ? 0 : ticks_ - size;
    else
        ticks_ = valid() ? ticks_ + size : kLastTicks;
    if (!valid()) ticks_ = kLastTicks;
    return *this;
}

constexpr Date& Date::operator-=(const DateSpan& span) noexcept {
    return *this += -span;
}

constexpr Date& Date::addMonth(int months) noexcept {
    const std::uint64_t ticks = settled();
    const CalendarDay from = calendar_day(static_cast<std::uint32_t>(ticks / kTicksPerDay));
    const std::int64_t sum = std::int64_t{from.year} * 12 - 12 + from.month - 1 + months;
    if (sum >= 9999 * 12) return *this = latest();
    const auto count = static_cast<std::uint32_t>(sum < 0 ? 0 : sum);
    const std::uint32_t year = count / 12 + 1;
    const std::uint32_t month = count % 12 + 1;
    const std::uint32_t last = days_of_month(year, month);
    const std::uint32_t day = day_number(year, month, from.day < last ? from.day : last);
    ticks_ = day * kTicksPerDay + ticks % kTicksPerDay;
    return *this;
}

constexpr Date& Date::begOfMonth() noexcept {
    const std::uint32_t number = settled_days();
    return set_beginning(number + 1 - calendar_day(number).day);
}

constexpr Date& Date::endOfMonth() noexcept {
    const std::uint32_t number = settled_days();
    const auto [year, month, day] = calendar_day(number);
    return set_end(number - day + days_of_month(year, month));
}

constexpr Date& Date::begOfQuart() noexcept {
    const auto [year, month, day] = calendar_day(settled_days());
    return set_beginning(day_number(year, (month - 1) / 3 * 3 + 1, 1));
}

constexpr Date& Date::endOfQuart() noexcept {
    const auto [year, month, day] = calendar_day(settled_days());
    const std::uint32_t last = (month - 1) / 3 * 3 + 3;
    return set_end(day_number(year, last, days_of_month(year, last)));
}

constexpr Date& Date::begOfYear() noexcept {
    const std::uint32_t number = settled_days();
    return set_beginning(number - year_day(number).day);
}

constexpr Date& Date::endOfYear() noexcept {
    const std::uint32_t number = settled_days();
    const auto [year, day, isLeap] = year_day(number);
    return set_end(number - day + 364 + isLeap);
}

constexpr Date& Date::begOfWeek(WeekDay firstDay) noexcept {
    begOfDay();
    const int behind = (static_cast<int>(getWeekDay()) - static_cast<int>(firstDay) % 7 + 14) % 7;
    return *this -= DateSpan::fromDays(behind);
}

constexpr int Date::getYearWeek(WeekDay firstDay) const noexcept {
    if (!valid()) return 0;
    const int day = getYearDay() - 1;
    const int first = static_cast<int>(firstDay);
    const int ofNewYear = (static_cast<int>(days() % 7) - day % 7 + 7) % 7 + 1;
    const int untilFirst = first > ofNewYear ? first - ofNewYear : first + 7 - ofNewYear;
    if (day < untilFirst) return 1;
    return (day - untilFirst) / 7 + 1 + (day != 0 ? 1 : 0);
}

constexpr void Date::split(int& year, int& month, int& day) const noexcept {
    if (!valid()) [[unlikely]] {
        year = month = day = 0;
        return;
    }
    const CalendarDay at = calendar_day(days());
    year = static_cast<int>(at.year);
    month = static_cast<int>(at.month);
    day = static_cast<int>(at.day);
}

constexpr void Date::split(int& year, int& month, int& day, int& hour, int& minute,
                           int& second) const noexcept {
    split(year, month, day);
    // The rest of a day has 30 bits: divisions by constants of that width are cheap.
    const auto rest = static_cast<std::uint32_t>(settled() % kTicksPerDay);
    const std::uint32_t seconds = rest / kTicksPerSecond;
    const std::uint32_t minutes = seconds / 60;
    hour = static_cast<int>(minutes / 60);
    minute = static_cast<int>(minutes % 60);
    second = static_cast<int>(seconds % 60);
}

constexpr Date::operator std::chrono::year_month_day() const noexcept {
    int year = 0, month = 0, day = 0;
    split(year, month, day);
    return {std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
            std::chrono::day(static_cast<unsigned>(day))};
}

inline namespace literals {

// "20210304"_date, "202103040506"_date, "20210304050607"_date; what is no date does not compile.
consteval Date operator""_date(const char* digits, std::size_t size) {
    int parts[6] = {};
    bool good = size == 8 || size == 12 || size == 14;
    for (std::size_t i = 0; good && i != size; ++i) {
        int& part = parts[i < 4 ? 0 : i / 2 - 1];
        part = part * 10 + (digits[i] - '0');
        good = digits[i] >= '0' && digits[i] <= '9';
    }
    Date date;
    if (!good || !Date::compose(parts[0], parts[1], parts[2], parts[3], parts[4], parts[5], date))
        throw "this is no date";
    return date;
}

} // namespace literals
} // namespace core

template <> struct std::hash<core::Date> {
    std::size_t operator()(const core::Date& date) const noexcept {
        return std::hash<std::uint64_t>()(date.ticks());
    }
};
