// Lets a diagnostics program see every operation on the reader-writer mutexes of the process.
//
//   struct Trace : kiln::IMutexWatcher { ... };
//   kiln::set_mutex_watcher(&trace);       // mutexes made from now on report to it
//
// A mutex asks for a monitor when it is made and performs its operations through it:
//
//   kiln::IMutexMonitor* monitor = kiln::create_mutex_monitor(this, this, suspend, kind);
//   if (monitor) monitor->lock(this, &Mutex::lock); else lock(this, suspend);
//
// With no watcher installed there is no monitor, and a mutex costs what it costs by itself.
#pragma once

#include <kiln/api.h>
#include <kiln/suspend_monitor.h>

#include <cstdint>

namespace kiln {

enum class MutexKind : std::uint32_t { kReaderWriter = 1 };

enum class MutexOperation : std::uint8_t { kLock, kUnlock, kLockShared, kUnlockShared };

// What a watcher sees of a mutex.
struct WatchedMutex {
    void* object; // the mutex
    void* owner;  // the object whose member it is, or the mutex itself
    MutexKind kind;
};

// Called on the thread that performs the operation; several threads may call at once. A watcher
// may use no mutex that it watches.
class ORB_KILN_API IMutexWatcher {
public:
    virtual ~IMutexWatcher();

    virtual void before(const WatchedMutex& mutex, MutexOperation operation) noexcept = 0;
    virtual void after(const WatchedMutex& mutex, MutexOperation operation) noexcept = 0;
};

// Performs a mutex's operations: each calls `function` with `object` and with the suspend monitor
// that the monitor was made with, and gives it out when `function` throws. The mutex deletes it.
class ORB_KILN_API IMutexMonitor {
public:
    using Function = void (*)(void* object, IThreadSuspendMonitor* suspendMonitor);

    virtual ~IMutexMonitor();

    virtual void lock(void* object, Function function) = 0;
    virtual void unlock(void* object, Function function) = 0;
    virtual void lockShared(void* object, Function function) = 0;
    virtual void unlockShared(void* object, Function function) = 0;
};

} // namespace kiln

extern "C" {

// Installs `watcher`, null for none, and gives the former. Mutexes made while there is one report,
// at each operation, to the one installed then. An operation that is under way on another thread
// may still report to the former watcher: it must outlive them.
ORB_KILN_API kiln::IMutexWatcher* kiln_set_mutex_watcher(kiln::IMutexWatcher* watcher) noexcept;

// A monitor for the mutex `object`, owned by the caller, or null when no watcher is installed.
// Throws std::bad_alloc.
[[nodiscard]] ORB_KILN_API kiln::IMutexMonitor*
kiln_create_mutex_monitor(void* object, void* owner, kiln::IThreadSuspendMonitor* suspendMonitor,
                          kiln::MutexKind kind);
}

namespace kiln {

inline IMutexWatcher* set_mutex_watcher(IMutexWatcher* watcher) noexcept {
    return kiln_set_mutex_watcher(watcher);
}
[[nodiscard]] inline IMutexMonitor* create_mutex_monitor(void* object, void* owner,
                                                         IThreadSuspendMonitor* suspendMonitor,
                                                         MutexKind kind) {
    return kiln_create_mutex_monitor(object, owner, suspendMonitor, kind);
}

} // namespace kiln
