#include "listeners.h"

#include "support/ProcessTest.h"

#include <core/concurrency/async.h>

#include <atomic>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

using Error = core::ThreadException::Error;

class Async : public test::ProcessTest {};

TEST_F(Async, RunsInTheProcessOfTheCaller) {
    auto place =
        core::async([] { return std::pair(core::current_thread(), core::current_process()); });
    const auto [thread, inside] = place.get();
    EXPECT_NE(thread, nullptr);
    EXPECT_NE(thread, core::current_thread());
    EXPECT_EQ(inside, core::current_process());
    EXPECT_FALSE(place.valid());
}

TEST_F(Async, GivesWhatTheCallableReturnsOrThrows) {
    auto owned = std::make_unique<int>(7); // neither the callable nor the result can be copied
    EXPECT_EQ(*core::async([moved = std::move(owned)]() mutable { return std::move(moved); }).get(),
              7);

    auto foreign = core::async([]() -> int { throw std::out_of_range("row 5"); });
    EXPECT_THROW(foreign.get(), std::out_of_range);
    auto ours = core::async([] { throw core::ThreadException(Error::Interrupted); });
    const core::InterfacePtr<core::IFuture> future(ours.future(), true);
    EXPECT_EQ(test::thread_error([&] { ours.get(); }), Error::Interrupted);
    EXPECT_NE(future->getException(), nullptr);
    auto death = core::async([] { throw core::ThreadDeath(); });
    EXPECT_EQ(test::thread_error([&] { death.get(); }), Error::Cancelled);
}

// More tasks that wait than there are processors, and tasks inside tasks.
TEST_F(Async, LetsTasksWaitForEachOther) {
    const int count = static_cast<int>(core::hardware_concurrency()) * 4;
    std::atomic<int> arrived = 0;
    std::vector<core::Future<void>> tasks;
    for (int made = 0; made != count; ++made)
        tasks.push_back(core::async([&] {
            ++arrived;
            while (arrived != count) core::Thread::yield();
        }));
    for (auto& task : tasks) task.get();

    const std::function<int(int)> leaves = [&](int depth) {
        if (depth == 0) return 1;
        auto left = core::async([&, depth] { return leaves(depth - 1); });
        return leaves(depth - 1) + left.get();
    };
    EXPECT_EQ(leaves(8), 256);
}

// A cancelled task that runs goes on, and nothing but the end of its process waits for it. So these
// tests leave the process before what the tasks refer to; the fixture's would go behind it.
TEST(AsyncCancelled, GoesOnWhereItRunsAndKeepsItsProcess) {
    core::Semaphore begun, goOn;
    bool finished = false;
    {
        const test::ManualProcess process;
        auto running = core::async([&] {
            begun.raise();
            goOn.wait();
            core::Thread::sleep(20);
            finished = true;
            return 1;
        });
        begun.wait();
        EXPECT_FALSE(running.wait_for(1));
        EXPECT_TRUE(running.cancel());
        EXPECT_FALSE(running.cancel());
        EXPECT_TRUE(running.wait_for(0));
        EXPECT_EQ(test::thread_error([&] { running.get(); }), Error::Cancelled);
        goOn.raise();
    }
    EXPECT_TRUE(finished);
}

// A thousand cancelled while others of them complete.
TEST(AsyncCancelled, EndsInOneOfTwoWays) {
    std::atomic<int> ran = 0;
    int cancelled = 0, succeeded = 0;
    {
        const test::ManualProcess process;
        std::vector<core::Future<void>> tasks;
        for (int made = 0; made != 1000; ++made) tasks.push_back(core::async([&] { ++ran; }));
        for (auto task = tasks.rbegin(); task != tasks.rend(); ++task) cancelled += task->cancel();
        for (auto& task : tasks)
            succeeded += test::thread_error([&] { task.get(); }) == Error::None;
    }
    EXPECT_EQ(succeeded + cancelled, 1000);
    EXPECT_GE(ran, succeeded);
}

TEST(AsyncOutside, IsRejectedWithoutAProcess) {
    std::thread([] {
        auto task = core::async([] { return 1; });
        EXPECT_EQ(test::thread_error([&] { task.get(); }), Error::RejectedExecution);
    }).join();
}

TEST(AsyncOutside, IsFinishedBeforeItsProcessEnds) {
    std::atomic<int> ran = 0;
    {
        const test::ManualProcess process;
        for (int made = 0; made != 100; ++made) (void)core::async([&] { ++ran; });
    }
    EXPECT_EQ(ran, 100);
}

} // namespace
