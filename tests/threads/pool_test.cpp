// The pool on a system whose clock the tests move and whose threads they count. The jobs are in no
// process; each has a thread set of its own, by which the test waits until its worker is through.

#include "../../core/src/concurrency/OrbThreadPool.h"

#include "support/ProcessTest.h"

#include <core/component/ClassDescriptor.h>
#include <core/component/Object.h>
#include <core/component/TechLog.h>
#include <core/component/Utf8.h>
#include <core/concurrency/ThreadSet.h>

#include <gmock/gmock.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

using core::InterfacePtr;
using core::OrbThreadPool;
using core::Thread;
using Type = Thread::PoolType;
using namespace std::chrono_literals;

template <class Condition> bool eventually(Condition condition) {
    const auto end = std::chrono::steady_clock::now() + 20s;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(1ms);
    }
    return true;
}

// ---- The system

struct Terminated {
    int code;
};

std::atomic<std::uint32_t> now; // the pool's clock
std::atomic<int> workersMade, workersEnded, madeByMonitor;
std::atomic<int> monitorLooks; // how often the monitor has read the clock
std::atomic<int> creationError;
thread_local bool isMonitor = false;

std::uint32_t milliseconds() {
    monitorLooks += isMonitor;
    return now;
}

struct Start {
    core::ThreadRoutine routine;
    void* argument;
    bool isMonitor;
};

void* routine_of_thread(void* argument) {
    const std::unique_ptr<Start> start(static_cast<Start*>(argument));
    isMonitor = start->isMonitor;
    start->routine(start->argument);
    workersEnded += !isMonitor;
    return nullptr;
}

int create_thread(pthread_t* thread, const pthread_attr_t* attributes, core::ThreadRoutine routine,
                  void* argument) {
    if (creationError != 0) return creationError;
    int detachState = 0;
    pthread_attr_getdetachstate(attributes, &detachState);
    const bool forWorker = detachState == PTHREAD_CREATE_DETACHED;
    workersMade += forWorker;
    madeByMonitor += forWorker && isMonitor;
    return pthread_create(thread, attributes, &routine_of_thread,
                          new Start{routine, argument, !forWorker});
}

const core::WorkerEnvironment kFakeSystem = {&milliseconds, &create_thread,
                                             [](int code) { throw Terminated{code}; }};

// ---- Jobs

struct OwnSet
    : Thread
    , core::ThreadSet {
    OwnSet() : Thread(Type::Functor), ThreadSet(static_cast<Thread&>(*this)) {}
};

class Job : public Thread {
public:
    Job(Type type, std::function<void()> work) : Thread(type), work_(std::move(work)) {
        set_.accept_threads();
        set_.add(*this);
        set_thread_set(&set_);
        set_state(State::Running);
    }
    void run() override { work_(); }
    core::ThreadSet& set() { return set_; }
    void end() { set_state(State::Terminated); }

private:
    std::function<void()> work_;
    OwnSet set_;
};

class Pool : public testing::Test {
protected:
    Pool() {
        now = 1000;
        workersMade = workersEnded = madeByMonitor = monitorLooks = creationError = 0;
        pool_ = core::make_object<OrbThreadPool>(kFakeSystem);
    }
    ~Pool() {
        pool_.reset();
        EXPECT_TRUE(eventually([] { return workersEnded == workersMade; }));
    }

    InterfacePtr<Job> job(std::function<void()> work, Type type = Type::Default) {
        return {new Job(type, std::move(work)), true};
    }
    // Returns when the job has run and its worker is idle.
    void perform(std::function<void()> work, Type type = Type::Default) {
        const auto one = job(std::move(work), type);
        pool_->schedule(nullptr, one.get());
        finish(*one);
    }
    void finish(Job& job) {
        job.wait(&job);
        pool_->drain(job.set());
        EXPECT_EQ(job.references(), 1u) << "the worker still has the thread";
    }

    // Jobs that run until each is told to end.
    struct Held {
        InterfacePtr<Job> job;
        std::unique_ptr<core::Semaphore> goOn;
    };
    Held hold(Type type = Type::Default) {
        auto goOn = std::make_unique<core::Semaphore>();
        Held held{job([&goOn = *goOn] { goOn.wait(); }, type), std::move(goOn)};
        pool_->schedule(nullptr, held.job.get());
        return held;
    }
    void let_go(Held& held) {
        held.goOn->raise();
        finish(*held.job);
    }

    // After this the monitor has looked at the clock as it stands now, in a pass of its own.
    void await_monitor() {
        const int before = monitorLooks;
        ASSERT_TRUE(eventually([&] { return monitorLooks >= before + 2; }));
    }

    InterfacePtr<OrbThreadPool> pool_;
};

