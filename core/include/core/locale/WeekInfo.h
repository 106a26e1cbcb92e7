// How a country counts its week.
//
//   const auto week = core::WeekInfo::of(core::Locale(u"en_US"));
//   date.begOfWeek(week.firstDayOfWeek());
//   if (week.isWeekend(date)) ...
#pragma once

#include <core/locale/Locale.h>
#include <core/numbers/WeekDay.h>

namespace core {

class Date;

class ORBCORE_API WeekInfo {
public:
    // A weekend that begins behind its end goes past the end of the week.
    constexpr WeekInfo(WeekDay firstDayOfWeek, WeekDay weekendStart, WeekDay weekendEnd) noexcept
        : first_(firstDayOfWeek), weekendStart_(weekendStart), weekendEnd_(weekendEnd) {}

    // What ICU tells of the locale's country; asked once a locale. Safe on any thread.
    static WeekInfo of(const Locale& locale);

    constexpr WeekDay firstDayOfWeek() const noexcept { return first_; }
    constexpr WeekDay weekendStart() const noexcept { return weekendStart_; }
    constexpr WeekDay weekendEnd() const noexcept { return weekendEnd_; }

    constexpr bool isWeekend(WeekDay day) const noexcept {
        if (weekendStart_ <= weekendEnd_) return weekendStart_ <= day && day <= weekendEnd_;
        return day >= weekendStart_ || day <= weekendEnd_;
    }
    bool isWeekend(const Date& date) const;

    // Changed copies.
    constexpr WeekInfo withFirstDayOfWeek(WeekDay day) const noexcept {
        return {day, weekendStart_, weekendEnd_};
    }
    constexpr WeekInfo withWeekend(WeekDay start, WeekDay end) const noexcept {
        return {first_, start, end};
    }

    friend constexpr bool operator==(const WeekInfo&, const WeekInfo&) noexcept = default;

private:
    WeekDay first_;
    WeekDay weekendStart_;
    WeekDay weekendEnd_;
};

} // namespace core
