#include "files/CleanDirThread.h"

#include <core/component/SCOM_ProcessData.h>
#include <core/runtime/Process.h>

namespace core {
namespace {

class CleanDirThread final : public ProcessThread {
public:
    CleanDirThread(SCOM_ProcessData* data, std::function<void()> work)
        : ProcessThread(data), work_(std::move(work)) {}

    void run() override { work_(); }

private:
    std::function<void()> work_;
};

} // namespace

InterfacePtr<Thread> start_clean_dir_thread(std::function<void()> work) {
    SCOM_ProcessData* const data = current_process_data();
    if (!data) return {};
    const InterfacePtr<CleanDirThread> thread(new CleanDirThread(data, std::move(work)), true);
    thread->construct();
    thread->start();
    return thread;
}

} // namespace core
