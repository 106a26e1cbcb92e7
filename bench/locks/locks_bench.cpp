// Taking and leaving a lock that nobody else wants should cost what the standard locks cost or
// less: one atomic operation each way for readers and for the writer of a RWMutex. Readers on two
// processors share one word, so there the word's travel between them is what is measured.
#include <core/concurrency/IRWMutex.h>
#include <core/concurrency/Mutex.h>
#include <core/concurrency/RWMutex.h>
#include <core/concurrency/RWRMutex.h>

#include <benchmark/benchmark.h>

#include <mutex>
#include <shared_mutex>

#include <pthread.h>

namespace {

class PthreadRWLock {
public:
    void lock() { pthread_rwlock_wrlock(&lock_); }
    void unlock() { pthread_rwlock_unlock(&lock_); }
    void lock_shared() { pthread_rwlock_rdlock(&lock_); }
    void unlock_shared() { pthread_rwlock_unlock(&lock_); }

private:
    pthread_rwlock_t lock_ = PTHREAD_RWLOCK_INITIALIZER;
};

template <class Lock> Lock& the_lock() {
    static Lock lock;
    return lock;
}

template <class Lock> void exclusive(benchmark::State& state) {
    Lock& lock = the_lock<Lock>();
    for (auto _ : state) {
        lock.lock();
        benchmark::ClobberMemory();
        lock.unlock();
    }
}

template <class Lock> void shared(benchmark::State& state) {
    Lock& lock = the_lock<Lock>();
    for (auto _ : state) {
        lock.lock_shared();
        benchmark::ClobberMemory();
        lock.unlock_shared();
    }
}

// One more lock by the thread that holds it.
template <class Lock> void again(benchmark::State& state) {
    const std::lock_guard held(the_lock<Lock>());
    exclusive<Lock>(state);
}

BENCHMARK(exclusive<core::Mutex>)->Name("uncontended_lock/orbcore");
BENCHMARK(exclusive<std::recursive_mutex>)->Name("uncontended_lock/std::recursive_mutex");
BENCHMARK(again<core::Mutex>)->Name("lock_again/orbcore");
BENCHMARK(again<std::recursive_mutex>)->Name("lock_again/std::recursive_mutex");

BENCHMARK(exclusive<core::RWMutex>)->Name("uncontended_rw_writer/orbcore");
BENCHMARK(exclusive<std::shared_mutex>)->Name("uncontended_rw_writer/std::shared_mutex");
BENCHMARK(exclusive<PthreadRWLock>)->Name("uncontended_rw_writer/pthread_rwlock");
BENCHMARK(shared<core::RWMutex>)->Name("uncontended_rw_reader/orbcore");
BENCHMARK(shared<std::shared_mutex>)->Name("uncontended_rw_reader/std::shared_mutex");
BENCHMARK(shared<PthreadRWLock>)->Name("uncontended_rw_reader/pthread_rwlock");

BENCHMARK(exclusive<core::SimpleRWMutex>)->Name("uncontended_simple_writer/orbcore");
BENCHMARK(exclusive<std::shared_mutex>)->Name("uncontended_simple_writer/std::shared_mutex");
BENCHMARK(shared<core::SimpleRWMutex>)->Name("uncontended_simple_reader/orbcore");
BENCHMARK(shared<std::shared_mutex>)->Name("uncontended_simple_reader/std::shared_mutex");

// The standard has no recursive reader-writer lock: these measure what recursion costs.
BENCHMARK(exclusive<core::RWRMutex>)->Name("uncontended_recursive_writer/orbcore");
BENCHMARK(exclusive<std::shared_mutex>)->Name("uncontended_recursive_writer/std::shared_mutex");
BENCHMARK(shared<core::RWRMutex>)->Name("uncontended_recursive_reader/orbcore");
BENCHMARK(shared<std::shared_mutex>)->Name("uncontended_recursive_reader/std::shared_mutex");

BENCHMARK(shared<core::RWMutex>)->Name("two_rw_readers/orbcore")->Threads(2);
BENCHMARK(shared<std::shared_mutex>)->Name("two_rw_readers/std::shared_mutex")->Threads(2);
BENCHMARK(shared<PthreadRWLock>)->Name("two_rw_readers/pthread_rwlock")->Threads(2);
BENCHMARK(shared<core::SimpleRWMutex>)->Name("two_simple_readers/orbcore")->Threads(2);
BENCHMARK(shared<std::shared_mutex>)->Name("two_simple_readers/std::shared_mutex")->Threads(2);

BENCHMARK(exclusive<core::Mutex>)->Name("contended_lock/orbcore")->Threads(2);
BENCHMARK(exclusive<std::recursive_mutex>)->Name("contended_lock/std::recursive_mutex")->Threads(2);
BENCHMARK(exclusive<core::RWMutex>)->Name("contended_rw_writer/orbcore")->Threads(2);
BENCHMARK(exclusive<std::shared_mutex>)->Name("contended_rw_writer/std::shared_mutex")->Threads(2);

} // namespace
