// Programs that share a file by its lock file; other programs are children of this one.
#include "FileSystemTest.h"

#include <core/concurrency/Thread.h>
#include <core/files/FileMode.h>

#include <csignal>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

using core::URL;
using test::Error;
using test::error_of;
using FilePtr = core::InterfacePtr<core::IFile>;

namespace {

// A lock on one byte, as another program sees it.
bool is_locked(const std::string& path, off_t offset) {
    const pid_t child = ::fork();
    if (child == 0) {
        const int fd = ::open(path.c_str(), O_RDWR);
        struct flock lock = {F_WRLCK, SEEK_SET, offset, 1, 0};
        ::_exit(::fcntl(fd, F_GETLK, &lock) != 0 ? 2 : lock.l_type != F_UNLCK);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WEXITSTATUS(status) == 1;
}

class LockFiles : public test::FileSystemTest {
protected:
    LockFiles() { put("a", "hello"); }

    FilePtr open(int exMode) { return files().openWithLockFile(url("a"), exMode); }
    std::optional<Error> opening(int exMode) {
        return error_of([&] { files().closeWithLockFile(open(exMode).get()); });
    }
    // The locked bytes of state and first slots: "11000 ...".
    std::string locks(unsigned count) const {
        std::string text;
        for (unsigned offset = 1; offset != 1 + count; ++offset)
            text += is_locked(path("a.cfl"), offset) ? '1' : '0';
        return text;
    }
};

// Another program that has a file open; it ends when it is told to, or is killed.
class Program {
public:
    template <class Body> explicit Program(const Body& body) {
        EXPECT_EQ(::pipe(ready_), 0);
        EXPECT_EQ(::pipe(end_), 0);
        child_ = ::fork();
        if (child_ == 0) {
            ::close(end_[1]);
            char byte = 'x';
            try {
                const auto kept = body();
                static_cast<void>(::write(ready_[1], &byte, 1) + ::read(end_[0], &byte, 1));
                ::_exit(0);
            } catch (...) {
                byte = 'e';
                ::_exit(::write(ready_[1], &byte, 1) == 1 ? 1 : 2);
            }
        }
        char byte = 0;
        succeeded_ = ::read(ready_[0], &byte, 1) == 1 && byte == 'x';
    }
    ~Program() {
        ::kill(child_, SIGKILL);
        ::waitpid(child_, nullptr, 0);
        for (const int fd : {ready_[0], ready_[1], end_[0], end_[1]}) ::close(fd);
    }
    bool succeeded() const { return succeeded_; }

private:
    pid_t child_;
    int ready_[2], end_[2];
    bool succeeded_ = false;
};

} // namespace

TEST_F(LockFiles, HoldTheSharingInForceAndASlotForEach) {
    const FilePtr first = open(core::kFileExReadWriteShared);
    EXPECT_EQ(locks(15), "111111111100000");
    const FilePtr second = open(core::kFileExReadWriteShared);
    EXPECT_EQ(locks(15), "111111111111111");
    EXPECT_FALSE(is_locked(path("a.cfl"), 0));
    files().closeWithLockFile(first.get());
    EXPECT_EQ(locks(15), "111110000011111");
    files().closeWithLockFile(first.get()); // is not known any more
    files().closeWithLockFile(second.get());
    EXPECT_EQ(locks(15), "000000000000000");
    EXPECT_EQ(text("a.cfl"), "");
    EXPECT_EQ(files().lockFileName(u"/x/a"), u"/x/a.cfl");
}

TEST_F(LockFiles, LetThoseJoinWhoseSharingFits) {
    const struct {
        int holder, joiner;
        bool fits;
    } rows[] = {
        {core::kFileExReadShared, core::kFileExReadShared, true},
        {core::kFileExReadShared, core::kFileExRead, false},
        {core::kFileExReadShared, core::kFileExReadWriteShared, false},
        {core::kFileExReadWriteShared, core::kFileExReadShared, false},
        {core::kFileExReadWriteShared, core::kFileExReadWriteShared, true},
        {core::kFileExRead, core::kFileExReadShared, false},
        {core::kFileExWrite, core::kFileExWrite, false},
    };
    for (const auto& row : rows) {
        const FilePtr holder = open(row.holder);
        EXPECT_EQ(opening(row.joiner), row.fits ? std::nullopt : std::optional(Error::Sharing))
            << std::hex << row.holder << " and " << row.joiner;
        files().closeWithLockFile(holder.get());
    }
    EXPECT_EQ(opening(core::kFileExReadShared), std::nullopt);
    EXPECT_EQ(opening(0x70000), Error::Failure);
    EXPECT_EQ(text("a"), "hello");
    EXPECT_EQ(opening(core::kFileExReadWrite | core::kFileExTruncate), std::nullopt);
    EXPECT_EQ(text("a"), "");
}

TEST_F(LockFiles, AreNotPossibleEverywhere) {
    test::Services::lockFilesPossible = false;
    EXPECT_FALSE(files().lockFilesPossible(url("a")));
    EXPECT_TRUE(files().lockFilesPossible(URL(u"sfile:///x", false)));
    EXPECT_EQ(opening(core::kFileExReadShared), Error::Access);
}

TEST_F(LockFiles, HaveRoomFor1024) {
    std::vector<FilePtr> open_files;
    for (int i = 0; i != 1024; ++i) open_files.push_back(open(core::kFileExReadShared));
    EXPECT_EQ(opening(core::kFileExReadShared), Error::Sharing);
    files().closeWithLockFile(open_files[500].get());
    EXPECT_EQ(opening(core::kFileExReadShared), std::nullopt);
    for (const FilePtr& file : open_files) files().closeWithLockFile(file.get());
    EXPECT_EQ(locks(10), "0000000000");
}

TEST_F(LockFiles, AreSharedWithOtherPrograms) {
    {
        const Program other([&] { return open(core::kFileExReadShared); });
        ASSERT_TRUE(other.succeeded());
        EXPECT_EQ(opening(core::kFileExReadWriteShared), Error::Sharing);
        const FilePtr joined = open(core::kFileExReadShared);
        EXPECT_EQ(locks(15), "110101101011010");
        EXPECT_FALSE(files().removeWithLockFile(url("a")));
        files().closeWithLockFile(joined.get());
    } // killed: its locks are gone, the file is left
    EXPECT_TRUE(exists("a.cfl"));
    EXPECT_EQ(opening(core::kFileExReadWrite), std::nullopt);
}

// Whoever set the state has ended, another still has the file open.
TEST_F(LockFiles, FindTheStateAnewFromTheSlots) {
    auto first = std::make_unique<Program>([&] { return open(core::kFileExReadShared); });
    const Program second([&] { return open(core::kFileExReadShared); });
    ASSERT_TRUE(first->succeeded() && second.succeeded());
    first.reset();
    EXPECT_EQ(locks(15), "000000000011010");
    EXPECT_EQ(opening(core::kFileExReadWriteShared), Error::Sharing);
    const FilePtr joined = open(core::kFileExReadShared);
    EXPECT_EQ(locks(15), "110101101011010");
    files().closeWithLockFile(joined.get());
}

TEST_F(LockFiles, AreRemovedWithTheFileOnlyWhenNobodyHasIt) {
    const FilePtr file = open(core::kFileExReadShared);
    EXPECT_FALSE(files().removeWithLockFile(url("a")));
    files().closeWithLockFile(file.get());
    EXPECT_EQ(error_of([&] { files().removeWithLockFile(url("a")); }), Error::Sharing);
}

TEST_F(LockFiles, RemoveTheFileOfNobody) {
    EXPECT_TRUE(files().removeWithLockFile(url("a")));
    EXPECT_FALSE(exists("a"));
    EXPECT_EQ(error_of([&] { files().removeWithLockFile(url("a")); }), Error::FileNotFound);
    EXPECT_EQ(opening(core::kFileExReadShared), Error::FileNotFound);
    EXPECT_EQ(locks(10), "0000000000");
}

TEST_F(LockFiles, ServeManyThreads) {
    std::vector<core::InterfacePtr<core::Thread>> threads;
    for (int i = 0; i != 4; ++i) {
        threads.push_back(core::create_thread([&] {
            for (int turn = 0; turn != 20; ++turn)
                EXPECT_EQ(opening(core::kFileExReadShared), std::nullopt);
        }));
        threads.back()->start();
    }
    for (const auto& thread : threads) thread->join();
    EXPECT_EQ(locks(10), "0000000000");
}
