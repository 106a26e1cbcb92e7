// The workers of one pool type: idle ones, which can be taken, and busy ones.
//
// Its lock guards both maps and the bounds, and is never held while a thread is created or stopped:
// workers are made before it is taken and dropped after it was let go.
#pragma once

#include "Worker.h"

#include <condition_variable>
#include <map>
#include <shared_mutex>

namespace core {

class Bucket final : public Refcountable<Bucket, AtomicCounter> {
public:
    struct Bounds {
        int minIdle = 0; // idle workers that the monitor keeps ready
        int maxIdle = 0; // idle workers beyond this are trimmed; -1: no bound
        bool flag = false;
    };

    // Starts with `maxIdle` idle workers.
    Bucket(const WorkerEnvironment& environment, Thread::PoolType type, Bounds bounds);
    virtual ~Bucket();

    Thread::PoolType type() const noexcept { return type_; }
    Bounds bounds() const;
    void set_bounds(Bounds bounds);

    // What a taker gets: a worker that is busy from now on, or null.
    struct Taken {
        InterfacePtr<Worker> worker;
        int minIdle;      // as it was then
        bool shortOfIdle; // fewer idle workers than that are left
    };
    Taken take_idle();
    // The same, after waiting for one up to a second; raises `monitorWakeUp` before each wait.
    Taken wait_for_idle(ISemaphore& monitorWakeUp);
    // A new worker that is busy.
    InterfacePtr<Worker> make_busy(bool flag);
    // A busy worker is idle from now on.
    void give_back(Worker& worker);

    // The monitor's pass: fills up to the lower bound and, if `trimDue`, drops idle workers beyond
    // the upper one that have been idle for more than 20,000 ms.
    void maintain(bool trimDue);

    // The workers that serve `set`, see Worker::serves.
    std::vector<InterfacePtr<Worker>> workers_of(const ThreadSet& set) const;

private:
    // By address, with the time in milliseconds at which each became idle; 0 for busy ones.
    struct ByAddress {
        using is_transparent = void;
        template <class A, class B> bool operator()(const A& a, const B& b) const noexcept {
            return address(a) < address(b);
        }
        static std::uintptr_t address(const InterfacePtr<Worker>& worker) noexcept {
            return address(worker.get());
        }
        static std::uintptr_t address(const Worker* worker) noexcept {
            return reinterpret_cast<std::uintptr_t>(worker);
        }
    };
    using Workers = std::map<InterfacePtr<Worker>, std::uint32_t, ByAddress>;
    using Guard = std::unique_lock<std::shared_timed_mutex>;

    InterfacePtr<Worker> make_worker(bool flag) const;
    Taken take(const Guard& guard);
    std::size_t excess() const noexcept;
    void fill();
    void trim();

    const WorkerEnvironment& environment_;
    const Thread::PoolType type_;
    mutable std::shared_timed_mutex mutex_;
    std::condition_variable_any idleSignal_; // notified once for each worker that becomes idle
    Bounds bounds_;                          // guarded by mutex_, as the maps
    Workers idle_;
    Workers busy_;
};

} // namespace core
