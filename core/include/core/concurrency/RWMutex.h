// The small reader-writer lock: one word, one atomic operation to enter and one to leave.
//
//   core::RWMutex mutex_;
//   const core::ReaderLock lock(mutex_);     // core/concurrency/LockGuards.h, or std::shared_lock
//
// For short sections that are mostly read. Who has to wait spins with growing pauses, up to
// 10 milliseconds each, so a long hold costs others that much. Not recursive on either side.
#pragma once

#include <core/platform/api.h>

#include <kiln/mutex_monitor.h>

#include <atomic>
#include <cstdint>
#include <memory>

namespace core {

// If a mutex watcher is installed when the lock is made, it sees every operation.
class ORBCORE_API RWMutex {
public:
    // Waits are reported to `suspendMonitor`; null: to nobody. Throws std::bad_alloc.
    explicit RWMutex(kiln::IThreadSuspendMonitor* suspendMonitor = nullptr);
    RWMutex(const RWMutex&) = delete;
    RWMutex& operator=(const RWMutex&) = delete;

    void lock() {
        if (monitor_) [[unlikely]]
            return monitor_->lock(this, &RWMutex::lock);
        lock(this, suspendMonitor_);
    }
    void unlock() {
        if (monitor_) [[unlikely]]
            return monitor_->unlock(this, &RWMutex::unlock);
        unlock(this, suspendMonitor_);
    }
    void lockShared() {
        if (monitor_) [[unlikely]]
            return monitor_->lockShared(this, &RWMutex::lockShared);
        lockShared(this, suspendMonitor_);
    }
    void unlockShared() {
        if (monitor_) [[unlikely]]
            return monitor_->unlockShared(this, &RWMutex::unlockShared);
        unlockShared(this, suspendMonitor_);
    }

    // Take the lock if that needs no waiting.
    bool try_lock();
    bool try_lock_shared();

    // The names that std::shared_lock calls.
    void lock_shared() { lockShared(); }
    void unlock_shared() { unlockShared(); }

    // What the operations do, in the form that a mutex monitor calls.
    static void lock(void* mutex, kiln::IThreadSuspendMonitor* suspendMonitor) {
        auto* const self = static_cast<RWMutex*>(mutex);
        if (!self->try_enter()) [[unlikely]]
            self->wait_to_enter(suspendMonitor);
    }
    static void unlock(void* mutex, kiln::IThreadSuspendMonitor*) {
        static_cast<RWMutex*>(mutex)->state_.fetch_sub(kWriter, std::memory_order_release);
    }
    static void lockShared(void* mutex, kiln::IThreadSuspendMonitor* suspendMonitor) {
        auto* const self = static_cast<RWMutex*>(mutex);
        if (self->state_.fetch_add(kReader, std::memory_order_acquire) & kWriter) [[unlikely]]
            self->wait_for_writer(suspendMonitor);
    }
    static void unlockShared(void* mutex, kiln::IThreadSuspendMonitor*) {
        static_cast<RWMutex*>(mutex)->state_.fetch_sub(kReader, std::memory_order_release);
    }

private:
    friend class ConditionVariable;

    static constexpr std::uint32_t kWriter = 1; // a writer is in
    static constexpr std::uint32_t kReader = 2; // the rest counts readers, those that wait too

    bool try_enter() noexcept {
        std::uint32_t free = 0;
        return state_.compare_exchange_strong(free, kWriter, std::memory_order_acquire,
                                              std::memory_order_relaxed);
    }
    void wait_to_enter(kiln::IThreadSuspendMonitor* suspendMonitor) noexcept;
    void wait_for_writer(kiln::IThreadSuspendMonitor* suspendMonitor) noexcept;

    const std::unique_ptr<kiln::IMutexMonitor> monitor_; // null when nobody watches
    kiln::IThreadSuspendMonitor* const suspendMonitor_;
    std::atomic<std::uint32_t> state_ = 0;
};

// Waiting for a condition that is guarded by a `RWMutex`, by looking again and again:
//
//   unsigned int backoff = 0;
//   while (!ready_) condition.wait(true, backoff, 0);   // held shared
//
// There is no signal: a waiter looks after pauses that grow up to 10 milliseconds.
class ORBCORE_API ConditionVariable {
public:
    explicit ConditionVariable(RWMutex& mutex) noexcept : mutex_(mutex) {}

    // Lets go of the mutex, which is held `shared` or not, for one pause, and takes it again in the
    // same mode. The caller keeps `backoff`, 0 at first. The last argument has no effect.
    void wait(bool shared, unsigned int& backoff, unsigned int);

    // Nothing: waiters look by themselves.
    void notifyAll() noexcept {}

private:
    RWMutex& mutex_;
};

} // namespace core
