// Reading what was written otherwise than by the library: tolerance, refusals, and what is passed.
#include "ListProgram.h"
#include "support/ProcessTest.h"

#include <core/streams/ListText.h>

#include <span>

namespace {

using namespace core;
using namespace test;

std::string bytes_of_hex(std::string_view digits) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
        bytes += static_cast<char>(std::stoi(std::string(digits.substr(i, 2)), nullptr, 16));
    return bytes;
}

class ListReading : public ProcessTest {};

// In windows of all kinds the result is the same; "!" stands for a refusal.
struct TextRow {
    std::u16string_view text;
    std::string_view operations, results;
};

void expect_results(std::span<const TextRow> rows) {
    for (const TextRow& row : rows) {
        std::string expected(row.results);
        if (expected.ends_with('!')) expected.replace(expected.size() - 1, 1, kRefused);
        for (const unsigned window : kWindows) {
            SCOPED_TRACE(to_utf8(row.text).c_str() + (" in windows of " + std::to_string(window)));
            EXPECT_EQ(run_text(row.operations, std::u16string(row.text), window), expected);
        }
    }
}

TEST_F(ListReading, TextNumbers) {
    constexpr TextRow kRows[] = {
        {u" { 1 ,\t\u00A0+2 , -3\n} ", "{444}", "1;2;-3;"},
        {u"256,256,-1,65535,99999999999", "51764", "0;0;4294967295;65535;1215752191;"},
        {u"-1,-1", "79", "4294967295;18446744073709551615;"},
        {u"18446744073709551617", "8", "1;"},
        {u"\u0661\u0662", "4", "12;"},
        {u"-", "4", "!"},
        {u"+-1", "4", "!"},
        {u"- 1", "4", "!"},
        {u"", "4", "!"},
        {u"1 2", "44", "1;!"},
        {u"1,", "4,4", "1;1;!"},
        {u"{1,}", "{4,4", "1;1;!"},
        {u"0, 1,2", "bbb", "0;1;!"},
        {u"1e3,4", "48", "1;!"},
        {u"1. , .5,-.5e-3,1.5E2,-7", "ddddd", "1.000000;0.500000;-0.000500;150.000000;-7.000000;"},
        {u"1.2.3", "d", "1.200000;"},
        {u"1-2", "d", "1.000000;"},
        {u"1,2", "d,", "1.000000;1;"},
        {u"+1", "d", "!"},
        {u"1e", "d", "!"},
        {u"1e+5", "d", "!"},
        {u"1e-", "d", "!"},
        {u"- 1", "d", "!"},
        {u"e1", "d", "!"},
        {u"\u00A01", "d", "!"}, // no space to a floating point number
        {u"1\u0661", "d", "1.000000;"},
        {u"1234567890123456789012345678901", "d", "1234567890123456849145940148224.000000;"},
        {u"12345678901234567890123456789012", "d", "!"},
        {u" -12.50, 0x,+.5,1.2.3", "nnnn", "-12.5;0;!"},
        {u"123456789012345678901234567890.000000000000000001,7", "n4",
         "123456789012345678901234567890.000000000000000001;7;"},
        {u"-,.", "n", "!"},
        {u" 20210304050607, 20210304,00000000", "DDD", "637504311670000;637504128000000;0;"},
        {u"20211304", "D", "!"},
        {u"2021030", "D", "!"},
        {u" 01234567-89ab-cdef-0123-456789ABCDEF,1", "g4",
         "01234567-89ab-cdef-0123-456789abcdef;1;"},
        {u"01234567-89ab-cdef-0123-456789abcde", "g", "!"},
        {u"01234567-89ab-cdef-0123-456789abcdeg", "g", "!"},
    };
    expect_results(kRows);
}

