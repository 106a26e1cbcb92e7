// What is particular to each of the reader-writer locks.
#include "actors.h"

#include <core/concurrency/IRWMutex.h>
#include <core/concurrency/LockGuards.h>
#include <core/concurrency/RWMutex.h>
#include <core/concurrency/RWRMutex.h>

#include <gtest/gtest.h>

#include <memory>
#include <mutex>
#include <shared_mutex>
#include <system_error>
#include <vector>

namespace {

using core::ReaderLock;
using core::WriterLock;
using std::chrono::milliseconds;
using std::chrono::steady_clock;
using test::Actor;

template <class Lock> bool other_may_write(Actor& other, Lock& lock) {
    return other.does([&] { return std::unique_lock(lock, std::try_to_lock).owns_lock(); });
}
template <class Lock> bool other_may_read(Actor& other, Lock& lock) {
    return other.does([&] { return std::shared_lock(lock, std::try_to_lock).owns_lock(); });
}

// ---- SimpleRWMutex

TEST(SimpleRWMutex, AWriterEntersAgainAndReads) {
    core::SimpleRWMutex lock;
    Actor other;
    lock.acquireWriterLock();
    lock.acquireReaderLock();
    EXPECT_TRUE(lock.try_lock_shared());
    lock.releaseReaderLock();
    lock.releaseReaderLock();
    lock.releaseReaderLock(); // without effect, as often as one likes
    lock.acquireWriterLock();
    EXPECT_TRUE(lock.try_lock());
    for (int i = 0; i != 3; ++i) {
        EXPECT_FALSE(other_may_read(other, lock));
        lock.releaseWriterLock();
    }
    EXPECT_TRUE(other_may_write(other, lock));
}

TEST(SimpleRWMutex, TheZeroFormsLockForThemselves) {
    core::SimpleRWMutex lock;
    Actor other;
    lock.acquireWriterLock0();
    EXPECT_FALSE(other_may_read(other, lock));
    lock.releaseWriterLock0();
    lock.acquireReaderLock0();
    EXPECT_FALSE(other_may_write(other, lock));
    EXPECT_TRUE(other_may_read(other, lock));
    lock.releaseReaderLock0();
    EXPECT_TRUE(other_may_write(other, lock));
}

TEST(SimpleRWMutex, ATryThatFailsLeavesNothingBehind) {
    core::SimpleRWMutex lock;
    Actor reader, other;
    reader.does([&] { lock.acquireReaderLock(); });
    EXPECT_FALSE(lock.try_lock());
    EXPECT_TRUE(other_may_read(other, lock)) << "the gate is open";
    reader.does([&] { lock.releaseReaderLock(); });
    EXPECT_TRUE(other_may_write(other, lock));
}

// ---- RWMutex

TEST(RWMutex, AReaderIsCountedWhileItWaits) {
    core::RWMutex lock;
    Actor reader;
    lock.lock();
    auto reading = reader.starts([&] { lock.lockShared(); });
    ASSERT_TRUE(test::waits(reading));
    lock.unlock();
    EXPECT_FALSE(lock.try_lock()) << "the reader was there first";
    EXPECT_TRUE(lock.try_lock_shared());
    lock.unlockShared();
    reading.get();
    lock.unlockShared();
    EXPECT_TRUE(lock.try_lock());
    lock.unlock();
}

// ---- ConditionVariable

TEST(ConditionVariable, LetsTheOthersInMeanwhile) {
    for (const bool shared : {false, true}) {
        SCOPED_TRACE(shared ? "held shared" : "held by a writer");
        core::RWMutex lock;
        core::ConditionVariable condition(lock);
        bool ready = false;
        Actor waiter;
        auto waiting = waiter.starts([&] {
            shared ? lock.lockShared() : lock.lock();
            unsigned int backoff = 0;
            while (!ready) condition.wait(shared, backoff, 0);
            const bool readers = lock.try_lock_shared();
            const bool writers = lock.try_lock();
            if (readers) lock.unlockShared();
            shared ? lock.unlockShared() : lock.unlock();
            return readers == shared && !writers; // the mode of before
        });
        EXPECT_TRUE(test::waits(waiting));
        {
            const WriterLock writer(lock);
            ready = true;
        }
        condition.notifyAll();
        EXPECT_TRUE(waiting.get());
    }
}

TEST(ConditionVariable, PausesGrowWithTheSteps) {
    const struct {
        unsigned int step;
        milliseconds atLeast;
    } rows[] = {{0, milliseconds(0)},   {9, milliseconds(0)},         {10, milliseconds(0)},
                {23, milliseconds(0)},  {24, milliseconds(1)},        {25, milliseconds(1)},
                {26, milliseconds(10)}, {1'000'000, milliseconds(10)}};
    core::RWMutex lock;
    core::ConditionVariable condition(lock);
    const WriterLock writer(lock);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.step);
        unsigned int backoff = row.step;
        const auto begin = steady_clock::now();
        condition.wait(false, backoff, 0);
        EXPECT_GE(steady_clock::now() - begin, row.atLeast);
        EXPECT_EQ(backoff, row.step + 1);
    }
    // The twenty steps that only spin are over long before the first that sleeps would be.
    unsigned int backoff = 0;
    auto shortest = steady_clock::duration::max();
    for (int i = 0; i != 5; ++i) {
        const auto begin = steady_clock::now();
        for (backoff = 0; backoff != 20;) condition.wait(false, backoff, 0);
        shortest = std::min(shortest, steady_clock::now() - begin);
    }
    EXPECT_LT(shortest, milliseconds(1));
}

