// Who hears of what: a suspend monitor of waits, a mutex watcher of every operation.
#include "actors.h"

#include <core/concurrency/IRWMutex.h>
#include <core/concurrency/Mutex.h>
#include <core/concurrency/RWMutex.h>
#include <core/concurrency/RWRMutex.h>
#include <core/concurrency/Semaphore.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace {

using std::chrono::milliseconds;
using test::Actor;
using test::CountingMonitor;

struct Side {
    std::function<void()> lock, unlock;
};

// Locks `wanted` with nobody in the way, then while another thread holds `held`.
void expect_one_report(const CountingMonitor& monitor, const Side& held, const Side& wanted) {
    wanted.lock();
    wanted.unlock();
    EXPECT_EQ(monitor.entered, 0);

    Actor holder, waiter;
    holder.does([&] { held.lock(); });
    auto waiting = waiter.starts([&] {
        wanted.lock();
        wanted.unlock();
    });
    ASSERT_TRUE(test::waits(waiting));
    EXPECT_EQ(monitor.entered, 1);
    EXPECT_EQ(monitor.left, 0);
    holder.does([&] { held.unlock(); });
    waiting.get();
    EXPECT_EQ(monitor.entered, 1);
    EXPECT_EQ(monitor.left, 1);
}

template <class Lock> Side writer_of(Lock& lock) {
    return {[&] { lock.lock(); }, [&] { lock.unlock(); }};
}
template <class Lock> Side reader_of(Lock& lock) {
    return {[&] { lock.lock_shared(); }, [&] { lock.unlock_shared(); }};
}

TEST(SuspendMonitor, HearsOfAContendedMutexOnly) {
    CountingMonitor monitor;
    core::Mutex mutex(&monitor);
    expect_one_report(monitor, writer_of(mutex), writer_of(mutex));
}

template <class Lock> class ReportingLocks : public testing::Test {};
using SharedLockTypes = testing::Types<core::RWMutex, core::SimpleRWMutex, core::RWRMutex>;
TYPED_TEST_SUITE(ReportingLocks, SharedLockTypes);

TYPED_TEST(ReportingLocks, ReportAWaitOnce) {
    const struct {
        const char* what;
        std::function<Side(TypeParam&)> held, wanted;
    } rows[] = {
        {"writer behind writer", writer_of<TypeParam>, writer_of<TypeParam>},
        {"writer behind reader", reader_of<TypeParam>, writer_of<TypeParam>},
        {"reader behind writer", writer_of<TypeParam>, reader_of<TypeParam>},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        CountingMonitor monitor;
        TypeParam lock(&monitor);
        expect_one_report(monitor, row.held(lock), row.wanted(lock));
    }
}

TEST(SuspendMonitor, OfAThreadHearsOfItsSemaphores) {
    CountingMonitor monitor;
    core::Semaphore semaphore;
    Actor waiter;
    waiter.does([&] { kiln::set_thread_suspend_monitor(&monitor); });
    semaphore.raise();
    waiter.does([&] {
        semaphore.wait();
        semaphore.wait(0);
    });
    EXPECT_EQ(monitor.entered, 0);

    auto waiting = waiter.starts([&] { semaphore.wait(); });
    ASSERT_TRUE(test::waits(waiting));
    EXPECT_EQ(monitor.entered, 1);
    EXPECT_EQ(monitor.left, 0);
    semaphore.raise();
    waiting.get();
    EXPECT_EQ(monitor.left, 1);
    waiter.does([&] { semaphore.wait(1); });
    EXPECT_EQ(monitor.entered, 2);
    EXPECT_EQ(monitor.left, 2);
}

// Notes the operations on one thread.
class Watcher final : public kiln::IMutexWatcher {
public:
    Watcher() { kiln::set_mutex_watcher(this); }
    ~Watcher() override { kiln::set_mutex_watcher(nullptr); }

    void before(const kiln::WatchedMutex& mutex, kiln::MutexOperation) noexcept override {
        object = mutex.object;
        owner = mutex.owner;
    }
    void after(const kiln::WatchedMutex&, kiln::MutexOperation operation) noexcept override {
        log += "lurs"[static_cast<int>(operation)]; // lock, unlock, read, stop reading
    }

    void* object = nullptr;
    void* owner = nullptr;
    std::string log;
};

TEST(MutexWatcher, SeesEveryOperationOfLocksMadeMeanwhile) {
    core::RWMutex before;
    Watcher watcher;
    before.lock();
    before.unlock();
    EXPECT_EQ(watcher.log, "");

    core::RWMutex lock;
    lock.lock();
    EXPECT_FALSE(lock.try_lock());
    EXPECT_FALSE(lock.try_lock_shared());
    lock.unlock();
    lock.lockShared();
    EXPECT_TRUE(lock.try_lock_shared());
    lock.unlockShared();
    lock.unlockShared();
    EXPECT_TRUE(lock.try_lock());
    lock.unlock();
    EXPECT_EQ(watcher.log, "lurrsslu");
    EXPECT_EQ(watcher.object, &lock);
    EXPECT_EQ(watcher.owner, &lock);
}

TEST(MutexWatcher, LocksStillReportWaits) {
    Watcher watcher;
    CountingMonitor monitor;
    core::RWMutex lock(&monitor);
    Actor holder;
    holder.does([&] { lock.lock(); });
    auto released = holder.starts([&] {
        std::this_thread::sleep_for(milliseconds(20));
        kiln::set_mutex_watcher(nullptr); // two threads would write its log
        lock.unlock();
    });
    lock.lockShared();
    released.get();
    lock.unlockShared();
    EXPECT_EQ(monitor.entered, 1);
    EXPECT_EQ(monitor.left, 1);
}

} // namespace
