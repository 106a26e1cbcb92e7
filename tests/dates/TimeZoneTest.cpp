#include <core/numbers/TimeZone.h>

#include "numbers/TimeZoneImpl.h"
#include "support/ProcessTest.h"

#include <core/component/Utf8.h>
#include <core/numbers/TimeZoneException.h>

#include <gtest/gtest.h>
#include <unicode/ucal.h>

#include <algorithm>
#include <memory>
#include <thread>

namespace {

using namespace core;

constexpr std::uint64_t kUnix = Date(1970, 1, 1).ticks();

Date date_of(double milliseconds) {
    const auto ticks = static_cast<std::int64_t>(milliseconds * 10);
    return Date::fromTicks(kUnix + static_cast<std::uint64_t>(ticks));
}

DateSpan hours(int n) {
    return DateSpan::fromHours(n);
}

struct Offsets {
    DateSpan total, daylight;
    bool operator==(const Offsets&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Offsets& offsets) {
    return out << offsets.total << ", daylight " << offsets.daylight;
}

// ICU, asked a moment at a time.
class Oracle {
public:
    explicit Oracle(const stdx::ustring& id)
        : calendar_(ucal_open(id.c_str(), -1, "en", UCAL_GREGORIAN, &status_), ucal_close) {}
    ~Oracle() { EXPECT_TRUE(U_SUCCESS(status_)) << u_errorName(status_); }

