// The pools of workers that every `core::Thread` runs on.
//
//   core::set_thread_mode(core::Thread::PoolType::Functor, 2, 8, false);  // 2 to 8 idle workers
//
// A program rarely needs more: `Thread::start` finds its worker by the thread's pool type.
#pragma once

#include <core/concurrency/Thread.h>

#include <algorithm>
#include <limits>

namespace core {

// Ends a timer when it is raised.
class ORBCORE_API ThreadTimer final : public Refcountable<ThreadTimer, AtomicCounter> {
public:
    void cancel() { end_.raise(); }
    // False when `milliseconds` have passed and the timer goes on.
    bool wait_for_cancel(unsigned int milliseconds) {
        constexpr unsigned int kLongest = std::numeric_limits<int>::max();
        return end_.wait(static_cast<int>(std::min(milliseconds, kLongest)));
    }

private:
    Semaphore end_;
};

inline constexpr _GUID IID_IThreadPool = "da399484-2cbd-42ce-a622-c5477f4f4406"_guid;

class IThreadPool : public IUnknown {
public:
    ORB_INTERFACE(IThreadPool, IID_IThreadPool)

    // Runs `thread` once on a worker within `process`; when it returns, the thread is attached.
    virtual void schedule(SCOM_Process* process, Thread* thread) = 0;
    // Runs `thread` as a timer; the caller owns a reference to the result.
    virtual ThreadTimer* scheduleTimer(SCOM_Process* process, Thread* thread) = 0;
    // Ends the timer and, on another thread than its own, waits up to 2 s for `thread` to be
    // unused.
    virtual void cancelTimer(ThreadTimer* timer, Thread* thread) = 0;
    // The bounds of idle workers in the bucket of a type; `maxIdle` -1 means none. The flag is
    // kept.
    virtual void setMode(Thread::PoolType type, int minIdle, int maxIdle, bool flag) = 0;
};

// The pool that serves a type: type 0 has one of its own. Lent; lives as long as the library.
ORBCORE_API IThreadPool* thread_pool(Thread::PoolType type);

// `setMode` on the common pool; a call with type 0 does nothing.
ORBCORE_API void set_thread_mode(Thread::PoolType type, int minIdle, int maxIdle, bool flag);

} // namespace core
