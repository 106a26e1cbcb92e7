// The recursive reader-writer lock: both sides may be entered again, a writer may read, and a
// reader that holds all the read locks there are may become the writer.
//
//   core::RWRMutex mutex_;
//   const core::ReaderLock lock(mutex_);     // core/concurrency/LockGuards.h, or std::shared_lock
//
// New readers stand back for waiting writers; a thread that already reads does not. Two readers
// that both want to write wait for each other. Who has to wait spins with growing pauses, up to
// 10 milliseconds each. Each operation takes a mutex for a moment: `RWMutex` and `SimpleRWMutex`
// are faster.
//
// Each lock uses a thread key, of which a process has 1024: for a few long-lived locks, not for
// the objects of a collection.
#pragma once

#include <core/concurrency/Mutex.h>

#include <cstdint>

namespace core {

// The mutex of the base guards all that stands here. As an `IMutex` it is the writer side.
class ORBCORE_API RWRMutexImpl : public IMutexImpl {
public:
    // Throws std::system_error when there is no thread key left.
    explicit RWRMutexImpl(kiln::IThreadSuspendMonitor* suspendMonitor = nullptr);
    ~RWRMutexImpl();

    void lock() override;
    void unlock() noexcept override;
    // Throws std::bad_alloc when the thread's own count finds no place.
    void lockShared();
    void unlockShared() noexcept;

    // Take the lock if that needs no waiting for its holders.
    bool try_lock();
    bool try_lock_shared();

    // The names that std::shared_lock calls.
    void lock_shared() { lockShared(); }
    void unlock_shared() noexcept { unlockShared(); }

private:
    class InnerLock;

    // The zero forms do the work with the inner lock held.
    void lock0();
    void unlock0() noexcept;
    void lockShared0();
    void unlockShared0() noexcept;
    void enter(std::uint64_t id) noexcept;
    void enterShared(std::uint32_t ownReaders);

    bool canGrantReadAccess(unsigned long long id, unsigned int ownReaders) const noexcept;
    bool canGrantWriteAccess(unsigned long long id, unsigned int ownReaders) const noexcept;

    // Lets go of the inner lock for one pause.
    void wait(bool shared, unsigned int& backoff) noexcept;
    // Nothing: waiters look by themselves.
    void notifyAll() noexcept {}

    static unsigned long long getThreadId() noexcept { return pthread_self(); }
    unsigned int getThreadReaders() const noexcept;
    void setThreadReaders(unsigned int count);

    pthread_key_t ownReaders_;  // the calling thread's own read locks
    std::uint32_t readers_ = 0; // the read locks of all threads
    std::uint64_t owner_ = 0;   // the writer's thread; 0: none
    std::uint32_t depth_ = 0;   // how often the owner has entered
    std::uint32_t waitingWriters_ = 0;
};

using RWRMutex = IUnknownImpl<RWRMutexImpl, IMutex>;

} // namespace core