// ---- RWRMutex

TEST(RWRMutex, AReaderEntersAgainPastAWaitingWriter) {
    core::RWRMutex lock;
    Actor a, b, c;
    a.does([&] { lock.lockShared(); });
    auto writing = b.starts([&] { const WriterLock writer(lock); });
    ASSERT_TRUE(test::waits(writing));
    a.does([&] { lock.lockShared(); });
    EXPECT_FALSE(other_may_read(c, lock));
    auto reading = c.starts([&] { const ReaderLock reader(lock); });
    EXPECT_TRUE(test::waits(reading)) << "new readers stand back";

    a.does([&] { lock.unlockShared(); });
    EXPECT_TRUE(test::waits(writing)) << "one read lock is left";
    a.does([&] { lock.unlockShared(); });
    writing.get();
    reading.get();
}

TEST(RWRMutex, TheOnlyReaderMayBecomeTheWriter) {
    core::RWRMutex lock;
    Actor other;
    lock.lockShared();
    lock.lockShared();
    other.does([&] { lock.lockShared(); });
    EXPECT_FALSE(lock.try_lock()) << "another one reads";
    other.does([&] { lock.unlockShared(); });
    lock.lock();
    EXPECT_FALSE(other_may_read(other, lock));
    lock.unlock();
    EXPECT_TRUE(other_may_read(other, lock));
    EXPECT_FALSE(other_may_write(other, lock));
    lock.unlockShared();
    EXPECT_FALSE(other_may_write(other, lock));
    lock.unlockShared();
    EXPECT_TRUE(other_may_write(other, lock));
}

TEST(RWRMutex, AWriterEntersAgainOnBothSides) {
    core::RWRMutex lock;
    core::IMutex& face = lock; // the writer side
    Actor other;
    face.lock();
    lock.lockShared();
    lock.lock(); // all readers are its own
    lock.unlock();
    EXPECT_FALSE(other_may_read(other, lock));
    lock.unlockShared();
    lock.lock();
    face.unlock();
    EXPECT_FALSE(other_may_read(other, lock));
    face.unlock();
    EXPECT_TRUE(other_may_write(other, lock));
}

TEST(RWRMutex, AWriterThatKeepsReadingStaysAReader) {
    core::RWRMutex lock;
    Actor other;
    lock.lock();
    lock.lockShared();
    lock.unlock();
    EXPECT_TRUE(other_may_read(other, lock));
    EXPECT_FALSE(other_may_write(other, lock));
    lock.unlockShared();
    EXPECT_TRUE(other_may_write(other, lock));
}

// The counts of a lock that is gone must not be found by the next one that gets its key.
TEST(RWRMutex, KeysAreGivenBackAndStartAtZero) {
    Actor other;
    for (int i = 0; i != 3'000; ++i) {
        core::RWRMutex lock;
        lock.lockShared();
        ASSERT_FALSE(other.does([&] { return lock.try_lock(); })) << i;
    }
}

TEST(RWRMutex, WithoutAKeyThereIsNoLock) {
    std::vector<std::unique_ptr<core::RWRMutex>> locks;
    EXPECT_THROW(for (int i = 0; i != PTHREAD_KEYS_MAX + 1; ++i)
                     locks.push_back(std::make_unique<core::RWRMutex>()),
                 std::system_error);
    for (auto& lock : locks) {
        lock->lockShared();
        lock->unlockShared();
    }
    locks.clear();
    core::RWRMutex again;
    EXPECT_TRUE(again.try_lock());
    again.unlock();
}

} // namespace
