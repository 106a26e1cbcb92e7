#include <core/numbers/TimeZone.h>

#include "TimeZoneImpl.h"

#include <core/numbers/TimeZoneException.h>

#include <unicode/ucal.h>

#include <memory>

namespace core {
namespace {

// The machine may have a zone that stands in no list, as TZ=XYZ3 makes one: its offset is taken as
// it is now.
InterfacePtr<TimeZoneImpl> nameless_zone_of_machine(const stdx::ustring& id) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UCalendar, void (*)(UCalendar*)> calendar(
        ucal_open(nullptr, 0, "", UCAL_GREGORIAN, &status), ucal_close);
    DateSpan offset;
    for (const auto field : {UCAL_ZONE_OFFSET, UCAL_DST_OFFSET})
        if (U_SUCCESS(status))
            offset += std::chrono::milliseconds(ucal_get(calendar.get(), field, &status));
    return {new TimeZoneImpl(id, U_SUCCESS(status) ? offset : DateSpan(), KnownToIcu::No), true};
}

InterfacePtr<TimeZoneImpl> zone_of_machine() {
    UErrorCode status = U_ZERO_ERROR;
    char16_t text[256];
    const std::int32_t size = ucal_getDefaultTimeZone(text, std::size(text), &status);
    const bool named = U_SUCCESS(status) && size <= static_cast<std::int32_t>(std::size(text));
    const stdx::ustring id(text, named ? static_cast<unsigned>(size) : 0u);
    try {
        return find_time_zone(id);
    } catch (const TimeZoneException&) {
        return nameless_zone_of_machine(id);
    }
}

} // namespace

TimeZone::TimeZone(const char16_t* id) : impl_(find_time_zone(id).detach()) {}

TimeZone::TimeZone(const stdx::ustring& id) : impl_(find_time_zone(id).detach()) {}

TimeZone::TimeZone(TimeZoneImpl* impl) noexcept : impl_(impl) {
    impl_->AddRef();
}

TimeZone::TimeZone(const TimeZone& other) noexcept : TimeZone(other.impl_) {}

TimeZone& TimeZone::operator=(const TimeZone& other) noexcept {
    other.impl_->AddRef();
    impl_->Release();
    impl_ = other.impl_;
    return *this;
}

TimeZone::~TimeZone() {
    impl_->Release();
}

const TimeZone& TimeZone::system() {
    static const TimeZone& zone = *new TimeZone(zone_of_machine().get());
    return zone;
}

const TimeZone& TimeZone::utc() {
    static const TimeZone& zone = *new TimeZone(u"UTC");
    return zone;
}

const stdx::ustring& TimeZone::id() const noexcept {
    return impl_->id();
}

bool TimeZone::simple() const noexcept {
    return impl_->simple();
}

DateSpan TimeZone::getOffset(const Date& date, bool local) const noexcept {
    return impl_->rules().at(date, local).total;
}

DateSpan TimeZone::getDSTOffset(const Date& date, bool local) const noexcept {
    return impl_->rules().at(date, local).daylight;
}

DateSpan TimeZone::getRawOffset() const noexcept {
    const ZoneOffset& now = impl_->rules().at(Date::getCurrentDateUTC(), false);
    return now.total - now.daylight;
}

bool TimeZone::useDaylightTime() const noexcept {
    return getDSTSavings() != DateSpan();
}

DateSpan TimeZone::getDSTSavings() const noexcept {
    return impl_->rules().daylight_of_year(Date::getCurrentDateUTC());
}

Date TimeZone::toLocalTime(const Date& date) const noexcept {
    return date + getOffset(date, false);
}

Date TimeZone::toUniversalTime(const Date& date) const noexcept {
    return date - getOffset(date, true);
}

bool operator==(const TimeZone& a, const TimeZone& b) noexcept {
    if (&a.impl() == &b.impl()) return true;
    return a.id() == b.id() && a.simple() == b.simple() &&
           (!a.simple() || a.getOffset(Date(), false) == b.getOffset(Date(), false));
}

} // namespace core
