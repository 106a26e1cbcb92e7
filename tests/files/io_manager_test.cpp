#include "FilesTest.h"

#include <atomic>
#include <thread>
#include <vector>

namespace {

using namespace test;

constexpr int kRead = core::kFileRead, kWrite = core::kFileWrite, kBoth = kRead | kWrite;
constexpr int kShareRead = core::kFileShareRead, kShareWrite = core::kFileShareWrite,
              kShareAll = core::kFileShare;

class IOManager : public FilesTest {
protected:
    int open(const fs::path& path, int flags) { return manager_.open(wide(path), flags); }
    Error error_of_open(const fs::path& path, int flags) {
        return error_of([&] { manager_.close(open(path, flags)); });
    }

    core::IFileIOManager& manager_ = core::file_io_manager();
};
using Sharing = IOManager;
using RegionLocks = IOManager;
using Opening = IOManager;

std::size_t open_descriptors() {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()));
}

TEST_F(Sharing, EachSideMustAllowTheOther) {
    const struct {
        int first, second;
        bool together;
    } rows[] = {
        {kRead, kRead, false},
        {kRead, kRead | kShareAll, false},
        {kRead | kShareAll, kRead, false},
        {264, 264, true},
        {792, 792, true},
        {792, 264, false}, // the second forbids what the first does
        {264, 792, false},
        {kRead | kShareRead, kWrite | core::kFileKeep | kShareAll, false},
        {kRead | kShareWrite, kWrite | core::kFileKeep | kShareRead, true},
        {kRead | kShareWrite, kWrite | core::kFileKeep | kShareWrite, false},
        {kWrite | core::kFileKeep | kShareWrite, kWrite | core::kFileKeep | kShareWrite, true},
        {kBoth | kShareAll, kRead | kShareWrite, false},
        {kBoth | kShareRead, kRead | kShareAll, true},
    };
    const fs::path path = file("a", "contents");
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.first << " then " << row.second);
        const int first = open(path, row.first);
        EXPECT_EQ(error_of_open(path, row.second), row.together ? Error::None : Error::Sharing);
        manager_.close(first);
        EXPECT_EQ(error_of_open(path, row.second), Error::None);
    }
    EXPECT_EQ(contents(path), "contents");
}

TEST_F(Sharing, HoldsBetweenProcesses) {
    const struct {
        int here, there;
        bool together;
    } rows[] = {
        {kBoth, kRead | kShareAll, false},
        {792, kBoth, false},
        {792, 792, true},
        {264, 264, true},
        {kBoth, kBoth, false},
    };
    const fs::path path = file("a", "contents");
    Peer peer;
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.here << " and " << row.there);
        const int first = open(path, row.here);
        const int second = peer.open(path, row.there);
        EXPECT_EQ(second >= 0, row.together);
        if (!row.together) {
            EXPECT_EQ(second, -static_cast<int>(Error::Sharing));
        }
        peer.close(second);
        manager_.close(first);

        const int afterwards = peer.open(path, row.there);
        EXPECT_GE(afterwards, 0);
        peer.close(afterwards);
    }
}

TEST_F(Sharing, OutlivesTheClosingOfAnotherHandle) {
    const fs::path path = file("a", "contents");
    Peer peer;
    const int stays = open(path, 792);
    manager_.close(open(path, 792));
    EXPECT_EQ(peer.open(path, kBoth), -static_cast<int>(Error::Sharing));
    manager_.close(stays);
    EXPECT_GE(peer.open(path, kBoth), 0);
}

TEST_F(Sharing, AConflictLeavesTheContents) {
    const fs::path path = file("a", "contents");
    Peer peer;
    const int there = peer.open(path, kBoth);
    ASSERT_GE(there, 0);
    EXPECT_EQ(error_of_open(path, core::kFileOpenForWrite), Error::Sharing);
    EXPECT_EQ(contents(path), "contents");
    peer.close(there);
    EXPECT_EQ(error_of_open(path, core::kFileOpenForWrite), Error::None);
    EXPECT_EQ(contents(path), "");
}