TEST_F(ListReading, TextStringsAndBlobs) {
    constexpr TextRow kRows[] = {
        {u" \"a\"\"b\" ,\"\"", "ss", "a\"b;;"},
        {u"\"\"\"\"", "s", "\";"},
        {u"\"\"\\0041\"B\\0042\"", "s", "A;"}, // behind the escape the string goes on
        {u"\"\"\\0041B\"\\004a\"", "s", "ABJ;"},
        {u"\"a\"\\d83d\"\\DE00b\",1", "s4", "a\U0001F600b;1;"},
        {u"\"a\"\\d83g\"", "s", "!"},
        {u"\"a\"\\d83", "s", "!"},
        {u"\"a", "s", "!"},
        {u"a", "s", "!"},
        {u"\"1234567\",\"12345678\"", "CC", "1234567;!"},
        {u"\"1234567\"\"\"", "C", "!"},
        {u"{YWJj,,YQ==}", "{xxx}", "616263;;61;"},
        {u"YW\r\nJj\n,YQ", "xx", "616263;!"},
        {u" YWJj", "x", ";"}, // no space is passed in front of base64
        {u"YWJj,YWJjZA==,YWJjZGU=", "BBB", "61626300;61626364;!"},
        {u"{YWJj}", "{F}", "616263;"},
    };
    expect_results(kRows);
}

TEST_F(ListReading, ListsAreEnteredAndLeft) {
    constexpr TextRow kRows[] = {
        {u"{}", "{,}", "0;"},
        {u"{ }", "{~}", ""},
        {u"{1 , 2 }", "{4,4,}", "1;1;2;0;"},
        {u"{{1},{2}},3", "{{4}{4}}4", "1;2;3;"},
        {u"1", "{", "!"},
        {u"{1,2}", "{4}", "1;!"},
        {u"}", "{", "!"},
        {u"{1", "{4}", "1;!"},
    };
    expect_results(kRows);
}

TEST_F(ListReading, TailsOfTextAreSkippedAndShown) {
    const struct {
        std::u16string_view tail;
        const char* shown; // null: refused
    } rows[] = {
        {u"", ""},
        {u",2 , 3", ",2 , 3"},
        {u",{2,{3,4}},{},5", ",2,3,4,,5"},
        {u",\"}\"\"{\"\\d83d\",\"\",x y", ",\"}\"\"{\"\\d83d\",\"\",x y"},
        {u",YWJj==,,01234567-89ab-cdef-0123-456789abcdef",
         ",YWJj==,,01234567-89ab-cdef-0123-456789abcdef"},
        {u",\"\"\\d83x", nullptr},
        {u",{\"a\"b}", nullptr},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(to_utf8(row.tail).c_str());
        const std::u16string text = u"{{1" + std::u16string(row.tail) + u"},7}";
        for (const unsigned window : kWindows) {
            const std::string skipped = run_text("{{4~}4}", text, window);
            EXPECT_EQ(skipped, row.shown ? "1;7;" : "1;" + std::string(kRefused));
            if (!row.shown) continue;
            EXPECT_EQ(run_text("{{4?}4}", text, window), "1;" + std::string(row.shown) + ";7;");
        }
    }
    // An unterminated string ends with the stream, and so does the list that it stands in.
    EXPECT_EQ(run_text("{?", u"{\"abc", 3), "\"abc;");
    EXPECT_EQ(run_text("{~}", u"{\"abc", 3), kRefused);
}

