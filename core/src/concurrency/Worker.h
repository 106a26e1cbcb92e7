// An operating-system thread of a pool, and the job that it has been handed.
//
// A worker is counted: the maps of its bucket hold it, and it holds itself while it performs a job.
// Whoever drops the last reference stops its thread. Between jobs the thread touches the worker
// only through the semaphores, so these are what orders all access:
//
//   handing thread                  worker's thread
//                                   raise ready            the fields below belong to the handing
//   wait ready, write the job                              thread from here
//   raise start                     wait start             to here, afterwards to the worker
//   wait attached                   attach, raise attached
#pragma once

#include "WorkerEnvironment.h"

#include <core/concurrency/Semaphore.h>
#include <core/concurrency/ThreadPool.h>

#include <atomic>

namespace core {

class OrbThreadPool;
class ThreadSet;

class Worker final : public Refcountable<Worker, AtomicCounter> {
public:
    // Its thread is under way to its first wait when the constructor returns.
    Worker(const WorkerEnvironment& environment, Thread::PoolType type, bool flag);
    // Stops the thread and waits until it will not touch this object again; on the thread itself,
    // just tells it to leave.
    virtual ~Worker();

    Thread::PoolType type() const noexcept { return type_; }
    bool flag() const noexcept { return flag_; }

    // Gives the job to the thread and returns when `thread` is attached there. Without a timer it
    // runs once.
    void hand_over(OrbThreadPool* pool, SCOM_Process* process, Thread* thread, ThreadTimer* timer);

    // Whether this worker still has anything of a thread that runs or ran in `set`.
    bool serves(const ThreadSet& set) const noexcept {
        return threadSet_.load(std::memory_order_acquire) == &set;
    }

private:
    static void* loop(void* argument);
    void await_start();
    void perform();
    void run_job() noexcept;
    void run_timer();

    const Thread::PoolType type_;
    const bool flag_;
    Semaphore start_;    // raised when a job stands in the fields below, or no thread: stop
    Semaphore ready_;    // raised by the thread when it can take a job
    Semaphore stopped_;  // raised by the thread when it leaves
    Semaphore attached_; // raised by the thread when the job's thread is attached

    std::atomic<bool> awake_ = false; // a hint: the thread will answer within a microsecond

    // The job. The pool is held for its time only: idle workers do not keep their pool alive.
    InterfacePtr<OrbThreadPool> pool_;
    SCOM_Process* process_ = nullptr;
    InterfacePtr<Thread> thread_;
    InterfacePtr<ThreadTimer> timer_;
    std::atomic<const ThreadSet*> threadSet_ = nullptr;
};

} // namespace core