TEST_F(RegionLocks, ConflictBetweenHandlesAndBetweenProcesses) {
    const fs::path path = file("a", "contents");
    Peer peer;
    const int a = open(path, 792), b = open(path, 792), there = peer.open(path, 792);
    const struct {
        unsigned long long offset;
        unsigned length;
        bool sharedFits, exclusiveFits; // beside an exclusive lock on 10..19, shared on 30..39
    } rows[] = {
        {0, 10, true, true},         {0, 11, false, false}, {19, 1, false, false},
        {20, 10, true, true},        {25, 10, true, false}, {5, 100, false, false},
        {1ull << 40, 5, true, true},
    };
    ASSERT_TRUE(manager_.lock(a, 10, 10));
    ASSERT_TRUE(manager_.lockTyped(a, 30, 10, core::kSharedFileLock));
    for (const auto& row : rows) {
        SCOPED_TRACE(row.offset);
        for (const int type : {core::kSharedFileLock, core::kExclusiveFileLock}) {
            const bool fits = type ? row.exclusiveFits : row.sharedFits;
            errno = 0;
            EXPECT_EQ(manager_.lockTyped(b, row.offset, row.length, type), fits);
            EXPECT_EQ(errno, fits ? 0 : EACCES);
            EXPECT_EQ(manager_.tryUnlock(b, row.offset, row.length), fits);
            EXPECT_EQ(peer.lock(there, row.offset, row.length, type), fits);
            peer.unlock(there, row.offset, row.length);
        }
    }
    EXPECT_FALSE(manager_.tryUnlock(b, 10, 10)); // another's
    EXPECT_FALSE(manager_.tryUnlock(a, 10, 9));  // another range
    EXPECT_TRUE(manager_.tryUnlock(a, 10, 10));
    EXPECT_TRUE(peer.lock(there, 10, 10));
    errno = 0;
    EXPECT_FALSE(manager_.lock(a, 10, 10));
    EXPECT_TRUE(errno == EACCES || errno == EAGAIN);
    manager_.close(a);
    manager_.close(b);
}

TEST_F(RegionLocks, OfOneHandleMayOverlapWhileTheyAreShared) {
    const int handle = open(file("a", ""), 792);
    EXPECT_TRUE(manager_.lockTyped(handle, 0, 10, core::kSharedFileLock));
    EXPECT_TRUE(manager_.lockTyped(handle, 5, 10, core::kSharedFileLock));
    EXPECT_FALSE(manager_.lock(handle, 0, 10));
    EXPECT_EQ(errno, EACCES);
    manager_.close(handle);
}

TEST_F(RegionLocks, OutliveOtherHandles) {
    const fs::path path = file("a", "contents");
    Peer peer;
    const int there = peer.open(path, 792);
    const int a = open(path, 792), b = open(path, 792);
    ASSERT_TRUE(manager_.lock(a, 0, 4));
    manager_.close(open(path, 792));
    EXPECT_FALSE(peer.lock(there, 0, 4));
    ASSERT_TRUE(manager_.lock(b, 10, 4));
    manager_.close(a); // its own lock goes at once
    EXPECT_TRUE(peer.lock(there, 0, 4));
    EXPECT_FALSE(peer.lock(there, 10, 4));
    manager_.close(b);
    EXPECT_TRUE(peer.lock(there, 10, 4));
}

TEST_F(RegionLocks, OutliveAFailedOpening) {
    const fs::path path = file("a", "contents");
    Peer peer, other;
    // Who only writes cannot hold the lock that forbids others to open.
    const int writer = open(path, kWrite | core::kFileKeep | kShareAll);
    ASSERT_TRUE(manager_.lock(writer, 0, 4));
    const int exclusive = peer.open(path, kBoth);
    ASSERT_GE(exclusive, 0);
    EXPECT_EQ(error_of_open(path, 792), Error::Sharing);
    EXPECT_FALSE(peer.lock(exclusive, 0, 4));
    manager_.close(writer);
    EXPECT_TRUE(peer.lock(exclusive, 0, 4));
}

TEST_F(RegionLocks, StayWhereAnotherLockCoversTheSameBytes) {
    const fs::path path = file("a", "contents");
    Peer peer;
    const int there = peer.open(path, 792);
    const int a = open(path, 792), b = open(path, 792);
    ASSERT_TRUE(manager_.lockTyped(a, 0, 100, core::kSharedFileLock));
    ASSERT_TRUE(manager_.lockTyped(b, 40, 20, core::kSharedFileLock));
    manager_.unlock(a, 0, 100);
    EXPECT_TRUE(peer.lock(there, 0, 40));
    EXPECT_TRUE(peer.lock(there, 60, 40));
    EXPECT_FALSE(peer.lock(there, 59, 1));
    EXPECT_FALSE(peer.lock(there, 40, 1));
    manager_.close(a);
    manager_.close(b);
    EXPECT_TRUE(peer.lock(there, 40, 20));
}

TEST_F(RegionLocks, RefuseRangesThatAreNone) {
    constexpr unsigned long long kLast = 0x7FFFFFFFFFFFFFFF;
    const struct {
        unsigned long long offset;
        unsigned length;
        int error;
    } rows
        [] =
            {
                {0, 0, EINVAL},         {kLast, 0, 0},          {kLast - 1, 1, EINVAL},
                {kLast - 3, 1, 0},      {kLast - 3, 2, EINVAL}, {0, 0xFFFFFFFF, 0},
                {kLast + 1 + 50, 5, 0}, // the top bit does not count
            };
    const int handle = open(file("a", ""), 792);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.offset);
        errno = 0;
        EXPECT_EQ(manager_.lock(handle, row.offset, row.length), row.error == 0);
        EXPECT_EQ(errno, row.error);
        EXPECT_EQ(manager_.tryUnlock(handle, row.offset, row.length), row.error == 0);
    }
    manager_.close(handle);
    EXPECT_FALSE(manager_.lock(handle, 0, 1));
    EXPECT_EQ(errno, EBADF);
}

