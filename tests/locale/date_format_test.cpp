// Formats of dates. ICU, called plainly, is the oracle of what our own writing gives.

#include <core/component/Utf8.h>
#include <core/concurrency/Thread.h>
#include <core/locale/DateFormat.h>
#include <core/numbers/Date.h>

#include "support/ProcessTest.h"

#include <unicode/ucal.h>
#include <unicode/udat.h>

#include <memory>
#include <random>
#include <string>

namespace {

using namespace core;

std::string utf8(std::u16string_view text) {
    return std::string(std::string_view(to_utf8(text)));
}

DateFormat format_of(const char16_t* locale) {
    return DateFormat(Locale(locale));
}

std::string formatted(const char16_t* locale, const Date& date, std::u16string_view orbPattern) {
    return utf8(format_of(locale).format(date, DateFormat::parseOrbPattern(orbPattern)));
}

class IcuFormat {
public:
    explicit IcuFormat(const Locale& locale)
        : format_(udat_open(UDAT_MEDIUM, UDAT_MEDIUM,
                            (std::string(locale.key()) + "@calendar=gregorian").c_str(), u"GMT", 3,
                            nullptr, 0, &status_),
                  [](UDateFormat* opened) { udat_close(opened); }) {
        auto* const calendar = const_cast<UCalendar*>(udat_getCalendar(format_.get()));
        ucal_setGregorianChange(calendar, -184'303'902'528'000'000.0, &status_);
    }

    void apply(std::u16string_view pattern) {
        udat_applyPattern(format_.get(), false, pattern.data(), static_cast<int>(pattern.size()));
    }

    std::u16string format(const Date& date) {
        const double milliseconds =
            static_cast<double>((date - Date(1970, 1, 1)).ticks()) / 10; // of 1/10,000 second
        std::u16string text(4'096, u'\0');
        const int size = udat_format(format_.get(), milliseconds, text.data(),
                                     static_cast<int>(text.size()), nullptr, &status_);
        EXPECT_TRUE(U_SUCCESS(status_));
        text.resize(static_cast<std::size_t>(size));
        return text;
    }

    // Whether the whole text is a date of the calendar, blanks behind it aside.
    bool parse(std::u16string_view text, Date& date) {
        UErrorCode status = U_ZERO_ERROR;
        std::int32_t end = 0;
        const double milliseconds =
            udat_parse(format_.get(), text.data(), static_cast<int>(text.size()), &end, &status);
        while (!text.empty() && text.back() == u' ') text.remove_suffix(1);
        if (U_FAILURE(status) || end < static_cast<int>(text.size())) return false;
        const double ticks = milliseconds * 10 + static_cast<double>(Date(1970, 1, 1).ticks());
        if (ticks < 0 || ticks > static_cast<double>(Date::kLastTicks)) return false;
        date = Date::fromTicks(static_cast<std::uint64_t>(ticks));
        return true;
    }

private:
    UErrorCode status_ = U_ZERO_ERROR;
    std::unique_ptr<UDateFormat, void (*)(UDateFormat*)> format_;
};

// All letters that are written without ICU in all runs, and some that are not.
constexpr std::u16string_view kPatterns[] = {
    u"yyyy-MM-dd HH:mm:ss",
    u"d MMMM yyyy 'г.'",
    u"EEEE, dd/M/yy",
    u"LLLL 'o''clock' yyy",
    u"EEE E h:mm a, hh aaaa",
    u"LLL MMM L LL",
    u"H m s",
    u"'' 'd''M' ''yy''",
    u"EEEEE MMMMM aaaaa",
    u"G yyyy QQQ q",
    u"B h:mm, w e c K kk",
    u"yyyyyyy ddd HHH 'open",
};

TEST(DateFormatOfAllLocales, WritesAsIcuDoes) {
    std::mt19937_64 random(7);
    for (const Locale& locale : Locale::all()) {
        SCOPED_TRACE(locale.key());
        const DateFormat format(locale);
        IcuFormat icu(locale);
        const std::u16string own[] = {std::u16string(format.getFullDatePattern()),
                                      std::u16string(format.getLongDateTimePattern()),
                                      std::u16string(format.getShortDateTimePattern()),
                                      std::u16string(format.getShortTimePattern())};
        std::vector<std::u16string_view> patterns(std::begin(kPatterns), std::end(kPatterns));
        patterns.insert(patterns.end(), std::begin(own), std::end(own));
        for (const std::u16string_view pattern : patterns) {
            icu.apply(pattern);
            for (int i = 0; i != 8; ++i) {
                const Date date = Date::fromTicks(random() % Date::kLastTicks);
                ASSERT_EQ(utf8(format.format(date, pattern)), utf8(icu.format(date)))
                    << utf8(pattern) << ' ' << utf8(date.toString());
            }
        }
        for (const Date date : {Date(), Date::latest(), Date(1582, 10, 10), Date(1500, 2, 28)}) {
            icu.apply(own[0]);
            EXPECT_EQ(utf8(format.format(date, own[0])), utf8(icu.format(date)));
        }
    }
}

TEST(DateFormatOfAllLocales, ReadsAsIcuDoes) {
    constexpr std::u16string_view kRead[] = {u"d.M.yyyy H:m", u"dd.MM.yyyy", u"yyyyMMdd",
                                             u"HH 'h' ss",    u"d/LL yyyy",  u"d 'd' d"};
    std::mt19937_64 random(11);
    for (const Locale& locale : Locale::all()) {
        SCOPED_TRACE(locale.key());
        const DateFormat format(locale);
        IcuFormat icu(locale);
        for (const std::u16string_view pattern : kRead) {
            icu.apply(pattern);
            for (int i = 0; i != 30; ++i) {
                std::u16string text(
                    format.format(Date::fromTicks(random() % Date::kLastTicks), pattern));
                const std::size_t at = random() % text.size();
                if (i % 3 == 1) text.erase(at, 1);
                if (i % 3 == 2) text[at] = text[random() % text.size()];
                Date date, expected;
                const bool isDate = icu.parse(text, expected);
                ASSERT_EQ(format.parse(text, pattern, date), isDate)
                    << utf8(pattern) << ' ' << utf8(text);
                ASSERT_EQ(utf8(date.toString()), utf8(expected.toString()))
                    << utf8(pattern) << ' ' << utf8(text);
            }
        }
    }
}

TEST(DateFormatOfAllLocales, ReadsWhatItWrote) {
    std::mt19937_64 random(9);
    for (const Locale& locale : Locale::all()) {
        SCOPED_TRACE(locale.key());
        const DateFormat format(locale);
        const Date date = Date::fromTicks(random() % Date::kLastTicks);
        const auto& pattern = format.getShortDateTimePattern();
        const stdx::ustring text = format.format(date, pattern);
        Date back;
        ASSERT_TRUE(format.parse(text, pattern, back)) << utf8(text);
        ASSERT_EQ(utf8(back.toString()), utf8(date.toString())) << utf8(text);
    }
}

TEST(DateFormat, TranslatesThePatternsOfThePlatform) {
    const struct {
        const char16_t *pattern, *icu;
    } rows[] = {
        {u"dd.MM.yyyy", u"dd'.'MM'.'yyyy"},
        {u"дд.ММ.гггг ЧЧ:мм:сс", u"dd'.'MM'.'yyyy' 'HH':'mm':'ss"},
        {u"d MMMM yyyy", u"d' 'MMMM' 'yyyy"},
        {u"MMMM d", u"MMMM' 'd"},
        {u"MMMM yyyy", u"LLLL' 'yyyy"},
        {u"MMMM dddd d", u"LLLL' 'EEEE' 'd"},
        {u"d MMM M", u"d' 'MMM' 'L"}, // the day goes with one month
        {u"d yyyy MM", u"d' 'yyyy' 'LL"},
        {u"M MM dd", u"L' 'MM' 'dd"},
        {u"y yy yyy", u"y' 'yy' 'yyyy"},
        {u"ddd dddd ddddd", u"EEE' 'EEEE' ddddd'"},
        {u"hhh HHHH tt t qq к вв", u"'hhh HHHH 'aa' 'a' 'qq' 'q' 'aa"},
        {u"d'день'M", u"d'день'M"},
        {u"", u""},
        {u"''''\"\"", u""},
        {u"'it''s'd", u"'its'd"},
        {u"\"it's\" d\"a\"\"b\"", u"'it''s 'd'ab'"},
        {u"'a'\"b\"Zc'd", u"'abZcd'"}, // literals become one, the last needs no end
        {u"Zz.AB", u"'Zz.AB'"},
        {u"dд", u"dd"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(utf8(DateFormat::parseOrbPattern(row.pattern)), utf8(row.icu));
}

TEST(DateFormat, WritesThePatternsOfThePlatform) {
    const Date date(2009, 3, 5, 0, 7, 9); // a Thursday
    const struct {
        const char16_t *locale, *pattern;
        const char* text;
    } rows[] = {
        {u"ru", u"d MMMM yyyy", "5 марта 2009"},
        {u"ru", u"MMMM yyyy", "март 2009"},
        {u"ru", u"MMMM, d", "марта, 5"},
        {u"ru", u"ддд дддд", "чт четверг"},
        {u"en", u"ddddd", "ddddd"},
        {u"en", u"y yy yyy yyyy", "9 09 2009 2009"},
        {u"en", u"q y", "1 9"},
        {u"en", u"h:mm:ss t H", "12:07:09 AM 0"},
        {u"th", u"d.M.y", "5.3.9"},
        {u"fa_IR", u"d.M.y yyyy", "۵.۳.۹ ۲۰۰۹"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(formatted(row.locale, date, row.pattern), row.text) << utf8(row.pattern);
    EXPECT_EQ(formatted(u"en", Date(2000, 1, 1), u"y yy q"), "0 00 1");
    EXPECT_EQ(formatted(u"en", Date(1999, 1, 1), u"y q"), "99 1");
    EXPECT_EQ(formatted(u"en", Date(), u"dd.MM.yyyy"), "01.01.0001");
    EXPECT_EQ(utf8(format_of(u"en").format(date, u"J")), "") << "ICU has no such letter";
    EXPECT_EQ(utf8(format_of(u"en").format(date, u"'y'y G'y'")), "y9 ADy");
    format_of(u"en").format(Date::fromTicks(~0ull), u"EEEE d MMMM y G"); // no date: any text
}

TEST(DateFormat, WritesTextsLongerThanAnyBuffer) {
    const DateFormat format = format_of(u"en");
    const Date date(2009, 3, 5);
    const std::u16string names(1'500, u'-');
    EXPECT_EQ(utf8(format.format(date, u"yyyy" + names + u"MM" + names)),
              "2009" + std::string(1'500, '-') + "03" + std::string(1'500, '-'));
    const std::string byIcu = utf8(format.format(date, u"yyyy G" + names + u"y"));
    EXPECT_EQ(byIcu, "2009 AD" + std::string(1'500, '-') + "9");
    std::u16string alternating;
    for (int i = 0; i != 3'000; ++i) alternating += u"MMMM ";
    EXPECT_EQ(format.format(date, alternating).size(), 3'000u * 6);
    EXPECT_EQ(DateFormat::parseOrbPattern(std::u16string(100'000, u'\'')).size(), 0u);
    EXPECT_EQ(DateFormat::parseOrbPattern(std::u16string(100'000, u'd')).size(), 100'002u);
}

TEST(DateFormat, HasThePatternsOfItsLocale) {
    const DateFormat before = format_of(u"de");
    EXPECT_EQ(utf8(before.getShortDatePattern()), "dd.MM.yyyy");
    EXPECT_EQ(utf8(before.getTimePattern()), "HH:mm:ss");
    EXPECT_EQ(utf8(before.getShortTimePattern()), "HH:mm");
    EXPECT_EQ(utf8(before.getLongDatePattern()), "d. MMMM yyyy");
    EXPECT_EQ(utf8(before.getFullDatePattern()), "EEEE, d. MMMM yyyy");
    DateFormat format = before;
    format.setShortDatePattern(u"yy");
    format.setTimePattern(u"H");
    const auto patterns = [](const DateFormat& of) {
        std::string all;
        for (int i = -1; i != 7; ++i)
            all += utf8(of.getPattern(static_cast<DateFormat::Pattern>(i))) + '|';
        return all;
    };
    EXPECT_EQ(patterns(format), "|d. MMMM yyyy|yy|H|d. MMMM yyyy H|yy H|HH:mm||");
    format.setLongDatePattern(u"d");
    EXPECT_EQ(patterns(format), "|d|yy|H|d H|yy H|HH:mm||");
    EXPECT_EQ(utf8(format.getFullDatePattern()), "EEEE, d. MMMM yyyy");
    EXPECT_EQ(patterns(before), patterns(format_of(u"de"))) << "others keep theirs";
}

TEST(DateFormat, WritesShortDaysOfTheWeek) {
    const struct {
        const char16_t* locale;
        const char* days;
    } rows[] = {{u"pl_PL", "P W Ś C P S N "},
                {u"vi", "H B T N S B C "},
                {u"ru", "пн вт ср чт пт сб вс "},
                {u"en", "Mon Tue Wed Thu Fri Sat Sun "}};
    for (const auto& row : rows) {
        std::string days;
        for (int day = 2; day != 9; ++day)
            days += utf8(format_of(row.locale).shortDayOfWeek(Date(2009, 3, day))) + ' ';
        EXPECT_EQ(days, row.days);
    }
    EXPECT_EQ(utf8(format_of(u"pl").shortDayOfWeek(Date::fromTicks(~0ull))).size() > 100, false);
}

using DateParsing = test::ProcessTest;

TEST_F(DateParsing, TakesWholeTextsAlone) {
    const struct {
        const char16_t *locale, *text, *pattern;
        Date date; // empty: none
    } rows[] = {
        {u"ru", u"5 марта 2009", u"d MMMM yyyy", Date(2009, 3, 5)},
        {u"en", u"2009-03-05 \t", u"yyyy-MM-dd", Date(2009, 3, 5)},
        {u"en", u"2009-03-05x", u"yyyy-MM-dd", {}},
        {u"en", u"", u"yyyy-MM-dd", {}},
        {u"en", u"2009", u"", {}},
        {u"en", u"x", u"yyyy", {}},
        {u"en", u"12:30 PM", u"h:mm a", Date(1970, 1, 1, 12, 30, 0)},
        {u"en", u"31.02.2009", u"dd.MM.yyyy", Date(2009, 3, 3)},
        {u"en", u"01.01.10000", u"dd.MM.yyyy", {}},
        {u"en", u"01.01.0005 BC", u"dd.MM.yyyy G", {}},
        {u"en", u"28.02.1500", u"dd.MM.yyyy", Date(1500, 2, 28)},
        {u"en", u"10.10.1582", u"dd.MM.yyyy", Date(1582, 10, 10)},
        {u"en", u"1 PST", u"d z", Date(1970, 1, 1)},
        {u"en", u"1 23:00", u"d HH:mm", Date(1970, 1, 1, 23, 0, 0)}, // of no zone afterwards
        {u"en", u"9", u"y", Date(9, 1, 1)},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(utf8(row.text));
        Date date = Date::latest();
        EXPECT_EQ(format_of(row.locale).parse(row.text, row.pattern, date), !row.date.empty());
        EXPECT_EQ(utf8(date.toString()),
                  utf8((row.date.empty() ? Date::latest() : row.date).toString()));
    }
    Date date;
    EXPECT_FALSE(format_of(u"en").parse(std::u16string(1'000'000, u'1'), u"d", date));
    for (const char16_t unit : {u'1', u'\u200E', u' '}) {
        const std::u16string text = u"7" + std::u16string(40, unit) + u"7";
        EXPECT_FALSE(format_of(u"en").parse(text, u"SSS", date)) << "ICU divides by zero";
    }
    EXPECT_TRUE(format_of(u"en").parse(u"7.123", u"s.SSS", date));
}

TEST_F(DateParsing, TakesYearsOfTwoDigitsFromTheCenturyOfTheThread) {
    const DateFormat format = format_of(u"en");
    const auto year = [&](const char16_t* text) {
        Date date;
        EXPECT_TRUE(format.parse(text, u"yy", date));
        return date.getYear();
    };
    EXPECT_EQ(year(u"49"), 2049);
    EXPECT_EQ(year(u"50"), 1950);
    current_thread()->setBeginningOfCentury(2000);
    EXPECT_EQ(year(u"50"), 2050);
    EXPECT_EQ(year(u"99"), 2099);
    current_thread()->setBeginningOfCentury(1830);
    EXPECT_EQ(year(u"29"), 1929);
    current_thread()->resetBeginningOfCentury();
    EXPECT_EQ(year(u"50"), 1950);
}

} // namespace
