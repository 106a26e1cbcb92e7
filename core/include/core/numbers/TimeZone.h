// Time zones: between universal time and the time that clocks show somewhere.
//
//   core::TimeZone moscow(u"Europe/Moscow");
//   core::Date there = moscow.toLocalTime(core::Date::getCurrentDateUTC());
//   core::Date utc = moscow.toUniversalTime(core::Date(2021, 3, 4, 5, 6, 7));
//
// The zones and their rules are those of ICU. There is one object for each id in the whole program,
// and `TimeZone` is a handle on it: 8 bytes, a copy is one atomic increment. All functions may be
// called from any thread.
#pragma once

#include <core/numbers/Date.h>

#include <vector>

namespace core {

class ListInStream;
class ListOutStream;
class Locale;
class TimeZoneImpl;

class ORBCORE_API TimeZone {
public:
    // An id of `availableTimeZones`, in exactly this case of letters; or "GMT+h", "GMT-hh",
    // "GMT+h:mm" and the like, up to 23:59, which gets the id "GMT+hh:mm"; or the id of a zone of
    // fixed offset that was read from a list. Else TimeZoneException. A first use of a zone takes
    // up to some milliseconds, later ones a search in a table under a reader lock.
    explicit TimeZone(const char16_t* id);
    explicit TimeZone(const stdx::ustring& id);
    // Another handle on what a handle has; takes a reference. Not null.
    explicit TimeZone(TimeZoneImpl* impl) noexcept;
    // A moved zone is a copied one: no handle is ever empty.
    TimeZone(const TimeZone& other) noexcept;
    TimeZone& operator=(const TimeZone& other) noexcept;
    ~TimeZone();

    // The zone of this machine, as found at the first call; and "UTC".
    static const TimeZone& system();
    static const TimeZone& utc();

    // The ids that ICU knows, in the order of their code units.
    static const std::vector<stdx::ustring>& availableTimeZones();

    const stdx::ustring& id() const noexcept;
    // The long name that people know the zone by; the id for a zone that ICU does not know.
    stdx::ustring displayName(const Locale& locale) const;
    // Whether the zone is nothing but a fixed offset: "GMT+03:00", and what was read as such.
    bool simple() const noexcept;

    // --- what has to be added to universal time ---
    //
    // With `local` the date is the time that the clocks of the zone show. Where clocks are put
    // forward, the skipped times count by the offset before; where they are put back, the repeated
    // times count by the offset after.

    DateSpan getOffset(const Date& date, bool local) const noexcept;
    // The part of it that is due to daylight saving time.
    DateSpan getDSTOffset(const Date& date, bool local) const noexcept;

    // The offset without daylight saving time, as it is now.
    DateSpan getRawOffset() const noexcept;
    // Whether there is daylight saving time in the current year, and how much.
    bool useDaylightTime() const noexcept;
    DateSpan getDSTSavings() const noexcept;

    // Clamped as `Date::operator+=`.
    Date toLocalTime(const Date& date) const noexcept;
    Date toUniversalTime(const Date& date) const noexcept;

    // As a list: whether it is simple, the id, and the ticks of a simple zone's offset. The zone of a
    // list throws TimeZoneException for an id that names no zone; a simple zone's id need not name
    // one, and does so from then on.
    void serialize(ListOutStream& stream) const;
    static TimeZone deserialize(ListInStream& stream);

    // The same id and, for simple zones, the same offset.
    friend ORBCORE_API bool operator==(const TimeZone& a, const TimeZone& b) noexcept;

    // For what stores zones and names them.
    TimeZoneImpl& impl() const noexcept { return *impl_; }

private:
    TimeZoneImpl* impl_; // owned
};

} // namespace core
