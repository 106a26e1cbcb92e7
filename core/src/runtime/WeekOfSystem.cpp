#include "WeekOfSystem.h"

#include <unicode/ucal.h>

#include <memory>

namespace core {

int first_day_of_week_of_system() {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UCalendar, void (*)(UCalendar*)> calendar(
        ucal_open(nullptr, 0, nullptr, UCAL_GREGORIAN, &status),
        [](UCalendar* opened) { ucal_close(opened); });
    if (U_FAILURE(status)) return 1;
    // ICU counts from Sunday, 1, to Saturday, 7.
    const int day = ucal_getAttribute(calendar.get(), UCAL_FIRST_DAY_OF_WEEK);
    return day == UCAL_SUNDAY ? 7 : day - 1;
}

} // namespace core
