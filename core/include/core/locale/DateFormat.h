// Dates as the people of a locale write them, and back.
//
//   core::DateFormat format(core::Locale(u"ru"));
//   format.format(date, format.getLongDatePattern());               // "4 марта 2021 г."
//   format.format(date, core::DateFormat::parseOrbPattern(u"dd.MM.yy"));
//   core::Date date;
//   if (format.parse(u"04.03.2021", u"dd.MM.yyyy", date)) ...
//
// Patterns are ICU's, but for a lone `y`: that is the year without its century, without a leading
// zero. `parseOrbPattern` makes them of patterns in the letters of the platform. docs/locale.md lists
// both.
//
// A handle on patterns that all formats of the locale share until one of them is changed: copied for
// nothing. The first format of a locale opens ICU's, some 200 microseconds; the others find it. An
// object is for one thread at a time, its copies for others. Writing takes no memory but the result,
// and no lock for patterns of the letters y M L d E H h m s a; other letters take the locale's lock,
// and so does parsing of anything but numbers as they are written. The calendar is the Gregorian one in all locales and for all years, without zone.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/locale/Locale.h>

#include <cstdint>

namespace core {

class Date;

class ORBCORE_API DateFormat {
public:
    enum class Pattern : std::int32_t {
        LongDate = 0,
        ShortDate,
        Time,
        LongDateTime,
        ShortDateTime,
        ShortTime,
    };

    // Throws `std::runtime_error` where ICU has no data at all.
    explicit DateFormat(const Locale& locale);
    DateFormat(const DateFormat& other) noexcept;
    DateFormat& operator=(const DateFormat& other) noexcept;
    ~DateFormat();

    const Locale& locale() const noexcept { return locale_; }

    // Empty for a pattern that ICU does not take, such as one with an unknown letter.
    stdx::ustring format(const Date& date, std::u16string_view pattern) const;
    // Whether the whole text is a date in the pattern, blanks behind it aside; `date` is set only
    // then. Fields that the pattern has not got are those of 1970-01-01 00:00:00. Years of two digits
    // are those from the thread's `getBeginningOfCentury()` on. Days and hours that are too high run
    // over into what follows them. Texts of more than 4,096 units are refused, and fractions of a second
    // of more than 30.
    bool parse(std::u16string_view text, std::u16string_view pattern, Date& date) const;

    // "Пт", "Fri"; one letter in Polish and Vietnamese.
    stdx::ustring shortDayOfWeek(const Date& date) const;

    // --- patterns of the locale, years with four digits ---

    const stdx::ustring& getPattern(Pattern pattern) const noexcept; // empty: no such pattern
    const stdx::ustring& getLongDatePattern() const noexcept;
    const stdx::ustring& getShortDatePattern() const noexcept;
    const stdx::ustring& getFullDatePattern() const noexcept; // with the day of the week
    const stdx::ustring& getTimePattern() const noexcept;
    const stdx::ustring& getShortTimePattern() const noexcept; // without seconds
    const stdx::ustring& getLongDateTimePattern() const noexcept;
    const stdx::ustring& getShortDateTimePattern() const noexcept;

    // Change the patterns of date and time with them, but neither the short time nor the full date.
    void setLongDatePattern(const stdx::ustring& pattern);
    void setShortDatePattern(const stdx::ustring& pattern);
    void setTimePattern(const stdx::ustring& pattern);

    // The pattern in ICU's letters for one in the platform's, English or Russian. Any text is a
    // pattern: what has no meaning becomes text, and no letter of it reaches ICU as a letter.
    static stdx::ustring parseOrbPattern(std::u16string_view pattern);

private:
    class Record;

    // To change: a record that is this object's alone.
    Record& own();

    Locale locale_;
    InterfacePtr<Record> record_;
};

} // namespace core
