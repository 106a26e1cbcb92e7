#include "Bucket.h"

#include <core/concurrency/LockGuards.h>

#include <kiln/suspend_monitor.h>

#include <chrono>
#include <utility>

namespace core {
namespace {

constexpr std::chrono::seconds kWaitForIdle(1);
constexpr std::uint32_t kIdleTooLong = 20'001; // milliseconds

} // namespace

Bucket::Bucket(const WorkerEnvironment& environment, Thread::PoolType type, Bounds bounds)
    : environment_(environment), type_(type), bounds_(bounds) {
    const std::uint32_t now = environment_.milliseconds();
    for (int made = 0; made < bounds.maxIdle; ++made) idle_.emplace(make_worker(bounds.flag), now);
}

Bucket::~Bucket() = default;

Bucket::Bounds Bucket::bounds() const {
    const ReaderLock guard(mutex_);
    return bounds_;
}

void Bucket::set_bounds(Bounds bounds) {
    const WriterLock guard(mutex_);
    bounds_ = bounds;
}

InterfacePtr<Worker> Bucket::make_worker(bool flag) const {
    return {new Worker(environment_, type_, flag), true};
}

// ---- Taking and giving back. A worker moves between the maps with its node: nothing is allocated,
// so nothing can fail half-way.

Bucket::Taken Bucket::take(const Guard&) {
    Taken taken = {.worker = nullptr, .minIdle = bounds_.minIdle, .shortOfIdle = false};
    if (!idle_.empty()) {
        auto node = idle_.extract(idle_.begin());
        node.mapped() = 0;
        taken.worker = node.key();
        busy_.insert(std::move(node));
    }
    taken.shortOfIdle = static_cast<int>(idle_.size()) < bounds_.minIdle;
    return taken;
}

Bucket::Taken Bucket::take_idle() {
    return take(Guard(mutex_));
}

// The system clock, since the thread sanitizer does not see waits by the steady one.
Bucket::Taken Bucket::wait_for_idle(ISemaphore& monitorWakeUp) {
    Guard guard(mutex_);
    const auto deadline = std::chrono::system_clock::now() + kWaitForIdle;
    auto inTime = std::cv_status::no_timeout;
    while (idle_.empty() && inTime == std::cv_status::no_timeout) {
        monitorWakeUp.raise();
        const kiln::ReportedWait report(kiln::get_thread_suspend_monitor());
        inTime = idleSignal_.wait_until(guard, deadline);
    }
    return take(guard);
}

InterfacePtr<Worker> Bucket::make_busy(bool flag) {
    InterfacePtr<Worker> worker = make_worker(flag);
    const WriterLock guard(mutex_);
    busy_.emplace(worker, 0);
    return worker;
}

void Bucket::give_back(Worker& worker) {
    {
        const WriterLock guard(mutex_);
        auto node = busy_.extract(busy_.find(&worker));
        node.mapped() = environment_.milliseconds();
        idle_.insert(std::move(node));
    }
    idleSignal_.notify_one();
}

std::vector<InterfacePtr<Worker>> Bucket::workers_of(const ThreadSet& set) const {
    std::vector<InterfacePtr<Worker>> found;
    const ReaderLock guard(mutex_);
    for (const Workers* workers : {&idle_, &busy_})
        for (const auto& entry : *workers)
            if (entry.first->serves(set)) found.push_back(entry.first);
    return found;
}

// ---- The monitor's work

std::size_t Bucket::excess() const noexcept {
    if (bounds_.maxIdle == -1) return 0;
    const auto above = static_cast<std::int64_t>(idle_.size()) - bounds_.maxIdle;
    return above > 0 ? static_cast<std::size_t>(above) : 0;
}

void Bucket::maintain(bool trimDue) {
    bool tooFew, tooMany;
    {
        const ReaderLock guard(mutex_);
        tooFew = static_cast<int>(idle_.size()) < bounds_.minIdle;
        tooMany = excess() != 0;
    }
    if (tooFew) fill();
    if (tooMany && trimDue) trim();
}

// A worker that turns out not to be needed is stopped after the lock has been let go.
void Bucket::fill() {
    for (int missing = 2; missing > 1;) {
        InterfacePtr<Worker> worker = make_worker(bounds().flag);
        {
            const WriterLock guard(mutex_);
            missing = bounds_.minIdle - static_cast<int>(idle_.size());
            if (missing > 0) idle_.emplace(std::move(worker), environment_.milliseconds());
        }
        if (missing > 0) idleSignal_.notify_one();
    }
}

void Bucket::trim() {
    Workers dropped;
    const WriterLock guard(mutex_);                        // ends before the dropped workers do
    const std::uint32_t now = environment_.milliseconds(); // not before that of any entry
    std::size_t left = excess();
    for (auto worker = idle_.begin(); worker != idle_.end() && left != 0;) {
        const auto next = std::next(worker);
        if (now - worker->second >= kIdleTooLong) {
            dropped.insert(idle_.extract(worker));
            --left;
        }
        worker = next;
    }
}

} // namespace core
