// Every operation in both forms, unit for unit and byte for byte, and back.
#include "ListSources.h"
#include "support/ProcessTest.h"

#include <core/component/Utf8.h>
#include <core/numbers/Date.h>
#include <core/numbers/Numeric.h>
#include <core/text/Numbers.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <vector>

namespace {

using namespace core;
using namespace core::literals;
using namespace test;

using Put = void (*)(IListOutStream&);
using Get = bool (*)(IListInStream&); // whether the value read is the one that was put

struct Row {
    const char* name;
    Put put;
    std::u16string_view text;
    std::string_view bytes; // in hexadecimal
    Get get;
};

template <class T, void (IListInStream::*get)(T&)> bool reads(IListInStream& in, T expected) {
    T value{};
    (in.*get)(value);
    return value == expected;
}

#define INTEGER(KIND, TYPE, VALUE, TEXT, BYTES)                                                    \
    {                                                                                              \
#KIND " " #VALUE, [](IListOutStream& out) { out.put##KIND(VALUE); }, TEXT, BYTES,          \
            [](IListInStream& in) { return reads<TYPE, &IListInStream::get##KIND>(in, VALUE); }       \
    }
#define STRING(NAME, VALUE, TEXT, BYTES)                                                           \
    {                                                                                              \
        NAME, [](IListOutStream& out) { out.putString(VALUE); }, TEXT, BYTES,                      \
            [](IListInStream& in) {                                                                \
                return reads<stdx::ustring, &IListInStream::getString>(in, stdx::ustring(VALUE));  \
            }                                                                                      \
    }
#define NUMERIC(VALUE, TEXT, BYTES)                                                                \
    {                                                                                              \
        "Numeric " VALUE, [](IListOutStream& out) { out.putNumeric(*Numeric::parse(VALUE)); },     \
            TEXT, BYTES, [](IListInStream& in) {                                                   \
                return reads<Numeric, &IListInStream::getNumeric>(in, *Numeric::parse(VALUE));     \
            }                                                                                      \
    }
#define BLOB(NAME, VALUE, TEXT, BYTES)                                                             \
    {                                                                                              \
        NAME, [](IListOutStream& out) { out.putBytes(VALUE); }, TEXT, BYTES,                       \
            [](IListInStream& in) {                                                                \
                return reads<stdx::string, &IListInStream::getBytes>(in, stdx::string(VALUE));     \
            }                                                                                      \
    }

constexpr _GUID kSomeGuid = "01234567-89ab-cdef-0123-456789abcdef"_guid;

const Row kItems[] = {
    {"true", [](IListOutStream& out) { out.putBool(true); }, u"1", "02",
     [](IListInStream& in) { return reads<bool, &IListInStream::getBool>(in, true); }},
    {"false", [](IListOutStream& out) { out.putBool(false); }, u"0", "01",
     [](IListInStream& in) { return reads<bool, &IListInStream::getBool>(in, false); }},
    INTEGER(Int8, std::int8_t, -128, u"-128", "0C80"),
    INTEGER(Int16, std::int16_t, -32768, u"-32768", "0E0080"),
    INTEGER(Int32, std::int32_t, -1, u"-1", "0C01"),
    INTEGER(Int32, std::int32_t, 9, u"9", "0A"),
    INTEGER(Int32, std::int32_t, 10, u"10", "0B0A"),
    INTEGER(Long, std::int32_t, -2147483647, u"-2147483647", "10FFFFFF7F"),
    INTEGER(Int64, std::int64_t, std::numeric_limits<std::int64_t>::min(), u"-9223372036854775808",
            "120000000000000080"),
    INTEGER(UInt8, std::uint8_t, 255, u"255", "0BFF"),
    INTEGER(UInt16, std::uint16_t, 256, u"256", "0D0001"),
    INTEGER(UInt16, std::uint16_t, 65535, u"65535", "0DFFFF"),
    INTEGER(UInt32, std::uint32_t, 65536, u"65536", "0F00000100"),
    INTEGER(ULong, std::uint32_t, 4294967295u, u"4294967295", "0FFFFFFFFF"),
    INTEGER(UInt64, std::uint64_t, 4294967296u, u"4294967296", "110000000001000000"),
    INTEGER(UInt64, std::uint64_t, std::numeric_limits<std::uint64_t>::max(),
            u"18446744073709551615", "11FFFFFFFFFFFFFFFF"),
    INTEGER(Char, char16_t, u'A', u"65", "0B41"),
    INTEGER(Float, float, 1.5f, u"1.5", "130000C03F"),
    INTEGER(Double, double, -0.5, u"-5e-1", "14000000000000E0BF"),
    INTEGER(Guid, _GUID, kSomeGuid, u"01234567-89ab-cdef-0123-456789abcdef",
            "1567452301AB89EFCD0123456789ABCDEF"),
    INTEGER(Guid, _GUID, kUUIDNull, u"00000000-0000-0000-0000-000000000000", "01"),
    STRING("empty string", u"", u"\"\"", "01"),
    STRING("one narrow unit", u"\u00FF", u"\"\u00FF\"", "0BFF"),
    STRING("one wide unit", u"\u0416", u"\"\u0416\"", "17011604"),
    STRING("quotes", u"say \"hi\"", u"\"say \"\"hi\"\"\"",
           "1A08736179202268692"
           "2"),
    STRING("surrogates", u"a\U0001F600b", u"\"a\"\\d83d\"\\de00b\"", "170461003DD800DE6200"),
    STRING("surrogate at the end", u"\U0001F600", u"\"\"\\d83d\"\\de00\"", "17023DD800DE"),
    STRING("line feeds", u"a\r\nb\t", u"\"a\r\nb\t\"", "1A05610D0A6209"),
    {"chars to a zero", [](IListOutStream& out) { out.putChars(u"ab\0c", 4); }, u"\"ab\"",
     "1A0461620063", nullptr},
    {"C string", [](IListOutStream& out) { out.putCString(u"ab"); }, u"\"ab\"", "1A026162",
     [](IListInStream& in) {
         char16_t room[3];
         in.getChars(room, 3);
         return std::u16string_view(room) == u"ab";
     }},
    BLOB("empty blob", "", u"", "01"),
    BLOB("blob of a byte", "\xFB", u"+w==", "0BFB"),
    BLOB("blob", "abc", u"YWJj", "1A03616263"),
    {"binary", [](IListOutStream& out) { out.putBinary("abcd", 4); }, u"YWJjZA==", "1A0461626364",
     [](IListInStream& in) {
         char room[4];
         in.getBinary(room, 4);
         return std::string_view(room, 4) == "abcd";
     }},
    NUMERIC("0", u"0", "01"),
    NUMERIC("-12.5", u"-12.5", "161A052D31322E35"),
    NUMERIC("9223372036854775807", u"9223372036854775807", "11FFFFFFFFFFFFFF7F"),
    NUMERIC("-9223372036854775808", u"-9223372036854775808", "120000000000000080"),
    NUMERIC("9223372036854775808", u"9223372036854775808",
            "161A1339323233333732303336383534373735383038"),
    {"date",
     [](IListOutStream& out) {
         Date date(2021, 3, 4, 5, 6, 7);
         DateSerializer item(&date);
         out.putObject(item);
     },
     u"20210304050607", "11F0340A8ACE430200",
     [](IListInStream& in) {
         Date date;
         DateSerializer item(&date);
         in.getObject(item);
         return date == Date(2021, 3, 4, 5, 6, 7);
     }},
};

class ListForms : public ProcessTest {};

// Each item between two others, so that the commas on both sides count.
TEST_F(ListForms, EveryItemInBothFormsAndBack) {
    for (const Row& row : kItems) {
        SCOPED_TRACE(row.name);
        const auto put = [&](IListOutStream& out) {
            out.beginList();
            out.putInt32(1);
            row.put(out);
            out.putInt32(2);
            out.endList();
        };
        const std::u16string text = text_of(put);
        EXPECT_EQ(text, u"{1," + std::u16string(row.text) + u",2}");
        const std::string bytes = bytes_of(put);
        std::string expected(row.bytes); // its first byte carries the comma
        const std::string first = expected.substr(0, 2);
        expected.replace(
            0, 2, hex(std::string(1, static_cast<char>(std::stoi(first, nullptr, 16) | 0x80))));
        EXPECT_EQ(hex(bytes), "42" + expected + "8320");

        if (!row.get) continue;
        const auto get = [&](IListInStream& in) {
            std::int32_t around = 0;
            in.beginList();
            in.getInt32(around);
            EXPECT_TRUE(row.get(in));
            in.getInt32(around);
            EXPECT_EQ(around, 2);
            EXPECT_FALSE(in.nextInList());
            in.endList();
        };
        for (const unsigned window : kWindows) {
            SCOPED_TRACE(window);
            const auto reader = make_reader(text, window);
            get(*ListInStream(reader.get()).get());
            EXPECT_TRUE(reader->eof());
            const auto file = make_file(bytes, window);
            get(*ListInStream(file.get()).get());
            char more;
            EXPECT_EQ(file->read(&more, 1), 0u);
        }
    }
}

// Against the platform's digits: near 1 they are made by another method.
TEST_F(ListForms, DoublesHaveSixteenDigits) {
    std::mt19937_64 random(1);
    const auto check = [](double value) {
        char16_t written[24];
        char16_t* const end = string_dto(value, written);
        std::string digits;
        for (const char16_t* at = written; at != end && *at != u'e'; ++at)
            if (*at != u'.' && (*at != u'0' || !digits.empty())) digits += static_cast<char>(*at);
        char expected[32];
        std::snprintf(expected, sizeof expected, "%.15e", value);
        std::string plain = {expected[0]};
        plain.append(expected + 2, 15);
        plain.erase(plain.find_last_not_of('0') + 1);
        digits.erase(digits.find_last_not_of('0') + 1);
        EXPECT_EQ(digits, plain) << expected;
        EXPECT_LE(std::fabs(string_tod(std::string(written, end).c_str()) / value - 1), 1e-15);
    };
    for (int i = 0; i != 300'000; ++i) {
        const double near1 =
            std::ldexp(static_cast<double>(random() >> 11), static_cast<int>(random() % 110) - 95);
        if (near1 != 0) check(near1);
    }
    for (int exponent = -320; exponent <= 308; ++exponent) {
        const double power = std::pow(10.0, exponent);
        for (const double value : {power, std::nextafter(power, 0), std::nextafter(power, 1e308)})
            if (value >= std::numeric_limits<double>::min()) check(value);
    }
    for (const double half :
         {0.5, 1.5, 4503599627370497.5, 1125899906842624.125, 1125899906842624.375})
        check(half); // ties go to the even digit
}

// A string as bytes, said plainly.
std::string stored_string(std::u16string_view units) {
    const bool narrow = std::ranges::all_of(units, [](char16_t c) { return c < 256; });
    std::string bytes;
    if (units.empty()) {
        bytes = '\x01';
    } else if (narrow && units.size() == 1) {
        bytes = '\x0B';
    } else {
        const unsigned width = units.size() < 0x100 ? 1 : units.size() < 0x10000 ? 2 : 8;
        bytes = static_cast<char>((narrow ? 26 : 23) + std::min(width - 1, 2u));
        for (unsigned i = 0; i != width; ++i)
            bytes += static_cast<char>(std::uint64_t{units.size()} >> 8 * i);
    }
    for (const char16_t unit : units) {
        bytes += static_cast<char>(unit);
        if (!narrow) bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

// All lengths of a short string and the limits of longer ones; the unit that makes it wide first, last
// and between. One string takes what is read, and what it held before stays as it was for others.
TEST_F(ListForms, StringsOfEveryLength) {
    std::vector<unsigned> sizes = {4093, 4094, 4864, 4865, 5000, 65535, 65536, 65537, 140'000};
    for (unsigned size = 0; size <= 300; ++size) sizes.push_back(size);
    std::vector<stdx::ustring> strings;
    for (const unsigned size : sizes) {
        std::u16string units(size, 0);
        for (unsigned i = 0; i != size; ++i) units[i] = static_cast<char16_t>(255 - i * 7 % 256);
        strings.emplace_back(units);
        for (const unsigned wide : {0u, size / 2, size - 1}) {
            if (wide >= size) continue;
            std::u16string changed = units;
            changed[wide] = wide % 2 == 0 ? u'\u0100' : u'\uFFFF';
            strings.emplace_back(changed);
        }
    }
    std::string expected;
    for (const stdx::ustring& string : strings) {
        std::string bytes = stored_string(string);
        bytes[0] = static_cast<char>(bytes[0] | (expected.empty() ? 0x40 : 0x80));
        expected += bytes;
    }
    expected += '\x20';
    const std::string bytes = bytes_of([&](IListOutStream& out) {
        out.beginList();
        for (const stdx::ustring& string : strings) out.putString(string);
        out.endList();
    });
    ASSERT_TRUE(bytes == expected);

    for (const unsigned window : {0u, 3u, 100'000'000u}) {
        ListInStream in(make_file(bytes, window).get());
        stdx::ustring read, held;
        in->beginList();
        for (std::size_t i = 0; i != strings.size(); ++i) {
            if (i % 2 == 0) held = read; // shares its block
            in->getString(read);
            ASSERT_TRUE(read == strings[i]) << i;
            ASSERT_TRUE(i < 2 || held == strings[i - 1 - i % 2]) << i;
        }
        in->endList();
    }
}

TEST_F(ListForms, ListsWithinLists) {
    const auto put = [](IListOutStream& out) {
        out.beginList();
        out.putInt32(1);
        out.putInt32(2);
        out.beginList();
        out.putInt32(3);
        out.endList();
        out.beginList();
        out.putInt32(4);
        out.beginList();
        out.putInt32(5);
        out.endList();
        out.endList();
        out.putInt32(6);
        out.endList();
    };
    EXPECT_EQ(text_of(put), u"{1,2,\n{3},\n{4,\n{5}\n},6}");
    EXPECT_EQ(hex(bytes_of(put)), "4283C4E5C620A7"
                                  "20");

    constexpr unsigned kMany = 10'000; // one byte each, more than a stream collects
    const std::string many = bytes_of([](IListOutStream& out) {
        for (unsigned i = 0; i != kMany; ++i) out.beginList();
        for (unsigned i = 0; i != kMany; ++i) out.endList();
    });
    EXPECT_TRUE(many == std::string(kMany, '\x40') + std::string(kMany, '\x20'));
}

} // namespace