TEST_F(Pool, ReusesTheWorkerThatIsIdleAndMakesOneWhenNoneIs) {
    pthread_t first = {}, second = {};
    perform([&] { first = pthread_self(); }, Type(42)); // no such bucket: that of type 7
    perform([&] { second = pthread_self(); });
    EXPECT_TRUE(pthread_equal(first, second));
    EXPECT_EQ(workersMade, 1);

    Held one = hold(), two = hold();
    EXPECT_EQ(workersMade, 2);
    let_go(one);
    let_go(two);
    EXPECT_EQ(madeByMonitor, 0);
}

TEST_F(Pool, WorkersHaveTheStacksTold) {
    stack_t forSignals = {};
    std::size_t size = 0;
    perform([&] {
        sigaltstack(nullptr, &forSignals);
        pthread_attr_t attributes;
        pthread_getattr_np(pthread_self(), &attributes);
        pthread_attr_getstacksize(&attributes, &size);
        pthread_attr_destroy(&attributes);
    });
    EXPECT_EQ(forSignals.ss_size, 18'432u);
    EXPECT_EQ(forSignals.ss_flags, 0);
    EXPECT_EQ(size, 0x100000u);
}

TEST_F(Pool, SurvivesWhatJobsThrow) {
    perform([] { throw core::ThreadDeath(); });
    perform([] { throw std::runtime_error("lost"); });
    perform([] { throw core::Exception(u"logged"); });
    int ran = 0;
    perform([&] { ++ran; });
    EXPECT_EQ(ran, 1);
    EXPECT_EQ(workersMade, 1);
}

// ---- Buckets

TEST_F(Pool, StartsABucketWithItsUpperBoundOfWorkers) {
    const struct { int maxIdle, made; } rows[] = {{3, 3}, {0, 0}, {-1, 0}};
    Type type = Type(100);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.maxIdle);
        const int before = workersMade;
        pool_->setMode(type, 0, row.maxIdle, false);
        EXPECT_EQ(workersMade - before, row.made);
        pool_->setMode(type, 0, 5, true); // a bucket that is there just gets the bounds
        EXPECT_EQ(workersMade - before, row.made);
        type = Type(static_cast<int>(type) + 1);
    }
}

TEST_F(Pool, HasTheMonitorFillABucketUpToItsLowerBound) {
    pool_->setMode(Type(9), 2, 0, false);
    Held first = hold(Type(9)); // waits: the caller makes no worker for such a bucket
    ASSERT_TRUE(eventually([] { return workersMade >= 3; }));
    Held second = hold(Type(9)), third = hold(Type(9)), fourth = hold(Type(9));
    ASSERT_TRUE(
        eventually([] { return workersMade - workersEnded == 6; })); // four at work, two idle
    EXPECT_EQ(madeByMonitor, workersMade);
    for (Held* held : {&first, &second, &third, &fourth}) let_go(*held);

    const int before = workersMade - madeByMonitor;
    Held fifth = hold(), sixth = hold(); // no lower bound there: the caller makes what it needs
    EXPECT_EQ(workersMade - madeByMonitor, before + 2);
    let_go(fifth);
    let_go(sixth);
}

// Three workers become idle at 1000, 1001 and 1002 and the monitor looks at 21,002: the first two
// have been idle for more than 20,000 ms.
TEST_F(Pool, TrimsWhatHasBeenIdleForMoreThanTwentySeconds) {
    const struct { int maxIdle, dropped; } rows[] = {{0, 2}, {2, 1}, {3, 0}, {-1, 0}};
    int dropped = 0;
    Type type = Type(50);
    std::vector<Held> held;
    for (const auto& row : rows) {
        pool_->setMode(type, 0, 0, false);
        pool_->setMode(type, 0, row.maxIdle, false);
        for (int count = 0; count != 3; ++count) held.push_back(hold(type));
        dropped += row.dropped;
        type = Type(static_cast<int>(type) + 1);
    }
    ASSERT_TRUE(eventually([] { return monitorLooks >= 2; })); // it knows when it began
    for (std::size_t second = 0; second != 3; ++second) {
        for (std::size_t at = second; at < held.size(); at += 3) let_go(held[at]);
        ++now;
    }
    now = 21'002;
    await_monitor();
    EXPECT_TRUE(eventually([&] { return workersEnded == dropped; })) << workersEnded;
    await_monitor();
    EXPECT_EQ(workersEnded, dropped);
    const int before = workersMade;
    for (int count = 0; count != 3; ++count) held[static_cast<std::size_t>(count)] = hold(Type(52));
    EXPECT_EQ(workersMade, before) << "the idle ones of that bucket have all stayed";
    for (int count = 0; count != 3; ++count) let_go(held[static_cast<std::size_t>(count)]);
}

// ---- Timers

