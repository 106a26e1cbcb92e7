#include <core/locale/Locale.h>
#include <core/numbers/TimeZone.h>

#include "numbers/TimeZoneImpl.h"

#include <unicode/ucal.h>

#include <algorithm>
#include <memory>

namespace core {

// Opens a calendar for each call: ICU's calendars are for one thread at a time, and names are asked
// for rarely.
stdx::ustring TimeZone::displayName(const Locale& locale) const {
    if (!impl_->known_to_icu()) return id();
    constexpr std::int32_t kMostUnits = 256;
    char16_t name[kMostUnits];
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UCalendar, void (*)(UCalendar*)> calendar(
        ucal_open(id().c_str(), static_cast<std::int32_t>(id().size()), locale.key(),
                  UCAL_GREGORIAN, &status),
        [](UCalendar* opened) { ucal_close(opened); });
    const std::int32_t size = ucal_getTimeZoneDisplayName(calendar.get(), UCAL_STANDARD,
                                                          locale.key(), name, kMostUnits, &status);
    if (U_FAILURE(status) && status != U_BUFFER_OVERFLOW_ERROR) return id();
    return stdx::ustring(name, static_cast<unsigned>(std::min(size, kMostUnits)));
}

} // namespace core
