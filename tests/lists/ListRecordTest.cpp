// Records that are said once, and the types of other folders that have a form as lists.
#include "ListSources.h"
#include "support/ProcessTest.h"

#include <core/locale/OrbLocaleInfo.h>
#include <core/numbers/TimeZone.h>
#include <core/numbers/TimeZoneException.h>
#include <core/streams/ListRecord.h>

namespace {

using namespace core;
using namespace core::literals;
using namespace test;

enum class Color : std::int16_t { Red = -1, Green = 300 };

struct Point {
    std::int32_t x = 0, y = 0;
    bool operator==(const Point&) const = default;

    static constexpr auto fields = list_fields(list_field(&Point::x), list_field(&Point::y));
};

struct Everything {
    bool flag = false;
    Color color = Color::Red;
    char16_t letter = 0;
    std::uint8_t byte = 0;
    std::int64_t large = 0;
    float half = 0;
    double quarter = 0;
    stdx::ustring text;
    stdx::string blob;
    _GUID id = {};
    Numeric price;
    Date day;
    Point point;
    URL url;
    stdx::ustring note = u"none"; // since version 2
    std::int32_t rank = -1;       // since version 3
    bool operator==(const Everything&) const = default;

    static constexpr auto fields = list_fields(
        list_field(&Everything::flag), list_field(&Everything::color),
        list_field(&Everything::letter), list_field(&Everything::byte),
        list_field(&Everything::large), list_field(&Everything::half),
        list_field(&Everything::quarter), list_field(&Everything::text),
        list_field(&Everything::blob), list_field(&Everything::id), list_field(&Everything::price),
        list_field(&Everything::day), list_field(&Everything::point), list_field(&Everything::url),
        list_field<2>(&Everything::note), list_field<3>(&Everything::rank));
};

const Everything kFull = {true,        Color::Green,
                          u'A',        255,
                          -5000000000, 0.5f,
                          0.25,        u"a\"b",
                          "abc",       IID_IListInStream,
                          12.5_num,    Date(2021, 3, 4),
                          {1, -2},     URL(u"a.txt", true),
                          u"new",      7};

class ListRecords : public ProcessTest {};

template <class T> T read_back(const std::u16string& text) {
    T record;
    const auto reader = make_reader(text, 100);
    ListInStream in(reader.get());
    read_record(in, record);
    return record;
}
template <class T> T read_back(const std::string& bytes) {
    T record;
    ListInStream in(make_file(bytes, 100).get());
    read_record(in, record);
    return record;
}
template <class T> auto writing(const T& record, unsigned version = ~0u) {
    return [&record, version](IListOutStream& stream) {
        ListOutStream out(&stream);
        write_record(out, record, version);
    };
}

TEST_F(ListRecords, ARecordIsOneListOfItsFields) {
    EXPECT_EQ(text_of(writing(kFull)),
              u"{1,300,65,255,-5000000000,5e-1,2.5e-1,\"a\"\"b\",YWJj,"
              u"c4e86a1d-3f07-49b2-8d5c-16b9e07a3f82,12.5,20210304000000,\n{1,-2},\n{\"a.txt\",1},"
              u"\"new\",7}");
    EXPECT_EQ(read_back<Everything>(text_of(writing(kFull))), kFull);
    EXPECT_EQ(read_back<Everything>(bytes_of(writing(kFull))), kFull);
}

TEST_F(ListRecords, OlderListsLackFieldsAndNewerOnesHaveMore) {
    for (unsigned version = 1; version <= 3; ++version) {
        Everything expected = kFull;
        if (version < 2) expected.note = u"none";
        if (version < 3) expected.rank = -1;
        EXPECT_EQ(read_back<Everything>(text_of(writing(kFull, version))), expected);
        EXPECT_EQ(read_back<Everything>(bytes_of(writing(kFull, version))), expected);
    }
    EXPECT_EQ(read_back<Point>(u"{1,2,\"newer\",{3}}"), (Point{1, 2}));
    EXPECT_THROW(read_back<Point>(u"{1}"), ListStreamException);
}

struct Town {
    stdx::ustring name;
    std::int32_t people = -1;