TEST_F(Pool, TimersTickUntilTheThreadIsOver) {
    int ticks = 0;
    Job* self = nullptr;
    const auto timer = job([&] {
        if (++ticks == 3) self->end();
    });
    self = timer.get();
    timer->setTimerInterval(1);
    const InterfacePtr<core::ThreadTimer> handle(pool_->scheduleTimer(nullptr, timer.get()), false);
    finish(*timer); // timerMainEnd has raised the end
    EXPECT_EQ(ticks, 3);
    EXPECT_EQ(timer->state(), Thread::State::Finished);
}

TEST_F(Pool, TimersEndByAnExceptionAndTheWorkerGoesOn) {
    const auto timer = job([] { throw std::runtime_error("tick"); });
    const InterfacePtr<core::ThreadTimer> handle(pool_->scheduleTimer(nullptr, timer.get()), false);
    finish(*timer);
    perform([] {});
    EXPECT_EQ(workersMade, 1);
}

TEST_F(Pool, CancelsTimersFromOutsideAndFromTheTimerItself) {
    const auto outside = job([] { ADD_FAILURE() << "ticked"; });
    outside->setTimerInterval(60'000);
    InterfacePtr<core::ThreadTimer> handle(pool_->scheduleTimer(nullptr, outside.get()), false);
    pool_->cancelTimer(handle.get(), outside.get());
    EXPECT_EQ(outside->references(), 1u) << "the worker is through with the thread";

    InterfacePtr<core::ThreadTimer> own;
    core::Semaphore ready;
    auto took = std::chrono::steady_clock::duration::max();
    int ticks = 0;
    Job* self = nullptr;
    const auto inside = job([&] {
        ++ticks;
        ready.wait();
        const auto begin = std::chrono::steady_clock::now();
        pool_->cancelTimer(own.get(), self);
        took = std::chrono::steady_clock::now() - begin;
    });
    self = inside.get();
    own = {pool_->scheduleTimer(nullptr, inside.get()), false};
    ready.raise();
    finish(*inside);
    EXPECT_LT(took, 1s) << "it waited for itself";
    EXPECT_EQ(ticks, 1);
}

// ---- The ends

TEST_F(Pool, EndsWithTheLastJobThatHoldsIt) {
    pool_->setMode(Type(3), 2, 2, false);
    Held held = hold(Type(3));
    pool_.reset();
    held.goOn->raise();
    EXPECT_TRUE(eventually([] { return workersEnded == workersMade; }));
}

constexpr _GUID kLogClass = core::operator""_guid("6f4a1a5e-6d5c-4a36-a6f4-52f1d7a0f1c3", 36);
std::mutex logMutex;
std::vector<stdx::ustring> logged; // guarded by logMutex

class TestLog
    : public core::ObjectRoot
    , public core::SCOM_Class<TestLog, &kLogClass>
    , public core::ITechLog {
public:
    static constexpr auto categories = core::categories(&core::CATID_TechLog);
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<TestLog, core::ITechLog>();
    }
    void writeException(const core::Exception& exception, const stdx::ustring& where) override {
        const std::lock_guard guard(logMutex);
        logged.push_back(where + u": " + exception.description());
    }
};
ORBCORE_REGISTER(TestLog);

class PoolFailures : public test::ProcessTest {
protected:
    PoolFailures() { logged.clear(); }
};

TEST_F(PoolFailures, OfJobsGoToTheTechnicalLog) {
    const auto thread = core::create_thread([] { throw core::Exception(u"no paper"); });
    thread->start();
    thread->join();
    EXPECT_TRUE(eventually([] {
        const std::lock_guard guard(logMutex);
        return !logged.empty();
    }));
    EXPECT_EQ(logged.at(0), u"Thread: no paper");
    EXPECT_EQ(thread->state(), Thread::State::Terminated);
}

TEST_F(PoolFailures, ToGetAThreadEndTheProgram) {
    const auto pool = core::make_object<OrbThreadPool>(kFakeSystem);
    creationError = EAGAIN;
    try {
        pool->setMode(Type(5), 0, 1, false);
        FAIL() << "went on without a thread";
    } catch (const Terminated& terminated) {
        EXPECT_EQ(terminated.code, 0);
    }
    creationError = 0;
    ASSERT_EQ(logged.size(), 1u);
    EXPECT_EQ(logged[0],
              u"Create thread error: " + core::from_utf8(std::generic_category().message(EAGAIN)));
}

TEST_F(PoolFailures, DoNotComeFromModesOfTheSeparatePool) {
    const auto threads = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/task"), {});
    };
    core::thread_pool(Type::Separate);
    const auto before = threads();
    core::set_thread_mode(Type::Separate, 0, 3, true);
    EXPECT_EQ(threads(), before);
    core::set_thread_mode(Type(77), 0, 3, true);
    EXPECT_EQ(threads(), before + 3);
    EXPECT_NE(core::thread_pool(Type::Separate), core::thread_pool(Type::Functor));
    EXPECT_EQ(core::thread_pool(Type(77)), core::thread_pool(Type::Functor));
}

} // namespace
