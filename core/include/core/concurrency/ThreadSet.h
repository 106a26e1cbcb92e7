// The threads that run in a process object, each held by a reference, and whether it still takes
// new ones. `core::Process` is one; threads know it by this base.
//
// Its lock comes after a thread's lock. Nobody waits for a thread while holding it.
#pragma once

#include <core/concurrency/Thread.h>

#include <set>

namespace core {

class ORBCORE_API ThreadSet {
public:
    // `owner` is the process object itself.
    explicit ThreadSet(Thread& owner) noexcept : owner_(owner) {}
    ThreadSet(const ThreadSet&) = delete;
    ThreadSet& operator=(const ThreadSet&) = delete;

    // Adds the thread with a reference; false when no threads are accepted.
    bool add(Thread& thread);
    // Removes one entry of the thread and drops its reference. True while threads are accepted;
    // once they are not, `wait_for_all` may be waiting for the end of this one. Behind the call
    // the set may be gone, as nothing waits for a thread that is not in it.
    bool remove(Thread& thread);

    void accept_threads();
    // Accepts no more and waits for those that run. They are not interrupted: they end by
    // themselves.
    void wait_for_all();

    Thread& owner() const noexcept { return owner_; }
    // The logical process that the threads run in; null before it is made and after its end.
    SCOM_Process* process() const noexcept;

protected:
    ~ThreadSet(); // not by a pointer to the base
    void set_data(InterfacePtr<SCOM_ProcessData> data) noexcept;
    InterfacePtr<SCOM_ProcessData> data() const;

private:
    Thread& owner_;
    mutable Mutex setLock_;
    bool accepting_ = false;              // guarded by setLock_
    std::multiset<Thread*> threads_;      // guarded by setLock_; each entry holds a reference
    InterfacePtr<SCOM_ProcessData> data_; // guarded by setLock_
};

} // namespace core
