#include "Sources.h"

#include <core/streams/IBufferedWriter.h>
#include <core/streams/StreamFunctions.h>
#include <core/streams/StringStreams.h>

#include <gtest/gtest.h>

namespace {

using namespace core;
using Error = IOException::Error;
using test::io_error_of;
using test::reader_of;
using test::text_of;

// Notes what it is given, and fails on request.
class NotingWriter
    : public ObjectRoot
    , public SCOM_InternalClass<NotingWriter>
    , public IWriter {
public:
    static const InterfaceEntry* _GetEntries() { return interface_map<NotingWriter, IWriter>(); }

    void put(char16_t unit) override { text += unit; }
    void write(const char16_t* units, unsigned n) override {
        if (fails) throw IOException(Error::TargetFault);
        text.append(units, n);
        sizes.push_back(n);
    }
    void write(IStringBuffer* source, unsigned pos, unsigned n) override {
        const stdx::ustring taken = source->subBuffer(pos, n)->toString();
        write(taken.c_str(), taken.size());
    }
    void flush() override { flushed = true; }

    std::u16string text;
    std::vector<unsigned> sizes;
    bool fails = false;
    bool flushed = false;
};

TEST(BufferedWriters, PutTheSeparatorForLineFeeds) {
    const struct {
        const char16_t* separator;
        const char16_t* expected;
    } rows[] = {
        {u"", u"a\nb\n\nc\r\nd\ne"},
        {nullptr, u"a\nb\n\nc\r\nd\ne"},
        {u"\n", u"a\nb\n\nc\r\nd\ne\n"},
        {u"\r\n", u"a\r\nb\r\n\r\nc\r\r\nd\r\ne\r\n"},
        {u"<br>", u"a<br>b<br><br>c\r<br>d<br>e<br>"},
    };
    for (const auto& row : rows) {
        const auto target = make_object<NotingWriter>();
        const auto writer = create_buffered_writer();
        writer->open(target.get(), row.separator);
        EXPECT_EQ(writer->lineSeparator(), stdx::ustring(row.separator ? row.separator : u""));
        writer->put(u'a');
        writer->put(u'\n');
        writer->write(u"b\n\nc\r\n");
        writer->write(create_std_string_buffer(u"...d\ne...").get(), 3, 3);
        writer->newLine();
        EXPECT_EQ(target->text, u"");
        writer->flush();
        EXPECT_EQ(target->text, row.expected);
        EXPECT_FALSE(target->flushed);
        writer->put(u'!');
        writer->close();
        writer->close();
        EXPECT_EQ(target->text.back(), u'!');
    }
}

TEST(BufferedWriters, PassTheirBufferOnWhole) {
    const auto target = make_object<NotingWriter>();
    const auto writer = create_buffered_writer();
    writer->open(target.get());
    writer->write(std::u16string(65'000, u'a').c_str(), 65'000);
    writer->write(std::u16string(536, u'b').c_str(), 536);
    EXPECT_TRUE(target->sizes.empty());
    writer->put(u'c');
    writer->write(std::u16string(200'000, u'd').c_str());
    writer->flush();
    EXPECT_EQ(target->text, std::u16string(65'000, u'a') + std::u16string(536, u'b') + u"c" +
                                std::u16string(200'000, u'd'));
    EXPECT_EQ(target->sizes[0], 65'536u);
    EXPECT_LE(*std::max_element(target->sizes.begin(), target->sizes.end()), 65'536u);
}

TEST(BufferedWriters, AreEmptyAfterAFault) {
    const auto target = make_object<NotingWriter>();
    const auto writer = create_buffered_writer();
    writer->open(target.get());
    writer->write(u"lost");
    target->fails = true;
    EXPECT_EQ(io_error_of([&] { writer->flush(); }), Error::TargetFault);
    target->fails = false;
    writer->write(u"kept");
    writer->flush();
    EXPECT_EQ(target->text, u"kept");
    writer->write(u"lost");
    target->fails = true;
    EXPECT_EQ(io_error_of([&] { writer->close(); }), Error::TargetFault);
    EXPECT_EQ(io_error_of([&] { writer->put(u'x'); }), Error::NoTarget) << "closed nevertheless";
}

TEST(Writers, ThatAreNotOpenSaySo) {
    StaticObject<StringWriter> strings;
    const auto buffered = create_buffered_writer();
    const auto source = create_std_string_buffer(u"text");
    for (IWriter* const writer :
         {static_cast<IWriter*>(&strings), static_cast<IWriter*>(buffered.get())}) {
        const std::function<void()> calls[] = {
            [&] { writer->put(u'x'); },
            [&] { writer->write(u"x"); },
            [&] { writer->write(source.get()); },
            [&] { writer->flush(); },
        };
        for (std::size_t i = 0; i < std::size(calls); ++i)
            EXPECT_EQ(io_error_of(calls[i]), Error::NoTarget) << "call " << i;
    }
    EXPECT_EQ(io_error_of([&] { buffered->open(nullptr); }), Error::NoTarget);
    EXPECT_EQ(io_error_of([] { writer_printf(nullptr, u"x"); }), Error::NoTarget);
    StringOutputStream closed;
    EXPECT_EQ(io_error_of([&] { closed.printf(u"x"); }), Error::NoTarget);
    EXPECT_FALSE(strings.detach());
}

TEST(StringOutputStreams, WriteBehindWhatIsThere) {
    StringOutputStream out;
    out.open(u"begin ");
    EXPECT_EQ(out.printf(u"%d%s", 42, u" end"), 6);
    string_lto(-7, out.close().get());
    out.open();
    out->put(u'x');
    const auto buffer = out.close();
    EXPECT_FALSE(out.close());
    string_ui64to(255, buffer.get(), 16);
    string_i64to(-1, buffer.get());
    EXPECT_EQ(text_of(*buffer), u"xff-1");
    out.open(buffer.get());
    out->write(u"!");
    EXPECT_EQ(out.close(), buffer);
    EXPECT_EQ(text_of(*buffer), u"xff-1!");
}

// Through readers with memory to look into, and through those without.
TEST(Base64Streams, EndInFrontOfWhatIsNotTheirs) {
    const struct {
        const char16_t* text;
        bool isGood;
        const char* data;
        const char16_t* rest;
    } rows[] = {
        {u"", true, "", u""},
        {u"QUJD", true, "ABC", u""},
        {u"QU\r\nJDRA==", true, "ABCD", u""},
        {u"QUI=,QUJD", true, "AB", u",QUJD"},
        {u"QUJD}", true, "ABC", u"}"},
        {u"QUJD=", true, "ABC", u"="},
        {u"QUJ}", false, "", u"}"},
        {u"QUJD\u0416", true, "ABC", u"\u0416"},
        {u"QUI=QUJD", true, "ABABC", u""},
        {u"-_-_", true, "", u"-_-_"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(std::u16string(row.text)));
        StringInputStream in;
        in.open(row.text);
        for (const InterfacePtr<IReader>& reader :
             {InterfacePtr<IReader>(in.reader(), true), reader_of(row.text)}) {
            stdx::string data;
            EXPECT_EQ(decode_base64(reader.get(), data), row.isGood);
            EXPECT_EQ(data, row.data);
            for (const char16_t* unit = row.rest; *unit; ++unit) EXPECT_EQ(reader->get(), *unit);
            EXPECT_TRUE(reader->eof());
        }
    }
}

TEST(Base64Streams, GoThereAndBack) {
    std::string data(100'000, '\0');
    for (std::size_t i = 0; i < data.size(); ++i) data[i] = static_cast<char>(i * i >> 3);
    for (const unsigned lineLength : {0u, 1u, 64u}) {
        StringOutputStream out;
        out.open();
        encode_base64(data.data(), data.size(), out.writer(), lineLength, true);
        StringInputStream in;
        in.open(out.close().get());
        std::string back(data.size(), '\0');
        auto size = static_cast<unsigned>(back.size());
        EXPECT_TRUE(decode_base64(in.reader(), back.data(), size, true));
        EXPECT_EQ(size, data.size());
        EXPECT_TRUE(back == data);
    }
    StringInputStream in;
    in.open(u"QUJDREVG");
    char small[3];
    unsigned size = 3;
    EXPECT_FALSE(decode_base64(in.reader(), small, size)) << "more than fits";
}

} // namespace