TEST_F(ListReading, Bytes) {
    const struct {
        std::string_view bytes, operations, results;
    } rows[] = {
        {"4020", "{,}", "0;"},
        {"42832320", "{4,4,", "1;1;2;0;"},
        {"0B0A", "1", "10;"},
        {"0C80", "1", "-128;"},
        {"0C81", "1", "!"},
        {"0B80", "1", "!"},
        {"0BFF", "5", "255;"},
        {"0D0001", "5", "!"}, // as text it is taken modulo 256
        {"0D0100", "5", "1;"},
        {"0F00000100", "6", "!"},
        {"110000000001000000", "7", "!"},
        {"0C01", "9", "!"},
        {"0E0080", "2", "-32768;"},
        {"0E0180", "2", "!"},
        {"1000000080", "4", "-2147483648;"},
        {"0F00000080", "4", "!"},
        {"120000000000000080", "8", "-9223372036854775808;"},
        {"110000000000000080", "8", "!"},
        {"03", "b", "!"},
        {"0B01", "b", "!"},
        {"13", "4", "!"},
        {"02", "d", "!"},
        {"130000C03F", "d", "!"},
        {"02", "s", "!"},
        {"0B41", "s", "A;"},
        {"1A024142", "s", "AB;"},
        {"1B02004142", "s", "AB;"},
        {"1C02000000000000004142", "s", "AB;"},
        {"1801001604", "s", "\u0416;"},
        {"1901000000000000001604", "s", "\u0416;"},
        {"17011604", "x", "!"},
        {"1A0731323334353637", "C", "1234567;"},
        {"1A083132333435363738", "C", "!"},
        {"1A0461626364", "B", "61626364;"},
        {"1A03616263", "B", "!"},
        {"161A03312E35", "n", "1.5;"},
        {"1601", "n", "!"},
        {"160B35", "n", "5;"},
        {"161A03312E78", "n", "!"},
        {"16961A0135", "n", "!"},
        {"02", "n", "1;"},
        {"0C07", "n", "-7;"},
        {"03", "g", "!"},
        {"015A5A", "g", "00000000-0000-0000-0000-000000000000;"},
        {"5A0361626320", "F", "616263;"},
        {"411F", "{s}", ";!"},
        {"1D", "s", "!"},
        {"00", "4", "!"},
        {"", "4", "!"},
        {"22", "4", "!"},
        {"8202", "4", "!"},
        {"0282", "44", "1;1;"},
        {"0202", "44", "1;!"},
        // The marks of a byte may also stand alone, and in several bytes.
        {"40028082200283", "{44}", "1;!"},
        {"4002800220", "{44}", "1;1;"},
        // What is passed.
        {"424282D61A03312E359A0261629FFFFFFFFF0220", "{?", "!"},
        {"428B418CFF9A026162C4E5832020", "{?}", "1,65,-255,ab,{3},{4,2};"},
        {"561A03312E3520", "{~}", ""},
        {"561A03312E7820", "{~}", "!"}, // no decimal
        {"5617013100", "{~}", "!"},
        {"C4", "{", "!"},
    };
    for (const auto& row : rows) {
        std::string expected(row.results);
        if (expected.ends_with('!')) expected.replace(expected.size() - 1, 1, kRefused);
        for (const unsigned window : kWindows) {
            SCOPED_TRACE(std::string(row.bytes) + " in windows of " + std::to_string(window));
            EXPECT_EQ(run_bytes(row.operations, bytes_of_hex(row.bytes), window), expected);
        }
    }
}

// Everything that an item can be, shown and skipped.
TEST_F(ListReading, TailsOfBytesAreSkippedAndShown) {
    const std::string bytes = bytes_of([](IListOutStream& out) {
        out.beginList();
        out.beginList();
        out.putInt32(5);
        out.putInt64(-300);
        out.putUInt64(1'000'000);
        out.putFloat(1.5f);
        out.putDouble(-0.25);
        out.putGuid(IID_IListInStream);
        out.putString(u"a\"b");
        out.putString(u"\u0416,");
        out.putBytes("xyz");
        out.putNumeric(*Numeric::parse("-12.5"));
        out.beginList();
        out.beginList();
        out.endList();
        out.putBool(true);
        out.endList();
        out.endList();
        out.putInt32(7);
        out.endList();
    });
    for (const unsigned window : kWindows) {
        EXPECT_EQ(run_bytes("{{4~}4}", bytes, window), "5;7;");
        EXPECT_EQ(run_bytes("{{4?}4}", bytes, window),
                  "5;,-300,1000000,1.5,-2.5e-1,c4e86a1d-3f07-49b2-8d5c-16b9e07a3f82,a\"b,\u0416,,"
                  "xyz,-12.5,{{},1};7;");
    }
}

