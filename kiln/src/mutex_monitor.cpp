#include <kiln/mutex_monitor.h>

#include <atomic>

namespace kiln {

IMutexWatcher::~IMutexWatcher() = default;
IMutexMonitor::~IMutexMonitor() = default;

namespace {

std::atomic<IMutexWatcher*> installed = nullptr;

class ReportingMonitor final : public IMutexMonitor {
public:
    ReportingMonitor(const WatchedMutex& mutex, IThreadSuspendMonitor* suspendMonitor) noexcept
        : mutex_(mutex), suspendMonitor_(suspendMonitor) {}

    void lock(void* object, Function function) override {
        perform(MutexOperation::kLock, object, function);
    }
    void unlock(void* object, Function function) override {
        perform(MutexOperation::kUnlock, object, function);
    }
    void lockShared(void* object, Function function) override {
        perform(MutexOperation::kLockShared, object, function);
    }
    void unlockShared(void* object, Function function) override {
        perform(MutexOperation::kUnlockShared, object, function);
    }

private:
    // Once an unlocking function has run, another thread may destroy the mutex and this monitor
    // with it: what comes after works on copies alone.
    void perform(MutexOperation operation, void* object, Function function) {
        const WatchedMutex mutex = mutex_;
        IMutexWatcher* const watcher = installed.load(std::memory_order_acquire);
        if (watcher) watcher->before(mutex, operation);
        function(object, suspendMonitor_);
        if (watcher) watcher->after(mutex, operation);
    }

    const WatchedMutex mutex_;
    IThreadSuspendMonitor* const suspendMonitor_;
};

} // namespace
} // namespace kiln

kiln::IMutexWatcher* kiln_set_mutex_watcher(kiln::IMutexWatcher* watcher) noexcept {
    return kiln::installed.exchange(watcher, std::memory_order_acq_rel);
}

kiln::IMutexMonitor* kiln_create_mutex_monitor(void* object, void* owner,
                                               kiln::IThreadSuspendMonitor* suspendMonitor,
                                               kiln::MutexKind kind) {
    if (!kiln::installed.load(std::memory_order_acquire)) return nullptr;
    return new kiln::ReportingMonitor({object, owner, kind}, suspendMonitor);
}
