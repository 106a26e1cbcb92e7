// A record is the patterns. What a locale says of dates stands once for all its records: the symbols,
// which format most patterns without ICU, and ICU's format and calendar for the others and for
// parsing.

#include <core/locale/DateFormat.h>

#include <core/component/SCOM_Process.h>
#include <core/concurrency/Mutex.h>
#include <core/concurrency/Thread.h>
#include <core/numbers/Date.h>
#include <core/text/Characters.h>

#include "DateSymbols.h"
#include "LocaleRecord.h"
#include "PerLocale.h"

#include <unicode/ucal.h>
#include <unicode/udat.h>
#include <unicode/unum.h>

#include <algorithm>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>

namespace core {
namespace {

constexpr std::size_t kMostParsed = 4'096;
constexpr std::u16string_view kZone = u"GMT"; // a date has no zone

struct CloseFormat {
    void operator()(UDateFormat* format) const noexcept { udat_close(format); }
};
struct CloseCalendar {
    void operator()(UCalendar* calendar) const noexcept { ucal_close(calendar); }
};
using OpenDateFormat = std::unique_ptr<UDateFormat, CloseFormat>;
using OpenCalendar = std::unique_ptr<UCalendar, CloseCalendar>;

void check(UErrorCode status) {
    if (U_FAILURE(status)) throw std::runtime_error("ICU has no data to write dates by");
}

// Some locales have a calendar of their own, whose years are no years of ours.
std::string gregorian(const Locale& locale) {
    return std::string(locale.key()) + "@calendar=gregorian";
}

OpenDateFormat open_format(const Locale& locale, UDateFormatStyle date, UDateFormatStyle time) {
    UErrorCode status = U_ZERO_ERROR;
    OpenDateFormat format(udat_open(time, date, gregorian(locale).c_str(), kZone.data(),
                                    static_cast<int>(kZone.size()), nullptr, 0, &status));
    check(status);
    return format;
}

OpenCalendar open_calendar(const Locale& locale) {
    // The first moment that ICU knows: before it the calendar would be the Julian one.
    constexpr UDate kBeginning = -184'303'902'528'000'000.0;
    UErrorCode status = U_ZERO_ERROR;
    OpenCalendar calendar(ucal_open(kZone.data(), static_cast<int>(kZone.size()),
                                    gregorian(locale).c_str(), UCAL_GREGORIAN, &status));
    check(status);
    ucal_setGregorianChange(calendar.get(), kBeginning, &status);
    check(status);
    return calendar;
}

// A text of ICU's: `read` takes a buffer, its size and a status and gives the length.
template <class Read> stdx::ustring text_from(Read&& read) {
    constexpr int kRoom = 1'024;
    char16_t buffer[kRoom];
    UErrorCode status = U_ZERO_ERROR;
    const int size = read(buffer, kRoom, &status);
    if (U_SUCCESS(status)) return {buffer, static_cast<unsigned>(size)};
    stdx::ustring text;
    if (status != U_BUFFER_OVERFLOW_ERROR) return text;
    text._resize_nofill(static_cast<unsigned>(size));
    status = U_ZERO_ERROR;
    read(text.data(), size, &status);
    return text;
}

stdx::ustring pattern_of(const Locale& locale, UDateFormatStyle date, UDateFormatStyle time) {
    const OpenDateFormat format = open_format(locale, date, time);
    return with_full_years(text_from([&](char16_t* to, int room, UErrorCode* status) {
        return udat_toPattern(format.get(), false, to, room, status);
    }));
}

struct NamesRow {
    UDateFormatSymbolType type;
    stdx::ustring* names;
    int count;
    int first; // ICU's index of the first name
};

DateSymbols symbols_of(const OpenDateFormat& format) {
    DateSymbols symbols;
    const NamesRow rows[] = {
        {UDAT_MONTHS, symbols.months, 12, 0},
        {UDAT_SHORT_MONTHS, symbols.shortMonths, 12, 0},
        {UDAT_STANDALONE_MONTHS, symbols.aloneMonths, 12, 0},
        {UDAT_STANDALONE_SHORT_MONTHS, symbols.aloneShortMonths, 12, 0},
        {UDAT_WEEKDAYS, symbols.weekDays, 7, UCAL_SUNDAY},
        {UDAT_SHORT_WEEKDAYS, symbols.shortWeekDays, 7, UCAL_SUNDAY},
        {UDAT_AM_PMS, symbols.dayHalves, 2, 0},
    };
    for (const NamesRow& row : rows)
        for (int i = 0; i != row.count; ++i)
            row.names[i] = text_from([&](char16_t* to, int room, UErrorCode* status) {
                return udat_getSymbols(format.get(), row.type, row.first + i, to, room, status);
            });
    for (int digit = 0; digit != 10; ++digit) {
        const int which = digit == 0 ? UNUM_ZERO_DIGIT_SYMBOL : UNUM_ONE_DIGIT_SYMBOL + digit - 1;
        const stdx::ustring text = text_from([&](char16_t* to, int room, UErrorCode* status) {
            return unum_getSymbol(udat_getNumberFormat(format.get()),
                                  static_cast<UNumberFormatSymbol>(which), to, room, status);
        });
        symbols.digits[digit] =
            text.size() == 1 ? text.front() : static_cast<char16_t>(u'0' + digit);
    }
    return symbols;
}

// ICU divides by zero where a fraction of a second takes 35 units, digits and what it skips between
// them.
bool has_endless_fraction(std::u16string_view text, std::u16string_view pattern) noexcept {
    constexpr int kMostRun = 30;
    if (pattern.find(u'S') == pattern.npos) return false;
    int run = 0;
    return std::any_of(text.begin(), text.end(), [&run](char16_t c) {
        run = is_digit(c) || !is_graph(c) ? run + 1 : 0;
        return run > kMostRun;
    });
}

int beginning_of_century() {
    const Thread* const thread = current_thread();
    return thread ? thread->getBeginningOfCentury() : kDefaultBeginningOfCentury;
}

// Milliseconds of ICU's clock at the beginning of a year.
UDate clock_of(int year) {
    const Date start(std::clamp(year, 1, 9999), 1, 1);
    return static_cast<UDate>((start - Date(1970, 1, 1)).ticks()) / (kTicksPerSecond / 1'000);
}

// The dates of a locale: immutable but for ICU's objects, which the lock guards.
class LocaleDates {
public:
    static LocaleDates& of(const Locale& locale) {
        static constinit PerLocale<LocaleDates> all;
        return all.of(locale, [&] { return new LocaleDates(locale); });
    }

    explicit LocaleDates(const Locale& locale)
        : format_(open_format(locale, UDAT_MEDIUM, UDAT_MEDIUM)),
          calendar_(open_calendar(locale)),
          symbols_(symbols_of(format_)) {}

    stdx::ustring write(const Date& date, std::u16string_view pattern) {
        if (std::optional<stdx::ustring> text = write_date(symbols_, date, pattern))
            return *std::move(text);
        const stdx::ustring known = with_short_year(symbols_, date.getYear(), pattern);
        const std::lock_guard guard(lock_);
        apply(known);
        set(date);
        return text_from([&](char16_t* to, int room, UErrorCode* status) {
            return udat_formatCalendar(format_.get(), calendar_.get(), to, room, nullptr, status);
        });
    }

    // Whether the text is a date that needs no ICU to be read.
    bool read_plain(std::u16string_view text, std::u16string_view pattern, Date& date) const {
        return read_date(symbols_, text, pattern, date);
    }

    // The length of the date in front of the text; 0 for none.
    std::int32_t read(std::u16string_view text, std::u16string_view pattern, int firstYear,
                      Date& date) {
        const std::lock_guard guard(lock_);
        apply(pattern);
        set_century(firstYear);
        ucal_clear(calendar_.get());
        UErrorCode status = U_ZERO_ERROR;
        std::int32_t end = 0;
        udat_parseCalendar(format_.get(), calendar_.get(), text.data(),
                           static_cast<std::int32_t>(text.size()), &end, &status);
        const bool isDate = U_SUCCESS(status) && end != 0 && get(date);
        restore_zone();
        return isDate ? end : 0;
    }

private:
    // Costs a comparison where the pattern is in force.
    void apply(std::u16string_view pattern) {
        if (applied_.view() == pattern) return;
        applied_.clear();
        udat_applyPattern(format_.get(), false, pattern.data(),
                          static_cast<std::int32_t>(pattern.size()));
        applied_ = pattern;
    }

    void set_century(int firstYear) {
        if (firstYear_ == firstYear) return;
        UErrorCode status = U_ZERO_ERROR;
        udat_set2DigitYearStart(format_.get(), clock_of(firstYear), &status);
        firstYear_ = firstYear;
    }

    void set(const Date& date) {
        int year, month, day, hour, minute, second;
        date.split(year, month, day, hour, minute, second);
        UErrorCode status = U_ZERO_ERROR;
        ucal_clear(calendar_.get());
        ucal_setDateTime(calendar_.get(), year, month - 1, day, hour, minute, second, &status);
    }

    bool get(Date& date) const {
        UErrorCode status = U_ZERO_ERROR;
        const auto field = [&](UCalendarDateFields which) {
            return ucal_get(calendar_.get(), which, &status);
        };
        const int year = field(UCAL_EXTENDED_YEAR);
        Date found;
        const bool isDate =
            Date::compose(year, field(UCAL_MONTH) + 1, field(UCAL_DATE), field(UCAL_HOUR_OF_DAY),
                          field(UCAL_MINUTE), field(UCAL_SECOND), found) &&
            U_SUCCESS(status);
        if (isDate) date = found;
        return isDate;
    }

    // A text may have named a zone, which ICU keeps in the calendar.
    void restore_zone() {
        char16_t id[64];
        UErrorCode status = U_ZERO_ERROR;
        const int size = ucal_getTimeZoneID(calendar_.get(), id, 64, &status);
        if (U_SUCCESS(status) && std::u16string_view(id, static_cast<std::size_t>(size)) == kZone)
            return;
        status = U_ZERO_ERROR;
        ucal_setTimeZone(calendar_.get(), kZone.data(), static_cast<int>(kZone.size()), &status);
    }

    Mutex lock_;
    const OpenDateFormat format_; // what follows is guarded by lock_
    const OpenCalendar calendar_;
    stdx::ustring applied_;        // the pattern of the format; empty: not known
    std::optional<int> firstYear_; // of the century of the format
    const DateSymbols symbols_;
};

stdx::ustring joined(const stdx::ustring& date, const stdx::ustring& time) {
    return date + u' ' + time;
}

} // namespace

class DateFormat::Record final : public LocaleRecord<Record> {
public:
    static Record& of(const Locale& locale) {
        static constinit PerLocale<Record> records;
        return records.of(locale, [&] { return new Record(locale); });
    }

