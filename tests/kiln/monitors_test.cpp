#include <kiln/mutex_monitor.h>
#include <kiln/suspend_monitor.h>

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

class Recorder final : public kiln::IThreadSuspendMonitor {
public:
    void enterWait() noexcept override { log += "enter "; }
    void leaveWait() noexcept override { log += "leave "; }
    std::string log;
};

TEST(SuspendMonitor, BelongsToOneThread) {
    Recorder recorder;
    EXPECT_EQ(kiln::get_thread_suspend_monitor(), nullptr);
    EXPECT_EQ(kiln_set_thread_suspend_monitor(&recorder), nullptr);
    EXPECT_EQ(kiln_get_thread_suspend_monitor(), &recorder);
    std::thread([] { EXPECT_EQ(kiln_get_thread_suspend_monitor(), nullptr); }).join();
    EXPECT_EQ(kiln::set_thread_suspend_monitor(nullptr), &recorder);
    EXPECT_EQ(kiln::get_thread_suspend_monitor(), nullptr);
}

TEST(SuspendMonitor, AReportedWaitIsItsScope) {
    Recorder recorder;
    {
        const kiln::ReportedWait wait(&recorder);
        EXPECT_EQ(recorder.log, "enter ");
        const kiln::ReportedWait unreported(nullptr);
    }
    EXPECT_EQ(recorder.log, "enter leave ");
}

// Code that was built apart from this library calls the third and the fourth entry of the table.
TEST(SuspendMonitor, OperationsAreFoundByTheirPlace) {
    Recorder recorder;
    kiln::IThreadSuspendMonitor* const monitor = &recorder;
    using Operation = void (*)(kiln::IThreadSuspendMonitor*);
    Operation* table;
    std::memcpy(&table, static_cast<void*>(monitor), sizeof table);
    table[2](monitor);
    table[3](monitor);
    EXPECT_EQ(recorder.log, "enter leave ");
}

class Watcher final : public kiln::IMutexWatcher {
public:
    Watcher() : former_(kiln_set_mutex_watcher(this)) {}
    ~Watcher() override { kiln_set_mutex_watcher(former_); }

    void before(const kiln::WatchedMutex& mutex, kiln::MutexOperation operation) noexcept override {
        seen.push_back(mutex);
        log += "<" + std::to_string(static_cast<int>(operation));
    }
    void after(const kiln::WatchedMutex&, kiln::MutexOperation operation) noexcept override {
        log += std::to_string(static_cast<int>(operation)) + ">";
    }

    std::vector<kiln::WatchedMutex> seen;
    std::string log;

private:
    kiln::IMutexWatcher* const former_;
};

struct FakeMutex {
    std::string calls;
    kiln::IThreadSuspendMonitor* given = nullptr;

    static void operate(void* object, kiln::IThreadSuspendMonitor* monitor) {
        auto* const mutex = static_cast<FakeMutex*>(object);
        mutex->calls += '.';
        mutex->given = monitor;
    }
    static void fail(void*, kiln::IThreadSuspendMonitor*) { throw std::runtime_error("fails"); }
};

constexpr auto kKind = kiln::MutexKind::kReaderWriter;

TEST(MutexMonitor, ThereIsNoneWithoutAWatcher) {
    FakeMutex mutex;
    EXPECT_EQ(kiln::create_mutex_monitor(&mutex, &mutex, nullptr, kKind), nullptr);
}

TEST(MutexMonitor, PerformsAndReportsEachOperation) {
    FakeMutex mutex;
    Recorder suspend;
    int owner = 0;
    std::unique_ptr<kiln::IMutexMonitor> monitor;
    {
        Watcher watcher;
        monitor.reset(kiln_create_mutex_monitor(&mutex, &owner, &suspend, kKind));
        ASSERT_TRUE(monitor);
        monitor->lock(&mutex, &FakeMutex::operate);
        monitor->unlock(&mutex, &FakeMutex::operate);
        monitor->lockShared(&mutex, &FakeMutex::operate);
        monitor->unlockShared(&mutex, &FakeMutex::operate);
        EXPECT_EQ(mutex.calls, "....");
        EXPECT_EQ(mutex.given, &suspend);
        EXPECT_EQ(watcher.log, "<00><11><22><33>");
        ASSERT_EQ(watcher.seen.size(), 4u);
        for (const kiln::WatchedMutex& seen : watcher.seen) {
            EXPECT_EQ(seen.object, &mutex);
            EXPECT_EQ(seen.owner, &owner);
            EXPECT_EQ(seen.kind, kKind);
        }
    }
    monitor->lock(&mutex, &FakeMutex::operate); // nobody watches any more
    EXPECT_EQ(mutex.calls, ".....");

    Watcher later;
    EXPECT_THROW(monitor->lock(&mutex, &FakeMutex::fail), std::runtime_error);
    EXPECT_EQ(later.log, "<0") << "an operation that throws has not been done";
}

} // namespace