TEST_F(Opening, TellsWhatIsWrong) {
    const fs::path path = file("a", "contents");
    const struct {
        const char* what;
        fs::path path;
        int flags;
        Error error;
    } rows[] = {
        {"missing", directory_ / "none", kRead, Error::FileNotFound},
        {"missing, not to be created", directory_ / "none", kBoth, Error::FileNotFound},
        {"in a missing directory", directory_ / "none" / "a", core::kFileOpenForWrite,
         Error::FileNotFound},
        {"a file for a directory", path / "a", kRead, Error::DirNotFound},
        {"a directory to be written", directory_, core::kFileOpenForWrite, Error::Access},
        {"no access asked for", path, kShareAll, Error::Failure},
        {"too long a name", directory_ / std::string(300, 'x'), kRead, Error::BadPath},
        {"a zero in the name", fs::path(std::string("/tmp/a\0b", 8)), kRead, Error::BadPath},
    };
    const std::size_t before = open_descriptors();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(error_of_open(row.path, row.flags), row.error);
    }
    EXPECT_EQ(open_descriptors(), before);
    try {
        open(directory_ / "none", kRead);
        FAIL();
    } catch (const core::FileException& exception) {
        EXPECT_EQ(core::file_path(exception.url()), wide(directory_ / "none"));
        EXPECT_NE(exception.description().find(u"fio_manager_exception type: 1, at "),
                  exception.description().npos);
    }
}

TEST_F(Opening, CreatesKeepsAndEmpties) {
    const struct {
        int flags;
        const char* contents;
        bool creates;
    } rows[] = {
        {kRead, "contents", false},
        {kBoth, "contents", false},
        {kWrite, "", true},
        {kWrite | core::kFileKeep, "contents", true},
        {core::kFileOpenForWrite, "", true},
        {kBoth | core::kFileTruncate, "", true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.flags);
        const fs::path path = file("a", "contents");
        EXPECT_EQ(error_of_open(path, row.flags), Error::None);
        EXPECT_EQ(contents(path), row.contents);
        fs::remove(path);
        EXPECT_EQ(error_of_open(path, row.flags), row.creates ? Error::None : Error::FileNotFound);
        EXPECT_EQ(fs::exists(path), row.creates);
        if (row.creates) {
            EXPECT_EQ(fs::status(path).permissions() & ~fs::perms(0660), fs::perms::none);
        }
    }
}

TEST_F(Opening, KnowsFilesByInodeAndReusesHandles) {
    const fs::path path = file("a", "old");
    fs::create_hard_link(path, directory_ / "b");
    const int old = open(path, kBoth);
    EXPECT_TRUE(manager_.isOpen(wide(directory_ / "b")));
    EXPECT_EQ(error_of_open(directory_ / "b", kBoth), Error::Sharing);

    fs::rename(file("c", "new"), path);
    EXPECT_FALSE(manager_.isOpen(wide(path)));
    const int replaced = open(path, kBoth);
    EXPECT_TRUE(manager_.isOpen(wide(path)));

    manager_.close(old);
    EXPECT_EQ(manager_.descriptor(old), -1);
    EXPECT_EQ(open(directory_ / "b", kBoth), old);
    manager_.close(old);
    manager_.close(replaced);
    manager_.close(replaced);
    manager_.close(-1);
    EXPECT_FALSE(manager_.isOpen(wide(path)));
    EXPECT_EQ(manager_.defaultPermissions(), 432);
}

TEST_F(Opening, DoesNotWaitForTheOtherEndOfAPipe) {
    ASSERT_EQ(::mkfifo((directory_ / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(error_of_open(directory_ / "pipe", kRead), Error::None);
}

TEST_F(RegionLocks, KeepThreadsApart) {
    const fs::path path = file("a", "contents");
    const std::size_t before = open_descriptors();
    std::atomic<int> inside = 0, entered = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&, i] {
            for (int round = 0; round < 200; ++round) {
                const int handle = open(path, 792);
                if (manager_.lock(handle, 7, 1)) {
                    EXPECT_EQ(inside.fetch_add(1), 0);
                    ++entered;
                    inside.fetch_sub(1);
                    if ((round + i) % 2) manager_.unlock(handle, 7, 1);
                }
                EXPECT_GE(manager_.descriptor(handle), 0);
                manager_.close(handle);
            }
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_GT(entered, 0);
    EXPECT_EQ(open_descriptors(), before);
}

} // namespace
