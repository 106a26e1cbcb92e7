#include <core/concurrency/Mutex.h>

namespace core {

void IMutexImpl::lock_reported() noexcept {
    if (try_lock()) return;
    const kiln::ReportedWait wait(suspendMonitor_);
    lock_unreported();
}

} // namespace core
