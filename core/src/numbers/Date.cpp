#include <core/numbers/Date.h>

#include <core/component/SCOM_Process.h>

#include <sys/time.h>

#include <ctime>
#include <ostream>

namespace core {
namespace {

Date date_of(const std::tm& time) noexcept {
    // A leap second is the last one of its minute.
    const int second = time.tm_sec > 59 ? 59 : time.tm_sec;
    return Date(time.tm_year + 1900, time.tm_mon + 1, time.tm_mday, time.tm_hour, time.tm_min,
                second);
}

Date local_date_of(std::time_t time) noexcept {
    std::tm parts{};
    return localtime_r(&time, &parts) ? date_of(parts) : Date();
}

} // namespace

Date Date::getCurrentDate() noexcept {
    return local_date_of(std::time(nullptr));
}

Date Date::getCurrentDateUTC() noexcept {
    return Date(std::chrono::sys_seconds(std::chrono::seconds(std::time(nullptr))));
}

std::uint64_t Date::getAbsoluteDateAsMilliseconds() noexcept {
    // One look at the clock for both parts: between two the second might change.
    timeval now{};
    gettimeofday(&now, nullptr);
    return local_date_of(now.tv_sec).ticks() / 10 + static_cast<std::uint64_t>(now.tv_usec) / 1000;
}

WeekDay Date::first_day_of_process() noexcept {
    SCOM_Process* const process = current_process();
    const int day = process ? process->getFirstDayOfWeek() : 1;
    return day >= 1 && day <= 7 ? static_cast<WeekDay>(day) : WeekDay::Monday;
}

std::ostream& operator<<(std::ostream& out, const Date& date) {
    char text[Date::kXMLTextSize];
    out.write(text, date.toXMLChars(text) - text);
    if (const std::uint64_t fraction = date.ticks() % kTicksPerSecond) {
        const std::string digits = std::to_string(kTicksPerSecond + fraction);
        out << '.' << digits.substr(1);
    }
    return out;
}

std::ostream& operator<<(std::ostream& out, const DateSpan& span) {
    return out << span.ticks() << " ticks";
}

} // namespace core
