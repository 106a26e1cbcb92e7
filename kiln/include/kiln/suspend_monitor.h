// Tells an observer when a thread blocks and when it goes on: a debugger or a collector that wants
// to know which threads stand still installs a monitor for a thread, and everything that may block
// reports to it.
//
//   kiln::ReportedWait wait(kiln::get_thread_suspend_monitor());   // null: no report
//   nanosleep(&time, nullptr);
#pragma once

#include <kiln/api.h>

namespace kiln {

// Called on the thread that blocks. The order of the operations is part of the binary interface:
// the destructor takes the first two places, so `enterWait` is the third and `leaveWait` the
// fourth.
class ORB_KILN_API IThreadSuspendMonitor {
public:
    virtual ~IThreadSuspendMonitor();

    // Just before the thread blocks, and just after. Always in pairs; pairs of one thread do not
    // nest.
    virtual void enterWait() noexcept = 0;
    virtual void leaveWait() noexcept = 0;
};

} // namespace kiln

extern "C" {

// The monitor of the calling thread, or null, as on every new thread.
ORB_KILN_API kiln::IThreadSuspendMonitor* kiln_get_thread_suspend_monitor() noexcept;

// Installs `monitor` for the calling thread, null for none, and gives the former. It must live
// until it is replaced and as long as the locks that were made with it.
ORB_KILN_API kiln::IThreadSuspendMonitor*
kiln_set_thread_suspend_monitor(kiln::IThreadSuspendMonitor* monitor) noexcept;
}

namespace kiln {

inline IThreadSuspendMonitor* get_thread_suspend_monitor() noexcept {
    return kiln_get_thread_suspend_monitor();
}
inline IThreadSuspendMonitor* set_thread_suspend_monitor(IThreadSuspendMonitor* monitor) noexcept {
    return kiln_set_thread_suspend_monitor(monitor);
}

// Reports the scope in which a thread blocks.
class ReportedWait {
public:
    explicit ReportedWait(IThreadSuspendMonitor* monitor) noexcept : monitor_(monitor) {
        if (monitor_) monitor_->enterWait();
    }
    ~ReportedWait() {
        if (monitor_) monitor_->leaveWait();
    }
    ReportedWait(const ReportedWait&) = delete;
    ReportedWait& operator=(const ReportedWait&) = delete;

private:
    IThreadSuspendMonitor* const monitor_;
};

} // namespace kiln
