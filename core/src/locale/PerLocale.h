// What is made once a locale and then shared by all threads until the program ends:
//
//   constinit PerLocale<WeekInfo> weeks;
//   const WeekInfo& week = weeks.of(locale, [&] { return new WeekInfo(week_from_icu(locale)); });
//
// The locales are a closed list, so the map is a table with a place for each. A found record costs
// one load: readers of the common case share no written word, as the counter of a reader-writer
// lock would be. Making takes the lock and looks a second time, so a record is made once; a record
// that could not be made is tried again by the next who asks. `make` must not ask the same map.
#pragma once

#include <core/locale/Locale.h>

#include <array>
#include <atomic>
#include <mutex>

namespace core {

template <class Record> class PerLocale {
public:
    // `make` gives a new record, which the map keeps.
    template <class Make> Record& of(const Locale& locale, Make&& make) {
        std::atomic<Record*>& place = places_[locale.index()];
        if (Record* const known = place.load(std::memory_order_acquire)) return *known;
        const std::lock_guard guard(making_);
        if (Record* const known = place.load(std::memory_order_relaxed)) return *known;
        Record* const made = make();
        place.store(made, std::memory_order_release);
        return *made;
    }

private:
    std::array<std::atomic<Record*>, Locale::kCount> places_ = {};
    std::mutex making_;
};

} // namespace core
