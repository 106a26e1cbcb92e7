#include "Worker.h"

#include "OrbThreadPool.h"
#include "WorkerSpin.h"

#include <core/component/Exception.h>

#include <core/component/SCOM_ProcessData.h>

#include <kiln/heap.h>

#include <cstddef>
#include <utility>

#include <signal.h>
#include <sys/mman.h>

namespace core {
namespace {

// A stack for signal handlers, so that they can report the overflow of the other one. Without
// memory for it the thread does without.
class SignalStack {
public:
    SignalStack() noexcept
        : memory_(
              mmap(nullptr, kSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) {
        if (memory_ == MAP_FAILED) return;
        stack_t own = {};
        own.ss_sp = memory_;
        own.ss_size = kSize;
        installed_ = sigaltstack(&own, &former_) == 0;
    }
    ~SignalStack() {
        if (installed_) sigaltstack(&former_, nullptr);
        if (memory_ != MAP_FAILED) munmap(memory_, kSize);
    }
    SignalStack(const SignalStack&) = delete;
    SignalStack& operator=(const SignalStack&) = delete;

private:
    static constexpr std::size_t kSize = 18'432;

    void* const memory_;
    stack_t former_ = {};
    bool installed_ = false;
};

// What the calling thread serves; null ends its loop.
thread_local constinit Worker* worker_of_this_thread = nullptr;

} // namespace

Worker::Worker(const WorkerEnvironment& environment, Thread::PoolType type, bool flag)
    : type_(type), flag_(flag) {
    create_system_thread(environment, PTHREAD_CREATE_DETACHED, &Worker::loop, this);
}

Worker::~Worker() {
    if (worker_of_this_thread == this) {
        worker_of_this_thread = nullptr;
        return;
    }
    ready_.wait();
    start_.raise();
    stopped_.wait();
}

void Worker::hand_over(OrbThreadPool* pool, SCOM_Process* process, Thread* thread,
                       ThreadTimer* timer) {
    ready_.wait();
    pool_ = {pool, true};
    process_ = process;
    thread_ = {thread, true};
    timer_ = {timer, true};
    threadSet_.store(thread->threadSet(), std::memory_order_release);
    const bool atOnce = awake_.load(std::memory_order_relaxed);
    start_.raise();
    if (atOnce) spin_for(attached_); // on one that sleeps this would only keep a processor from it
    attached_.wait();
}

// ---- On the worker's thread

void* Worker::loop(void* argument) {
    const SignalStack signalStack;
    worker_of_this_thread = static_cast<Worker*>(argument);
    while (Worker* const worker = worker_of_this_thread) {
        worker->ready_.raise();
        worker->await_start();
        if (!worker->thread_) {
            worker->stopped_.raise(); // ends the worker
            break;
        }
        worker->perform(); // may end the worker as well, which clears the variable
        kiln::memory_heap()->cleanThread();
    }
    return nullptr;
}

void Worker::await_start() {
    awake_.store(true, std::memory_order_relaxed);
    spin_for(start_);
    awake_.store(false, std::memory_order_relaxed);
    start_.wait();
}

// From its return to the bucket on, the worker may be handed out again; whoever gets it waits for
// `ready`, which is raised after all this.
void Worker::perform() {
    const InterfacePtr<Worker> self(this, true);
    InterfacePtr<OrbThreadPool> pool;
    {
        // Outlives the attachment and everything of the thread: it keeps the tables of the process.
        InterfacePtr<SCOM_ProcessData> processData;
        const ThreadAttach attach(thread_.get(), process_);
        processData = {current_process_data(), true};
        attached_.raise();
        run_job();

        process_ = nullptr;
        thread_.reset();
        timer_.reset();
        pool.swap(pool_);
        pool->give_back(*this);
    }
    threadSet_.store(nullptr, std::memory_order_release);
}

void Worker::run_job() noexcept {
    try {
        if (timer_)
            run_timer();
        else
            thread_->threadMain();
    } catch (const Exception& failure) {
        log_failure(failure, u"Thread");
    } catch (...) {
        // Nobody waits for what is no exception of ours.
    }
}

void Worker::run_timer() {
    try {
        do {
            if (timer_->wait_for_cancel(thread_->getTimerInterval())) break;
            thread_->timerMain();
        } while (thread_->isAlive());
    } catch (...) {
        thread_->timerMainEnd();
        throw;
    }
    thread_->timerMainEnd();
}

} // namespace core
