#include "Sources.h"

#include <core/component/Utf8.h>
#include <core/files/ByteBufferFile.h>
#include <core/files/FileException.h>
#include <core/files/FileStreams.h>
#include <core/files/FileSystemFunctions.h>
#include <core/files/MemoryFile.h>
#include <core/files/TextFiles.h>
#include <core/numbers/Date.h>
#include <core/streams/LineSeparator.h>
#include <core/streams/StreamFunctions.h>
#include <core/text/ConverterException.h>
#include <core/text/Split.h>

#include "support/ProcessTest.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include <unistd.h>

namespace {

using namespace core;
using Error = IOException::Error;
using test::io_error_of;
using namespace std::string_literals;

// A file in memory, as a test sees it.
class Memory {
public:
    explicit Memory(std::string_view bytes = {}) {
        file_->write(bytes.data(), static_cast<unsigned>(bytes.size()));
        rewind();
    }

    IFileEx* get() const { return file_.get(); }
    void rewind() { file_->seek(0, kSeekFromStart); }
    std::string bytes() {
        rewind();
        std::string all;
        char block[1000];
        while (const unsigned n = file_->read(block, sizeof block)) all.append(block, n);
        return all;
    }

private:
    InterfacePtr<IMemoryFile> file_ = create_memory_file(0);
};

// Reads short pieces, and fails where told.
class FaultyFile
    : public ObjectRoot
    , public SCOM_InternalClass<FaultyFile>
    , public IFile {
public:
    static const InterfaceEntry* _GetEntries() { return interface_map<FaultyFile, IFile>(); }

    URL url() override { return URL(); }
    unsigned read(void* dst, unsigned n) override {
        if (readable == 0) fail();
        const unsigned size = std::min({n, readable, 3u});
        std::fill_n(static_cast<char*>(dst), size, 'x');
        readable -= size;
        return size;
    }
    void write(const void*, unsigned) override { fail(); }
    void flush() override {}

    unsigned readable = 0;

private:
    [[noreturn]] static void fail() {
        throw FileException(ORB_FILE_HERE, FileException::Error::DeviceFull, URL());
    }
};

class TextFiles : public test::ProcessTest {};

TEST_F(TextFiles, FollowSignaturesAsTold) {
    const struct {
        const char* what;
        std::string bytes;
        const char16_t* encoding;
        bool follow;
        std::u16string_view text; // empty: bytes that are no text
        bool found;
    } rows[] = {
        {"no mark", "abc", u"UTF-8", true, u"abc", false},
        {"its own", "\xEF\xBB\xBF\xD0\x96", u"utf8", false, u"\u0416", true},
        {"its own alone", "\xEF\xBB\xBF", u"UTF-8", false, u"", true},
        {"one inside", "a\xEF\xBB\xBF", u"UTF-8", true, u"a\uFEFF", false},
        {"followed", "\xFF\xFE\x16\x04"s, u"UTF-8", true, u"\u0416", true},
        {"followed the other way", "\xFE\xFF\x04\x16"s, u"UTF-8", true, u"\u0416", true},
        {"not followed",
         "\xEF\xBB\xBF"
         "a",
         u"windows-1252", false,
         u"\u00EF\u00BB\u00BF"
         u"a",
         true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Memory file(row.bytes);
        const auto reader = create_file_reader();
        reader->open(file.get(), row.encoding, row.follow);
        EXPECT_EQ(reader->eof(), row.text.empty());
        EXPECT_EQ(reader->signatureFound(), row.found);
        EXPECT_EQ(read_stream(reader.get()), row.text);
        EXPECT_TRUE(reader->eof());
    }
    Memory utf16("\xFF\xFE\x16\x04"s);
    stdx::ustring text;
    EXPECT_EQ(io_error_of([&] { load_utf8(utf16.get(), text); }), Error::CharConversion)
        << "read as UTF-8, which it is not";
}

// Characters lie across all borders of the reader's blocks.
TEST_F(TextFiles, AreReadInBlocks) {
    std::string bytes;
    std::u16string expected;
    while (bytes.size() < 50'000) {
        bytes += "\xD0\x96\xF0\x9F\x98\x80x\xE2\x82\xAC";
        expected += u"\u0416\xD83D\xDE00x\u20AC";
    }
    for (const std::size_t shift : {0u, 1u, 2u, 3u}) {
        Memory file(std::string(shift, '-') + bytes);
        const auto reader = create_file_reader();
        reader->open(file.get(), kUTF8Encoding, false);
        EXPECT_EQ(reader->skip(static_cast<unsigned>(shift)), shift);
        std::u16string text(10'000, u'\0');
        text.resize(reader->read(text.data(), 10'000));
        const auto rest = create_string_buffer();
        reader->readTo(rest.get(), kAllUnits);
        EXPECT_TRUE(text + test::text_of(*rest) == expected) << "shifted by " << shift;
        EXPECT_TRUE(reader->eof());
        reader->close();
        EXPECT_EQ(io_error_of([&] { reader->get(); }), Error::NoSource);
    }
}

TEST_F(TextFiles, SayWhyTheyCannotBeRead) {
    const auto reader = create_file_reader();
    EXPECT_TRUE(reader->eof());
    EXPECT_EQ(io_error_of([&] { reader->open(nullptr, u"", false); }), Error::NoSource);
    Memory file("text");
    EXPECT_EQ(io_error_of([&] { reader->open(file.get(), u"nosuch", false); }),
              Error::CharConversion);
    EXPECT_EQ(io_error_of([&] { reader->open(file_url(u"/nosuch/file"), u"", false); }),
              Error::SourceFault);
    for (const std::string_view cut : {"x\xD0", "\xF0\x9F\x98"}) {
        Memory cutOff(cut);
        reader->open(cutOff.get(), kUTF8Encoding, false);
        try {
            if (cut[0] == 'x') {
                EXPECT_EQ(reader->get(), u'x') << "what is good comes first";
            }
            reader->get();
            ADD_FAILURE() << "nothing thrown";
        } catch (const IOException& exception) {
            EXPECT_EQ(exception.error(), Error::CharConversion);
            EXPECT_NE(exception.description().find(u"inside a character"), stdx::ustring::npos);
            ASSERT_TRUE(exception.inner());
            EXPECT_EQ(exception.inner()->exception()->objectClass(),
                      CLSID_ConverterExceptionObject);
        }
        EXPECT_TRUE(reader->eof());
    }
    const auto faulty = make_object<FaultyFile>();
    faulty->readable = 8192;
    reader->open(faulty.get(), kUTF8Encoding, false);
    EXPECT_EQ(reader->skip(8192), 8192u) << "in short pieces";
    EXPECT_EQ(io_error_of([&] { reader->get(); }), Error::SourceFault);
}

TEST_F(TextFiles, AreWrittenInTheirEncoding) {
    const struct {
        const char16_t* encoding;
        bool signature;
        std::string bytes;
    } rows[] = {
        {u"UTF-8", false, "a\xD0\x96\xF0\x9F\x98\x80"},
        {u"UTF-8", true,
         "\xEF\xBB\xBF"
         "a\xD0\x96\xF0\x9F\x98\x80"},
        {u"UTF-16LE", true,
         "\xFF\xFE"
         "a\0\x16\x04\x3D\xD8\x00\xDE"s},
        {u"UTF-16", true,
         "\xFF\xFE"
         "a\0\x16\x04\x3D\xD8\x00\xDE"s},
        {u"windows-1251", true, "a\xC6?"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(std::u16string(row.encoding)));
        Memory file;
        const auto writer = create_file_writer();
        writer->open(file.get(), row.encoding, row.signature);
        writer->write(u"a\u0416\xD83D"); // a pair in two calls
        writer->put(u'\xDE00');
        writer->close();
        EXPECT_EQ(file.bytes(), row.bytes);
    }
    Memory empty;
    const auto writer = create_file_writer();
    EXPECT_EQ(io_error_of([&] { writer->put(u'x'); }), Error::NoTarget);
    writer->open(empty.get(), u"UTF-8", true);
    writer->close();
    EXPECT_EQ(empty.bytes(), "\xEF\xBB\xBF");

    const auto faulty = make_object<FaultyFile>();
    writer->open(faulty.get(), u"UTF-8", false);
    writer->put(u'x');
    EXPECT_EQ(io_error_of([&] { writer->close(); }), Error::TargetFault);
    EXPECT_EQ(io_error_of([&] { writer->flush(); }), Error::NoTarget) << "closed nevertheless";
}

TEST_F(TextFiles, ComeBackAsTheyWereSaved) {
    stdx::ustring text(u"one\r\ntwo\n\n\rthree \u0416\xD83D\xDE00");
    for (int i = 0; i < 9000; ++i) text += u"a line that is not short\n";
    Memory file;
    save_utf8(file.get(), text);
    const std::string bytes = file.bytes();
    EXPECT_TRUE(bytes.starts_with("\xEF\xBB\xBFone\r\ntwo\r\n\r\n\rthree "));
    file.rewind();
    stdx::ustring back;
    load_utf8(file.get(), back);
    EXPECT_TRUE(back == replace_all(text, u"\r\n", u"\n"));

    InputFileStream in;
    file.rewind();
    in.open(file.get(), kUTF8Encoding, true);
    EXPECT_EQ(in->readLine(), u"one");
    in.close();
    EXPECT_EQ(in.reader(), nullptr);
}

TEST_F(TextFiles, GiveTheirImage) {
    const std::string name = (std::filesystem::temp_directory_path() / "text_files_test").string() +
                             std::to_string(::getpid());
    const URL url = file_url(from_utf8(name));
    {
        OutputFileStream out;
        out.open(url, u"UTF-16LE", false, u"\r\n");
        EXPECT_EQ(out.printf(u"%d\n", 42), 3);
    }                                          // closes
    std::ofstream(name, std::ios::app) << '!'; // an odd byte
    stdx::ustring units(u"before");
    stdx::string bytes;
    Date modified;
    EXPECT_TRUE(get_text_from_file(url, units, &modified));
    EXPECT_EQ(units, u"42\r\n");
    EXPECT_FALSE(modified.empty());
    EXPECT_TRUE(get_text_from_file(url, bytes));
    EXPECT_EQ(bytes, stdx::string("4\0002\0\r\0\n\0!", 9));
    std::filesystem::remove(name);
    EXPECT_FALSE(get_text_from_file(url, units));
    EXPECT_EQ(units, u"");

    Memory file("a\0b\0c"s);
    file.get()->seek(2, kSeekFromStart);
    const InterfacePtr<IFileEx> image(file.get(), true);
    EXPECT_TRUE(get_text_from_file(image, units));
    EXPECT_EQ(units, u"ab");
    EXPECT_FALSE(get_text_from_file(nullptr, units));
    EXPECT_TRUE(get_text_from_file(InterfacePtr<IFileEx>(Memory().get(), true), units));
}

TEST_F(TextFiles, PassThroughBase64AndDigits) {
    std::string bytes;
    for (int i = 0; i < 30'000; ++i) bytes += static_cast<char>(i * 7 >> 2);
    Memory file(bytes), fromBase64, fromHex, cut;
    StringOutputStream out;
    out.open();
    encode_base64(file.get(), out.writer(), 64);
    out->put(u'}');
    file.rewind();
    encode_hex(file.get(), out.writer());
    StringInputStream in;
    in.open(out.close().get());
    EXPECT_TRUE(decode_base64(in.reader(), fromBase64.get()));
    EXPECT_EQ(in->get(), u'}');
    EXPECT_TRUE(decode_hex(in.reader(), fromHex.get()));
    EXPECT_TRUE(fromBase64.bytes() == bytes);
    EXPECT_TRUE(fromHex.bytes() == bytes);
    in.open(u"41g2");
    EXPECT_FALSE(decode_hex(in.reader(), cut.get()));
    EXPECT_EQ(in->get(), u'g');
    in.open(u"424");
    EXPECT_FALSE(decode_hex(in.reader(), cut.get()));
    EXPECT_EQ(cut.bytes(), "AB");
}

TEST_F(TextFiles, MayBeByteBuffers) {
    using FileError = FileException::Error;
    const auto error_of = [](const std::function<void()>& call) {
        return test::error_of<FileException>(call);
    };
    const auto buffer = allocate_byte_buffer(10);
    const auto file = create_byte_buffer_file_ex(buffer.get());
    file->write("abcdef", 6);
    EXPECT_EQ(error_of([&] { file->write("12345", 5); }), FileError::DeviceFull);
    EXPECT_EQ(error_of([&] { file->write("1", ~0u); }), FileError::DeviceFull);
    EXPECT_EQ(file->setEOF(), 6);
    const struct {
        long long offset;
        int origin;
        long long position;
    } rows[] = {
        {2, kSeekFromStart, 2},
        {3, kSeekFromCurrent, 5},
        {-1, kSeekFromEnd, 5},
        {-100, kSeekFromCurrent, 0},
        {0, kSeekFromEnd, 6},
        {-7, kSeekFromStart, 0},
        {std::numeric_limits<long long>::min(), kSeekFromEnd, 0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(file->seek(row.offset, row.origin), row.position) << row.offset;
    EXPECT_THROW(file->seek(7, kSeekFromStart), FileException);
    EXPECT_THROW(file->seek(std::numeric_limits<long long>::max(), kSeekFromEnd), FileException);
    EXPECT_THROW(file->seek(0, 3), FileException);
    char block[10] = {};
    EXPECT_EQ(file->read(block, 10), 6u);
    EXPECT_STREQ(block, "abcdef");
    EXPECT_EQ(file->read(block, 10), 0u);
    const auto readOnly = create_byte_buffer_file(buffer->asReadOnlyBuffer().get());
    EXPECT_EQ(error_of([&] { readOnly->write("x", 1); }), FileError::Access);
    EXPECT_THROW(create_byte_buffer_file(nullptr), Exception);
}

} // namespace
