// The offsets of one time zone for all dates.
#pragma once

#include <core/numbers/Date.h>

#include <string_view>
#include <vector>

namespace core {

struct ZoneOffset {
    DateSpan total; // to be added to universal time
    DateSpan daylight;
};

// ICU's objects may be used by one thread at a time, and a question to them costs a microsecond. So
// its rules are read out once, into a table that never changes again: any number of threads search
// it without a lock, in some ten steps.
class ZoneRules {
public:
    explicit ZoneRules(const DateSpan& fixed) : offsets_{{fixed, DateSpan()}} {}
    // The zone that ICU has under this id. Throws TimeZoneException if ICU fails.
    explicit ZoneRules(const stdx::ustring& id);

    // With `local` the date is in the time of the zone: skipped times count by the offset before,
    // repeated ones by the offset after.
    const ZoneOffset& at(const Date& date, bool local) const noexcept {
        return offsets_[index(date, local)];
    }
    // The first daylight saving time that is in force in the year of `now`; 0: none.
    DateSpan daylight_of_year(Date now) const noexcept;

private:
    void add(double transition, const ZoneOffset& after);
    void settle_local_starts() noexcept;
    std::size_t index(const Date& date, bool local) const noexcept;

    // The offset number i + 1 holds from the ticks number i on, number 0 before all. Both lists of
    // ticks ascend.
    std::vector<ZoneOffset> offsets_;
    std::vector<std::uint64_t> starts_;      // in universal time
    std::vector<std::uint64_t> localStarts_; // on the clocks of the zone
    bool repeats_ = false;                   // what was read of the last cycle goes on for ever
};

} // namespace core
