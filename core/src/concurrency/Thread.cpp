#include <core/concurrency/Thread.h>

#include <core/concurrency/ThreadPool.h>
#include <core/concurrency/ThreadSet.h>

#include "CurrentPair.h"
#include "MainThread.h"
#include "ThreadSetting.h"
#include "component/ExceptionCounter.h"

#include <kiln/suspend_monitor.h>

#include <utility>

#include <cerrno>
#include <sched.h>
#include <time.h>
#include <unistd.h>

namespace core {

thread_local constinit CurrentPair current_pair = {nullptr, nullptr};

namespace {
pthread_t main_thread_id = {};
}

void note_main_thread() noexcept {
    main_thread_id = pthread_self();
}

Thread* current_thread() noexcept {
    return current_pair.thread;
}

SCOM_Process* current_process() noexcept {
    return current_pair.process;
}

ThreadAttach::ThreadAttach(Thread* thread, SCOM_Process* process) noexcept
    : formerThread_(current_pair.thread), formerProcess_(current_pair.process) {
    current_pair = {thread, process};
}

ThreadAttach::~ThreadAttach() {
    current_pair = {formerThread_, formerProcess_};
}

Thread::TLSData::~TLSData() = default;

Thread::Thread(PoolType poolType) noexcept
    : poolType_(poolType), exceptionCounter_(ExceptionCounter::create()) {}

Thread::~Thread() {
    if (ThreadTimer* const timer = timer_.exchange(nullptr)) {
        timer->cancel();
        timer->Release();
    }
    destroyThreadState();
    if (exceptionCounter_) exceptionCounter_->Release();
}

void Thread::run() {}

void Thread::wait(Thread* other) {
    other->end_.wait();
}

bool Thread::isProcess() const noexcept {
    return false;
}

bool Thread::isServerProcess() const noexcept {
    return false;
}

bool Thread::isUIThread() const noexcept {
    return false;
}

// ---- Life

bool Thread::enter(ThreadSet* set) {
    if (!set || !set->add(*this)) {
        set_state(State::Terminated);
        set_interrupted(true);
        set_thread_set(nullptr);
        raise_end();
        return false;
    }
    set_thread_set(set);
    set_state(State::Running);
    set_interrupted(false);
    return true;
}

// Joins the set and hands the thread over; where that fails, nothing of the start is left but the
// state of a thread that is over.
template <class HandOver> void Thread::start_by(HandOver&& hand_over) {
    const std::lock_guard guard(lock_);
    if (state_ != State::New) return;
    Thread* const starter = current_thread();
    if (!enter(starter ? starter->threadSet() : nullptr)) return;
    try {
        hand_over(*thread_pool(poolType_), current_process());
    } catch (...) {
        set_state(State::Terminated);
        leave();
        throw;
    }
}

void Thread::doStart() {
    start_by([this](IThreadPool& pool, SCOM_Process* process) { pool.schedule(process, this); });
}

void Thread::doStartTimer() {
    start_by([this](IThreadPool& pool, SCOM_Process* process) {
        timer_ = pool.scheduleTimer(process, this);
    });
}

void Thread::leave() {
    // The set's reference may be the last one.
    const InterfacePtr<Thread> self(this, true);
    ThreadSet* const set = threadSet();
    // A process object of its own does not go before its threads.
    if (set && &set->owner() == this) set->wait_for_all();
    const std::lock_guard guard(lock_);
    if (set) set->remove(*this);
    set_thread_set(nullptr);
    raise_end();
}

void Thread::run_with_hook() {
    SCOM_Process* const process = current_process();
    auto* const hook =
        process ? static_cast<IThreadRunHook*>(process->getService(IID_IThreadRunHook)) : nullptr;
    if (hook)
        hook->runThread(this);
    else
        run();
}

void Thread::runAndCatch() {
    try {
        run_with_hook();
        set_state(State::Finished);
    } catch (const ThreadDeath&) {
        set_state(State::Terminated);
    } catch (...) {
        set_state(State::Terminated);
        throw;
    }
}

void Thread::threadMain() {
    const InterfacePtr<Thread> self(this, true);
    try {
        runAndCatch();
    } catch (...) {
        leave();
        throw;
    }
    leave();
}

void Thread::timerMain() {
    try {
        run_with_hook();
    } catch (const ThreadDeath&) {
        set_state(State::Terminated);
    }
}

void Thread::timerMainEnd() {
    set_state(State::Finished);
    leave();
}

void Thread::stopTimer() {
    ThreadTimer* timer;
    {
        // Called by the very first tick, it waits until the start has stored the timer.
        const std::lock_guard guard(lock_);
        timer = timer_.exchange(nullptr);
    }
    if (!timer) return;
    thread_pool(poolType_)->cancelTimer(timer, this);
    timer->Release();
}

unsigned int Thread::getTimerInterval() const noexcept {
    return timerInterval_;
}

void Thread::setTimerInterval(unsigned int milliseconds) noexcept {
    timerInterval_ = milliseconds;
}

void Thread::join() {
    if (!isAlive()) return;
    if (Thread* const waiter = current_thread())
        waiter->wait(this);
    else
        end_.wait(); // a foreign thread has no loop of its own to keep up
}

void Thread::set_state(State state) {
    const std::lock_guard guard(lock_);
    state_ = state;
}

void Thread::set_interrupted(bool interrupted) {
    const std::lock_guard guard(lock_);
    interrupted_ = interrupted;
}

bool Thread::isAlive() {
    return state() == State::Running;
}

Thread::State Thread::state() {
    const std::lock_guard guard(lock_);
    return state_;
}

void Thread::interrupt() {
    set_interrupted(true);
}

bool Thread::isInterrupted() {
    const std::lock_guard guard(lock_);
    return interrupted_;
}

bool Thread::interrupted() {
    Thread* const self = current_thread();
    return self && self->interrupted_.exchange(false);
}

// ---- The operating system's thread

void Thread::sleep(unsigned int milliseconds) {
    timespec left = {static_cast<time_t>(milliseconds / 1000),
                     static_cast<long>(milliseconds % 1000) * 1'000'000};
    const kiln::ReportedWait wait(kiln::get_thread_suspend_monitor());
    while (nanosleep(&left, &left) != 0 && errno == EINTR) {}
}

void Thread::yield() noexcept {
    sched_yield();
}

pthread_t Thread::getId() noexcept {
    return pthread_self();
}

pid_t Thread::getOSId() noexcept {
    return gettid();
}

pthread_t Thread::getMainThreadId() noexcept {
    return main_thread_id;
}

unsigned int hardware_concurrency() noexcept {
    return static_cast<unsigned int>(sysconf(_SC_NPROCESSORS_ONLN));
}

// ---- Settings

void Thread::setBeginningOfCentury(int year) {
    set_setting(beginningOfCentury_, year);
}

int Thread::getBeginningOfCentury() const {
    if (const int* const own = setting_in<int>(beginningOfCentury_)) return *own;
    SCOM_Process* const process = current_process();
    return process ? process->getBeginningOfCentury() : kDefaultBeginningOfCentury;
}

void Thread::resetBeginningOfCentury() noexcept {
    beginningOfCentury_.reset();
}

void Thread::setSafeMode(bool enabled, const stdx::ustring& securityProfileName) {
    securityProfileName_ = securityProfileName;
    safeMode_ = enabled;
}

void Thread::setExecModuleSecurityContext(IUnknown* context) noexcept {
    securityContext_ = InterfacePtr<IUnknown>(context, true);
}

// ---- Functor threads

FunctorThread::FunctorThread(std::function<void()> function)
    : Thread(PoolType::Functor), function_(std::move(function)) {}

void FunctorThread::run() {
    function_();
}

InterfacePtr<Thread> create_thread(const std::function<void()>& function) {
    return {new FunctorThread(function), true};
}

InterfacePtr<Thread> create_thread(std::function<void()>&& function) {
    return {new FunctorThread(std::move(function)), true};
}

bool wait_unique(Thread* thread, unsigned int timeoutMs) {
    const auto milliseconds = [] {
        timespec now;
        clock_gettime(CLOCK_MONOTONIC, &now);
        return static_cast<std::uint64_t>(now.tv_sec) * 1000 +
               static_cast<std::uint64_t>(now.tv_nsec) / 1'000'000;
    };
    const std::uint64_t begin = milliseconds();
    while (thread->references() != 1) {
        Thread::sleep(10);
        if (thread->references() != 1 && milliseconds() - begin >= timeoutMs) return false;
    }
    Thread::yield();
    return true;
}

// ---- The stack

namespace {
constexpr std::uintptr_t kStackBudget = 0xD8000;
thread_local constinit std::uintptr_t stack_start = 0;

[[gnu::noinline]] std::uintptr_t stack_pointer() noexcept {
    return reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
}
} // namespace

void start_thread_resource_control() noexcept {
    stack_start = stack_pointer();
}

bool check_stack_overflow() noexcept {
    const std::uintptr_t here = stack_pointer();
    // Frames above the noted start use nothing of the budget.
    return stack_start == 0 || here >= stack_start || stack_start - here <= kStackBudget;
}

} // namespace core
