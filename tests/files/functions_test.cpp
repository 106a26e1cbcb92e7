#include "ChoppyFile.h"
#include "FilesTest.h"

#include <core/component/Utf8.h>
#include <core/files/BufferedFile.h>
#include <core/files/FileFunctions.h>
#include <core/files/MemoryFile.h>

#include <chrono>

namespace {

using namespace test;
using File = core::InterfacePtr<core::IFileEx>;

// A file that gives its bytes in pieces of one to `most`.
File choppy(const std::string& text, unsigned most) {
    const File made = core::make_object<ChoppyFile>(most);
    write(*made, text);
    made->seek(0, core::kSeekFromStart);
    return made;
}

class FileFunctions : public FilesTest {
protected:
    core::URL url(const char* name) const { return core::file_url(wide(directory_ / name)); }
};

TEST_F(FileFunctions, CopyUpToANumberOfBytes) {
    const std::string text(40'000, 'x');
    for (const unsigned long long n : {0ull, 1ull, 16'384ull, 39'999ull, 40'000ull, ~0ull}) {
        const File to = core::create_memory_file(0);
        const auto expected = std::min<unsigned long long>(n, text.size());
        EXPECT_EQ(core::copy_file(to.get(), choppy(text, 9'000).get(), n), expected);
        EXPECT_EQ(to->seek(0, core::kSeekFromEnd), static_cast<long long>(expected));
    }
}

TEST_F(FileFunctions, CompareByBytesAndThenByLength) {
    const std::string base(20'000, 'm');
    const struct {
        std::string a, b;
        int order;
    } rows[] = {
        {"", "", 0},           {"", "a", -1},
        {base, base, 0},       {base, base + "a", -1},
        {base + "a", base, 1}, {base + "\xff", base + "a", 1},
        {"b", "aa", 1},        {base + "a", base + "b", -1},
    };
    const auto sign = [](int order) { return (order > 0) - (order < 0); };
    for (const auto& row : rows) {
        const File a = choppy(row.a, 5'000), b = choppy(row.b, 7'000);
        EXPECT_EQ(core::compare_files(a.get(), b.get()), row.order == 0);
        EXPECT_EQ(core::compare_exfiles(a.get(), b.get()), row.order == 0);
        EXPECT_EQ(a->seek(0, core::kSeekFromCurrent), 0);
        EXPECT_EQ(b->seek(0, core::kSeekFromCurrent), 0);
        EXPECT_EQ(sign(core::compare_files_ex(a.get(), b.get())), row.order);
        EXPECT_EQ(sign(core::compare_exfiles_ex(a.get(), b.get())), row.order);
        EXPECT_EQ(a->seek(0, core::kSeekFromCurrent), 0);
        EXPECT_TRUE(core::compare_exfiles(a.get(), a.get()));
    }
    const File some = choppy("", 1);
    EXPECT_TRUE(core::compare_files(nullptr, nullptr));
    EXPECT_FALSE(core::compare_exfiles(some.get(), nullptr));
    EXPECT_EQ(core::compare_exfiles_ex(nullptr, nullptr), 0);
    EXPECT_LT(core::compare_files_ex(nullptr, some.get()), 0);
    EXPECT_GT(core::compare_exfiles_ex(some.get(), nullptr), 0);
}

TEST_F(FileFunctions, OpenByUrl) {
    const auto out = core::create_buffered_file_for_write(url("a"), 32768);
    write(*out, "contents");
    EXPECT_EQ(contents(directory_ / "a"), "");
    out->flush();
    EXPECT_EQ(error_of([&] { core::create_buffered_file_for_read(url("a"), 16); }), Error::Sharing);
    const_cast<core::InterfacePtr<core::IFile>&>(out).reset();
    EXPECT_EQ(read_all(*core::create_buffered_file_for_read(url("a"), 16)), "contents");
    EXPECT_FALSE(core::InterfacePtr<core::IBufferedFile>(
        core::create_buffered_file_for(url("a"), 0, core::kFileOpenForRead)));

    EXPECT_TRUE(core::create_file_if_not_exist(url("a")));
    EXPECT_EQ(contents(directory_ / "a"), "contents");
    EXPECT_TRUE(core::create_file_if_not_exist(url("b")));
    EXPECT_TRUE(fs::exists(directory_ / "b"));
    EXPECT_FALSE(core::create_file_if_not_exist(url("none/b")));
}

TEST_F(FileFunctions, WaitForFilesThatAreInUse) {
    file("a", "contents");
    EXPECT_TRUE(core::move_file_with_wait(url("a"), url("b")));
    EXPECT_EQ(contents(directory_ / "b"), "contents");
    EXPECT_TRUE(core::remove_file_with_wait(url("b")));
    EXPECT_FALSE(fs::exists(directory_ / "b"));

    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(core::move_file_with_wait(url("none"), url("b")));
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(900));
}

TEST_F(FileFunctions, SizesAreShownInTheirUnit) {
    const struct {
        unsigned long long size;
        const char16_t* text;
    } rows[] = {
        {0, u"0 B"},
        {1023, u"1023 B"},
        {1024, u"1 KB"},
        {1536, u"1 KB"},
        {1024 * 1024 - 1, u"1023 KB"},
        {1024 * 1024, u"1 MB"},
        {1ull << 30, u"1 GB"},
        {~0ull, u"17179869183 GB"},
    };
    for (const auto& row : rows) EXPECT_EQ(core::file_size_to_str(row.size), row.text);
}

} // namespace