    static constexpr auto fields =
        list_fields(list_field(&Town::name), list_field<2>(&Town::people));
};

// A list that says its version: what is missing of it is a fault, what came later is not there.
TEST_F(ListRecords, VersionsStandAheadOfTheFields) {
    const auto read = [](const std::u16string& text) {
        Town town;
        const auto reader = make_reader(text, 100);
        ListInStream in(reader.get());
        read_versioned_record(in, town);
        return town;
    };
    EXPECT_EQ(text_of([](IListOutStream& stream) {
                  ListOutStream out(&stream);
                  write_versioned_record(out, Town{u"Riga", 600'000});
              }),
              u"{2,\"Riga\",600000}");
    EXPECT_EQ(read(u"{2,\"Riga\",600000}").people, 600'000);
    EXPECT_EQ(read(u"{1,\"Riga\"}").people, -1);
    EXPECT_EQ(read(u"{1,\"Riga\",7}").people, -1) << "no such field in that version";
    EXPECT_EQ(read(u"{99,\"Riga\",7,{8},\"newer\"}").people, 7);
    for (const auto* bad : {u"{}", u"{0,\"Riga\"}", u"{-1,\"Riga\"}", u"{2,\"Riga\"}", u"{1}"})
        EXPECT_THROW(read(bad), ListStreamException);
}

// ---- Types that store themselves.

template <class T> T from_text(std::u16string text) {
    const auto reader = make_reader(std::move(text), 3);
    ListInStream in(reader.get());
    return T::deserialize(in);
}
template <class T> T from_bytes(std::string bytes) {
    ListInStream in(make_file(std::move(bytes), 3).get());
    return T::deserialize(in);
}
template <class T> auto storing(const T& value) {
    return [&value](IListOutStream& stream) {
        ListOutStream out(&stream);
        to_stream(out, value);
    };
}

TEST_F(ListRecords, TimeZones) {
    const struct {
        const char16_t* id;
        std::u16string_view text;
    } rows[] = {
        {u"Europe/Moscow", u"{0,\"Europe/Moscow\"}"},
        {u"GMT+3", u"{1,\"GMT+03:00\",108000000}"},
    };
    for (const auto& row : rows) {
        const TimeZone zone(row.id);
        EXPECT_EQ(text_of(storing(zone)), row.text);
        EXPECT_EQ(from_text<TimeZone>(std::u16string(row.text)), zone);
        EXPECT_EQ(from_bytes<TimeZone>(bytes_of(storing(zone))), zone);
    }
    EXPECT_THROW(from_text<TimeZone>(u"{0,\"Nowhere/AtAll\"}"), TimeZoneException);
    EXPECT_THROW(TimeZone(u"Nowhere/InLists"), TimeZoneException);
    const TimeZone stored = from_text<TimeZone>(u"{1,\"Nowhere/InLists\",-36000000,\"newer\"}");
    EXPECT_EQ(stored.getRawOffset(), DateSpan::fromHours(-1));
    EXPECT_EQ(TimeZone(u"Nowhere/InLists"), stored);
    for (const char16_t* offset : {u"-9223372036854775808", u"9223372036854775807"}) {
        const TimeZone far = from_text<TimeZone>(u"{1,\"X\"," + std::u16string(offset) + u"}");
        const Date local = far.toLocalTime(Date(2021, 3, 4));
        EXPECT_TRUE(local == Date() || local.ticks() == Date::kLastTicks);
    }
}

TEST_F(ListRecords, DescriptionsOfLocales) {
    const OrbLocaleInfo info(u"ru_RU", u',', u' ', u"3;0", NegativeOrder::SignBefore, u"no", u"yes",
                             u"dd.MM.yyyy", u"HH:mm", 5, WeekDay::Sunday);
    EXPECT_EQ(text_of(storing(info)), u"{\"ru_RU\",44,32,\"3;0\",1,\"no\",\"yes\",\"dd.MM.yyyy\","
                                      u"\"HH:mm\",5,7}");
    const OrbLocaleInfo back = from_bytes<OrbLocaleInfo>(bytes_of(storing(info)));
    EXPECT_EQ(text_of(storing(back)), text_of(storing(info)));

    const OrbLocaleInfo old = from_text<OrbLocaleInfo>(u"{\"en\",0,0,\"\",-1,\"\",\"\",\"\",\"\"}");
    EXPECT_EQ(old.negativeOrder(), NegativeOrder::Locale);
    EXPECT_EQ(old.reserved(), 0);
    EXPECT_EQ(old.getFirstDayOfWeek(), WeekDay::Sunday);
    for (const char16_t* damaged :
         {u"{\"en\",0,0,\"\",5,\"\",\"\",\"\",\"\"}", u"{\"en\",0,0,\"\",-2,\"\",\"\",\"\",\"\"}",
          u"{\"en\",0,0,\"\",1,\"\",\"\",\"\",\"\",0,8}"})
        EXPECT_THROW(from_text<OrbLocaleInfo>(damaged), ListStreamException);
}

TEST_F(ListRecords, NumbersAndDatesByThemselves) {
    StringOutputStream out;
    out.open();
    const auto long_ = *Numeric::parse("-" + std::string(100, '7') + ".5");
    long_.toStream(out.writer());
    Date(2021, 3, 4, 5, 6, 7).toStream(out.writer());
    const stdx::ustring text = out.close()->toString();
    EXPECT_EQ(text.view(), u"-" + std::u16string(100, u'7') + u".520210304050607");

    for (const unsigned window : kWindows) {
        const auto reader = make_reader(std::u16string(text.view()).insert(103, u"\n"), window);
        Numeric number;
        Date date;
        EXPECT_TRUE(number.fromStream(reader.get()));
        EXPECT_EQ(number, long_);
        EXPECT_TRUE(date.fromStream(reader.get()));
        EXPECT_EQ(date, Date(2021, 3, 4, 5, 6, 7));
        EXPECT_FALSE(number.fromStream(reader.get()));
        EXPECT_FALSE(date.fromStream(reader.get()));
    }
    const std::string bytes = bytes_of([&](IListOutStream& stream) { long_.toBinary(&stream); });
    EXPECT_EQ(hex(bytes).substr(0, 4), "1A67");
    Numeric back;
    ListInStream in(make_file(bytes, 0).get());
    back.fromBinary(in.get());
    EXPECT_EQ(back, long_);
    ListInStream damaged(make_file("\x0Bx", 0).get());
    EXPECT_THROW(back.fromBinary(damaged.get()), ListStreamException);
}

} // namespace
