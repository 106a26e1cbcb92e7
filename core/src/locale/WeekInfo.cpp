#include <core/locale/WeekInfo.h>

#include <core/numbers/Date.h>

#include "PerLocale.h"

#include <unicode/ucal.h>

#include <memory>

namespace core {
namespace {

using IcuDay = int; // from Sunday, 1, to Saturday, 7

WeekDay week_day(IcuDay day) noexcept {
    return day == UCAL_SUNDAY ? WeekDay::Sunday : static_cast<WeekDay>(day - 1);
}

// Where ICU has no data, the week is that of the standard for dates, ISO 8601.
WeekInfo week_from_icu(const Locale& locale) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UCalendar, void (*)(UCalendar*)> calendar(
        ucal_open(u"GMT", -1, locale.key(), UCAL_DEFAULT, &status),
        [](UCalendar* opened) { ucal_close(opened); });
    if (U_FAILURE(status)) return {WeekDay::Monday, WeekDay::Saturday, WeekDay::Sunday};

    const auto isFree = [&](IcuDay day) {
        const auto known = static_cast<UCalendarDaysOfWeek>((day + 6) % 7 + 1); // in a circle
        return ucal_getDayOfWeekType(calendar.get(), known, &status) != UCAL_WEEKDAY;
    };
    WeekDay start = WeekDay::Saturday, end = WeekDay::Sunday;
    for (IcuDay day = UCAL_SUNDAY; day <= UCAL_SATURDAY; ++day) {
        if (!isFree(day)) continue;
        if (!isFree(day - 1)) start = week_day(day);
        if (!isFree(day + 1)) end = week_day(day);
    }
    return {week_day(ucal_getAttribute(calendar.get(), UCAL_FIRST_DAY_OF_WEEK)), start, end};
}

} // namespace

WeekInfo WeekInfo::of(const Locale& locale) {
    static constinit PerLocale<const WeekInfo> weeks;
    return weeks.of(locale, [&] { return new WeekInfo(week_from_icu(locale)); });
}

bool WeekInfo::isWeekend(const Date& date) const {
    return isWeekend(date.getWeekDay());
}

} // namespace core
