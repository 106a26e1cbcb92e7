#include "OrbThreadPool.h"

#include "Backoff.h"
#include "WorkerDrain.h"

#include <core/component/Object.h>
#include <core/concurrency/LockGuards.h>

#include <new>

#include <dlfcn.h>

namespace core {
namespace {

constexpr int kMonitorPeriod = 1000; // milliseconds

// A second has passed and the clock was not set back, as far as 32 bits can tell.
bool is_trim_due(std::uint32_t sinceLast) {
    return sinceLast >= 1001 && sinceLast <= 0x7ffffffe;
}

} // namespace

const InterfaceEntry* OrbThreadPool::_GetEntries() {
    return interface_map<OrbThreadPool, IThreadPool>();
}

OrbThreadPool::OrbThreadPool(const WorkerEnvironment& environment) : environment_(environment) {
    constexpr auto kType = Thread::PoolType::Default;
    buckets_[kType] = {new Bucket(environment_, kType, {}), true};
}

OrbThreadPool::~OrbThreadPool() {
    bool joinMonitor;
    {
        const WriterLock guard(lock_);
        joinMonitor = state_ == State::Running;
        state_ = State::ShuttingDown;
    }
    if (joinMonitor) {
        wakeUp_.raise();
        pthread_join(monitor_, nullptr);
    }
}

OrbThreadPool::State OrbThreadPool::state() {
    const ReaderLock guard(lock_);
    return state_;
}

InterfacePtr<Bucket> OrbThreadPool::find_bucket(Thread::PoolType type) {
    const ReaderLock guard(lock_);
    const auto place = buckets_.find(type);
    return place == buckets_.end() ? nullptr : place->second;
}

// ---- Jobs

void OrbThreadPool::schedule(SCOM_Process* process, Thread* thread) {
    run(process, thread, nullptr);
}

ThreadTimer* OrbThreadPool::scheduleTimer(SCOM_Process* process, Thread* thread) {
    InterfacePtr<ThreadTimer> timer(new ThreadTimer, true);
    run(process, thread, timer.get());
    return timer.detach();
}

void OrbThreadPool::cancelTimer(ThreadTimer* timer, Thread* thread) {
    constexpr unsigned int kWaitForEnd = 2000; // milliseconds
    const InterfacePtr<ThreadTimer> held(timer, true);
    timer->cancel();
    if (thread != current_thread()) wait_unique(thread, kWaitForEnd);
}

void OrbThreadPool::run(SCOM_Process* process, Thread* thread, ThreadTimer* timer) {
    get_worker(thread->poolType())->hand_over(this, process, thread, timer);
}

// Wakes the monitor only where it has something to do at once, which is to fill the bucket:
// trimming goes by time and the monitor's own period is enough for it.
InterfacePtr<Worker> OrbThreadPool::get_worker(Thread::PoolType type) {
    InterfacePtr<Bucket> bucket = find_bucket(type);
    if (!bucket) bucket = find_bucket(Thread::PoolType::Default);
    if (state() == State::Idle) start_monitor();

    const Bucket::Bounds bounds = bucket->bounds();
    int minIdle = bounds.minIdle;
    while (minIdle > 0 && state() == State::Running) {
        Bucket::Taken taken = bucket->wait_for_idle(wakeUp_);
        if (!taken.worker || taken.shortOfIdle) wakeUp_.raise();
        if (taken.worker) return taken.worker;
        minIdle = taken.minIdle;
    }

    Bucket::Taken taken = bucket->take_idle();
    if (!taken.worker) return bucket->make_busy(bounds.flag);
    if (taken.shortOfIdle) wakeUp_.raise();
    return taken.worker;
}

void OrbThreadPool::give_back(Worker& worker) {
    if (const auto bucket = find_bucket(worker.type())) bucket->give_back(worker);
}

// A bucket is made before the lock is taken, since it may start with workers. When another thread
// was faster with the same type, that bucket gets the values and ours ends.
void OrbThreadPool::setMode(Thread::PoolType type, int minIdle, int maxIdle, bool flag) {
    const Bucket::Bounds bounds = {minIdle, maxIdle, flag};
    InterfacePtr<Bucket> bucket = find_bucket(type);
    if (!bucket) {
        const InterfacePtr<Bucket> made(new Bucket(environment_, type, bounds), true);
        const WriterLock guard(lock_);
        bucket = buckets_.try_emplace(type, made).first->second;
        if (bucket == made) return;
    }
    bucket->set_bounds(bounds);
}

// ---- The monitor

void OrbThreadPool::start_monitor() {
    const WriterLock guard(lock_);
    if (state_ != State::Idle) return;
    state_ = State::Running;
    const auto routine = [](void* pool) -> void* {
        static_cast<OrbThreadPool*>(pool)->monitor();
        return nullptr;
    };
    monitor_ = create_system_thread(environment_, PTHREAD_CREATE_JOINABLE, routine, this);
}

InterfacePtr<Bucket> OrbThreadPool::next_bucket(const Bucket* previous) {
    const ReaderLock guard(lock_);
    const auto place = previous ? buckets_.upper_bound(previous->type()) : buckets_.begin();
    return place == buckets_.end() ? nullptr : place->second;
}

// The walk over the buckets lets go of the lock between them, so that others may come in meanwhile.
void OrbThreadPool::monitor() {
    std::uint32_t last = environment_.milliseconds();
    while (state() != State::ShuttingDown) {
        const std::uint32_t now = environment_.milliseconds();
        const bool trimDue = is_trim_due(now - last);
        if (trimDue) last = now;
        try {
            for (auto bucket = next_bucket(nullptr); bucket; bucket = next_bucket(bucket.get()))
                bucket->maintain(trimDue);
        } catch (const std::bad_alloc&) {
            // There may be memory at the next pass.
        }
        wakeUp_.wait(kMonitorPeriod);
        while (wakeUp_.wait(0)) {} // one pass answers all that was raised before it
    }
}

// ---- The end of a process

void OrbThreadPool::drain(const ThreadSet& set) {
    for (auto bucket = next_bucket(nullptr); bucket; bucket = next_bucket(bucket.get())) {
        for (const auto& worker : bucket->workers_of(set)) {
            unsigned int step = 0;
            while (worker->serves(set)) back_off(step);
        }
    }
}

// ---- The two pools

namespace {

// Workers and monitors run code of this library until the program ends, so it stays mapped even
// when a program that loaded it by hand closes it.
void pin_this_library() {
    Dl_info info;
    if (dladdr(reinterpret_cast<void*>(&pin_this_library), &info) != 0)
        dlopen(info.dli_fname, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);
}

struct Pools {
    const InterfacePtr<OrbThreadPool> separate = make_object<OrbThreadPool>();
    const InterfacePtr<OrbThreadPool> common = make_object<OrbThreadPool>();
};

// Never destroyed: threads of other statics may still run or start jobs at exit.
const Pools& pools() {
    static const Pools& pools = (pin_this_library(), *new Pools);
    return pools;
}

} // namespace

IThreadPool* thread_pool(Thread::PoolType type) {
    return (type == Thread::PoolType::Separate ? pools().separate : pools().common).get();
}

void set_thread_mode(Thread::PoolType type, int minIdle, int maxIdle, bool flag) {
    if (type != Thread::PoolType::Separate) pools().common->setMode(type, minIdle, maxIdle, flag);
}

void drain_workers(const ThreadSet& set) {
    pools().separate->drain(set);
    pools().common->drain(set);
}

} // namespace core
