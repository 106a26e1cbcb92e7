// `orb date`: the calendar and the time zones. A date is written with 8, 12 or 14 digits or as in
// ISO 8601, where a time with a zone is taken to universal time; "now" is the time of this machine.

#include "Command.h"
#include "Json.h"
#include "SubCommand.h"

#include <core/component/Utf8.h>
#include <core/numbers/TimeZone.h>
#include <core/numbers/TimeZoneException.h>

#include <charconv>
#include <iostream>

namespace orb {
namespace {

using core::Date;
using core::DateSpan;
using core::TimeZone;

Date date_of(std::string_view text) {
    if (text == "now") return Date::getCurrentDate();
    const stdx::ustring wide = core::from_utf8(text);
    const char16_t* const last = wide.c_str() + wide.size();
    Date date;
    const char16_t* end = nullptr;
    if (date.fromString(wide.c_str(), &end) && end == last) return date;
    char16_t* isoEnd = nullptr;
    if (date.fromISOString(wide.c_str(), &isoEnd, true) && isoEnd == last) return date;
    throw UsageError("'" + std::string(text) +
                     "' is no date; one is written 'YYYYMMDDhhmmss' or 'YYYY-MM-DDThh:mm:ss'");
}

std::string text_of(const Date& date) {
    std::string text(Date::kXMLTextSize, '\0');
    date.toXMLChars(text.data());
    return text;
}

int print_date(const Arguments& arguments, const Date& date) {
    if (arguments.json)
        std::cout << "{\"date\":" << Quoted{text_of(date)} << "}\n";
    else
        std::cout << text_of(date) << '\n';
    return kSuccess;
}

int print_parts(const Arguments& arguments) {
    const auto [text] = values_of<1>(arguments, "a date");
    const Date date = date_of(text);
    const struct {
        const char* name;
        std::int64_t value;
    } rows[] = {
        {"year", date.getYear()},
        {"month", date.getMonth()},
        {"day", date.getMonthDay()},
        {"hour", date.getHour()},
        {"minute", date.getMinute()},
        {"second", date.getSecond()},
        {"quarter", date.getQuarter()},
        {"weekDay", static_cast<int>(date.getWeekDay())},
        {"yearDay", date.getYearDay()},
        {"yearWeek", date.getYearWeek()},
        {"ticks", static_cast<std::int64_t>(date.ticks())},
    };
    const char* separator = "{";
    for (const auto& row : rows) {
        if (arguments.json)
            std::cout << separator << '"' << row.name << "\":" << row.value;
        else
            std::cout << std::left << std::setw(10) << row.name << row.value << '\n';
        separator = ",";
    }
    if (arguments.json) std::cout << "}\n";
    return kSuccess;
}

struct Period {
    std::string_view name;
    Date& (*begin)(Date&);
    Date& (*end)(Date&);
};

constexpr Period kPeriods[] = {
    {"minute", [](Date& d) -> Date& { return d.begOfMinute(); },
     [](Date& d) -> Date& { return d.endOfMinute(); }},
    {"hour", [](Date& d) -> Date& { return d.begOfHour(); },
     [](Date& d) -> Date& { return d.endOfHour(); }},
    {"day", [](Date& d) -> Date& { return d.begOfDay(); },
     [](Date& d) -> Date& { return d.endOfDay(); }},
    {"week", [](Date& d) -> Date& { return d.begOfWeek(); },
     [](Date& d) -> Date& { return d.endOfWeek(); }},
    {"month", [](Date& d) -> Date& { return d.begOfMonth(); },
     [](Date& d) -> Date& { return d.endOfMonth(); }},
    {"quarter", [](Date& d) -> Date& { return d.begOfQuart(); },
     [](Date& d) -> Date& { return d.endOfQuart(); }},
    {"year", [](Date& d) -> Date& { return d.begOfYear(); },
     [](Date& d) -> Date& { return d.endOfYear(); }},
};

const Period& period_of(std::string_view name) {
    for (const Period& period : kPeriods)
        if (period.name == name) return period;
    throw UsageError("'" + std::string(name) +
                     "' is no period; there are minute, hour, day, week, month, quarter, year");
}

int print_begin(const Arguments& arguments) {
    const auto [period, text] = values_of<2>(arguments, "a period and a date");
    Date date = date_of(text);
    return print_date(arguments, period_of(period).begin(date));
}

int print_end(const Arguments& arguments) {
    const auto [period, text] = values_of<2>(arguments, "a period and a date");
    Date date = date_of(text);
    return print_date(arguments, period_of(period).end(date));
}

struct Unit {
    std::string_view name;
    int months;        // 0: a span
    std::int64_t span; // in seconds
};

constexpr Unit kUnits[] = {
    {"s", 0, 1},       {"min", 0, 60}, {"h", 0, 3'600}, {"d", 0, 86'400},
    {"w", 0, 604'800}, {"mon", 1, 0},  {"y", 12, 0},
};

// "3d", "-2mon"; what does not fit ends at the bounds of dates, as all arithmetic does.
void add(Date& date, std::string_view text) {
    std::int32_t count = 0;
    const char* const end = text.data() + text.size();
    const char* const digits = text.data() + (text.starts_with('+') ? 1 : 0);
    const auto [unit, error] = std::from_chars(digits, end, count);
    for (const Unit& known : kUnits) {
        if (error != std::errc() || std::string_view(unit, end) != known.name) continue;
        const std::int64_t months = std::int64_t{count} * known.months;
        if (known.months == 0)
            date += DateSpan::fromSeconds(count * known.span);
        else
            date.addMonth(
                static_cast<int>(std::clamp<std::int64_t>(months, -1'000'000, 1'000'000)));
        return;
    }
    throw UsageError("'" + std::string(text) +
                     "' is no span; one is a number and s, min, h, d, w, mon or y");
}

int print_sum(const Arguments& arguments) {
    if (arguments.values.size() < 2) throw UsageError("expected a date and spans");
    Date date = date_of(arguments.values[0]);
    for (const char* const span : arguments.values.subspan(1)) add(date, span);
    return print_date(arguments, date);
}

std::string span_text(const DateSpan& span) {
    const std::uint64_t seconds = span.magnitude() / core::kTicksPerSecond;
    char text[40];
    std::snprintf(text, sizeof text, "%s%02u:%02u:%02u", span.ticks() < 0 ? "-" : "+",
                  static_cast<unsigned>(seconds / 3'600), static_cast<unsigned>(seconds / 60 % 60),
                  static_cast<unsigned>(seconds % 60));
    return text;
}

int print_difference(const Arguments& arguments) {
    const auto [from, to] = values_of<2>(arguments, "two dates");
    const DateSpan span = date_of(to) - date_of(from);
    if (arguments.json)
        std::cout << "{\"clock\":" << Quoted{span_text(span)} << ",\"ticks\":" << span.ticks()
                  << "}\n";
    else
        std::cout << span_text(span) << ", "
                  << span.ticks() / static_cast<std::int64_t>(core::kTicksPerDay)
                  << " whole days\n";
    return kSuccess;
}

TimeZone zone_of(std::string_view id) {
    if (id == "system") return TimeZone::system();
    try {
        return TimeZone(core::from_utf8(id));
    } catch (const core::TimeZoneException& exception) {
        throw UsageError(std::string(core::to_utf8(exception.description())));
    }
}

int list_zones(const Arguments& arguments) {
    if (arguments.values.size() > 1) throw UsageError("expected one part of an id at most");
    const stdx::ustring part =
        arguments.values.empty() ? stdx::ustring() : core::from_utf8(arguments.values[0]);
    const char* separator = "[\n";
    bool found = false;
    for (const stdx::ustring& id : TimeZone::availableTimeZones()) {
        if (id.view().find(part.view()) == std::u16string_view::npos) continue;
        const std::string name(core::to_utf8(id));
        found = true;
        if (arguments.json)
            std::cout << separator << Quoted{name};
        else
            std::cout << name << '\n';
        separator = ",\n";
    }
    if (arguments.json) std::cout << (found ? "\n]\n" : "[]\n");
    return found ? kSuccess : kFailure;
}

int print_offset(const Arguments& arguments) {
    const auto [id, text] = values_of<2>(arguments, "a time zone and a date in universal time");
    const TimeZone zone = zone_of(id);
    const Date date = date_of(text);
    const std::string offset = span_text(zone.getOffset(date, false));
    const std::string daylight = span_text(zone.getDSTOffset(date, false));
    const std::string name(core::to_utf8(zone.id()));
    if (arguments.json)
        std::cout << "{\"zone\":" << Quoted{name} << ",\"offset\":" << Quoted{offset}
                  << ",\"daylight\":" << Quoted{daylight} << "}\n";
    else
        std::cout << name << ' ' << offset << ", daylight saving " << daylight << '\n';
    return kSuccess;
}

int convert(const Arguments& arguments) {
    const auto [from, to, text] = values_of<3>(arguments, "two time zones and a date in the first");
    const Date universal = zone_of(from).toUniversalTime(date_of(text));
    return print_date(arguments, zone_of(to).toLocalTime(universal));
}

constexpr Command kVerbs[] = {
    {"parts", "DATE", "take a date apart", print_parts},
    {"begin", "PERIOD DATE", "the first second of the month, week, ... of a date", print_begin},
    {"end", "PERIOD DATE", "the last second of it", print_end},
    {"add", "DATE SPAN...", "add spans such as 3d, -2mon, 12h, one by one", print_sum},
    {"between", "DATE DATE", "the time from the first to the second", print_difference},
    {"zones", "[PART]", "list the time zones, or those with a part in the id", list_zones},
    {"offset", "ZONE DATE", "the offset of a zone at a date in universal time", print_offset},
    {"convert", "ZONE ZONE DATE", "a date of the first zone as the second shows it", convert},
};

} // namespace

int date_command(const Arguments& arguments) {
    return run_verb("date", kVerbs, arguments);
}

} // namespace orb
