// The mutex of the library: recursive, usable across a module boundary, and able to report a
// contended wait to a suspend monitor.
//
//   core::Mutex mutex_;
//   const std::lock_guard lock(mutex_);
//
// It fits std::lock_guard, std::unique_lock and std::scoped_lock. An uncontended lock and unlock
// cost what a std::recursive_mutex costs and are never reported.
#pragma once

#include <core/component/IUnknownImpl.h>
#include <core/platform/api.h>

#include <kiln/suspend_monitor.h>

#include <pthread.h>

namespace core {

inline constexpr _GUID IID_IMutex = "4237191d-0aba-4fb7-b8b4-d6d0d74312b2"_guid;

// A mutex of whatever kind, behind an interface.
class IMutex : public IUnknown {
public:
    ORB_INTERFACE(IMutex, IID_IMutex)

    virtual void lock() = 0;
    virtual void unlock() noexcept = 0;
};

// The part of `Mutex` that locks. Its holder may lock it again and unlocks it as often. A static
// one needs no code at start-up: the constructors are for the compiler.
class ORBCORE_API IMutexImpl : public IMutex {
public:
    constexpr IMutexImpl() noexcept = default;
    // `suspendMonitor` hears of every wait, on the thread that waits; null: nobody. Lent for the
    // mutex's life.
    constexpr explicit IMutexImpl(kiln::IThreadSuspendMonitor* suspendMonitor) noexcept
        : suspendMonitor_(suspendMonitor) {}
    ~IMutexImpl() { pthread_mutex_destroy(&mutex_); }
    IMutexImpl(const IMutexImpl&) = delete;
    IMutexImpl& operator=(const IMutexImpl&) = delete;

    void lock() override {
        if (suspendMonitor_) [[unlikely]]
            return lock_reported();
        lock_unreported();
    }
    void unlock() noexcept override { pthread_mutex_unlock(&mutex_); }
    bool try_lock() noexcept { return pthread_mutex_trylock(&mutex_) == 0; }

    kiln::IThreadSuspendMonitor* suspend_monitor() const noexcept { return suspendMonitor_; }

protected:
    void lock_unreported() noexcept { pthread_mutex_lock(&mutex_); }

private:
    void lock_reported() noexcept;

    kiln::IThreadSuspendMonitor* const suspendMonitor_ = nullptr;
    pthread_mutex_t mutex_ = PTHREAD_RECURSIVE_MUTEX_INITIALIZER_NP;
};

// What owners declare as a member.
using Mutex = IUnknownImpl<IMutexImpl, IMutex>;

} // namespace core
