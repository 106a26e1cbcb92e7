// The ways into a logical process besides its own threads: a thread attached to the caller's, a
// process thread, and foreign threads that come in for one call.

#include "support/ProcessTest.h"

#include <atomic>
#include <memory>
#include <stdexcept>
#include <thread>

using core::InterfacePtr;
using Attached = core::CallingThread::Attached;
using State = core::Thread::State;

namespace {

using WaysIn = test::ProcessTest;

template <class Base> class Running final : public Base {
public:
    template <class Place>
    Running(Place&& place, std::function<void()> body) : Base(place), body_(std::move(body)) {}

private:
    void run() override { body_(); }
    std::function<void()> body_;
};

template <class Base, class Place>
InterfacePtr<Running<Base>> running(Place&& place, std::function<void()> body) {
    return {new Running<Base>(place, std::move(body)), true};
}

TEST_F(WaysIn, AttachedThreadsRunOnTheCallingThread) {
    core::Thread* const outside = core::current_thread();
    core::Thread* seen = nullptr;
    const auto caller = core::Thread::getId();
    const auto attached = running<core::AttachedThread>(host(), [&] {
        seen = core::current_thread();
        EXPECT_EQ(core::current_process(), &process());
        EXPECT_EQ(core::Thread::getId(), caller);
    });
    attached->start();
    EXPECT_EQ(seen, attached.get());
    EXPECT_EQ(attached->state(), State::Finished);
    EXPECT_EQ(core::current_thread(), outside);

    // What the work throws comes out of the start, and the process does not wait for the thread.
    const auto failing =
        running<core::AttachedThread>(host(), [] { throw std::runtime_error("work"); });
    EXPECT_THROW(failing->start(), std::runtime_error);
    EXPECT_FALSE(failing->isAlive());
}

TEST_F(WaysIn, ForeignThreadsComeInForOneCall) {
    const InterfacePtr<core::CallingThread> entry(new core::CallingThread(host()), true);
    std::thread([&] {
        EXPECT_EQ(core::current_process(), nullptr);
        entry->call([&] {
            EXPECT_EQ(core::current_process(), &process());
            EXPECT_EQ(core::current_thread(), entry.get());
            EXPECT_EQ(entry->attach(), Attached::Already);
            bool ranInside = false;
            entry->call([&] { ranInside = core::current_thread() == entry.get(); });
            EXPECT_TRUE(ranInside);
            EXPECT_TRUE(entry->isAlive()) << "the inner call did not leave";
        });
        EXPECT_EQ(core::current_thread(), nullptr);
        EXPECT_THROW(entry->call([] { throw std::runtime_error("call"); }), std::runtime_error);
        EXPECT_EQ(entry->state(), State::New) << "it can come in again";
    }).join();
}

TEST(WaysIntoAnEndedProcess, AreClosed) {
    std::unique_ptr<test::ManualProcess> process = std::make_unique<test::ManualProcess>();
    core::Process& host = process->host();
    const auto attached = running<core::AttachedThread>(host, [] { FAIL() << "ran"; });
    const InterfacePtr<core::CallingThread> entry(new core::CallingThread(host), true);
    host.term();

    attached->start();
    EXPECT_EQ(attached->state(), State::Terminated);
    EXPECT_TRUE(attached->isInterrupted());
    attached->join();

    EXPECT_EQ(entry->attach(), Attached::Refused);
    EXPECT_TRUE(entry->isInterrupted());
    bool called = false;
    entry->call([&] {
        called = true;
        EXPECT_EQ(core::current_process(), nullptr);
    });
    EXPECT_TRUE(called) << "outside the process, but called";
}

// The process ends while a foreign thread is in a call.
TEST(WaysIntoAnEndingProcess, AreLeftBeforeItHasEnded) {
    test::ManualProcess process;
    core::Process& host = process.host();
    const InterfacePtr<core::CallingThread> entry(new core::CallingThread(host), true);
    const auto is_closed = [] {
        const auto thread = core::create_thread([] {});
        thread->start();
        return thread->state() == State::Terminated;
    };
    core::Semaphore entered;
    bool left = false;
    std::thread foreign([&] {
        entry->call([&] {
            entered.raise();
            while (!is_closed()) core::Thread::yield();
            core::Thread::sleep(20);
            EXPECT_NE(core::current_process(), nullptr);
            left = true;
        });
    });
    entered.wait();
    host.term();
    EXPECT_TRUE(left);
    foreign.join();

    host.init(nullptr); // would not wait for it: its end has been
    EXPECT_EQ(entry->attach(), Attached::Refused);
}

// It waits for the threads that it started, and the host does not wait for it.
TEST_F(WaysIn, ProcessThreadsKeepThreadsOfTheirOwn) {
    std::atomic<int> childrenDone = 0;
    const auto data = host().processData();
    const auto own = running<core::ProcessThread>(data.get(), [&] {
        EXPECT_EQ(core::current_process(), data->process());
        for (int i = 0; i != 3; ++i)
            core::create_thread([&] {
                core::Thread::sleep(5);
                ++childrenDone;
            })->start();
    });
    own->construct();
    own->start();
    EXPECT_TRUE(own->isProcess());
    core::current_thread()->wait(own.get());
    EXPECT_EQ(childrenDone, 3);
    EXPECT_EQ(own->state(), State::Finished);

    // One that was not told to accept threads refuses them.
    InterfacePtr<core::Thread> refused;
    const auto closed = running<core::ProcessThread>(data.get(), [&] {
        refused = core::create_thread([] { FAIL() << "ran"; });
        refused->start();
    });
    closed->start();
    core::current_thread()->wait(closed.get());
    EXPECT_EQ(refused->state(), State::Terminated);
}

} // namespace
