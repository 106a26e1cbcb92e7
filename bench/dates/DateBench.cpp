// Dates beside their peers. What should hold: taking dates apart and putting them together costs at
// most what std::chrono's calendar does, and text both ways at most half as much again as
// std::chrono's calendar with std::to_chars and std::from_chars.
#include <core/numbers/Date.h>
#include <core/numbers/TimeZone.h>

#include <benchmark/benchmark.h>

#include <boost/date_time/posix_time/posix_time.hpp>

#include <charconv>
#include <chrono>
#include <random>
#include <string>
#include <vector>

#ifdef ORBCORE_PEER_QT
#include <QDateTime>
#include <QTimeZone>
#endif
#ifdef ORBCORE_PEER_ICU
#include <unicode/ucal.h>
#endif

namespace {

namespace chrono = std::chrono;
namespace posix = boost::posix_time;
using Time = chrono::sys_time<core::DateTicks>;

struct Fields {
    int year, month, day, hour, minute, second;
};

// A million moments of the years 1900 to 2100, in no order.
const std::vector<core::Date>& dates() {
    static const auto made = [] {
        std::vector<core::Date> list;
        std::mt19937_64 random(7);
        const core::Date first(1900, 1, 1);
        const auto seconds =
            static_cast<std::uint64_t>((core::Date(2100, 1, 1) - first).ticks() / 10'000);
        for (int i = 0; i < 1'000'000; ++i)
            list.push_back(
                first + core::DateSpan::fromSeconds(static_cast<std::int64_t>(random() % seconds)));
        return list;
    }();
    return made;
}

// The same as the peers have them, made once.
template <class Convert> const auto& as(Convert convert) {
    static const auto made = [&] {
        std::vector<decltype(convert(core::Date()))> list;
        for (const core::Date& date : dates()) list.push_back(convert(date));
        return list;
    }();
    return made;
}

Fields fields_of(const core::Date& date) {
    Fields at;
    date.split(at.year, at.month, at.day, at.hour, at.minute, at.second);
    return at;
}

const auto& fields() {
    return as([](const core::Date& date) { return fields_of(date); });
}

const auto& times() {
    return as([](const core::Date& date) { return static_cast<Time>(date); });
}

posix::ptime posix_time(const Fields& at) {
    return {boost::gregorian::date(static_cast<unsigned short>(at.year),
                                   static_cast<unsigned short>(at.month),
                                   static_cast<unsigned short>(at.day)),
            posix::time_duration(at.hour, at.minute, at.second)};
}

const auto& posix_times() {
    return as([](const core::Date& date) { return posix_time(fields_of(date)); });
}

template <class T> const auto& texts() {
    return as([](const core::Date& date) {
        std::basic_string<T> text(core::Date::kTextSize, T());
        date.toChars(text.data());
        return text;
    });
}

// Runs the job over every element; what it gives is summed up, so that nothing is left out.
template <class List, class Job> void each(benchmark::State& state, const List& list, Job job) {
    for (auto _ : state) {
        std::uint64_t sum = 0;
        for (const auto& element : list) sum += static_cast<std::uint64_t>(job(element));
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(list.size()) *
                            static_cast<std::int64_t>(state.iterations()));
}

void one(const char* name, void (*job)(benchmark::State&)) {
    benchmark::RegisterBenchmark(name, job)->Unit(benchmark::kMicrosecond);
}

int sum_of(const Fields& at) {
    return at.year + at.month * 3 + at.day * 5 + at.hour * 7 + at.minute * 11 + at.second * 13;
}

int number_of(auto component) {
    return static_cast<int>(static_cast<unsigned>(component));
}

Fields chrono_fields(const Time& time) {
    const auto day = chrono::floor<chrono::days>(time);
    const chrono::year_month_day date(day);
    const chrono::hh_mm_ss clock(chrono::floor<chrono::seconds>(time - day));
    return {int{date.year()},
            number_of(date.month()),
            number_of(date.day()),
            static_cast<int>(clock.hours().count()),
            static_cast<int>(clock.minutes().count()),
            static_cast<int>(clock.seconds().count())};
}

// Checked as ours is.
Time chrono_time(const Fields& at) {
    const auto within = [](int value, int last) { return value >= 0 && value <= last; };
    const chrono::year_month_day date(chrono::year(at.year),
                                      chrono::month(static_cast<unsigned>(at.month)),
                                      chrono::day(static_cast<unsigned>(at.day)));
    if (!date.ok() || !within(at.hour, 23) || !within(at.minute, 59) || !within(at.second, 59))
        return {};
    return chrono::sys_days(date) + chrono::hours(at.hour) + chrono::minutes(at.minute) +
           chrono::seconds(at.second);
}

std::int64_t count_of(const Time& time) {
    return time.time_since_epoch().count();
}

void register_calendar() {
    one("split/orbcore", [](benchmark::State& state) {
        each(state, dates(), [](const core::Date& date) { return sum_of(fields_of(date)); });
    });
    one("split/chrono", [](benchmark::State& state) {
        each(state, times(), [](const Time& time) { return sum_of(chrono_fields(time)); });
    });
    one("split/posix_time", [](benchmark::State& state) {
        each(state, posix_times(), [](const posix::ptime& time) {
            const auto date = time.date().year_month_day();
            const auto clock = time.time_of_day();
            return sum_of({date.year, date.month, date.day, static_cast<int>(clock.hours()),
                           static_cast<int>(clock.minutes()), static_cast<int>(clock.seconds())});
        });
    });
    one("split_day/orbcore", [](benchmark::State& state) {
        each(state, dates(), [](const core::Date& date) {
            int year, month, day;
            date.split(year, month, day);
            return year + month * 3 + day * 5;
        });
    });
    one("split_day/chrono", [](benchmark::State& state) {
        each(state, times(), [](const Time& time) {
            const chrono::year_month_day date(chrono::floor<chrono::days>(time));
            return int{date.year()} + number_of(date.month()) * 3 + number_of(date.day()) * 5;
        });
    });
    one("compose/orbcore", [](benchmark::State& state) {
        each(state, fields(), [](const Fields& at) {
            return core::Date(at.year, at.month, at.day, at.hour, at.minute, at.second).ticks();
        });
    });
    one("compose/chrono", [](benchmark::State& state) {
        each(state, fields(), [](const Fields& at) { return count_of(chrono_time(at)); });
    });
    one("compose/posix_time", [](benchmark::State& state) {
        each(state, fields(),
             [](const Fields& at) { return posix_time(at).time_of_day().ticks(); });
    });
}

void register_months() {
    one("add_month/orbcore", [](benchmark::State& state) {
        each(state, dates(), [](core::Date date) { return date.addMonth(5).ticks(); });
    });
    one("add_month/chrono", [](benchmark::State& state) {
        each(state, times(), [](const Time& time) {
            const auto day = chrono::floor<chrono::days>(time);
            auto date = chrono::year_month_day(day) + chrono::months(5);
            if (!date.ok()) date = date.year() / date.month() / chrono::last;
            return count_of(chrono::sys_days(date) + (time - day));
        });
    });
    one("end_of_month/orbcore", [](benchmark::State& state) {
        each(state, dates(), [](core::Date date) { return date.endOfMonth().ticks(); });
    });
    one("end_of_month/chrono", [](benchmark::State& state) {
        each(state, times(), [](const Time& time) {
            const chrono::year_month_day date(chrono::floor<chrono::days>(time));
            const chrono::sys_days last = date.year() / date.month() / chrono::last;
            return count_of(last + chrono::seconds(86'399));
        });
    });
}

// std::to_chars does not pad; the years here have four digits.
void chrono_text(char* to, const Time& time) {
    const Fields at = chrono_fields(time);
    char* end = std::to_chars(to, to + 4, at.year).ptr;
    for (const int part : {at.month, at.day, at.hour, at.minute, at.second}) {
        if (part < 10) *end++ = '0';
        end = std::to_chars(end, end + 2, part).ptr;
    }
}

Time time_of_text(const char* text) {
    const auto number = [&](int from, int count) {
        int value = 0;
        std::from_chars(text + from, text + from + count, value);
        return value;
    };
    return chrono_time(
        {number(0, 4), number(4, 2), number(6, 2), number(8, 2), number(10, 2), number(12, 2)});
}

template <class T> void text_of_dates(benchmark::State& state) {
    each(state, dates(), [](const core::Date& date) {
        T text[core::Date::kTextSize];
        date.toChars(text);
        benchmark::DoNotOptimize(text);
        return text[13];
    });
}

template <class T> void dates_of_text(benchmark::State& state) {
    each(state, texts<T>(), [](const std::basic_string<T>& text) {
        core::Date date;
        date.fromString(text.c_str());
        return date.ticks();
    });
}

void register_text() {
    one("to_text/orbcore/utf16", text_of_dates<char16_t>);
    one("to_text/orbcore/narrow", text_of_dates<char>);
    one("to_text/chrono_to_chars/narrow", [](benchmark::State& state) {
        each(state, times(), [](const Time& time) {
            char text[core::Date::kTextSize];
            chrono_text(text, time);
            benchmark::DoNotOptimize(text);
            return text[13];
        });
    });
    one("from_text/orbcore/utf16", dates_of_text<char16_t>);
    one("from_text/orbcore/narrow", dates_of_text<char>);
    one("from_text/chrono_from_chars/narrow", [](benchmark::State& state) {
        each(state, texts<char>(),
             [](const std::string& text) { return count_of(time_of_text(text.c_str())); });
    });
    one("to_xml_string/orbcore", [](benchmark::State& state) {
        each(state, dates(), [](const core::Date& date) { return date.toXMLString().back(); });
    });
    one("to_xml_string/posix_time", [](benchmark::State& state) {
        each(state, posix_times(),
             [](const posix::ptime& time) { return posix::to_iso_extended_string(time).back(); });
    });
    one("from_iso/orbcore", [](benchmark::State& state) {
        core::Date date;
        for (auto _ : state) {
            date.fromISOString(u"2021-03-04T05:06:07");
            benchmark::DoNotOptimize(date);
        }
    });
    one("from_iso/posix_time", [](benchmark::State& state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(posix::from_iso_extended_string("2021-03-04T05:06:07"));
    });
}

void register_zones() {
    one("local_time/orbcore", [](benchmark::State& state) {
        const core::TimeZone zone(u"Europe/Berlin");
        each(state, dates(),
             [&](const core::Date& date) { return zone.toLocalTime(date).ticks(); });
    });
    one("universal_time/orbcore", [](benchmark::State& state) {
        const core::TimeZone zone(u"Europe/Berlin");
        each(state, dates(),
             [&](const core::Date& date) { return zone.toUniversalTime(date).ticks(); });
    });
    one("zone_by_id/orbcore", [](benchmark::State& state) {
        for (auto _ : state) benchmark::DoNotOptimize(core::TimeZone(u"Europe/Berlin"));
    });
#ifdef ORBCORE_PEER_ICU
    one("local_time/icu", [](benchmark::State& state) {
        UErrorCode status = U_ZERO_ERROR;
        UCalendar* const calendar = ucal_open(u"Europe/Berlin", -1, "en", UCAL_GREGORIAN, &status);
        each(state, times(), [&](const Time& time) {
            ucal_setMillis(calendar, static_cast<double>(count_of(time) / 10), &status);
            return ucal_get(calendar, UCAL_ZONE_OFFSET, &status) +
                   ucal_get(calendar, UCAL_DST_OFFSET, &status);
        });
        ucal_close(calendar);
    });
#endif
}

#ifdef ORBCORE_PEER_QT
QDateTime qt_time(const Fields& at) {
    return QDateTime(QDate(at.year, at.month, at.day), QTime(at.hour, at.minute, at.second),
                     Qt::UTC);
}

const auto& qt_times() {
    return as([](const core::Date& date) { return qt_time(fields_of(date)); });
}

void register_qt() {
    one("split/QDateTime", [](benchmark::State& state) {
        each(state, qt_times(), [](const QDateTime& time) {
            Fields at;
            time.date().getDate(&at.year, &at.month, &at.day);
            const QTime clock = time.time();
            return sum_of(
                {at.year, at.month, at.day, clock.hour(), clock.minute(), clock.second()});
        });
    });
    one("compose/QDateTime", [](benchmark::State& state) {
        each(state, fields(), [](const Fields& at) { return qt_time(at).toMSecsSinceEpoch(); });
    });
    one("add_month/QDateTime", [](benchmark::State& state) {
        each(state, qt_times(),
             [](const QDateTime& time) { return time.addMonths(5).toMSecsSinceEpoch(); });
    });
    one("to_xml_string/QDateTime", [](benchmark::State& state) {
        each(state, qt_times(), [](const QDateTime& time) {
            const QString text = time.toString(Qt::ISODate);
            return text.at(text.size() - 1).unicode();
        });
    });
    one("from_iso/QDateTime", [](benchmark::State& state) {
        const QString text = QStringLiteral("2021-03-04T05:06:07");
        for (auto _ : state) benchmark::DoNotOptimize(QDateTime::fromString(text, Qt::ISODate));
    });
    one("local_time/QTimeZone", [](benchmark::State& state) {
        const QTimeZone zone("Europe/Berlin");
        each(state, qt_times(), [&](const QDateTime& time) { return zone.offsetFromUtc(time); });
    });
}
#else
void register_qt() {}
#endif

[[maybe_unused]] const bool kRegistered = (register_calendar(), register_months(), register_text(),
                                           register_zones(), register_qt(), true);

} // namespace
