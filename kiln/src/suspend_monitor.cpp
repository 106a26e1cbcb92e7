#include <kiln/suspend_monitor.h>

#include <utility>

namespace kiln {

IThreadSuspendMonitor::~IThreadSuspendMonitor() = default;

namespace {

constinit thread_local IThreadSuspendMonitor* installed = nullptr;

} // namespace
} // namespace kiln

kiln::IThreadSuspendMonitor* kiln_get_thread_suspend_monitor() noexcept {
    return kiln::installed;
}

kiln::IThreadSuspendMonitor*
kiln_set_thread_suspend_monitor(kiln::IThreadSuspendMonitor* monitor) noexcept {
    return std::exchange(kiln::installed, monitor);
}