    explicit Record(const Locale& locale)
        : dates(LocaleDates::of(locale)),
          longDate(pattern_of(locale, UDAT_LONG, UDAT_NONE)),
          shortDate(pattern_of(locale, UDAT_SHORT, UDAT_NONE)),
          fullDate(pattern_of(locale, UDAT_FULL, UDAT_NONE)),
          time(pattern_of(locale, UDAT_NONE, UDAT_MEDIUM)),
          shortTime(pattern_of(locale, UDAT_NONE, UDAT_SHORT)) {
        join();
    }

    void join() {
        longDateTime = joined(longDate, time);
        shortDateTime = joined(shortDate, time);
    }

    LocaleDates& dates;
    stdx::ustring longDate, shortDate, fullDate, time, shortTime;
    stdx::ustring longDateTime, shortDateTime;
};

DateFormat::DateFormat(const Locale& locale)
    : locale_(locale), record_(&Record::of(locale), true) {}

DateFormat::DateFormat(const DateFormat& other) noexcept = default;
DateFormat& DateFormat::operator=(const DateFormat& other) noexcept = default;
DateFormat::~DateFormat() = default;

DateFormat::Record& DateFormat::own() {
    if (record_->shared()) record_ = {new Record(*record_), true};
    return *record_;
}

stdx::ustring DateFormat::format(const Date& date, std::u16string_view pattern) const {
    return record_->dates.write(date, pattern);
}

bool DateFormat::parse(std::u16string_view text, std::u16string_view pattern, Date& date) const {
    if (pattern.empty() || text.size() > kMostParsed) return false;
    if (record_->dates.read_plain(text, pattern, date)) return true;
    if (has_endless_fraction(text, pattern)) return false;
    Date found;
    const std::int32_t end = record_->dates.read(text, pattern, beginning_of_century(), found);
    if (end == 0) return false;
    if (!std::all_of(text.begin() + end, text.end(), [](char16_t c) { return is_space(c); }))
        return false;
    date = found;
    return true;
}

stdx::ustring DateFormat::shortDayOfWeek(const Date& date) const {
    // From Monday, where both languages begin the week.
    static constexpr struct {
        std::u16string_view language, days;
    } kLetters[] = {{u"pl", u"PWŚCPSN"}, {u"vi", u"HBTNSBC"}};
    const std::u16string_view name = locale_.name();
    const auto day = static_cast<std::size_t>(date.getWeekDay());
    for (const auto& [language, days] : kLetters)
        if (name.substr(0, name.find(u'_')) == language && day != 0)
            return stdx::ustring(days.substr(day - 1, 1));
    return format(date, u"EEE");
}

const stdx::ustring& DateFormat::getPattern(Pattern pattern) const noexcept {
    static constexpr stdx::ustring Record::*kPatterns[] = {
        &Record::longDate,     &Record::shortDate,     &Record::time,
        &Record::longDateTime, &Record::shortDateTime, &Record::shortTime};
    static constinit const stdx::ustring kNone;
    const auto index = static_cast<std::size_t>(pattern);
    return index < std::size(kPatterns) ? (*record_).*kPatterns[index] : kNone;
}

const stdx::ustring& DateFormat::getLongDatePattern() const noexcept {
    return record_->longDate;
}

const stdx::ustring& DateFormat::getShortDatePattern() const noexcept {
    return record_->shortDate;
}

const stdx::ustring& DateFormat::getFullDatePattern() const noexcept {
    return record_->fullDate;
}

const stdx::ustring& DateFormat::getTimePattern() const noexcept {
    return record_->time;
}

const stdx::ustring& DateFormat::getShortTimePattern() const noexcept {
    return record_->shortTime;
}

const stdx::ustring& DateFormat::getLongDateTimePattern() const noexcept {
    return record_->longDateTime;
}

const stdx::ustring& DateFormat::getShortDateTimePattern() const noexcept {
    return record_->shortDateTime;
}

void DateFormat::setLongDatePattern(const stdx::ustring& pattern) {
    Record& changed = own();
    changed.longDate = pattern;
    changed.join();
}

void DateFormat::setShortDatePattern(const stdx::ustring& pattern) {
    Record& changed = own();
    changed.shortDate = pattern;
    changed.join();
}

void DateFormat::setTimePattern(const stdx::ustring& pattern) {
    Record& changed = own();
    changed.time = pattern;
    changed.join();
}

} // namespace core
