#include "support/ProcessTest.h"

#include <core/concurrency/ThreadPool.h>

#include <atomic>
#include <string>
#include <thread>

namespace {

using core::CallingThread;
using core::InterfacePtr;
using core::Thread;
using State = Thread::State;

class Threads : public test::ProcessTest {};

TEST_F(Threads, RunOnceInTheProcessOfTheirStarter) {
    std::atomic<int> runs = 0;
    core::SCOM_Process* inside = nullptr;
    Thread* self = nullptr;
    const auto thread = core::create_thread([&] {
        ++runs;
        inside = core::current_process();
        self = core::current_thread();
    });
    EXPECT_EQ(thread->state(), State::New);
    thread->join(); // not running: returns at once
    thread->start();
    thread->start();
    thread->join();
    thread->start();
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(inside, &process());
    EXPECT_EQ(self, thread.get());
    EXPECT_EQ(thread->state(), State::Finished);
}

TEST_F(Threads, AreInterruptedOnlyByLookingAtTheFlag) {
    core::Semaphore begun, goOn;
    std::string seen;
    const auto thread = core::create_thread([&] {
        begun.raise();
        goOn.wait();
        for (int look = 0; look != 2; ++look) seen += Thread::interrupted() ? 'y' : 'n';
        throw core::ThreadDeath();
    });
    thread->start();
    begun.wait();
    EXPECT_TRUE(thread->isAlive());
    thread->interrupt();
    EXPECT_TRUE(thread->isInterrupted());
    goOn.raise();
    thread->join();
    EXPECT_EQ(seen, "yn");
    EXPECT_EQ(thread->state(), State::Terminated);
    EXPECT_FALSE(Thread::interrupted());
}

TEST(ThreadsAfterTheEnd, AreRefusedWithoutAnError) {
    test::ManualProcess process;
    core::ThreadSet& set = process.host();
    process.host().term();
    CallingThread caller(set);
    EXPECT_EQ(caller.attach(), CallingThread::Attached::Refused);
    EXPECT_TRUE(caller.isInterrupted());

    const auto thread = core::create_thread([] { FAIL() << "ran"; });
    thread->start();
    thread->join();
    EXPECT_EQ(thread->state(), State::Terminated);
    EXPECT_TRUE(thread->isInterrupted());
}

TEST_F(Threads, KeepTheirOwnSettings) {
    process().setBeginningOfCentury(1950);
    const auto thread = core::create_thread([] {
        Thread& self = *core::current_thread();
        EXPECT_EQ(self.getBeginningOfCentury(), 1950);
        self.setBeginningOfCentury(1930);
        EXPECT_EQ(self.getBeginningOfCentury(), 1930);
        self.resetBeginningOfCentury();
        EXPECT_EQ(self.getBeginningOfCentury(), 1950);
    });
    thread->start();
    thread->join();
}

struct Counted final : Thread::TLSData {
    explicit Counted(int& alive) : alive_(++alive) {}
    ~Counted() override { --alive_; }
    int& alive_;
};

TEST_F(Threads, OwnTheirStorageAndDropWhatAFreedIndexHeld) {
    int alive = 0;
    {
        const auto thread = core::create_thread([] {});
        const Thread::TLSIndex first = Thread::allocTLS();
        EXPECT_EQ(thread->getTLSValue(first), nullptr);
        auto* const value = new Counted(alive);
        thread->setTLSValue(first, value);
        thread->setTLSValue(first, value); // the same again: kept
        EXPECT_EQ(thread->getTLSValue(first), value);
        thread->setTLSValue(first, new Counted(alive));
        EXPECT_EQ(alive, 1);

        Thread::freeTLS(first);
        const Thread::TLSIndex second = Thread::allocTLS();
        EXPECT_EQ(second.slot, first.slot);
        EXPECT_NE(second.generation, first.generation);
        EXPECT_EQ(alive, 1);
        EXPECT_EQ(thread->getTLSValue(second), nullptr);
        EXPECT_EQ(alive, 0);

        const Thread::TLSIndex third = Thread::allocTLS();
        thread->setTLSValue(second, new Counted(alive));
        thread->setTLSValue(third, new Counted(alive));
        thread->clearTLSData();
        EXPECT_EQ(alive, 0);
        thread->setTLSValue(third, new Counted(alive));
        Thread::freeTLS(second);
        Thread::freeTLS(third);
    }
    EXPECT_EQ(alive, 0) << "the end of the thread destroys what is left";
}

TEST_F(Threads, AreUniqueWhenOnlyTheCallerHoldsThem) {
    auto thread = core::create_thread([] {});
    EXPECT_TRUE(core::wait_unique(thread.get(), 0));
    auto second = thread;
    EXPECT_FALSE(core::wait_unique(thread.get(), 0));
    std::thread holder([&second] {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        second.reset();
    });
    EXPECT_TRUE(core::wait_unique(thread.get(), 10'000));
    holder.join();
}

TEST_F(Threads, TickUntilTheirTimerIsStopped) {
    struct Ticker final : Thread {
        Ticker() : Thread(PoolType::Functor) {}
        void run() override { ticked.raise(); }
        core::Semaphore ticked;
    };
    const InterfacePtr<Ticker> ticker(new Ticker, true);
    ticker->stopTimer(); // without a timer: nothing
    ticker->setTimerInterval(1);
    ticker->startTimer();
    for (int tick = 0; tick != 3; ++tick) ticker->ticked.wait();
    EXPECT_TRUE(ticker->isAlive());
    ticker->stopTimer();
    EXPECT_EQ(ticker->references(), 1u);
    EXPECT_EQ(ticker->state(), State::Finished);
}

TEST_F(Threads, OfOthersEnterAProcessForOneCall) {
    core::ThreadSet& set = host();
    std::thread([&] {
        EXPECT_EQ(core::current_process(), nullptr);
        const InterfacePtr<CallingThread> caller(new CallingThread(set), true);
        int calls = 0;
        caller->call([&] {
            EXPECT_EQ(core::current_thread(), caller.get());
            EXPECT_EQ(core::current_process(), &process());
            caller->call([&] { ++calls; }); // already inside: just called
            EXPECT_TRUE(caller->isAlive());
        });
        EXPECT_EQ(calls, 1);
        EXPECT_EQ(core::current_process(), nullptr);
        EXPECT_THROW(caller->call([] { throw 5; }), int);
        EXPECT_EQ(caller->state(), State::New);
        EXPECT_EQ(caller->references(), 1u);
    }).join();
}

} // namespace
