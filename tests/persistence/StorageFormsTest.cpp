// What storages hold, byte for byte, and that it comes back: attachments of all sizes, in every
// order that is told, and what is written where.
#include "StorageProgram.h"
#include "support/ProcessTest.h"

#include <core/component/ClassDescriptor.h>
#include <core/files/FileException.h>
#include <core/files/FileSystemFunctions.h>
#include <core/numbers/Numeric.h>
#include <core/persistence/FileSegmentFile.h>

#include <filesystem>
#include <fstream>
#include <limits>
#include <random>

#include <unistd.h>

namespace {

using namespace core;
using namespace test;
using namespace std::string_literals;

class StorageForms : public ProcessTest {};

struct TestFile {
    explicit TestFile(const std::string& bytes) { std::ofstream(path, std::ios::binary) << bytes; }
    ~TestFile() { std::filesystem::remove(path); }

    const std::filesystem::path path =
        std::filesystem::temp_directory_path() / ("storage_test." + std::to_string(::getpid()));
    const URL url = file_url(stdx::ustring(path.u16string()));
};

// {1, "ab" attached, nothing attached, "x", 49 bytes attached}
void put_sample(IOutPersistenceStorage& storage) {
    ListOutStream& list = *storage.listStream();
    list->beginList();
    list->putInt32(1);
    put_attachment(storage, "ab");
    put_attachment(storage, "");
    list->putString(u"x");
    put_attachment(storage, std::string(49, '\0'));
    list->endList();
}

TEST_F(StorageForms, AreAsTheyAreDescribed) {
    const std::string zeros(49, '\0');
    const std::string as(64, 'A');
    EXPECT_EQ(stored(kStream, put_sample), "\xEF\xBB\xBF{1,\r\n{#base64:YWI=},\r\n{#base64:},\"x\","
                                           "\r\n{#base64:" +
                                               as + "\r\r\nAA==}\r\n}");
    EXPECT_EQ(stored(kBinary, put_sample),
              "\x42\xC1\x9A\x02"s + "ab" + "\xE1\xAB" + "x" + "\xC1\x9A\x31" + zeros + "\x20\x20");
    const std::string text = "\xEF\xBB\xBF{1,\r\n{0},\r\n{1},\"x\",\r\n{2}\r\n}";
    EXPECT_EQ(stored(kCompact, put_sample),
              "\1\1"s + static_cast<char>(text.size()) + "\0\0\0\0\0\0\0"s + text +
                  "\0\0\0\0\2\0\0\0\0\0\0\0ab"s + "\1\0\0\0\0\0\0\0\0\0\0\0"s +
                  "\2\0\0\0\x31\0\0\0\0\0\0\0"s + zeros);
}

TEST_F(StorageForms, ComeBack) {
    const std::string zeros(49, '\0');
    for (const StorageKind& kind : kKinds)
        for (const bool seekable : {false, true}) {
            SCOPED_TRACE(kind.name + std::to_string(seekable));
            const std::string bytes = stored(kind, put_sample);
            EXPECT_EQ(run(kind, "{iffsf}", bytes, seekable), "1;ab;;x;" + zeros + ";");
            EXPECT_EQ(run(kind, "{ioosp}", bytes, seekable), "1;ab;;x;\0;"s);
            EXPECT_EQ(run(kind, "{ipnsn}", bytes, seekable), "1;a;x;");
            EXPECT_EQ(run(kind, "{if~}", bytes, seekable), "1;ab;");
            EXPECT_EQ(run(kind, "{ifff}", bytes, seekable), "1;ab;;"s + std::string(kRefused));
        }
}

// The sizes around the limits of blocks and of what stays in memory, in writes of odd sizes.
TEST_F(StorageForms, HoldAttachmentsOfAnySize) {
    const unsigned sizes[] = {1,       2,       3,      48,      767,     768,
                              8191,    8192,    0xFFFF, 0x10000, 0x10001, 0x40000,
                              0x40001, 1 << 20, 12'289, 300'000, 65'537,  0x100001};
    std::mt19937 random(1);
    std::string data(0x100001, 0);
    for (char& c : data) c = static_cast<char>(random());
    for (const StorageKind& kind : kKinds) {
        SCOPED_TRACE(kind.name);
        const std::string bytes = stored(kind, [&](IOutPersistenceStorage& storage) {
            (*storage.listStream())->beginList();
            for (const unsigned size : sizes) {
                const auto file = storage.binFile();
                for (unsigned at = 0, n = 0; at < size; at += n) {
                    n = std::min(static_cast<unsigned>(random() % 50'000), size - at);
                    file->write(data.data() + at, n);
                }
            }
            (*storage.listStream())->endList();
        });
        const auto file = source_of(bytes, false);
        const auto storage = open_in(kind, file.get());
        (*storage->listStream())->beginList();
        std::vector<InterfacePtr<IFileEx>> files;
        for (const unsigned size : sizes) {
            if (size % 2 != 0)
                EXPECT_TRUE(read_all(*storage->forwardOnlyBinFile()) == data.substr(0, size))
                    << size;
            else
                files.push_back(storage->binFile());
        }
        (*storage->listStream())->endList();
        // Files stay files of their own: they are read in turns, from anywhere, when all is over.
        for (const auto& each : files)
            EXPECT_EQ(each->seek(-1, kSeekFromEnd), each->seek(0, kSeekFromEnd) - 1);
        for (const unsigned size : sizes) {
            if (size % 2 != 0) continue;
            files.front()->seek(0, kSeekFromStart);
            EXPECT_TRUE(read_all(*files.front()) == data.substr(0, size)) << size;
            files.erase(files.begin());
        }
    }
}

// ---- Texts with attachments.

TEST_F(StorageForms, AWaitingAttachmentLandsInFrontOfWhatComesNext) {
    const auto text_of = [](auto put) { return stored(kStream, put).substr(3); };
    const auto list = [](IOutPersistenceStorage& storage) { return storage.listStream()->get(); };
    EXPECT_EQ(text_of([&](IOutPersistenceStorage& storage) {
                  list(storage)->beginList();
                  auto first = storage.binFile(), second = storage.binFile();
                  first->write("1", 1);
                  second->write("2", 1);
                  second.reset();
                  first.reset(); // in the order of their releases
                  list(storage)->endList();
              }),
              "{\r\n{#base64:Mg==},\r\n{#base64:MQ==}\r\n}");
    EXPECT_EQ(text_of([&](IOutPersistenceStorage& storage) {
                  list(storage)->beginList();
                  const auto file = storage.binFile();
                  list(storage)->putBool(true); // the file is still held
                  file->write("abc", 3);
                  file->seek(1, kSeekFromStart);
                  file->setEOF();
                  list(storage)->endList();
                  attach(storage, nullptr);
              }),
              "{1}");
    EXPECT_EQ(text_of([&](IOutPersistenceStorage& storage) { put_attachment(storage, "abc"); }),
              "{#base64:YWJj}");
    // The operations that write nothing put it there, too.
    EXPECT_EQ(text_of([&](IOutPersistenceStorage& storage) {
                  put_attachment(storage, "abc");
                  list(storage)->flush();
                  list(storage)->putInt8(5);
              }),
              "{#base64:YWJj},5");
}

// The list of a text storage hands every operation on as it is.
TEST_F(StorageForms, TheListOfATextIsAnyList) {
    const auto put = [](IListOutStream& list) {
        Numeric number(12);
        Date date;
        DateSerializer object(&date);
        const auto file = make_object<ByteFile>("some bytes");
        const InterfacePtr<IFile> same = file;
        list.beginList();
        list.putBool(true);
        list.putInt8(-1);
        list.putInt16(-2000);
        list.putInt32(-300'000);
        list.putInt64(-4'000'000'000'000);
        list.putLong(-50'000);
        list.putUInt8(200);
        list.putUInt16(50'000);
        list.putUInt32(4'000'000'000);
        list.putUInt64(10'000'000'000'000'000'000u);
        list.putULong(3'000'000'000);
        list.putFloat(1.5F);
        list.putDouble(2.25);
        list.putChar(u'c');
        list.putGuid(IID_IFile);
        list.putString(u"text");
        list.putCString(u"more text");
        list.putChars(u"chars", 4);
        list.putBinary("binary", 6);
        list.putBytes("bytes");
        list.putNumeric(number);
        list.putFile(file.get());
        file->at = 5;
        list.putFile(same);
        list.putObject(object);
        list.flush();
        list.endList();
    };
    const std::string plain(to_utf8(stdx::ustring(text_of(put))).view());
    std::string through = stored(kStream, [&](IOutPersistenceStorage& storage) {
                              put(*storage.listStream()->get());
                          }).substr(3);
    std::erase(through, '\r');
    EXPECT_EQ(through, plain);
}

TEST_F(StorageForms, ReadTheTextOfAttachments) {
    const std::string long768(1024, 'A'), z768(768, '\0');
    const struct {
        std::string text, expected;
    } rows[] = {
        {"{#base64:YWJj}", "abc"},
        {" {#base64:YW\r\nJj }", "abc"},
        // The code of old, the lowest bits and bytes first.
        {"{#data:}", ""},
        {"{#data:BAAA}", "\1\0\0"s},
        {"{#data:BCDE}", "\x81\x30\x10"},
        {"{#data:////}", "\xFF\xFF\xFF"},
        {"{#data:BA==}", "\1"},
        {"{#data:BAA=}", "\1\0"s},
        {"{#data:" + long768 + "}", z768},
        {"{#data:" + long768 + "BAAA}", z768 + "\1\0\0"s},
        {"{#data:" + long768 + "BA==}", z768 + "\1"},
        // A brace in a group ends the data in front of the group; spaces may stand before it.
        {"{#data:BAAABA}", "\1\0\0"s},
        {"{#data:BA=}", ""},
        {"{#data:BAAA\n}", "\1\0\0"s},
    };
    for (const auto& row : rows)
        for (const char* const operation : {"f", "o"})
            EXPECT_EQ(run(kStream, operation, row.text), row.expected + ';') << row.text;
    for (const char* const text :
         {"{#base64:YWJ}", "{#base64:YWJj", "{#base64:YWJj,1}", "{#base64 YWJj}", "{#base64YWJj:}",
          "{#Base64:YWJj}", "{ #base64:YWJj}", "{:YWJj}", "{#base64", "1", "{#data:BA=A}",
          "{#data:B===}", "{#data:BA==BAAA}", "{#data:BA\nAA}", "{#data:BAAA*}",
          "{#data:BAA\xC3\xA9}", "{#data:BAA\xD0\x90}", "{#data:BAAA", "{#data:"})
        EXPECT_EQ(run(kStream, "f", text), kRefused) << text;
}

TEST_F(StorageForms, ReadTheChunksOfBytes) {
    const struct {
        std::string bytes, expected;
    } rows[] = {
        {"\x41\x20"s, ";"},
        {"\x41\x81\x9A\x02"s + "ab\x81\x8B" + "c\x20", "abc;"}, // empty chunks are no end
        {"\x40\x20"s, std::string(kRefused)},                   // no number
        {"\x41\x82\x20"s, std::string(kRefused)},               // a number for a chunk
        {"\x41\x9A\x02"s + "a", std::string(kRefused)},
        {"\x01"s, std::string(kRefused)},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(run(kBinary, "f", row.bytes), row.expected) << hex(row.bytes);
        EXPECT_EQ(run(kBinary, "o", row.bytes), row.expected) << hex(row.bytes);
    }
    // What is passed unread need not be of the right kind.
    EXPECT_EQ(run(kBinary, "{ni}", "\x40\x40\x82\x20\x83\x20"), "2;");
}

// ---- Files of sections.

std::string number(std::uint64_t value, unsigned width) {
    std::string bytes;
    for (; width != 0; --width, value >>= 8) bytes += static_cast<char>(value);
    return bytes;
}
std::string section(std::uint32_t index, std::string_view bytes) {
    return number(index, 4) + number(bytes.size(), 8) + std::string(bytes);
}
std::string compact(std::string_view text) {
    return "\1\1" + number(text.size(), 8) + std::string(text);
}

TEST_F(StorageForms, SectionsAreFoundInTheirOrder) {
    const std::string three =
        section(0, "a") + section(1, std::string(20'000, 'b')) + section(2, "c");
    const std::string longest = number(0, 4) + number(~0ull, 8);
    const std::string refused(kRefused);
    const struct {
        std::string bytes;
        const char* operations;
        std::string expected;
    } rows[] = {
        {compact("{{0},{2}}") + three, "{ff}", "a;c;"},
        {compact("{{2},{0}}") + three, "{ff}", "c;" + refused}, // was passed over
        {compact("{{0},{0}}") + three, "{ff}", "a;" + refused},
        {compact("{{5},{9}}") + section(5, "x") + section(9, "y"), "{ff}", "x;y;"},
        {compact("{{3}}") + three, "{f}", refused},
        {compact("{{0}}") + section(1, "x"), "{f}", refused},
        // lengths behind the end, of what is read and of what is passed
        {compact("{{0}}") + number(0, 4) + number(2, 8) + "a", "{f}", refused},
        {compact("{{1}}") + number(0, 4) + number(3, 8) + "a", "{f}", refused},
        {compact("{{0}}") + longest + "a", "{f}", refused},
        {compact("{{1}}") + longest + section(1, "a"), "{f}", refused},
        {compact("{{0}}") + number(0, 4) + number(0, 7), "{f}", refused},
        {"\1\1" + number(~0ull, 8) + "1", "i", refused},
        // other signatures, none, no class of a filter, an unknown one
        {"\1\3" + compact("1").substr(2), "i", refused},
        {"\1", "i", refused},
        {"\2\1" + number(0, 15), "i", refused},
        {"\2\1" + number(7, 16) + number(1, 8) + "1", "i", refused},
    };
    for (const auto& row : rows)
        for (const bool seekable : {false, true})
            EXPECT_EQ(run(kCompact, row.operations, row.bytes, seekable), row.expected)
                << &row - rows << ' ' << seekable;
    const auto storage = create_object<ICompactInPersistenceStorage>(kCompact.in);
    EXPECT_FALSE(storage->attach(source_of("{1}", true).get(), nullptr));
    EXPECT_THROW(storage->listStream(), ListStreamException);
}

// A file whose second attachment lies behind 2 GiB and a byte of nothing.
TEST_F(StorageForms, LengthsOf2GiBAreLengths) {
    const std::string begin = compact("{{1}}") + number(0, 4) + number(0x80000001, 8);
    const TestFile file(begin);
    std::filesystem::resize_file(file.path, begin.size() + 0x80000001);
    std::ofstream(file.path, std::ios::app | std::ios::binary) << section(1, "found");
    EXPECT_EQ(run(kCompact, "{f}", get_service<IFileSystem>()->open(file.url, 264).get()),
              "found;");
}

TEST_F(StorageForms, AWindowIsAFileOfItsOwn) {
    const InterfacePtr<IFileEx> file(source_of("0123456789", true));
    const auto segment = create_object<IFileSegmentFile>(CLSID_FileSegmentFile);
    const InterfacePtr<IFileEx> window(segment);
    char byte;
    EXPECT_THROW(window->read(&byte, 1), FileException);
    segment->attach(file.get(), 3, 4);
    file->seek(0, kSeekFromStart);
    EXPECT_EQ(read_all(*window), "3456");
    const struct {
        long long offset;
        int origin;
        long long expected;
    } seeks[] = {{1, kSeekFromStart, 1},
                 {2, kSeekFromCurrent, 3},
                 {-5, kSeekFromCurrent, 0},
                 {-1, kSeekFromEnd, 3},
                 {1, kSeekFromEnd, 4},
                 {9, kSeekFromStart, 4},
                 {-1, kSeekFromStart, 0},
                 {2, 0, 0},
                 {std::numeric_limits<long long>::max(), kSeekFromEnd, 4},
                 {std::numeric_limits<long long>::min(), kSeekFromCurrent, 0}};
    for (const auto& seek : seeks) EXPECT_EQ(window->seek(seek.offset, seek.origin), seek.expected);
    EXPECT_THROW(window->write("x", 1), FileException);
    segment->attach(file.get(), 8, 100); // longer than the file
    EXPECT_EQ(read_all(*window), "89");
}

// ---- A filter, made again by its class: every byte changed, and one put in front.

constexpr _GUID CLSID_Invert = "4cca0bfc-a08e-4356-b9b8-76e8e27b8540"_guid;

class InvertFile
    : public ObjectRoot
    , public SCOM_InternalClass<InvertFile>
    , public IFile {
public:
    static const InterfaceEntry* _GetEntries() { return interface_map<InvertFile, IFile>(); }
    explicit InvertFile(IFile* file) : file_(file, true) {}

    URL url() override { return {}; }
    unsigned read(void* dst, unsigned n) override {
        n = file_->read(dst, n);
        for (unsigned i = 0; i != n; ++i) static_cast<char*>(dst)[i] ^= '\x55';
        return n;
    }
    void write(const void* src, unsigned n) override {
        held_.append(static_cast<const char*>(src), n);
    }
    void flush() override {
        for (char& c : held_) c ^= '\x55';
        file_->write(held_.data(), static_cast<unsigned>(held_.size()));
    }

private:
    InterfacePtr<IFile> file_;
    std::string held_;
};

class Invert
    : public ObjectRoot
    , public SCOM_Class<Invert, &CLSID_Invert>
    , public ICompactStreamTransform {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<Invert, ICompactStreamTransform>();
    }
    const _GUID& getClsid() override { return CLSID_Invert; }
    InterfacePtr<IFile> wrapOutput(IFile* target) override {
        return make_object<InvertFile>(target);
    }
    InterfacePtr<IFile> wrapInput(IFile* source) override {
        return make_object<InvertFile>(source);
    }
};

class CountingFiles
    : public ObjectRoot
    , public SCOM_InternalClass<CountingFiles>
    , public IFileExFactory {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<CountingFiles, IFileExFactory>();
    }
    InterfacePtr<IFileEx> createFile() override {
        ++made;
        return create_memory_file(0);
    }
    int made = 0;
};

TEST_F(StorageForms, AFilterIsWrittenThroughAndFoundAgain) {
    const auto file = make_object<ByteFile>();
    const auto out = create_object<ICompactOutPersistenceStorage>(kCompact.out);
    out->attach(file.get(), make_object<Invert>().get());
    put_sample(*out);
    out->close();
    const std::string plain = stored(kCompact, put_sample);
    ASSERT_EQ(file->bytes.size(), plain.size() + 16);
    EXPECT_EQ(hex(std::string_view(file->bytes).substr(0, 18)), "0201"
                                                                "FC0BCA4C"
                                                                "8EA0"
                                                                "5643"
                                                                "B9B876E8E27B8540");
    for (std::size_t i = 2; i != plain.size(); ++i)
        ASSERT_EQ(static_cast<char>(file->bytes[i + 16] ^ 0x55), plain[i]) << i;

    const auto files = make_object<CountingFiles>();
    const auto in = create_object<ICompactInPersistenceStorage>(kCompact.in);
    EXPECT_TRUE(in->attach(file.get(), files.get()));
    std::string result;
    for (const char operation : std::string_view("{iffs")) result += read_item(*in, operation);
    EXPECT_EQ(result, "1;ab;;x;");
    EXPECT_EQ(files->made, 3); // of the text and two attachments
}

// ---- Life.

TEST_F(StorageForms, AStorageClosesItselfAndOpensAgain) {
    for (const StorageKind& kind : kKinds) {
        SCOPED_TRACE(kind.name);
        const auto first = make_object<ByteFile>(), second = make_object<ByteFile>();
        {
            const auto storage = open_out(kind, first.get());
            EXPECT_FALSE(storage->isIndirect());
            storage->setIndirect(true);
            EXPECT_TRUE(storage->isIndirect());
            const auto held = storage->binFile();
            attach(*storage, second.get()); // what is still held belongs to the first file
            held->flush();
            put_sample(*storage);
        }
        EXPECT_EQ(second->bytes, stored(kind, put_sample));
        const auto storage = open_out(kind, nullptr);
        EXPECT_THROW(storage->listStream(), ListStreamException);
        EXPECT_THROW(storage->binFile(), ListStreamException);
        EXPECT_EQ(run(kind, "i", nullptr), kRefused);
        EXPECT_EQ(run(kind, "f", nullptr), kRefused);
        EXPECT_EQ(run(kind, "o", nullptr), kRefused);
    }
}

TEST_F(StorageForms, AreOpenedByURL) {
    for (const StorageKind& kind : kKinds) {
        SCOPED_TRACE(kind.name);
        const TestFile file(std::string(100'000, 'x')); // is emptied
        const auto out = create_object<IOutPersistenceStorage>(kind.out);
        const auto in = create_object<IInPersistenceStorage>(kind.in);
        if (const InterfacePtr<IStreamPersistenceStorage> stream(out); stream)
            stream->open(file.url);
        else
            InterfacePtr<ICompactOutPersistenceStorage>(out)->open(file.url, nullptr);
        put_sample(*out);
        attach(*out, nullptr);
        if (const InterfacePtr<IStreamPersistenceStorage> stream(in); stream)
            stream->open(file.url);
        else
            InterfacePtr<ICompactInPersistenceStorage>(in)->open(file.url);
        std::string result;
        for (const char operation : std::string_view("{if")) result += read_item(*in, operation);
        EXPECT_EQ(result, "1;ab;");
        EXPECT_EQ(std::filesystem::file_size(file.path), stored(kind, put_sample).size());
    }
}

TEST_F(StorageForms, CanBePartOfAnObject) {
    const auto outer = make_object<ByteFile>();
    for (const StorageKind& kind : kKinds)
        for (const _GUID& clsid : {kind.out, kind.in}) {
            IUnknown* inner = nullptr;
            EXPECT_TRUE(process().createAggregated(clsid, outer.get(), &inner)) << kind.name;
            InterfacePtr<IUnknown>(inner, false);
        }
}

// What is small stays in memory, where it has no name.
TEST_F(StorageForms, LargeAttachmentsAreInFiles) {
    const auto is_file = [](IFileEx& file) { return !file.url().text().empty(); };
    const struct {
        const StorageKind& kind;
        unsigned limit;
    } rows[] = {{kStream, 0x10000}, {kCompact, 0x1000000}};
    for (const auto& row : rows) {
        const auto target = make_object<ByteFile>();
        const auto storage = open_out(row.kind, target.get());
        const auto file = storage->binFile();
        file->write(std::string(row.limit, 'x').data(), row.limit);
        EXPECT_FALSE(is_file(*file));
        file->write("x", 1);
        EXPECT_TRUE(is_file(*file));
    }
    for (const unsigned size : {0x40000u, 0x40001u}) {
        const std::string bytes = stored(kStream, [&](IOutPersistenceStorage& storage) {
            put_attachment(storage, std::string(size, 'x'));
        });
        EXPECT_EQ(is_file(*open_in(kStream, source_of(bytes, true).get())->binFile()),
                  size > 0x40000);
    }
}

} // namespace

ORBCORE_REGISTER(Invert);
