#include "NaiveLines.h"
#include "Sources.h"

#include <core/streams/IBufferedReader.h>
#include <core/streams/StreamFunctions.h>
#include <core/streams/StringStreams.h>

#include <gtest/gtest.h>

#include <random>

namespace {

using namespace core;
using Error = IOException::Error;
using test::io_error_of;
using test::reader_of;
using test::text_of;

std::vector<std::u16string> lines_of(std::u16string text, std::vector<unsigned> pieces,
                                     const char16_t* separator) {
    const auto reader = create_buffered_reader();
    reader->open(reader_of(std::move(text), std::move(pieces)).get(), separator);
    std::vector<std::u16string> lines;
    while (!reader->eof()) lines.emplace_back(reader->readLine().view());
    EXPECT_EQ(reader->readLine(), u"");
    return lines;
}

using Lines = std::vector<std::u16string>;

TEST(BufferedReaders, FindLinesWhereverThePiecesAreCut) {
    const struct {
        const char16_t* text;
        const char16_t* separator;
        Lines lines;
    } rows[] = {
        {u"", u"", {}},
        {u"a", u"", {u"a"}},
        {u"a\n", u"", {u"a"}},
        {u"\n", u"", {u""}},
        {u"a\rb\nc\r\nd", nullptr, {u"a", u"b", u"c", u"d"}},
        {u"a\n\rb", u"", {u"a", u"", u"b"}},
        {u"a\r\r\n\nb\r", u"", {u"a", u"", u"", u"b"}},
        {u"a\r\nb\nc", u"\n", {u"a\r", u"b", u"c"}},
        {u"a\r\nb\nc\rd\r\r\n", u"\r\n", {u"a", u"b\nc\rd\r"}},
        {u"a\r", u"\r\n", {u"a"}},
        {u"aENDbENEND", u"END", {u"a", u"bEN"}},
        {u"aENDb EN", u"END", {u"a", u"b "}},
        {u"aaab", u"aab", {u"aaab"}},
        {u"aabaab", u"aab", {u"", u""}},
    };
    for (const auto& row : rows) {
        for (const std::vector<unsigned>& pieces :
             {std::vector{8192u}, std::vector{1u}, std::vector{2u}, std::vector{3u, 1u}}) {
            SCOPED_TRACE(testing::Message() << testing::PrintToString(std::u16string(row.text))
                                            << " in pieces of " << pieces[0]);
            EXPECT_EQ(lines_of(row.text, pieces, row.separator), row.lines);
        }
    }
}

// Lines longer than blocks, separators across blocks, and other reading between lines.
TEST(BufferedReaders, AgreeWithAPlainSplitter) {
    std::mt19937 random(7);
    const char16_t* const separators[] = {u"", u"\r\n", u"\n", u"aab", u"ab\nab"};
    for (int round = 0; round < 60; ++round) {
        std::u16string text(random() % 40'000, u'\0');
        const unsigned rare = round % 3 == 0 ? 3 : 9000;
        for (char16_t& unit : text) unit = random() % rare < 2 ? u"\r\nab"[random() % 4] : u'a';
        const char16_t* const separator = separators[random() % 5];
        const test::SplitText expected = test::split(text, separator);
        const auto piece = [&] { return static_cast<unsigned>(random() % 9000 + 1); };
        const std::vector<unsigned> pieces = {piece(), piece(), 8192};
        ASSERT_TRUE(lines_of(text, pieces, separator) == expected.lines) << "round " << round;

        const auto reader = create_buffered_reader();
        reader->open(reader_of(text, pieces).get(), separator);
        const auto whole = create_string_buffer();
        whole->append(reader->get());
        reader->readTo(whole.get(), 5000);
        std::u16string part(3000, u'\0');
        part.resize(reader->read(part.data(), 3000));
        whole->append(part.c_str());
        reader->readToUntil(u'b', whole.get(), kAllUnits);
        const unsigned before = whole->length();
        const unsigned taken = reader->readTo(whole.get(), kAllUnits);
        EXPECT_EQ(taken, whole->length() - before);
        EXPECT_TRUE(reader->eof());
        if (!text.empty()) {
            ASSERT_TRUE(text_of(*whole) == expected.text) << "round " << round;
        }
    }
}

// Line ends in every place, and separators longer than pieces and blocks.
TEST(BufferedReaders, FindLinesHoweverLongTheyAre) {
    std::u16string dense, longSeparator(20'000, u'x');
    for (unsigned length = 0; length < 300; ++length)
        dense += std::u16string(length, u'a') + u"\r\n";
    for (unsigned mask = 0; mask < 1024; ++mask)
        for (unsigned bit = 0; bit < 10; ++bit) dense += mask >> bit & 1 ? u"\r\n"[bit % 2] : u'b';
    longSeparator.front() = u'<';
    const std::u16string apart = u"one" + longSeparator + longSeparator + u"three";
    const struct {
        const char* what;
        std::u16string text, separator;
    } rows[] = {
        {"any", dense, u""},
        {"pairs", dense, u"\r\n"},
        {"single", dense, u"\r"},
        {"long separator", apart, longSeparator},
        {"long separator, cut off", apart + longSeparator.substr(0, 15'000), longSeparator},
        {"long separator, nearly", apart + longSeparator.substr(0, 19'999) + u"y", longSeparator},
    };
    for (const auto& row : rows)
        for (const std::vector<unsigned>& pieces : {std::vector{8192u}, std::vector{777u, 63u}}) {
            SCOPED_TRACE(row.what);
            const test::SplitText expected = test::split(row.text, row.separator);
            EXPECT_TRUE(lines_of(row.text, pieces, row.separator.c_str()) == expected.lines);
            const auto reader = create_buffered_reader();
            reader->open(reader_of(row.text, pieces).get(), row.separator.c_str());
            EXPECT_TRUE(read_stream(reader.get()).view() == expected.text);
        }
}

TEST(BufferedReaders, GoOnFromInsideOfADelimiter) {
    const auto reader = create_buffered_reader();
    reader->open(reader_of(u"ab\r\ncd\r\n").get());
    EXPECT_EQ(reader->skip(3), 3u);
    EXPECT_EQ(reader->readLine(), u"");
    EXPECT_EQ(reader->peek(), u'c');
    const auto line = create_string_buffer();
    line->append(u"> ");
    EXPECT_EQ(reader->readLine(line.get()), 2u);
    EXPECT_EQ(text_of(*line), u"> cd");
    EXPECT_EQ(reader->get(), kEndOfText);
}

TEST(Readers, ThatAreNotOpenSaySo) {
    StaticObject<StringReader> strings;
    const auto buffered = create_buffered_reader();
    const auto buffer = create_string_buffer();
    buffer->append(u"text");
    const auto check = [&](IReader& reader) {
        char16_t unit;
        const std::function<void()> calls[] = {
            [&] { reader.get(); },
            [&] { reader.peek(); },
            [&] { reader.read(&unit, 1); },
            [&] { reader.readUntil(u'x', &unit, 1); },
            [&] { reader.readTo(buffer.get(), kAllUnits); },
            [&] { reader.readToUntil(u'x', buffer.get(), kAllUnits); },
            [&] { reader.skip(1); },
        };
        for (std::size_t i = 0; i < std::size(calls); ++i)
            EXPECT_EQ(io_error_of(calls[i]), Error::NoSource) << "call " << i;
        EXPECT_TRUE(reader.eof());
    };
    check(strings);
    check(*buffered);
    EXPECT_EQ(io_error_of([&] { buffered->readLine(); }), Error::NoSource);
    EXPECT_EQ(io_error_of([&] { strings.open(nullptr); }), Error::NoSource);
    EXPECT_EQ(io_error_of([&] { buffered->open(nullptr); }), Error::NoSource);

    strings.open(buffer.get());
    buffered->open(&strings);
    EXPECT_EQ(buffered->get(), u't');
    buffered->close();
    strings.close();
    check(strings);
    check(*buffered);
    EXPECT_EQ(strings.buffer(), nullptr);
}

TEST(StringReaders, ReadAsTold) {
    StringInputStream in;
    in.open(u"one,two,three");
    char16_t word[20] = {};
    EXPECT_EQ(in->readUntil(u',', word, 20), 3u);
    EXPECT_EQ(in->get(), u',');
    EXPECT_EQ(in->readUntil(u',', word, 2), 2u) << "the count ends it first";
    EXPECT_EQ(in->skip(2), 2u);
    const auto rest = create_std_string_buffer();
    EXPECT_EQ(in->readToUntil(u'r', rest.get(), 5), 2u);
    EXPECT_EQ(in->readTo(rest.get(), 2), 2u);
    EXPECT_EQ(text_of(*rest), u"thre");
    EXPECT_EQ(in->peek(), u'e');
    EXPECT_EQ(in->skip(kAllUnits), 1u);
    EXPECT_EQ(in->peek(), kEndOfText);
    in.open(create_string_buffer().get());
    EXPECT_TRUE(in->eof()) << "an empty buffer in chunks";
}

TEST(CopyStream, MovesNoMoreThanItShould) {
    const std::u16string text(20'000, u'x');
    for (const unsigned long long n : {0ull, 1ull, 8192ull, 9000ull, 20'000ull, ~0ull}) {
        const auto source = reader_of(text, {5000});
        StaticObject<StringWriter> writer;
        writer.open(nullptr);
        const auto expected = std::min<unsigned long long>(n, text.size());
        EXPECT_EQ(copy_stream(&writer, source.get(), n), expected);
        EXPECT_EQ(writer.buffer()->length(), expected);
        EXPECT_EQ(source->eof(), expected == text.size());
        if (source->eof()) {
            EXPECT_EQ(copy_stream(&writer, source.get(), 5), 0u);
        }
    }
    StringInputStream in;
    in.open(u"some text");
    EXPECT_EQ(read_stream(in.reader(), 4), u"some");
    EXPECT_EQ(read_stream(in.reader()), u" text");
}

} // namespace
