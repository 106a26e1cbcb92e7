// `orb locale`: the locales that the library knows, and how each writes numbers, dates and truth.

#include "Command.h"
#include "Json.h"
#include "SubCommand.h"

#include <core/component/Utf8.h>
#include <core/locale/BoolFormat.h>
#include <core/locale/DateFormat.h>
#include <core/locale/Locale.h>
#include <core/locale/NumericFormat.h>
#include <core/locale/WeekInfo.h>
#include <core/numbers/Date.h>
#include <core/numbers/Numeric.h>

#include <utility>
#include <vector>

namespace orb {
namespace {

// What is told of a locale, name and value, in the order in which it is printed.
using Facts = std::vector<std::pair<std::string_view, std::string>>;

std::string utf8(std::u16string_view text) {
    return std::string(std::string_view(core::to_utf8(text)));
}

std::string encoding(const char16_t* name) {
    return name ? utf8(name) : std::string();
}

std::string day_name(core::WeekDay day) {
    constexpr const char* kNames[] = {"Monday", "Tuesday",  "Wednesday", "Thursday",
                                      "Friday", "Saturday", "Sunday"};
    return kNames[static_cast<int>(day) - 1];
}

Facts summary_of(const core::Locale& locale) {
    return {{"name", locale.key()},
            {"ansi", encoding(locale.winANSIEncoding())},
            {"oem", encoding(locale.winOEMEncoding())},
            {"title", utf8(locale.displayName(core::resource_locale()))}};
}

Facts description_of(const core::Locale& locale) {
    Facts facts = summary_of(locale);
    const core::NumericFormat numbers(locale);
    const core::DateFormat dates(locale);
    const char16_t decimal = numbers.getDecimalSeparator();
    const char16_t grouping = numbers.getGroupingSeparator();
    const auto week = core::WeekInfo::of(locale);
    const core::BoolFormat words(locale);
    const Facts more = {
        {"direction", core::Locale::isRTL(locale.name()) ? "right to left" : "left to right"},
        {"decimal separator", utf8({&decimal, 1})},
        {"grouping separator", utf8({&grouping, 1})},
        {"short date", utf8(dates.getShortDatePattern())},
        {"long date", utf8(dates.getLongDatePattern())},
        {"time", utf8(dates.getTimePattern())},
        {"number", utf8(numbers.format(core::Numeric(-1'234'567.89)))},
        {"today", utf8(dates.format(core::Date::getCurrentDate(), dates.getFullDatePattern()))},
        {"first day", day_name(week.firstDayOfWeek())},
        {"weekend starts", day_name(week.weekendStart())},
        {"weekend ends", day_name(week.weekendEnd())},
        {"false", utf8(words.format(false))},
        {"true", utf8(words.format(true))},
    };
    facts.insert(facts.end(), more.begin(), more.end());
    return facts;
}

void print_json(const Facts& facts) {
    std::cout << '{';
    for (const auto& [name, value] : facts)
        std::cout << (&name == &facts.front().first ? "" : ",") << Quoted{name} << ':'
                  << Quoted{value};
    std::cout << '}';
}

core::Locale locale_named(std::string_view name) {
    return core::Locale(core::from_utf8(name));
}

int list(const Arguments& arguments) {
    if (!arguments.values.empty()) throw UsageError("'locale list' takes no argument");
    const std::vector<core::Locale> all = core::Locale::all();
    if (arguments.json) std::cout << '[';
    for (const core::Locale& locale : all) {
        const Facts facts = summary_of(locale);
        if (arguments.json) {
            std::cout << (&locale == all.data() ? "\n" : ",\n");
            print_json(facts);
            continue;
        }
        constexpr int kWidths[] = {13, 9, 9, 0};
        for (std::size_t i = 0; i != facts.size(); ++i)
            std::cout << std::left << std::setw(kWidths[i])
                      << (facts[i].second.empty() ? "-" : facts[i].second);
        std::cout << '\n';
    }
    if (arguments.json) std::cout << "\n]\n";
    return kSuccess;
}

int describe(const Arguments& arguments) {
    const auto [name] = values_of<1>(arguments, "the name of a locale");
    const Facts facts = description_of(locale_named(name));
    if (arguments.json) {
        print_json(facts);
        std::cout << '\n';
        return kSuccess;
    }
    for (const auto& [what, value] : facts)
        std::cout << std::left << std::setw(20) << what << (value.empty() ? "-" : value) << '\n';
    return kSuccess;
}

constexpr Command kVerbs[] = {
    {"list", "", "all locales with their code pages", list},
    {"describe", "NAME", "how a locale writes numbers, dates and truth", describe},
};

} // namespace

int locale_command(const Arguments& arguments) {
    return run_verb("locale", kVerbs, arguments);
}

} // namespace orb
