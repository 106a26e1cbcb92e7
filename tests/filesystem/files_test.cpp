#include "FileSystemTest.h"
#include "MemoryScheme.h"

#include <core/files/FileFunctions.h>
#include <core/files/Redirector.h>

#include <unistd.h>

using core::URL;
using test::Error;
using test::error_of;
using Names = std::vector<std::string>;

namespace {

constexpr int kRead = core::kFileOpenForRead;
constexpr int kWrite = core::kFileOpenForWrite;

class Files : public test::FileSystemTest {
protected:
    std::optional<Error> opening(std::string_view name, int mode = kRead) {
        return error_of([&] { files().open(url(name), mode); });
    }
};

} // namespace

TEST_F(Files, AreFoundByMask) {
    for (const char* const name : {"a.txt", "ab.txt", "b.TXT", "a", ".a", "a=b%;.txt", "т.txt"})
        put(name, name);
    files().createDirectory(url("a.dir"));
    const struct {
        const char16_t* mask;
        Names found;
    } rows[] = {
        {u"*.txt", {"a.txt", "a=b%;.txt", "ab.txt", "т.txt"}},
        {u"a*", {"a", "a.dir", "a.txt", "a=b%;.txt", "ab.txt"}},
        {u"?.txt", {"a.txt", "т.txt"}},
        {u"a??txt", {"ab.txt"}},
        {u"*a*t*", {"a.txt", "a=b%;.txt", "ab.txt"}},
        {u".*", {".a"}},
        {u"**", {".a", "a", "a.dir", "a.txt", "a=b%;.txt", "ab.txt", "b.TXT", "т.txt"}},
        {u"nothing*", {}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(names(directory(), row.mask), row.found) << core::to_utf8(row.mask);

    std::vector<URL> found;
    core::find_files_by_mask(directory(), u"a*", found); // without the directory
    ASSERT_EQ(found.size(), 4u);
    for (const URL& file : found) {
        EXPECT_TRUE(core::file_exists(file)) << core::to_utf8(file.text());
        EXPECT_EQ(read_all(files().open(file, kRead).get()),
                  core::to_utf8(URL::unescape(file.part(14, 3))).view());
    }
    EXPECT_EQ(core::get_total_files_size(directory(), u"?.*"), 5u + 5 + 6);
    EXPECT_FALSE(core::file_exists(url("nowhere/x")) || core::file_exists(url("nowhere"), u"*") ||
                 core::file_exists(url("a.txt/x")) || core::file_exists(url("a.txt"), u"*"));
    EXPECT_EQ(error_of([&] { files().find(url("a.txt"), u"*"); }), Error::Failure);
}

TEST_F(Files, TellWhatTheyAre) {
    put("a", "12345");
    const auto stat = files().find(url("a"), nullptr);
    EXPECT_EQ(stat->url(), url("a"));
    EXPECT_EQ(stat->size(), 5u);
    EXPECT_FALSE(stat->next());
    ::chmod(path("a").c_str(), 0440);
    const auto attributes = [&] { return files().find(url("a"), nullptr)->attributes(); };
    EXPECT_EQ(attributes(), 0x80000000u | core::kFileReadOnly);
    stat->setAttributes(core::kFileOthersMayRead);
    EXPECT_EQ(attributes(), 0x80000000u | core::kFileOthersMayRead);
    const core::Date date(1968, 2, 29, 1, 2, 3);
    stat->setModificationDate(date);
    EXPECT_EQ(core::get_file_date(url("a")), date);
    EXPECT_EQ(files().find(directory(), nullptr)->attributes() & 0xFFFF000F,
              0x40000000u | core::kFileDirectory);
    EXPECT_EQ(error_of([&] { core::get_file_size(url("b")); }), Error::FileNotFound);

    std::filesystem::create_symlink("a", path("link"));
    std::filesystem::create_symlink("nothing", path("dangling"));
    const core::InterfacePtr<core::IFileStat3> link(files().find(url("link"), nullptr));
    EXPECT_TRUE(link->symbolicLink());
    EXPECT_EQ(link->linkTarget(), u"a");
    EXPECT_EQ(names(directory(), u"*"), (Names{"a", "dangling", "link"}));
    EXPECT_FALSE(files().exists(url("dangling")));
    const URL root(u"file:///", false);
    EXPECT_TRUE(files().exists(root) && core::file_exists(root, u"tmp"));
    EXPECT_EQ(core::file_path(files().find(root, u"tmp")->url()), u"/tmp");
}

TEST_F(Files, FailByTheErrorsOfTheSystem) {
    put("a", "x");
    files().createDirectory(url("d"));
    std::filesystem::create_symlink("loop", path("loop"));
    EXPECT_EQ(opening("no"), Error::FileNotFound);
    EXPECT_EQ(opening("no/no", kWrite), Error::FileNotFound);
    EXPECT_EQ(opening("a/no"), Error::DirNotFound);
    EXPECT_EQ(opening(std::string(300, 'n')), Error::BadPath);
    EXPECT_EQ(opening("loop"), Error::Failure);
    for (const int mode : {kRead, kWrite, 0x18}) EXPECT_EQ(opening("d", mode), Error::Access);
    EXPECT_EQ(error_of([&] { files().find(url("loop"), nullptr); }), Error::Failure);
    EXPECT_FALSE(core::file_exists(url("loop")));
    EXPECT_EQ(error_of([&] { files().createDirectory(url("d")); }), Error::Access);
    EXPECT_EQ(error_of([&] { files().createDirectory(url("a")); }), Error::Failure);
    EXPECT_EQ(error_of([&] { files().createDirectory(url("no/d")); }), Error::FileNotFound);
    EXPECT_EQ(error_of([&] { files().remove(url("no"), nullptr); }), Error::FileNotFound);
    EXPECT_EQ(error_of([&] { files().copy(url("d"), url("e")); }), Error::Access);
    EXPECT_EQ(error_of([&] { files().copy(url("a"), url("d")); }), Error::Access);
    EXPECT_EQ(opening(std::string_view("a\0b", 3)), Error::BadPath);
    EXPECT_EQ(error_of([&] { files().remove(url(std::string_view("a\0b", 3)), nullptr); }),
              Error::BadPath);
    const URL broken(directory().text() + u"/a=b", false); // must not lead to "a"
    EXPECT_EQ(error_of([&] { files().open(broken, kRead); }), Error::BadPath);
    EXPECT_EQ(error_of([&] { files().remove(broken, nullptr); }), Error::BadPath);
    EXPECT_FALSE(core::file_exists(broken));
    EXPECT_TRUE(exists("a"));
    try {
        files().open(url("d"), kRead);
        ADD_FAILURE() << "a directory was opened";
    } catch (const core::FileException& exception) {
        EXPECT_EQ(exception.url(), url("d"));
        EXPECT_NE(core::to_utf8(exception.description()).view().find("directory"),
                  std::string_view::npos);
    }
}

TEST_F(Files, AreRefusedToThoseWithoutTheRight) {
    if (::geteuid() != 0) GTEST_SKIP() << "only the superuser can become somebody else";
    put("a", "x");
    ::chmod(path("a").c_str(), 0600);
    ASSERT_EQ(::chmod(directory_.c_str(), 0711), 0);
    ASSERT_EQ(::seteuid(65534), 0);
    const auto read = opening("a"), made = opening("b", kWrite);
    const auto listed = error_of([&] { files().find(directory(), u"*"); });
    const auto removed = error_of([&] { files().remove(url("a"), nullptr); });
    ASSERT_EQ(::seteuid(0), 0);
    for (const auto& error : {read, made, listed, removed}) EXPECT_EQ(error, Error::Access);
}

TEST_F(Files, WithNamesInOtherEncodingsAreListedAndRemoved) {
    put("\xFF\xFE", "12");
    EXPECT_EQ(names(directory(), u"*"), (Names{"\uFFFD\uFFFD"}));
    EXPECT_EQ(core::get_total_files_size(directory(), u"*"), 2u);
    files().remove(directory(), u"*");
    EXPECT_TRUE(names(directory(), u"*").empty());
}

TEST_F(Files, AreRemovedWithAllThatADirectoryHolds) {
    put("outside", "x");
    std::string deep = path("d");
    for (int i = 0; i != 300; ++i) deep += "/d";
    std::filesystem::create_directories(deep);
    std::ofstream(deep + "/file") << "x";
    for (int i = 0; i != 50; ++i) put("d/" + std::to_string(i), "x");
    std::filesystem::create_directory_symlink(directory_, path("d/link"));
    files().remove(url("d"), nullptr);
    EXPECT_EQ(names(directory(), u"*"), Names{"outside"});

    std::filesystem::create_directory_symlink(directory_, path("link"));
    files().remove(url("link"), nullptr); // the link, not what it leads to
    EXPECT_EQ(names(directory(), u"*"), Names{"outside"});
    for (const char16_t* const root : {u"file:///", u"file:", u"file:///tmp/.."})
        EXPECT_EQ(error_of([&] { files().remove(URL(root, false), u"nothing-of-this-name"); }),
                  Error::Access);
}

TEST_F(Files, ThatAreOpenStay) {
    put("a", "x");
    put("b", "y");
    auto open = files().open(url("a"), kRead);
    EXPECT_EQ(error_of([&] { files().remove(url("a"), nullptr); }), Error::Sharing);
    EXPECT_EQ(error_of([&] { files().move(url("a"), url("c")); }), Error::Sharing);
    EXPECT_EQ(error_of([&] { files().move(url("b"), url("a")); }), Error::Sharing);
    EXPECT_EQ(error_of([&] { files().copy(url("b"), url("a")); }), Error::Sharing);
    EXPECT_EQ(error_of([&] { files().remove(directory(), u"*"); }), Error::Sharing);
    EXPECT_EQ(names(directory(), u"*"), Names{"a"}); // the others went
    // A file that takes the place of an open one is another file.
    put("new", "new");
    std::filesystem::rename(path("new"), path("a"));
    EXPECT_EQ(read_all(open.get()), "x");
    EXPECT_EQ(read_all(files().open(url("a"), 0x18).get()), "new");
    open.reset();
    files().remove(url("a"), nullptr);
    EXPECT_FALSE(exists("a"));
}

TEST_F(Files, AreCopiedWithAttributesAndDate) {
    std::string contents;
    for (int i = 0; i != 100'000; ++i) contents += std::to_string(i);
    put("a", contents);
    put("b", contents + "longer");
    const core::Date date(2001, 2, 3, 4, 5, 6);
    ::chmod(path("a").c_str(), 0440);
    files().find(url("a"), nullptr)->setModificationDate(date);
    files().copy(url("a"), url("b"));
    EXPECT_EQ(text("b"), contents);
    const auto stat = files().find(url("b"), nullptr);
    EXPECT_EQ(stat->modificationDate(), date);
    EXPECT_EQ(stat->attributes() & 0xFFFF, core::kFileReadOnly);
    EXPECT_EQ(error_of([&] { files().copy(url("a"), url("a")); }), Error::Sharing);
    EXPECT_EQ(text("a"), contents);
    put("empty", "");
    files().copy(url("empty"), url("b2"));
    EXPECT_EQ(text("b2"), "");
    const URL version(u"file:///proc/version", false); // has a size of 0
    files().copy(version, url("version"));
    EXPECT_GT(text("version").size(), 10u);
}

TEST_F(Files, AreMoved) {
    put("a", "x");
    put("b", "y");
    files().move(url("a"), url("b"));
    EXPECT_TRUE(text("b") == "x" && !exists("a"));
    files().move(url("b"), url("b"));
    EXPECT_EQ(text("b"), "x");
    try {
        files().move(url("no"), url("b"));
        ADD_FAILURE() << "what is not there was moved";
    } catch (const core::FileException& exception) {
        EXPECT_EQ(exception.error(), Error::FileNotFound);
        EXPECT_TRUE(exception.url() == url("no") && exception.secondURL() == url("b"));
    }
    if (std::filesystem::exists("/dev/shm")) { // another file system
        const URL other(u"file:///dev/shm/orb-filesystem-test", false);
        files().move(url("b"), other);
        EXPECT_FALSE(exists("b"));
        files().move(other, url("b"));
        EXPECT_EQ(text("b"), "x");
    }
}

TEST_F(Files, MoveAsWholeDirectories) {
    const core::InterfacePtr<core::IMoveDirectoryScheme> scheme(files().getScheme(u"file"));
    files().createDirectory(url("d"));
    put("d/a", "x");
    files().createDirectory(url("e"));
    put("e/b", "y");
    EXPECT_EQ(error_of([&] { scheme->moveDirectory(url("no"), url("e")); }), Error::DirNotFound);
    scheme->moveDirectory(url("d"), url("d"));
    scheme->moveDirectory(url("d"), url("e"));
    EXPECT_TRUE(text("e/a") == "x" && !exists("d") && !exists("e/b"));
}

TEST_F(Files, GoFromSchemeToScheme) {
    const auto memory = core::make_object<test::MemoryScheme>();
    files().registerScheme(memory);
    const std::string contents(40'000, 'x');
    put("a", contents);
    const core::Date date(2001, 2, 3, 4, 5, 6);
    files().find(url("a"), nullptr)->setModificationDate(date);
    const URL inMemory(u"mem://h/x", false);
    files().copy(url("a"), inMemory);
    test::MemoryEntry& entry = memory->entries[u"/x"];
    EXPECT_EQ(core::get_file_size(inMemory), contents.size());
    EXPECT_EQ(entry.modified, date);
    EXPECT_EQ(entry.created, files().find(url("a"), nullptr)->creationDate());
    entry.attributes = core::kFileReadOnly;
    files().move(inMemory, url("b"));
    EXPECT_EQ(text("b"), contents);
    EXPECT_EQ(core::get_file_date(url("b")), date);
    EXPECT_EQ(files().find(url("b"), nullptr)->attributes() & 0xFFFF, core::kFileReadOnly);
    EXPECT_FALSE(files().exists(inMemory));
    EXPECT_EQ(error_of([&] { files().copy(inMemory, url("c")); }), Error::FileNotFound);
    files().copy(url("b"), inMemory);
    EXPECT_EQ(error_of([&] { files().copy(inMemory, inMemory); }), Error::Sharing);
    EXPECT_EQ(core::get_file_size(inMemory), contents.size());
}

TEST_F(Files, AreShownUnderOtherNames) {
    put("a", "hello");
    const auto redirector = [] {
        return core::create_object<core::IRedirector>(core::CLSID_Redirector);
    };
    const auto first = redirector(), second = redirector();
    const core::InterfacePtr<core::IFileSharedEx> file(second);
    EXPECT_EQ(error_of([&] { file->flush(); }), Error::Failure);
    const auto inner = files().open(url("a"), 0x318);
    first->attach(inner.get(), url("b"));
    second->attach(core::InterfacePtr<core::IFile>(first).get(), url("c"));
    EXPECT_EQ(second->inner(), inner.get());
    EXPECT_EQ(file->url(), url("c"));
    EXPECT_EQ(read_all(file.get()), "hello");
    EXPECT_EQ(file->seek(1, core::kSeekFromStart), 1);
    EXPECT_EQ(file->setEOF(), 1);
    EXPECT_TRUE(file->tryLock(0, 1) && file->tryUnlock(0, 1));
    second->attach(core::create_memory_file(0).get(), url("d"));
    EXPECT_EQ(file->seek(0, core::kSeekFromEnd), 0);
    EXPECT_EQ(error_of([&] { file->lock(0, 1); }), Error::Failure);
}
