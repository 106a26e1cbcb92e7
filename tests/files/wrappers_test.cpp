// The edges of the files that stand in front of others, and of those in memory.
#include "ChoppyFile.h"
#include "FilesTest.h"

#include <core/component/IllegalStateException.h>
#include <core/component/UnsupportedOperationException.h>
#include <core/files/BufferedFile.h>
#include <core/files/FileContentFiller.h>
#include <core/files/MemoryFile.h>
#include <core/files/NullFile.h>
#include <core/files/PartFile.h>
#include <core/files/SharedMemoryBlock.h>
#include <core/files/ShiftedFile.h>
#include <core/storage/StorageException.h>

namespace {

using namespace test;
using File = core::InterfacePtr<core::IFileEx>;

File memory(const std::string& text) {
    const File made = core::create_memory_file(0);
    write(*made, text);
    made->seek(0, core::kSeekFromStart);
    return made;
}
std::string all_of(core::IFileEx& file) {
    file.seek(0, core::kSeekFromStart);
    return read_all(file);
}
long long position(core::IFileEx& file) {
    return file.seek(0, core::kSeekFromCurrent);
}

class Wrappers : public FilesTest {};
using MemoryFile = Wrappers;
using BufferedFile = Wrappers;
using ShiftedFile = Wrappers;
using PartFile = Wrappers;

TEST_F(MemoryFile, MovesWithinThirtyTwoBits) {
    const File object = core::create_memory_file(0);
    EXPECT_EQ(object->seek(-1, 1), 0);
    EXPECT_EQ(object->seek(100, 1), 100);
    EXPECT_EQ(object->seek(7, 3), 100); // no origin
    EXPECT_EQ(object->seek(-200, 2), 0);
    EXPECT_EQ(object->seek(1ll << 40, 1), 0xFFFFFFFF);
    char byte = 0;
    EXPECT_EQ(error_of([&] { object->write(&byte, 1); }), Error::Failure);
    EXPECT_EQ(object->seek(0, 4), 0);

    object->seek(100, 1);
    EXPECT_EQ(object->read(&byte, 1), 0u);
    write(*object, "abc");
    EXPECT_EQ(object->seek(0, 4), 103);
    EXPECT_EQ(all_of(*object), std::string(100, '\0') + "abc");
    object->seek(50, 1);
    EXPECT_EQ(object->setEOF(), 50);
    EXPECT_EQ(position(*object), 50);
    object->seek(102, 1);
    object->setEOF();
    EXPECT_EQ(all_of(*object), std::string(102, '\0')); // nothing of the former end comes back
}

TEST_F(MemoryFile, TellsItsMemory) {
    const auto reserved = core::create_memory_file(8192);
    EXPECT_EQ(reserved->memoryUsage(), 2 * sizeof(void*) + 64 + 2 * 8192);
    EXPECT_EQ(reserved->seek(0, 4), 0);
    reserved->seek(3'000'000'000, 1);
    write(*reserved, "far");
    EXPECT_LT(reserved->memoryUsage(), 10'000'000u); // a hole takes no pages
    reserved->seek(2'999'999'999, 1);
    EXPECT_EQ(read_all(*reserved), std::string("\0far", 4));
    reserved->setURL(core::URL(u"x://y/z", false));
    EXPECT_EQ(reserved->url().text(), u"x://y/z");
    const auto factory = core::create_object<core::IFileExFactory>(core::CLSID_MemoryFileFactory);
    EXPECT_TRUE(core::InterfacePtr<core::IMemoryFile>(factory->createFile()));
}

TEST_F(Wrappers, TheNullFileTakesAllAndHasNothing) {
    const File object = core::dev_null();
    EXPECT_EQ(object, core::create_object<core::IFileEx>(core::CLSID_NullFile));
    object->write(nullptr, 0xFFFFFFFF);
    char byte = 0;
    EXPECT_EQ(object->read(&byte, 1), 0u);
    EXPECT_EQ(object->seek(0, 4), 0);
    EXPECT_EQ(object->setEOF(), 0);
    EXPECT_TRUE(object->url().text().empty());
}

TEST_F(BufferedFile, HandsOnBeforeItChangesDirection) {
    const File inner = memory(std::string(100, '-'));
    const File object = core::create_buffered_file(inner.get(), 64);
    EXPECT_EQ(core::create_buffered_file(object.get(), 8), object); // buffered already

    write(*object, "0123456789");
    EXPECT_EQ(all_of(*inner).substr(0, 3), "---");
    inner->seek(0, core::kSeekFromStart);
    char byte = 0;
    EXPECT_EQ(object->read(&byte, 1), 1u);
    EXPECT_EQ(byte, '-');
    EXPECT_EQ(all_of(*inner).substr(0, 11), "0123456789-");
    inner->seek(74, core::kSeekFromStart); // where the buffer left it

    write(*object, "x");
    EXPECT_EQ(position(*inner), 11);
    object->flush();
    EXPECT_EQ(all_of(*inner).substr(9, 4), "9-x-");
}

TEST_F(BufferedFile, SeeksInItsBufferWithoutTheInnerFile) {
    const auto inner = core::make_object<ChoppyFile>(1000u);
    write(*inner, std::string(600, 'a'));
    inner->seek(0, core::kSeekFromStart);
    const File object = core::create_buffered_file(inner.get(), 64);
    char bytes[6];
    object->read(bytes, 6); // the inner file gives 2 bytes, then 3, then 4: the buffer has 5 to 9
    EXPECT_EQ(position(*object), 6);
    const unsigned seeks = inner->seeks, reads = inner->reads;
    EXPECT_EQ(reads, 3u);
    EXPECT_EQ(object->seek(5, core::kSeekFromStart), 5);
    EXPECT_EQ(object->seek(4, core::kSeekFromCurrent), 9);
    EXPECT_EQ(position(*object), 9);
    EXPECT_EQ(object->seek(-2, core::kSeekFromCurrent), 7);
    EXPECT_EQ(inner->seeks, seeks);
    EXPECT_EQ(inner->reads, reads);
    EXPECT_EQ(object->seek(4, core::kSeekFromStart), 4);
    EXPECT_EQ(inner->seeks, seeks + 1);
    EXPECT_EQ(object->seek(99, 3), 0); // no origin
}

TEST_F(BufferedFile, WritesWholeBuffers) {
    const auto inner = core::make_object<ChoppyFile>(1u);
    {
        const File object = core::create_buffered_file(inner.get(), 10);
        write(*object, "0123456789");
        EXPECT_EQ(inner->writes, 0u);
        write(*object, std::string(25, 'x'));
        EXPECT_EQ(inner->writes, 3u);
        object->flush();
        EXPECT_EQ(inner->flushes, 1u);
        write(*object, "end");
    } // the destructor writes the rest
    EXPECT_EQ(all_of(*inner), "0123456789" + std::string(25, 'x') + "end");
}

TEST_F(BufferedFile, KeepsWhatCouldNotBeWrittenButNotForItsDestructor) {
    for (const bool again : {false, true}) {
        const auto inner = core::make_object<ChoppyFile>(1u);
        inner->failAt = 2;
        {
            const File object = core::create_buffered_file(inner.get(), 10);
            write(*object, "01234567");
            object->flush();
            write(*object, "abcdef");
            EXPECT_THROW(object->flush(), int);
            if (again) object->flush();
        }
        EXPECT_EQ(inner->writes, again ? 3u : 2u);
        EXPECT_EQ(all_of(*inner), again ? "01234567abcdef" : "01234567abc");
    }
}

TEST_F(BufferedFile, WorksInSequenceOverWhatCannotSeek) {
    const File data = memory(std::string(300, 'a') + "end");
    const auto sequential = core::create_buffered_file_ro(data.get(), 16);
    const File object = core::create_buffered_file(sequential.get(), 64);
    EXPECT_EQ(read_all(*object).substr(298), "aaend");
    EXPECT_EQ(error_of([&] { object->seek(0, 1); }), Error::Failure);
    EXPECT_EQ(error_of([&] { object->setEOF(); }), Error::Failure);
    EXPECT_THROW(sequential->write("x", 1), core::UnsupportedOperationException);
    EXPECT_THROW(sequential->flush(), core::UnsupportedOperationException);

    const auto blank = core::create_object<core::IFile>(core::CLSID_BufferedFile);
    char byte = 0;
    EXPECT_THROW(blank->read(&byte, 1), core::IllegalStateException);
    EXPECT_THROW(blank->write("x", 1), core::IllegalStateException);

    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    {
        const File pipe = open("/dev/fd/" + std::to_string(ends[1]), 17);
        const File out = core::create_buffered_file(pipe.get(), 16);
        write(*out, "through a pipe, in pieces");
        out->flush();
    }
    char text[100];
    EXPECT_EQ(::read(ends[0], text, sizeof text), 25);
    ::close(ends[0]);
    ::close(ends[1]);
}

TEST_F(BufferedFile, ReadOnlyWithoutFileOrBufferIsFatal) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(core::create_buffered_file_ro(nullptr, 1), "file != nullptr");
    EXPECT_DEATH(core::create_buffered_file_ro(core::dev_null().get(), 0), "bufferSize != 0");
}

TEST_F(ShiftedFile, ShowsWhatFollowsThePreamble) {
    const auto object = core::create_object<core::IShiftedFile>(core::CLSID_ShiftedFile);
    EXPECT_THROW(object->seek(0, 1), core::IllegalStateException);
    const File data = memory(""), preamble = memory("HEAD");
    EXPECT_THROW(object->attach(nullptr, preamble.get(), 4), core::IllegalStateException);
    EXPECT_THROW(object->attach(data.get(), nullptr, 4), core::IllegalStateException);

    object->attach(data.get(), preamble.get(), 4);
    EXPECT_TRUE(object->isShifted());
    EXPECT_EQ(object->seek(0, 4), 0);
    write(*object, "body");
    EXPECT_EQ(all_of(*data), "HEADbody");
    EXPECT_EQ(object->seek(5, 3), 0); // no origin
    EXPECT_EQ(object->seek(-100, 2), 0);
    write(*object, "BODY"); // the preamble stays
    EXPECT_EQ(all_of(*data), "HEADBODY");
    object->seek(1, 1);
    EXPECT_EQ(object->setEOF(), 1);
    EXPECT_EQ(error_of([&] { object->lock(0, 1); }), Error::Failure); // memory has no locks

    const auto locked = open(file("a", "HEAD"), 792), other = open(directory_ / "a", 792);
    object->attach(static_cast<core::IFileSharedEx*>(locked.get()), preamble.get(), 4);
    EXPECT_TRUE(object->tryLock(0, 1));
    EXPECT_FALSE(other->tryLock(4, 1));
    object->unlock(0, 1);
    EXPECT_TRUE(other->tryLock(4, 1));
}

TEST_F(ShiftedFile, RefusesOtherPreambles) {
    for (const char* const start : {"HEA", "HEAX", "XEADbody"}) {
        SCOPED_TRACE(start);
        const auto object = core::create_object<core::IShiftedFile>(core::CLSID_ShiftedFile);
        try {
            object->attach(memory(start).get(), memory("HEAD").get(), 4);
            ADD_FAILURE();
        } catch (const core::StorageException& exception) {
            EXPECT_EQ(exception.error(), core::StorageException::Error::BadFormat);
        }
        EXPECT_EQ(object->file(), nullptr);
        EXPECT_THROW(object->url(), core::IllegalStateException);
    }
}

TEST_F(PartFile, StaysInItsWindow) {
    const auto window = core::create_object<core::IPartFile>(core::CLSID_PartFile);
    const File object(window);
    const auto refusal = [](const std::function<void()>& call) {
        try {
            call();
        } catch (const core::FileException& exception) {
            return core::to_utf8(exception.extra());
        }
        return stdx::string();
    };
    char byte = 0;
    EXPECT_NE(refusal([&] { object->read(&byte, 1); }).find("PartFile::read"), stdx::string::npos);
    EXPECT_NE(refusal([&] { object->seek(0, 1); }).find("PartFile::seek"), stdx::string::npos);

    const File data = memory("0123456789");
    data->seek(3, core::kSeekFromStart);
    window->attach(data.get(), 4);
    EXPECT_EQ(read_all(*object), "3456");
    constexpr long long kMost = std::numeric_limits<long long>::max();
    for (const auto& [offset, origin, expected] : {std::array<long long, 3>{2, 1, 2},
                                                   {5, 1, 2},
                                                   {-3, 2, 2},
                                                   {3, 2, 2},
                                                   {1, 4, 2},
                                                   {-5, 4, 2},
                                                   {-4, 4, 0},
                                                   {4, 1, 4},
                                                   {-1, 1, 4},
                                                   {1, 3, 4},
                                                   {kMost, 2, 4},
                                                   {-kMost - 1, 2, 4}})
        EXPECT_EQ(object->seek(offset, static_cast<int>(origin)), expected) << offset;
    EXPECT_EQ(object->read(&byte, 1), 0u);
    EXPECT_NE(refusal([&] { object->write("x", 1); }).find("PartFile::write"), stdx::string::npos);
    EXPECT_NE(refusal([&] { object->setEOF(); }).find("PartFile::setEOF"), stdx::string::npos);

    window->attach(data.get());
    EXPECT_EQ(read_all(*object), "0123456789");
    const auto sequential = core::create_buffered_file_ro(data.get(), 4);
    data->seek(8, core::kSeekFromStart);
    window->attach(sequential.get(), 100);
    EXPECT_EQ(read_all(*object), "89");
    EXPECT_NE(refusal([&] { object->seek(0, 1); }), "");
}

TEST_F(Wrappers, SharedBlocksOutliveTheirAssignment) {
    const auto block = core::create_object<core::ISharedMemoryBlock>(core::CLSID_SharedMemoryBlock);
    block->assign("first", 5);
    const File first = block->connect(core::URL(u"x://a/1", false));
    const File again = block->connect(core::URL(u"x://a/2", false));
    block->assign(memory("second").get());
    EXPECT_EQ(read_all(*first), "first");
    EXPECT_EQ(again->seek(-2, 4), 3);
    EXPECT_EQ(read_all(*again), "st");
    EXPECT_EQ(again->url().text(), u"x://a/2");
    EXPECT_EQ(read_all(*block->connect(core::URL())), "second");
    EXPECT_EQ(error_of([&] { first->write("x", 1); }), Error::Failure);
    EXPECT_EQ(error_of([&] { first->setEOF(); }), Error::Failure);
}

TEST_F(Wrappers, FillingOverwritesARange) {
    EXPECT_FALSE(core::default_file_content_filler());
    const auto filler =
        core::create_object<core::IFileContentFiller>(core::CLSID_FileContentZeroFiller);
    core::default_file_content_filler_last_operation_info_reset();
    const struct {
        long long from, to;
        std::size_t begin, end;
    } rows[] = {{0, -1, 0, 20'000},
                {5, 5, 0, 0},
                {-1, 9, 0, 0},
                {3, 7, 3, 7},
                {100, 18'100, 100, 18'100},
                {19'990, 30'000, 19'990, 20'000},
                {20'000, -1, 0, 0}};
    std::uint64_t total = 0;
    for (const auto& row : rows) {
        const File data = memory(std::string(20'000, 'x'));
        data->seek(77, core::kSeekFromStart);
        filler->fill(data.get(), row.from, row.to);
        EXPECT_EQ(position(*data), 77);
        std::string expected(20'000, 'x');
        expected.replace(row.begin, row.end - row.begin, row.end - row.begin, '\0');
        EXPECT_EQ(all_of(*data), expected) << row.from;
        total += row.end - row.begin;
    }
    filler->fill(nullptr, 0, -1);
    const auto info = core::default_file_content_filler_last_operation_info();
    EXPECT_EQ(info.totalBytes, total);
    EXPECT_EQ(info.runs, 5u);
    EXPECT_EQ(info.state, 0);

    const fs::path path = file("a", "contents");
    filler->fill(core::file_url(wide(path)));
    EXPECT_EQ(contents(path), std::string(8, '\0'));
    filler->fill(core::file_url(wide(directory_ / "none")));
    EXPECT_FALSE(fs::exists(directory_ / "none"));
}

} // namespace