// ---- Tokens on bare streams.

template <class T> std::string token(std::u16string text, T value) {
    const auto reader = make_object<PlainReader>(std::move(text));
    const bool good = from_stream(reader.get(), value);
    std::string result;
    if constexpr (std::is_same_v<T, stdx::ustring>)
        result = to_utf8(value.view()).view();
    else
        result = number_text(value);
    return (good ? result + "|" : "no " + result + "|") + to_utf8(reader->rest()).c_str();
}

TEST_F(ListReading, TokensLeaveTheReaderBehindThem) {
    EXPECT_EQ(token(u" 12,3", 0), "12|,3");
    EXPECT_EQ(token(u" 300x", static_cast<unsigned char>(0)), "44|x");
    EXPECT_EQ(token(u"200", static_cast<signed char>(0)), "-56|");
    EXPECT_EQ(token(u"4294967295", 0L), "-1|");
    EXPECT_EQ(token(u"4294967295", 0UL), "4294967295|");
    EXPECT_EQ(token(u"-1", 0UL), "4294967295|");
    EXPECT_EQ(token(u"-1", 0ULL), "18446744073709551615|");
    EXPECT_EQ(token(u"1.5e2x", 0.0f), "150.000000|x");
    EXPECT_EQ(token(u" 1}", false), "1|}");
    EXPECT_EQ(token(u" 2", true), "no 1|2");
    EXPECT_EQ(token(u" \"a\"\"b\"c", stdx::ustring()), "a\"b|c");
    EXPECT_EQ(token(u"\"ab", stdx::ustring(u"old")), "no |");

    const auto marks = make_object<PlainReader>(u" { ,} \tx");
    IReader* const in = marks.get();
    EXPECT_FALSE(is_end_of_list(in));
    EXPECT_TRUE(is_begin_of_list(in));
    EXPECT_TRUE(get_begin_of_list(in));
    EXPECT_TRUE(is_comma(in));
    EXPECT_FALSE(get_end_of_list(in)); // and the comma is gone
    EXPECT_TRUE(get_end_of_list(in));
    stdx::ustring spaces = u"<";
    skip_and_save_spaces(in, spaces);
    EXPECT_EQ(spaces, stdx::ustring(u"< \t"));
    EXPECT_FALSE(get_comma(in));
    EXPECT_TRUE(in->eof());
    EXPECT_FALSE(get_comma(in));

    char16_t room[4] = u"old";
    const auto strings = make_object<PlainReader>(u"\"abc\",\"abcd\"");
    EXPECT_TRUE(from_stream(strings.get(), room, 4));
    EXPECT_EQ(std::u16string_view(room), u"abc");
    EXPECT_TRUE(get_comma(strings.get()));
    EXPECT_FALSE(from_stream(strings.get(), room, 4));
    EXPECT_EQ(room[0], 0);
    EXPECT_FALSE(from_stream(strings.get(), room, 0));
}

TEST_F(ListReading, TokensAreWritten) {
    StringOutputStream out;
    out.open();
    IWriter* const to = out.writer();
    to_stream(to, true);
    to_stream(to, -2147483647 - 1);
    to_stream(to, 4294967295u);
    to_stream(to, -9223372036854775807LL - 1);
    to_stream(to, 18446744073709551615ULL);
    to_stream(to, 1e300);
    to_stream(to, stdx::ustring(u"\xDC00"));
    to_stream(to, u"c");
    to_stream(to, u"ab\0c", 4);
    to_stream(to, IID_IListInStream);
    EXPECT_EQ(out.close()->toString(),
              stdx::ustring(u"1-21474836484294967295-9223372036854775808184467440737095516151e300"
                            u"\"\"\\dc00\"\"c\"\"ab\"c4e86a1d-3f07-49b2-8d5c-16b9e07a3f82"));
}

} // namespace
