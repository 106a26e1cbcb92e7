// What holds for every lock: who keeps whom out, and that no update is lost.
#include "actors.h"

#include <core/component/InterfacePtr.h>
#include <core/concurrency/IRWMutex.h>
#include <core/concurrency/LockGuards.h>
#include <core/concurrency/Mutex.h>
#include <core/concurrency/RWMutex.h>
#include <core/concurrency/RWRMutex.h>
#include <core/concurrency/Semaphore.h>

#include <gtest/gtest.h>

#include <mutex>
#include <shared_mutex>
#include <type_traits>
#include <vector>

namespace {

using core::ReaderLock;
using core::WriterLock;
using test::Actor;

// Static locks are ready before any code runs.
constinit core::Mutex static_mutex;

TEST(Mutex, NeedsAsManyUnlocksAsLocks) {
    Actor other;
    const auto freeForOther = [&] {
        return other.does([] {
            const std::unique_lock lock(static_mutex, std::try_to_lock);
            return lock.owns_lock();
        });
    };
    static_mutex.lock();
    core::IMutex& face = static_mutex;
    face.lock();
    EXPECT_TRUE(static_mutex.try_lock());
    for (int i = 0; i != 3; ++i) {
        EXPECT_FALSE(freeForOther());
        face.unlock();
    }
    EXPECT_TRUE(freeForOther());
}

template <class Lock> class SharedLocks : public testing::Test {
protected:
    bool other_may_write() {
        return other.does([&] { return std::unique_lock(lock, std::try_to_lock).owns_lock(); });
    }
    bool other_may_read() {
        return other.does([&] { return std::shared_lock(lock, std::try_to_lock).owns_lock(); });
    }

    Lock lock;
    Actor other;
};
using SharedLockTypes = testing::Types<core::RWMutex, core::SimpleRWMutex, core::RWRMutex>;
TYPED_TEST_SUITE(SharedLocks, SharedLockTypes);

TYPED_TEST(SharedLocks, WritersKeepAllOutAndReadersWriters) {
    {
        const WriterLock writer(this->lock);
        EXPECT_FALSE(this->other_may_write());
        EXPECT_FALSE(this->other_may_read());
    }
    {
        const ReaderLock reader(this->lock);
        EXPECT_FALSE(this->other_may_write());
        EXPECT_TRUE(this->other_may_read());
        const bool third = Actor().does([&] {
            const ReaderLock second(this->lock);
            return this->other_may_read() && !this->other_may_write();
        });
        EXPECT_TRUE(third);
    }
    EXPECT_TRUE(this->other_may_write());
}

TYPED_TEST(SharedLocks, WaitersEnterOnceTheHolderHasLeft) {
    this->lock.lock();
    auto reading = this->other.starts([&] { const ReaderLock reader(this->lock); });
    EXPECT_TRUE(test::waits(reading));
    this->lock.unlock();
    reading.get();

    this->lock.lock_shared();
    auto writing = this->other.starts([&] { const WriterLock writer(this->lock); });
    EXPECT_TRUE(test::waits(writing));
    this->lock.unlock_shared();
    writing.get();
}

// Writers keep two numbers equal, which nobody else ever sees apart.
TYPED_TEST(SharedLocks, NoUpdateIsLostAndNoHalfSeen) {
    constexpr int kThreads = 4, kRounds = 3'000;
    int first = 0, second = 0;
    std::vector<std::thread> threads;
    for (int t = 0; t != kThreads; ++t)
        threads.emplace_back([&, t] {
            for (int i = 0; i != kRounds; ++i) {
                if ((i + t) % 4 == 0) {
                    const WriterLock writer(this->lock);
                    ++first;
                    ++second;
                } else {
                    const ReaderLock reader(this->lock);
                    ASSERT_EQ(first, second);
                }
            }
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(first, kThreads * kRounds / 4);
}

TEST(Mutex, NoUpdateIsLost) {
    core::Mutex mutex;
    int count = 0;
    std::vector<std::thread> threads;
    for (int t = 0; t != 4; ++t)
        threads.emplace_back([&] {
            for (int i = 0; i != 5'000; ++i) {
                const std::lock_guard once(mutex);
                const std::lock_guard twice(mutex);
                ++count;
            }
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(count, 20'000);
}

} // namespace
