#include <core/component/Utf8.h>
#include <core/locale/OrbLocaleInfo.h>
#include <core/locale/WeekInfo.h>
#include <core/numbers/Date.h>

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace {

using namespace core;
using enum WeekDay;

// The days 1 to 7, weekends as "x".
std::string days(const WeekInfo& week) {
    std::string all;
    for (int day = 1; day <= 7; ++day) all += week.isWeekend(static_cast<WeekDay>(day)) ? 'x' : '.';
    return all;
}

TEST(WeekInfo, IsThatOfTheCountry) {
    const std::map<std::u16string, WeekInfo> rows = {
        {u"ru_RU", {Monday, Saturday, Sunday}},   {u"en_US", {Sunday, Saturday, Sunday}},
        {u"ar_EG", {Saturday, Friday, Saturday}}, {u"fa_IR", {Saturday, Friday, Friday}},
        {u"fa_AF", {Saturday, Thursday, Friday}}, {u"hi_IN", {Sunday, Sunday, Sunday}},
    };
    for (const auto& [name, week] : rows)
        for (int time = 0; time != 2; ++time)
            EXPECT_EQ(WeekInfo::of(Locale(name.c_str())), week) << to_utf8(name);
}

TEST(WeekInfo, OfEveryLocaleHasAWeekend) {
    for (const Locale& locale : Locale::all()) {
        const std::string all = days(WeekInfo::of(locale));
        EXPECT_NE(all.find('x'), all.npos) << locale.key();
        EXPECT_NE(all.find('.'), all.npos) << locale.key();
    }
}

TEST(WeekInfo, TellsDaysOfWeekendsThatMayWrap) {
    const struct {
        WeekDay start, end;
        const char* days;
    } rows[] = {
        {Saturday, Sunday, ".....xx"},     {Friday, Saturday, "....xx."},
        {Sunday, Monday, "x.....x"},       {Saturday, Tuesday, "xx...xx"},
        {Wednesday, Wednesday, "..x...."}, {Monday, Sunday, "xxxxxxx"},
    };
    const WeekInfo week(Monday, Saturday, Sunday);
    for (const auto& row : rows) {
        const WeekInfo changed = week.withWeekend(row.start, row.end);
        EXPECT_EQ(days(changed), row.days);
        EXPECT_EQ(changed.withFirstDayOfWeek(Sunday), WeekInfo(Sunday, row.start, row.end));
        for (int day = 1; day <= 7; ++day) // 2024-01-01 was a Monday
            EXPECT_EQ(changed.isWeekend(Date(2024, 1, day)), row.days[day - 1] == 'x');
    }
}

OrbLocaleInfo info_of(const char16_t* name, const char16_t* falseName, const char16_t* trueName,
                      WeekDay firstDay = WeekDay()) {
    return {name, u'.', u' ', u"3;0",  NegativeOrder::Locale, falseName, trueName,
            u"",  u"",  0,    firstDay};
}

TEST(OrbLocaleInfo, TakesFromTheLocaleWhatItHasNotGot) {
    const OrbLocaleInfo plain = info_of(u"RU_ru", u"", u"");
    EXPECT_EQ(plain.getFirstDayOfWeek(), Monday);
    EXPECT_EQ(to_utf8(plain.createBoolFormat().format(true)), to_utf8(u"\u0414\u0430"));
    EXPECT_EQ(to_utf8(plain.createBoolFormat(Locale(u"de")).format(true)), to_utf8(u"Ja"));

    const OrbLocaleInfo own = info_of(u"ru", u"0", u"1", Wednesday);
    EXPECT_EQ(own.getFirstDayOfWeek(), Wednesday);
    EXPECT_EQ(to_utf8(own.createBoolFormat().format(false)), to_utf8(u"0"));
    EXPECT_EQ(to_utf8(own.createBoolFormat(Locale(u"de")).format(true)), to_utf8(u"1"));
    EXPECT_STREQ(own.createBoolFormat(Locale(u"de")).locale().key(), "de");

    EXPECT_ANY_THROW(info_of(u"xx", u"", u"").getFirstDayOfWeek());
    EXPECT_EQ(info_of(u"xx", u"", u"", Sunday).getFirstDayOfWeek(), Sunday);
}

} // namespace