    Offsets at(double milliseconds, bool local) {
        std::int32_t raw = 0, daylight = 0;
        ucal_setMillis(calendar_.get(), milliseconds, &status_);
        if (local) {
            ucal_getTimeZoneOffsetFromLocal(calendar_.get(), UCAL_TZ_LOCAL_FORMER,
                                            UCAL_TZ_LOCAL_LATTER, &raw, &daylight, &status_);
        } else {
            raw = ucal_get(calendar_.get(), UCAL_ZONE_OFFSET, &status_);
            daylight = ucal_get(calendar_.get(), UCAL_DST_OFFSET, &status_);
        }
        return {DateSpan((raw + daylight) * std::int64_t{10}),
                DateSpan(daylight * std::int64_t{10})};
    }
    bool next(double from, double& transition) {
        ucal_setMillis(calendar_.get(), from, &status_);
        return ucal_getTimeZoneTransitionDate(calendar_.get(), UCAL_TZ_TRANSITION_NEXT, &transition,
                                              &status_) != 0;
    }

private:
    UErrorCode status_ = U_ZERO_ERROR;
    std::unique_ptr<UCalendar, void (*)(UCalendar*)> calendar_;
};

void compare(const TimeZone& zone, Oracle& oracle, double milliseconds) {
    const Date date = date_of(milliseconds);
    for (const bool local : {false, true})
        ASSERT_EQ((Offsets{zone.getOffset(date, local), zone.getDSTOffset(date, local)}),
                  oracle.at(milliseconds, local))
            << to_utf8(zone.id()) << ' ' << date << (local ? " local" : "");
}

// Around the transition, on the clocks before and behind it too, and between this and the next.
void compare_around(const TimeZone& zone, Oracle& oracle, double transition) {
    const double before = static_cast<double>(oracle.at(transition - 1, false).total.ticks()) / 10;
    const double after = static_cast<double>(oracle.at(transition, false).total.ticks()) / 10;
    for (const double shift : {0.0, before, after, (before + after) / 2})
        for (const double distance : {-3'600'000.0, -1'000.0, -1.0, 0.0, 1.0, 3'600'000.0})
            compare(zone, oracle, transition + shift + distance);
}

// Rules of all kinds: north and south, half hours, months that follow the moon, jumps of a
// day, fixed offsets, and daylight time of two hours.
constexpr const char16_t* kZones[] = {
    u"Europe/Moscow",       u"Europe/Berlin",    u"Europe/Dublin",     u"America/New_York",
    u"Australia/Lord_Howe", u"Asia/Gaza",        u"Africa/Casablanca", u"Pacific/Apia",
    u"America/Caracas",     u"Antarctica/Troll", u"Etc/GMT+10",        u"America/Sao_Paulo",
};

TEST(TimeZoneOffsets, AreThoseOfIcuAtEveryTransition) {
    for (const char16_t* const id : kZones) {
        const TimeZone zone(id);
        Oracle oracle(id);
        // The years 2490 and 9990 lie where rules go on as they did four hundred years before.
        for (const auto& [first, last] : {std::pair{1, 2110}, {2490, 2510}, {9990, 9998}}) {
            double at = static_cast<double>(Date(first, 1, 1).ticks() - kUnix) / 10;
            if (first == 1) at = -62'135'596'800'000;
            compare(zone, oracle, at + 1e9);
            for (double next = 0; oracle.next(at, next) && date_of(next).getYear() <= last;
                 at = next)
                compare_around(zone, oracle, next);
        }
    }
}

TEST(TimeZoneOffsets, AreThoseOfIcuForAllZones) {
    const Date now = Date::getCurrentDateUTC();
    for (const stdx::ustring& id : TimeZone::availableTimeZones()) {
        const TimeZone zone(id);
        ASSERT_EQ(zone.id(), id);
        ASSERT_FALSE(zone.simple());
        Oracle oracle(id);
        for (int year = 1840; year < 2900; year += 53)
            for (const int month : {1, 7})
                compare(zone, oracle,
                        static_cast<double>(
                            static_cast<std::int64_t>(Date(year, month, 3).ticks() - kUnix)) /
                            10);
        const Offsets today = oracle.at(static_cast<double>(now.ticks() - kUnix) / 10, false);
        ASSERT_EQ(zone.getRawOffset(), today.total - today.daylight) << to_utf8(id);
        UErrorCode status = U_ZERO_ERROR;
        const DateSpan savings(ucal_getDSTSavings(id.c_str(), &status) * std::int64_t{10});
        ASSERT_EQ(zone.getDSTSavings(), savings) << to_utf8(id);
        ASSERT_EQ(zone.useDaylightTime(), savings != DateSpan());
    }
}

TEST(TimeZoneConversion, SkipsAndRepeatsHours) {
    const TimeZone berlin(u"Europe/Berlin");
    EXPECT_EQ(berlin.toLocalTime("20210328005959"_date), "20210328015959"_date);
    EXPECT_EQ(berlin.toLocalTime("20210328010000"_date), "20210328030000"_date);
    EXPECT_EQ(berlin.toUniversalTime("20210328023000"_date), "20210328013000"_date);
    EXPECT_EQ(berlin.toUniversalTime("20211031013000"_date), "20211030233000"_date);
    EXPECT_EQ(berlin.toUniversalTime("20211031023000"_date), "20211031013000"_date);
    const TimeZone west(u"GMT-5"), east(u"GMT+5");
    EXPECT_EQ(west.toLocalTime("00010101"_date), Date());
    EXPECT_EQ(east.toUniversalTime("00010101040000"_date), Date());
    EXPECT_EQ(east.toLocalTime("99991231200000"_date), Date::latest());
}

TEST(TimeZoneOffsets, CountPartsOfMillisecondsTowards1970) {
    const TimeZone zone(u"Europe/Berlin");
    const Date before = "19490410010000"_date; // clocks were put forward at 01:00 universal time
    EXPECT_EQ(zone.getOffset(before, false), hours(2));
    EXPECT_EQ(zone.getOffset(before - DateSpan(9), false), hours(2));
    EXPECT_EQ(zone.getOffset(before - DateSpan(10), false), hours(1));
    const Date later = "20210328010000"_date;
    EXPECT_EQ(zone.getOffset(later, false), hours(2));
    EXPECT_EQ(zone.getOffset(later - DateSpan(1), false), hours(1));
}

TEST(TimeZoneIds, AreThoseOfIcuOrCustom) {
    const auto& ids = TimeZone::availableTimeZones();
    EXPECT_TRUE(std::is_sorted(ids.begin(), ids.end()));
    EXPECT_GT(ids.size(), 600u);
    const struct {
        const char16_t* id;
        const char16_t* normal;
        DateSpan offset;
    } rows[] = {
        {u"GMT+3", u"GMT+03:00", hours(3)},
        {u"GMT-03", u"GMT-03:00", hours(-3)},
        {u"GMT+3:30", u"GMT+03:30", DateSpan::fromMinutes(210)},
        {u"GMT-23:59", u"GMT-23:59", DateSpan::fromMinutes(-1439)},
        {u"GMT+00:00", u"GMT+00:00", hours(0)},
    };
    for (const auto& row : rows) {
        const TimeZone zone(row.id);
        EXPECT_EQ(zone.id(), row.normal);
        EXPECT_TRUE(zone.simple());
        EXPECT_EQ(zone.getOffset(Date(2021, 7, 1), true), row.offset);
        EXPECT_EQ(zone.getRawOffset(), row.offset);
        EXPECT_FALSE(zone.useDaylightTime());
        EXPECT_EQ(zone, TimeZone(stdx::ustring(row.normal)));
        EXPECT_EQ(&zone.impl(), &TimeZone(row.normal).impl()) << "one object for an id";
    }
    EXPECT_EQ(TimeZone(u"GMT+0").id(), u"GMT+0") << "an id of the list is left alone";
    EXPECT_EQ(TimeZone::utc().getOffset(Date(2021, 7, 1), false), DateSpan());

    for (const char16_t* id : {u"",
                               u"GMT+24",
                               u"GMT+",
                               u"GMT3",
                               u"GMT+3:",
                               u"GMT+3:5",
                               u"GMT+3:60",
                               u"GMT+3:300",
                               u"GMT+123",
                               u"GMT+0330",
                               u"gmt+3",
                               u"GMT +3",
                               u"GMT+3 ",
                               u"europe/moscow",
                               u"Europe/Mosco",
                               u"Europe/Moscow ",
                               u"Europe/Moscow/x",
                               u"Etc/Unknown",
                               u"../../etc/passwd",
                               u"\xD800"})
        EXPECT_THROW(static_cast<void>(TimeZone(id)), TimeZoneException) << to_utf8(id);
    EXPECT_THROW(TimeZone(stdx::ustring(u"UTC\0", 4)), TimeZoneException);
    EXPECT_THROW(TimeZone(stdx::ustring(1'000'000, u'G')), TimeZoneException);
}

TEST(TimeZoneIds, OfTheMachineIsIcus) {
    UErrorCode status = U_ZERO_ERROR;
    char16_t id[200] = {};
    ucal_getDefaultTimeZone(id, 200, &status);
    EXPECT_EQ(TimeZone::system().id(), id);
    EXPECT_EQ(&TimeZone::system().impl(), &TimeZone::system().impl());
}

TEST(StoredTimeZones, AreFoundByAnIdThatIcuDoesNotKnow) {
    const TimeZone stored(stored_time_zone(u"Head Office", hours(7)).get());
    EXPECT_TRUE(stored.simple());
    EXPECT_EQ(TimeZone(u"Head Office"), stored);
    EXPECT_EQ(TimeZone(u"Head Office").toLocalTime(Date(2021, 7, 1)), Date(2021, 7, 1, 7, 0, 0));
    EXPECT_FALSE(stored.useDaylightTime());
    EXPECT_EQ(stored.getDSTOffset(Date(2021, 7, 1), false), DateSpan());

    // The first one keeps the id; another offset holds for its own zone alone, whatever it is.
    constexpr DateSpan kHuge(std::numeric_limits<std::int64_t>::max());
    const TimeZone second(stored_time_zone(u"Head Office", kHuge).get());
    EXPECT_EQ(second.toLocalTime(Date(2021, 7, 1)), Date::latest());
    EXPECT_EQ(second.toUniversalTime(Date(2021, 7, 1)), Date());
    EXPECT_EQ(TimeZone(u"Head Office").getRawOffset(), hours(7));
    EXPECT_FALSE(second == stored);

    // A known id keeps its meaning.
    for (const char16_t* id : {u"Europe/Moscow", u"GMT+3", u""})
        EXPECT_EQ(TimeZone(stored_time_zone(id, hours(-1)).get()).getRawOffset(), hours(-1));
    EXPECT_EQ(TimeZone(u"Europe/Moscow").getRawOffset(), hours(3));
    EXPECT_EQ(TimeZone(u"GMT+3").getRawOffset(), hours(3));
    EXPECT_THROW(TimeZone(u""), TimeZoneException);

    // Ids from outside do not fill the memory.
    const auto flood = [](unsigned n) { return stdx::ustring(n, u'x'); };
    for (unsigned n = 1; n <= 4'200; ++n) stored_time_zone(flood(n), hours(1));
    EXPECT_EQ(TimeZone(flood(1)).getRawOffset(), hours(1));
    EXPECT_THROW(static_cast<void>(TimeZone(flood(4'200))), TimeZoneException);
}

class TimeZoneInProcess : public test::ProcessTest {};

TEST_F(TimeZoneInProcess, FailureNamesTheIdAndSurvivesItsCatch) {
    InterfacePtr<IExceptionObject> object;
    try {
        TimeZone zone(u"Mars/Phobos");
        FAIL();
    } catch (const TimeZoneException& exception) {
        EXPECT_TRUE(exception.description().view().ends_with(u" 'Mars/Phobos'"));
        object = exception.object();
    }
    ASSERT_TRUE(object);
    EXPECT_THROW(object->rethrow(), TimeZoneException);
}

TEST(TimeZoneThreads, GetOneObjectForAnId) {
    constexpr std::size_t kThreads = 6;
    const auto& ids = TimeZone::availableTimeZones();
    std::vector<TimeZoneImpl*> seen[kThreads];
    {
        std::vector<std::jthread> threads;
        for (auto& mine : seen)
            threads.emplace_back([&] {
                for (unsigned i = 100; i < 200; ++i) {
                    const TimeZone zone(ids[i]);
                    const TimeZone copy = zone;
                    EXPECT_EQ(copy.toLocalTime(zone.toUniversalTime(Date(2021, 6, 1))).getYear(),
                              2021);
                    mine.push_back(&zone.impl());
                    const stdx::ustring own = stdx::ustring(u"Race ") + stdx::ustring(i, u'r');
                    const TimeZone stored(stored_time_zone(own, hours(2)).get());
                    EXPECT_EQ(stored.getRawOffset(), hours(2));
                    mine.push_back(&TimeZone(u"GMT+7").impl());
                }
            });
    }
    for (const auto& other : seen) EXPECT_EQ(other, seen[0]);
}

} // namespace
