#include <core/numbers/Date.h>
#include <core/numbers/TimeZone.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <optional>
#include <random>
#include <string>

namespace {

using namespace core;

std::u16string wide(std::string_view text) {
    return {text.begin(), text.end()};
}

// What reading gave: the date, nothing where there is none, and how many units were taken.
struct Read {
    std::optional<Date> date;
    std::ptrdiff_t taken;
    bool operator==(const Read&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Read& read) {
    return (read.date ? out << *read.date : out << "no date") << " of " << read.taken << " units";
}

template <class T, class Parse> Read read(const std::basic_string<T>& text, Parse parse) {
    Date date(1999, 9, 9);
    T* end = nullptr;
    const bool good = parse(date, text.c_str(), &end);
    EXPECT_TRUE(good || date.empty());
    return {good ? std::optional(date) : std::nullopt, end - text.c_str()};
}

Read read_plain(const char* text) {
    const auto parse = [](Date& date, const auto* from, auto** end) {
        return date.fromString(from, const_cast<decltype(from)*>(end));
    };
    const Read narrow = read(std::string(text), parse);
    EXPECT_EQ(read(wide(text), parse), narrow);
    return narrow;
}

Read read_xml(const char* text) {
    return read(wide(text), [](Date& date, const char16_t* from, char16_t** end) {
        return date.fromXMLString(from, end);
    });
}

Read read_iso(const char* text, bool keepUniversal = true) {
    return read(wide(text), [&](Date& date, const char16_t* from, char16_t** end) {
        return date.fromISOString(from, end, keepUniversal);
    });
}

TEST(DateFromText, TakesEightTwelveOrFourteenDigits) {
    const struct {
        const char* text;
        Read expected;
    } rows[] = {
        {"20210304", {Date(2021, 3, 4), 8}},
        {"2021030405", {Date(2021, 3, 4), 8}},
        {"20210304050", {Date(2021, 3, 4), 8}},
        {"202103040506", {Date(2021, 3, 4, 5, 6, 0), 12}},
        {"2021030405060", {Date(2021, 3, 4, 5, 6, 0), 12}},
        {"20210304050607", {Date(2021, 3, 4, 5, 6, 7), 14}},
        {"202103040506079", {Date(2021, 3, 4, 5, 6, 7), 14}},
        {"99991231235959999999999999999", {Date(9999, 12, 31, 23, 59, 59), 14}},
        {" \t\n20210304x", {Date(2021, 3, 4), 11}},
        {"00010101000000", {Date(), 14}},
        {"00000000", {Date(), 8}},
        {"000000000000", {Date(), 12}},
        {"  00000000000000", {Date(), 16}},
        {"", {{}, 0}},
        {"  2021030", {{}, 0}},
        {"2021-03-04", {{}, 0}},
        {"x20210304", {{}, 0}},
        {"20211304", {{}, 0}},
        {"  20211304", {{}, 2}},
        {"20210304246000", {{}, 0}},
        {"00000000000001", {{}, 0}},
        {"\xD9\xA0\xD9\xA0\xD9\xA0\xD9\xA0", {{}, 0}},
    };
    for (const auto& row : rows) EXPECT_EQ(read_plain(row.text), row.expected) << row.text;
}

TEST(DateFromText, TakesTheFormOfXml) {
    const Date date(2021, 3, 4, 5, 6, 7);
    EXPECT_EQ(read_xml(" 2021-03-04T05:06:07Z"), (Read{date, 20}));
    for (const char* text : {"", "2021-03-04", "2021-03-04T05:06:0", "20210304T050607",
                             "2021-02-29T00:00:00", "2021-03-04 05:06:07", "2021-03-04t05:06:07"})
        EXPECT_EQ(read_xml(text), (Read{{}, 0})) << text;
}

TEST(DateFromText, TakesTheFormsOfIso) {
    const Date date(2021, 3, 4, 5, 6, 7);
    const struct {
        const char* text;
        Read expected;
    } rows[] = {
        {"2021", {Date(2021, 1, 1), 4}},
        {"2021-03", {Date(2021, 3, 1), 7}},
        {"202103", {Date(2021, 3, 1), 6}},
        {"  20210304", {Date(2021, 3, 4), 10}},
        {"2021-0304T05", {Date(2021, 3, 4, 5, 0, 0), 12}},
        {"2021-03-04T5", {Date(2021, 3, 4, 5, 0, 0), 12}},
        {"2021-03-04T5:06", {Date(2021, 3, 4, 5, 6, 0), 15}},
        {"20210304T0506", {Date(2021, 3, 4, 5, 6, 0), 13}},
        {"20210304T050607", {date, 15}},
        {"2021-03-04T05:06:07 next", {date, 19}},
        {"2021-03-04T05:06:07.4999", {date, 24}},
        {"2021-03-04T05:06:07.5Z", {date + DateSpan::fromSeconds(1), 22}},
        {"2021-12-31T23:59:59.9", {Date(2022, 1, 1), 21}},
        {"9999-12-31T23:59:59.9", {Date::latest(), 21}},
        {"2021-03-04T05:06:07z", {date, 20}},
        {"2021-03-04T05:06:07+03:30", {date - DateSpan::fromMinutes(210), 25}},
        {"2021-03-04T05:06:07-0330", {date + DateSpan::fromMinutes(210), 24}},
        {"2021-03-04T05:06:07+03:60", {date - DateSpan::fromHours(3), 25}},
        {"2021-03-04T05:06:07-99:59", {Date(2021, 3, 8, 9, 5, 7), 25}},
        {"0001-01-01T00:00:00+05:00", {Date(), 25}},
        {"9999-12-31T23:00:00-05:00", {Date::latest(), 25}},
        {"", {{}, 0}},
        {"202", {{}, 0}},
        {"  2021-", {{}, 0}},
        {"2021-3", {{}, 0}},
        {"2021-03-04 ", {{}, 0}}, // only behind the seconds may more follow
        {"2021-03-04T", {{}, 0}},
        {"2021-03-04T05:06Z", {{}, 0}},
        {"2021-03-04T05:06:07.", {{}, 0}},
        {"2021-03-04T05:06:07+3:00", {{}, 0}},
        {"2021-03-04T05:06:07+03", {{}, 0}},
        {"2021-03-04T05:06:07Zulu", {{}, 0}},
        {"2021-03-04T24:00:00", {{}, 0}},
        {"0000-01-01T00:00:00", {{}, 0}},
    };
    for (const auto& row : rows) EXPECT_EQ(read_iso(row.text), row.expected) << row.text;
}

TEST(DateFromText, GoesToTheTimeOfThisMachineUnlessKept) {
    const Date summer(2021, 7, 4, 5, 6, 7);
    EXPECT_EQ(read_iso("2021-07-04T05:06:07Z", false).date, TimeZone::system().toLocalTime(summer));
    EXPECT_EQ(read_iso("2021-07-04T05:06:07", false).date, summer) << "no zone was given";
}

TEST(DateToText, IsThatOfPrintfBothWays) {
    std::mt19937_64 random(5);
    for (int i = 0; i < 200'000; ++i) {
        const Date date = Date::fromTicks(random() % (Date::kLastTicks / 10'000) * 10'000);
        int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
        (date + DateSpan(9'999)).split(year, month, day, hour, minute, second);
        char plain[80], xml[80];
        std::snprintf(plain, sizeof plain, "%04d%02d%02d%02d%02d%02d", year, month, day, hour,
                      minute, second);
        std::snprintf(xml, sizeof xml, "%04d-%02d-%02dT%02d:%02d:%02d", year, month, day, hour,
                      minute, second);
        ASSERT_EQ(date.toString(), wide(plain));
        ASSERT_EQ(date.toXMLString(), wide(xml));
        char text[32] = {};
        ASSERT_EQ(date.toChars(text), text + Date::kTextSize);
        ASSERT_STREQ(text, plain);
        ASSERT_EQ(date.toXMLChars(text), text + Date::kXMLTextSize);
        ASSERT_STREQ(text, xml);
        ASSERT_EQ(read_plain(plain), (Read{date, 14}));
        ASSERT_EQ(read_xml(xml), (Read{date, 19}));
        ASSERT_EQ(read_iso(xml), (Read{date, 19}));
    }
    EXPECT_EQ(Date().toString(), u"00010101000000");
}

} // namespace
