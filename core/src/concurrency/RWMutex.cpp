// Order: entering acquires, leaving releases. All changes of the state are read-modify-writes, so
// a release stays visible through later ones: a writer that swaps 0 for 1 comes after every reader
// that left, and a reader that finds the writer's bit clear after the writer who cleared it.
#include <core/concurrency/RWMutex.h>

#include "Backoff.h"

namespace core {
namespace {

// For an operation that has succeeded already and is only to be shown to the watcher.
void done(void*, kiln::IThreadSuspendMonitor*) {}

} // namespace

RWMutex::RWMutex(kiln::IThreadSuspendMonitor* suspendMonitor)
    : monitor_(
          kiln::create_mutex_monitor(this, this, suspendMonitor, kiln::MutexKind::kReaderWriter)),
      suspendMonitor_(suspendMonitor) {}

void RWMutex::wait_to_enter(kiln::IThreadSuspendMonitor* suspendMonitor) noexcept {
    const kiln::ReportedWait wait(suspendMonitor);
    unsigned int step = 0;
    do back_off(step);
    while (!try_enter());
}

// The caller stays counted as a reader meanwhile, so the next writer waits for it.
void RWMutex::wait_for_writer(kiln::IThreadSuspendMonitor* suspendMonitor) noexcept {
    const kiln::ReportedWait wait(suspendMonitor);
    unsigned int step = 0;
    do back_off(step);
    while (state_.load(std::memory_order_acquire) & kWriter);
}

bool RWMutex::try_lock() {
    if (!try_enter()) return false;
    if (monitor_) monitor_->lock(this, &done);
    return true;
}

// Not by adding first: a refused reader that is counted for a moment could send a writer into a
// pause of 10 milliseconds.
bool RWMutex::try_lock_shared() {
    std::uint32_t state = state_.load(std::memory_order_relaxed);
    do
        if (state & kWriter) return false;
    while (!state_.compare_exchange_weak(state, state + kReader, std::memory_order_acquire,
                                         std::memory_order_relaxed));
    if (monitor_) monitor_->lockShared(this, &done);
    return true;
}

void ConditionVariable::wait(bool shared, unsigned int& backoff, unsigned int) {
    if (shared)
        mutex_.unlockShared();
    else
        mutex_.unlock();
    {
        const kiln::ReportedWait wait(mutex_.suspendMonitor_);
        back_off(backoff);
    }
    if (shared)
        mutex_.lockShared();
    else
        mutex_.lock();
}

} // namespace core
