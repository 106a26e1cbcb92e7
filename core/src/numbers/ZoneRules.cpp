// A rule such as "the last Sunday of March" repeats with the calendar, every 400 years. ICU lists
// exceptions up to the year 2087 (months that follow the moon); behind them every zone either
// keeps its offset or follows such rules. So the transitions of the years up to 2499 tell all.

#include "ZoneRules.h"

#include <core/numbers/TimeZoneException.h>

#include <unicode/ucal.h>

#include <algorithm>
#include <memory>
#include <new>

namespace core {
namespace {

constexpr std::uint64_t kUnixTicks = Date(1970, 1, 1).ticks();
// No zone changes its offset close to the turn of a year.
constexpr std::uint64_t kCycleBegin = Date(2100, 1, 1).ticks();
constexpr std::uint64_t kCycleEnd = Date(2500, 1, 1).ticks();
constexpr std::uint64_t kCycle = kCycleEnd - kCycleBegin;

constexpr double milliseconds_of(std::uint64_t ticks) {
    return static_cast<double>(static_cast<std::int64_t>(ticks - kUnixTicks) / 10);
}

class IcuCalendar {
public:
    explicit IcuCalendar(const stdx::ustring& id)
        : calendar_(ucal_open(id.c_str(), static_cast<std::int32_t>(id.size()), "", UCAL_GREGORIAN,
                              &status_),
                    ucal_close) {}

    // The next transition behind `from`, both in milliseconds since 1970.
    bool next(double from, double& transition) {
        ucal_setMillis(calendar_.get(), from, &status_);
        return ucal_getTimeZoneTransitionDate(calendar_.get(), UCAL_TZ_TRANSITION_NEXT, &transition,
                                              &status_) &&
               good();
    }
    ZoneOffset offset(double at) {
        ucal_setMillis(calendar_.get(), at, &status_);
        const DateSpan raw = field(UCAL_ZONE_OFFSET);
        const DateSpan daylight = field(UCAL_DST_OFFSET);
        return {raw + daylight, daylight};
    }
    bool good() const { return U_SUCCESS(status_) != 0; }
    void check(const stdx::ustring& id) const {
        if (status_ == U_MEMORY_ALLOCATION_ERROR) throw std::bad_alloc();
        if (!good()) throw TimeZoneException(id.c_str());
    }

private:
    DateSpan field(UCalendarDateFields which) {
        return std::chrono::milliseconds(ucal_get(calendar_.get(), which, &status_));
    }

    UErrorCode status_ = U_ZERO_ERROR;
    std::unique_ptr<UCalendar, void (*)(UCalendar*)> calendar_;
};

} // namespace

ZoneRules::ZoneRules(const stdx::ustring& id) {
    IcuCalendar calendar(id);
    calendar.check(id);
    double at = milliseconds_of(0);
    offsets_.push_back(calendar.offset(at));
    for (double transition = 0; calendar.next(at, transition) && transition > at; at = transition) {
        if (transition >= milliseconds_of(kCycleEnd)) break;
        add(transition, calendar.offset(transition));
    }
    calendar.check(id);
    settle_local_starts();
    repeats_ = !starts_.empty() && starts_.back() >= kCycleBegin;
}

// A date counts by whole milliseconds since 1970, cut towards 1970: a moment before 1970 holds from
// nine ticks earlier on.
void ZoneRules::add(double transition, const ZoneOffset& after) {
    const auto ticks_of = [](std::int64_t milliseconds) {
        const std::int64_t ticks = milliseconds * 10 - (milliseconds <= 0 ? 9 : 0);
        return kUnixTicks + static_cast<std::uint64_t>(ticks);
    };
    const auto milliseconds = static_cast<std::int64_t>(transition);
    starts_.push_back(ticks_of(milliseconds));
    localStarts_.push_back(ticks_of(milliseconds + after.total.ticks() / 10));
    offsets_.push_back(after);
}

// Were clocks put back twice at short distance, the later offset would begin first on the clocks;
// the later one counts then. No zone does so, but the search needs lists that ascend.
void ZoneRules::settle_local_starts() noexcept {
    for (std::size_t i = localStarts_.size(); i > 1; --i)
        localStarts_[i - 2] = std::min(localStarts_[i - 2], localStarts_[i - 1]);
}

std::size_t ZoneRules::index(const Date& date, bool local) const noexcept {
    const std::vector<std::uint64_t>& starts = local ? localStarts_ : starts_;
    std::uint64_t ticks = date.ticks();
    if (repeats_ && ticks >= kCycleEnd) ticks = kCycleBegin + (ticks - kCycleBegin) % kCycle;
    // A search by halves without branches: dates come in no order.
    std::size_t first = 0;
    for (std::size_t size = starts.size(); size != 0;) {
        const std::size_t half = (size + 1) / 2;
        first += starts[first + half - 1] <= ticks ? half : 0;
        size -= half;
    }
    return first;
}

DateSpan ZoneRules::daylight_of_year(Date now) const noexcept {
    const std::size_t last = index(Date(now).endOfYear(), false);
    for (std::size_t i = index(now.begOfYear(), false); i <= last; ++i)
        if (offsets_[i].daylight != DateSpan()) return offsets_[i].daylight;
    return {};
}

} // namespace core
