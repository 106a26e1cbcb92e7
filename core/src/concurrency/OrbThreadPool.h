// The pool: a bucket of workers for each pool type, and one monitor thread that fills and trims the
// buckets about once a second.
//
// Lock order: the pool's lock, then a bucket's. The pool's is held for a look-up only and let go
// before anything that blocks.
#pragma once

#include "Bucket.h"

#include <core/component/InterfaceMap.h>
#include <core/component/ObjectRoot.h>
#include <core/concurrency/RWMutex.h>
#include <core/concurrency/ThreadPool.h>

namespace core {

class ORBCORE_API OrbThreadPool
    : public ObjectRoot
    , public IThreadPool {
public:
    static const InterfaceEntry* _GetEntries();

    explicit OrbThreadPool(const WorkerEnvironment& environment = kSystemEnvironment);
    // Comes when no job is left. Stops the monitor and the idle workers.
    ~OrbThreadPool();

    void schedule(SCOM_Process* process, Thread* thread) override;
    ThreadTimer* scheduleTimer(SCOM_Process* process, Thread* thread) override;
    void cancelTimer(ThreadTimer* timer, Thread* thread) override;
    void setMode(Thread::PoolType type, int minIdle, int maxIdle, bool flag) override;

    // A worker that has done its job becomes idle.
    void give_back(Worker& worker);
    // Waits until no worker has anything of the threads of `set`, see WorkerDrain.h.
    void drain(const ThreadSet& set);

private:
    enum class State { Idle = 0, Running = 1, ShuttingDown = 2 }; // of the monitor; never back

    State state();
    InterfacePtr<Bucket> find_bucket(Thread::PoolType type);
    InterfacePtr<Bucket> next_bucket(const Bucket* previous);
    void start_monitor();
    void monitor();
    void run(SCOM_Process* process, Thread* thread, ThreadTimer* timer);
    InterfacePtr<Worker> get_worker(Thread::PoolType type);

    const WorkerEnvironment& environment_;
    pthread_t monitor_ = {};
    Semaphore wakeUp_; // of the monitor
    RWMutex lock_;
    State state_ = State::Idle;                                // guarded by lock_
    std::map<Thread::PoolType, InterfacePtr<Bucket>> buckets_; // guarded by lock_
};

} // namespace core
