#include <core/concurrency/ThreadSet.h>

#include <mutex>
#include <utility>

namespace core {

SCOM_ProcessData::~SCOM_ProcessData() = default;

ThreadSet::~ThreadSet() {
    for (Thread* const thread : threads_) thread->Release();
}

bool ThreadSet::add(Thread& thread) {
    const std::lock_guard guard(setLock_);
    if (!accepting_) return false;
    threads_.insert(&thread);
    thread.AddRef();
    return true;
}

bool ThreadSet::remove(Thread& thread) {
    bool accepted;
    {
        const std::lock_guard guard(setLock_);
        accepted = accepting_;
        const auto place = threads_.find(&thread);
        if (place == threads_.end()) return accepted;
        threads_.erase(place);
    }
    thread.Release();
    return accepted;
}

void ThreadSet::accept_threads() {
    const std::lock_guard guard(setLock_);
    accepting_ = true;
}

// The list is copied under the lock and waited for outside it, so that a thread which leaves the
// set cannot be blocked by the wait.
void ThreadSet::wait_for_all() {
    std::vector<InterfacePtr<Thread>> running;
    {
        const std::lock_guard guard(setLock_);
        accepting_ = false;
        running.reserve(threads_.size());
        for (Thread* const thread : threads_) running.emplace_back(thread, true);
    }
    for (InterfacePtr<Thread>& thread : running) {
        owner_.wait(thread.get());
        thread.reset();
    }
}

SCOM_Process* ThreadSet::process() const noexcept {
    const std::lock_guard guard(setLock_);
    return data_ ? data_->process() : nullptr;
}

InterfacePtr<SCOM_ProcessData> ThreadSet::data() const {
    const std::lock_guard guard(setLock_);
    return data_;
}

void ThreadSet::set_data(InterfacePtr<SCOM_ProcessData> data) noexcept {
    const std::lock_guard guard(setLock_);
    data_.swap(data);
}

} // namespace core
