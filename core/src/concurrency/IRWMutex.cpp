// Order: a reader's addition acquires and a writer's subtraction releases, and the other way round.
// All changes of the state are read-modify-writes, so a release stays visible through later ones:
// a writer that swaps 0 for 1 comes after every reader that left.
#include <core/concurrency/IRWMutex.h>

#include "Backoff.h"

namespace core {

void IRWMutexSimpleImpl::enter_behind_writer() {
    state_.fetch_sub(kReader, std::memory_order_relaxed); // or the next writer waits for us
    gate_->lock();
    state_.fetch_add(kReader, std::memory_order_acquire); // with the gate held no writer is in
    gate_->unlock();
}

bool IRWMutexSimpleImpl::try_enter_writer() noexcept {
    std::uint32_t free = 0;
    return state_.compare_exchange_strong(free, kWriter, std::memory_order_acquire,
                                          std::memory_order_relaxed);
}

void IRWMutexSimpleImpl::acquireWriterLock0() {
    gate_->lock();
    if (try_enter_writer()) return;
    const kiln::ReportedWait wait(gate_->suspend_monitor());
    unsigned int step = 0;
    do back_off(step);
    while (!try_enter_writer());
}

void IRWMutexSimpleImpl::releaseWriterLock0() noexcept {
    state_.fetch_sub(kWriter, std::memory_order_release);
    gate_->unlock();
}

void IRWMutexSimpleImpl::own() noexcept {
    depth_ = 1;
    owner_.store(thread_id(), std::memory_order_relaxed);
}

void IRWMutexSimpleImpl::acquireWriterLock() {
    if (is_owner()) {
        ++depth_;
        return;
    }
    acquireWriterLock0();
    own();
}

void IRWMutexSimpleImpl::releaseWriterLock() noexcept {
    if (--depth_ != 0) return;
    owner_.store(0, std::memory_order_relaxed);
    releaseWriterLock0();
}

bool IRWMutexSimpleImpl::try_lock() {
    if (is_owner()) {
        ++depth_;
        return true;
    }
    if (!gate_->try_lock()) return false;
    if (!try_enter_writer()) {
        gate_->unlock();
        return false;
    }
    own();
    return true;
}

// Not by adding first: a refused reader that is counted for a moment could send a writer into a
// pause of 10 milliseconds.
bool IRWMutexSimpleImpl::try_lock_shared() noexcept {
    if (is_owner()) return true;
    std::uint32_t state = state_.load(std::memory_order_relaxed);
    do
        if (state & kWriter) return false;
    while (!state_.compare_exchange_weak(state, state + kReader, std::memory_order_acquire,
                                         std::memory_order_relaxed));
    return true;
}

} // namespace core
