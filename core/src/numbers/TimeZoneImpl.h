// What the handles of one time zone share, and the table of all of them.
#pragma once

#include "ZoneRules.h"

#include <core/component/InterfacePtr.h>
#include <core/component/Refcountable.h>

namespace core {

// Whether ICU has a zone, or makes one, by the id.
enum class KnownToIcu : bool { No, Yes };

// Immutable, so it is read by all threads without a lock.
class TimeZoneImpl : public Refcountable<TimeZoneImpl, AtomicCounter> {
public:
    // The zone of ICU.
    explicit TimeZoneImpl(const stdx::ustring& id) : id_(id), rules_(id) {}
    // A fixed offset.
    TimeZoneImpl(const stdx::ustring& id, const DateSpan& offset, KnownToIcu known)
        : id_(id), simple_(true), known_(known == KnownToIcu::Yes), rules_(offset) {}

    const stdx::ustring& id() const noexcept { return id_; }
    bool simple() const noexcept { return simple_; }
    bool known_to_icu() const noexcept { return known_; } // else the id is all the name it has
    const ZoneRules& rules() const noexcept { return rules_; }

private:
    const stdx::ustring id_;
    const bool simple_ = false;
    const bool known_ = true;
    const ZoneRules rules_;
};

// The one object of this id. Throws TimeZoneException for an id that names no zone.
InterfacePtr<TimeZoneImpl> find_time_zone(std::u16string_view id);

// A zone of fixed offset as it was read from a list. An id that names no zone so far names this
// one from now on. At most 4,096 ids are taken up in this way; the zones of further ones are as
// good, but are not found by id.
ORBCORE_API InterfacePtr<TimeZoneImpl> stored_time_zone(const stdx::ustring& id,
                                                        const DateSpan& offset);

} // namespace core
