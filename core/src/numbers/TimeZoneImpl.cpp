#include "TimeZoneImpl.h"

#include <core/concurrency/LockGuards.h>
#include <core/concurrency/RWMutex.h>
#include <core/numbers/TimeZone.h>
#include <core/numbers/TimeZoneException.h>

#include <boost/unordered/unordered_flat_map.hpp>

#include <unicode/ucal.h>
#include <unicode/uenum.h>

#include <algorithm>
#include <memory>
#include <optional>

namespace core {
namespace {

using ZonePtr = InterfacePtr<TimeZoneImpl>;

struct ViewHash {
    using is_transparent = void;
    std::size_t operator()(std::u16string_view id) const noexcept {
        return std::hash<std::u16string_view>()(id);
    }
};

using ZoneMap = boost::unordered_flat_map<stdx::ustring, ZonePtr, ViewHash, std::equal_to<>>;

// Never destroyed: handles outlive everything.
struct ZoneTable {
    static ZoneTable& instance() {
        static ZoneTable& table = *new ZoneTable;
        return table;
    }

    ZonePtr find(const ZoneMap& map, std::u16string_view id) {
        const ReaderLock lock(mutex);
        const auto found = map.find(id);
        return found == map.end() ? ZonePtr() : found->second;
    }
    // What the map holds under the id afterwards: another thread may have been faster.
    ZonePtr insert(ZoneMap& map, const ZonePtr& zone, std::size_t most) {
        const WriterLock lock(mutex);
        const auto found = map.find(zone->id());
        if (found != map.end()) return found->second;
        if (map.size() < most) map.emplace(zone->id(), zone);
        return zone;
    }

    RWMutex mutex; // guards both maps
    ZoneMap known;
    ZoneMap stored; // ids that ICU does not know
};

// The ids of ICU, and the custom ones once normalised, are few enough.
constexpr std::size_t kAllKnown = static_cast<std::size_t>(-1);
constexpr std::size_t kMostStored = 4'096;

std::vector<stdx::ustring> ids_of_icu() {
    std::vector<stdx::ustring> ids;
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UEnumeration, void (*)(UEnumeration*)> all(ucal_openTimeZones(&status),
                                                                     uenum_close);
    std::int32_t size = 0;
    while (const char16_t* const id = uenum_unext(all.get(), &size, &status))
        ids.emplace_back(id, static_cast<unsigned>(size));
    std::sort(ids.begin(), ids.end());
    return ids;
}

bool is_available(std::u16string_view id) {
    const std::vector<stdx::ustring>& ids = TimeZone::availableTimeZones();
    return std::binary_search(ids.begin(), ids.end(), id, std::less<>());
}

struct CustomZone {
    stdx::ustring id;
    DateSpan offset;
};

// "GMT", a sign, one or two digits of hours, and perhaps ":" and two digits of minutes.
std::optional<CustomZone> parse_custom(std::u16string_view id) {
    const auto digit = [&](std::size_t i) {
        return i < id.size() && id[i] >= u'0' && id[i] <= u'9' ? id[i] - u'0' : -1;
    };
    if (!id.starts_with(u"GMT") || id.size() < 5 || (id[3] != u'+' && id[3] != u'-')) return {};
    int hours = digit(4);
    std::size_t at = 5;
    if (hours >= 0 && digit(at) >= 0) hours = hours * 10 + digit(at++);
    int minutes = 0;
    if (at != id.size()) {
        if (id[at] != u':' || id.size() != at + 3 || digit(at + 1) < 0 || digit(at + 2) < 0)
            return {};
        minutes = digit(at + 1) * 10 + digit(at + 2);
    }
    if (hours < 0 || hours > 23 || minutes > 59) return {};
    const auto unit = [](int value) { return static_cast<char16_t>(u'0' + value); };
    const char16_t normal[] = {u'G',
                               u'M',
                               u'T',
                               id[3],
                               unit(hours / 10),
                               unit(hours % 10),
                               u':',
                               unit(minutes / 10),
                               unit(minutes % 10),
                               u'\0'};
    const DateSpan size = DateSpan::fromMinutes(hours * 60 + minutes);
    return CustomZone{normal, id[3] == u'-' ? -size : size};
}

ZonePtr custom_zone(const CustomZone& custom) {
    ZoneTable& table = ZoneTable::instance();
    if (ZonePtr zone = table.find(table.known, custom.id)) return zone;
    const ZonePtr made(new TimeZoneImpl(custom.id, custom.offset, KnownToIcu::Yes), true);
    return table.insert(table.known, made, kAllKnown);
}

} // namespace

const std::vector<stdx::ustring>& TimeZone::availableTimeZones() {
    static const auto& ids = *new std::vector<stdx::ustring>(ids_of_icu());
    return ids;
}

ZonePtr find_time_zone(std::u16string_view id) {
    ZoneTable& table = ZoneTable::instance();
    if (ZonePtr zone = table.find(table.known, id)) return zone;
    if (is_available(id)) {
        // The rules are read outside the lock: that takes long.
        const ZonePtr made(new TimeZoneImpl(stdx::ustring(id)), true);
        return table.insert(table.known, made, kAllKnown);
    }
    if (ZonePtr zone = table.find(table.stored, id)) return zone;
    if (const auto custom = parse_custom(id)) return custom_zone(*custom);
    throw TimeZoneException(stdx::ustring(id).c_str());
}

ZonePtr stored_time_zone(const stdx::ustring& id, const DateSpan& offset) {
    const ZonePtr made(new TimeZoneImpl(id, offset, KnownToIcu::No), true);
    if (id.empty() || is_available(id) || parse_custom(id)) return made;
    ZoneTable& table = ZoneTable::instance();
    table.insert(table.stored, made, kMostStored);
    return made;
}

} // namespace core
