// Races, for the thread sanitizer above all: what may happen at once happens at once.

#include "support/ProcessTest.h"

#include <core/concurrency/ThreadPool.h>
#include <core/concurrency/async.h>

#include <atomic>
#include <thread>
#include <vector>

namespace {

using core::InterfacePtr;
using core::Thread;

class Stress : public test::ProcessTest {
protected:
    // Runs `body(number)` on threads of the process and waits for them.
    template <class Body> void at_once(int count, Body body) {
        std::vector<InterfacePtr<Thread>> threads;
        for (int number = 0; number != count; ++number)
            threads.push_back(core::create_thread([=] { body(number); }));
        for (const auto& thread : threads) thread->start();
        for (const auto& thread : threads) thread->join();
    }
};

TEST_F(Stress, ManyStartersJoinersAndModes) {
    std::atomic<int> ran = 0;
    at_once(8, [&ran](int number) {
        for (int round = 0; round != 100; ++round) {
            const auto thread = core::create_thread([&ran] { ++ran; });
            thread->start();
            if (round % 2) thread->join();
            if (round % 25 == 0)
                core::set_thread_mode(Thread::PoolType(200 + number % 3), round % 2, 2, true);
        }
    });
    at_once(1, [](int) {});
    while (ran != 800) Thread::yield();
}

TEST_F(Stress, OneThreadStartedJoinedAndInterruptedByMany) {
    for (int round = 0; round != 50; ++round) {
        std::atomic<int> runs = 0;
        const auto thread = core::create_thread([&runs] { ++runs; });
        at_once(4, [&](int) {
            thread->start();
            thread->interrupt();
            thread->join();
            EXPECT_EQ(runs, 1);
        });
    }
}

TEST_F(Stress, TimersStoppedWhileTheyTick) {
    struct Ticker final : Thread {
        Ticker() : Thread(PoolType::Functor) {}
        void run() override { ++ticks; }
        std::atomic<int> ticks = 0;
    };
    at_once(4, [](int) {
        for (int round = 0; round != 50; ++round) {
            const InterfacePtr<Ticker> ticker(new Ticker, true);
            ticker->startTimer();
            while (ticker->ticks < round % 3) Thread::yield();
            ticker->stopTimer();
            EXPECT_EQ(ticker->references(), 1u);
        }
    });
}

// Threads that start threads while the process ends: each runs to its end or is refused, and none
// outlives its process.
TEST(StressOfTheEnd, ProcessesWaitForWhatTheyAccepted) {
    for (int round = 0; round != 100; ++round) {
        std::atomic<int> accepted = 0, finished = 0, families = 10;
        const std::function<void()> spawn = [&] {
            for (int child = 0; child != 3; ++child) {
                const auto thread = core::create_thread([&] {
                    if (families-- > 0) spawn();
                    ++finished;
                });
                thread->start();
                accepted += thread->state() != Thread::State::Terminated;
                (void)core::async([] { Thread::yield(); });
            }
        };
        {
            const test::ManualProcess process;
            spawn();
        }
        EXPECT_EQ(accepted, finished);
    }
}

} // namespace
