// Tasks on the pool. A thread for each would cost two hand-overs between processors a task, so each
// process has a queue, and runners, threads of the pool that take from it.
//
// A runner is active while it runs a task, or it is the one on standby. While tasks are queued
// there is always one on standby: it takes a task as soon as fewer runners are active than there
// are processors, or when no task was finished for a millisecond. That is what lets tasks wait for
// one another. Who finds nothing to do leaves; its worker stays in the pool for a while.

#include <core/concurrency/async.h>

#include "WorkerSpin.h"

#include <core/component/ThreadException.h>
#include <core/concurrency/ThreadSet.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <new>

namespace core {
namespace {

using Lock = std::unique_lock<std::mutex>;

constexpr std::chrono::milliseconds kStalled(1);

struct Queue {
    std::deque<InterfacePtr<AsyncTask>> tasks;
    std::atomic<std::size_t> size = 0; // of tasks, for a look without the lock
    unsigned int active = 0;           // runners that run a task
    bool standby = false;              // a runner waits for its turn, or is under way to it
    std::uint64_t finished = 0;        // tasks so far
    std::condition_variable turn;      // for the one on standby
};

// One lock for the queues of all processes: nearly every program has one process.
std::mutex mutex;

// By process object. A queue is there while it has tasks or runners.
std::map<const ThreadSet*, Queue>& queues() {
    static auto& all = *new std::map<const ThreadSet*, Queue>; // runners may use it at exit
    return all;
}

thread_local constinit bool is_runner = false;

unsigned int processors() {
    static const unsigned int count = hardware_concurrency();
    return count;
}

void start_runner(const ThreadSet& process, Queue& queue);

class Runner final : public Thread {
public:
    Runner(const ThreadSet& process, Queue& queue)
        : Thread(PoolType::Functor), process_(process), queue_(queue) {}

    void run() override {
        is_runner = true;
        run_tasks(Lock(mutex));
        is_runner = false;
    }

private:
    void run_tasks(Lock lock);
    bool await_turn(Lock& lock);
    bool linger(Lock& lock);
    void work(Lock& lock);

    const ThreadSet& process_; // just its address
    Queue& queue_;             // there until this runner leaves
};

void Runner::run_tasks(Lock lock) {
    while (await_turn(lock)) {
        work(lock);
        if (queue_.standby) return; // there are tasks or another runner: the queue stays
        queue_.standby = true;
    }
    queue_.standby = false;
    if (queue_.active == 0) queues().erase(&process_);
}

// On standby. False when nothing came for a while.
bool Runner::await_turn(Lock& lock) {
    while (true) {
        if (queue_.tasks.empty()) {
            if (!linger(lock)) return false;
        } else if (queue_.active < processors()) {
            return true;
        } else {
            const std::uint64_t finished = queue_.finished;
            queue_.turn.wait_until(lock, std::chrono::system_clock::now() + kStalled);
            if (queue_.finished == finished && !queue_.tasks.empty()) return true;
        }
    }
}

bool Runner::linger(Lock& lock) {
    lock.unlock();
    spin_until([this] { return queue_.size.load(std::memory_order_relaxed) != 0; });
    lock.lock();
    return !queue_.tasks.empty();
}

// From standby to active, until there is nothing to do or there are too many that do it.
void Runner::work(Lock& lock) {
    queue_.standby = false;
    ++queue_.active;
    do {
        InterfacePtr<AsyncTask> task = std::move(queue_.tasks.front());
        queue_.tasks.pop_front();
        --queue_.size;
        const bool needStandby = !queue_.tasks.empty() && !std::exchange(queue_.standby, true);
        lock.unlock();
        if (needStandby) start_runner(process_, queue_);
        task->run();
        task.reset();
        lock.lock();
        ++queue_.finished;
    } while (!queue_.tasks.empty() && queue_.active <= processors());
    --queue_.active;
}

// False when the process takes no more threads, or when there is no memory for one.
bool try_start_runner(const ThreadSet& process, Queue& queue) {
    try {
        const InterfacePtr<Thread> runner(new Runner(process, queue), true);
        runner->start();
        return runner->state() != Thread::State::Terminated;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

// Where none can be started, active runners still see to the tasks.
void start_runner(const ThreadSet& process, Queue& queue) {
    if (try_start_runner(process, queue)) return;
    std::deque<InterfacePtr<AsyncTask>> rejected;
    {
        const Lock lock(mutex);
        queue.standby = false;
        if (queue.active != 0) return;
        rejected.swap(queue.tasks);
        queues().erase(&process);
    }
    for (const auto& task : rejected) task->reject();
}

} // namespace

void run_async(InterfacePtr<AsyncTask> task) {
    Thread* const caller = current_thread();
    const ThreadSet* const process = caller ? caller->threadSet() : nullptr;
    if (!process) return task->reject();

    Lock lock(mutex);
    Queue& queue = queues()[process];
    queue.tasks.push_back(std::move(task));
    ++queue.size;
    if (std::exchange(queue.standby, true)) {
        if (queue.active < processors()) queue.turn.notify_one();
        return;
    }
    lock.unlock();
    start_runner(*process, queue);
}

// ---- Tasks

AsyncTask::AsyncTask() : promise_(create_promise()) {}

AsyncTask::~AsyncTask() = default;

// What a listener throws has nobody to go to here.
void AsyncTask::run() noexcept {
    try {
        perform();
    } catch (...) {}
}

// `setRunning` decides who runs the task, if anybody.
void AsyncTask::perform() {
    if (!promise_->setRunning()) return;
    try {
        invoke();
    } catch (const ThreadDeath&) {
        future()->cancel(); // ends the task, not the runner
    } catch (const Exception& exception) {
        fail(&exception);
    } catch (...) {
        fail(nullptr);
    }
    promise_->setResult(nullptr); // refused when it did not come to that
}

void AsyncTask::reject() {
    try {
        throw ThreadException(ThreadException::Error::RejectedExecution);
    } catch (const Exception& exception) {
        fail(&exception);
    }
}

// Within a handler.
void AsyncTask::fail(const Exception* exception) {
    failure_ = std::current_exception();
    InterfacePtr<IExceptionObject> object;
    try {
        if (exception) object = exception->object();
    } catch (const std::bad_alloc&) {
        // The future fails all the same; `wait` has the exception itself.
    }
    promise_->setException(object.get());
}

// A task that waits for one that nobody has begun runs it itself.
void AsyncTask::wait() {
    if (is_runner) run();
    try {
        future()->getResult();
    } catch (const ThreadException& exception) {
        if (exception.error() != ThreadException::Error::Execution) throw;
        std::rethrow_exception(failure_);
    }
}

bool AsyncTask::wait_for(unsigned int milliseconds) {
    if (future()->isDone()) return true;
    if (milliseconds == 0) return false;
    try {
        future()->getResultTimed(milliseconds);
    } catch (const ThreadException& exception) {
        return exception.error() != ThreadException::Error::Timeout;
    }
    return true;
}

} // namespace core
