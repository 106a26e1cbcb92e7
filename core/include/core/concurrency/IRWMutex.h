// A reader-writer lock behind an interface, with a writer that may enter again and may read.
//
//   core::SimpleRWMutex mutex_;
//   const core::ReaderLock lock(mutex_);     // core/concurrency/LockGuards.h, or std::shared_lock
//
// Take it when the lock crosses a module boundary or when its writers call code that locks again;
// `RWMutex` is smaller, `RWRMutex` lets readers enter again past waiting writers and upgrade.
//
// A reader must not ask for the writer side: it would wait for itself. A reader that enters again
// waits behind a writer that came in between, who waits for the reader: do not nest readers either.
#pragma once

#include <core/concurrency/Mutex.h>

#include <atomic>
#include <cstdint>
#include <memory>

namespace core {

inline constexpr _GUID IID_IRWMutex = "04a94785-61b7-4500-abc9-fa06807b53fa"_guid;

class IRWMutex : public IUnknown {
public:
    ORB_INTERFACE(IRWMutex, IID_IRWMutex)

    virtual void acquireReaderLock() = 0;
    virtual void releaseReaderLock() noexcept = 0;
    virtual void acquireWriterLock() = 0;
    virtual void releaseWriterLock() noexcept = 0;

    // The names that the guards of the standard library call.
    void lock() { acquireWriterLock(); }
    void unlock() noexcept { releaseWriterLock(); }
    void lock_shared() { acquireReaderLock(); }
    void unlock_shared() noexcept { releaseReaderLock(); }
};

// The part of `SimpleRWMutex` that locks.
//
// A reader costs one atomic addition at each end. A writer holds the gate, a mutex, for as long as
// it is in; readers and writers that find it there sleep behind the gate. A writer that finds
// readers spins with growing pauses until they have left.
class ORBCORE_API IRWMutexSimpleImpl : public IRWMutex {
public:
    // Waits are reported to `suspendMonitor`; null: to nobody.
    explicit IRWMutexSimpleImpl(kiln::IThreadSuspendMonitor* suspendMonitor = nullptr)
        : gate_(std::make_unique<Mutex>(suspendMonitor)) {}

    // The writer may take both sides again. Its reader side is without effect.
    void acquireReaderLock() override {
        if (!is_owner()) acquireReaderLock0();
    }
    void releaseReaderLock() noexcept override {
        if (!is_owner()) releaseReaderLock0();
    }
    void acquireWriterLock() override;
    void releaseWriterLock() noexcept override;

    // Without a look at who owns the lock: for callers that never enter again.
    void acquireReaderLock0() {
        if (state_.fetch_add(kReader, std::memory_order_acquire) & kWriter) [[unlikely]]
            enter_behind_writer();
    }
    void releaseReaderLock0() noexcept { state_.fetch_sub(kReader, std::memory_order_release); }
    void acquireWriterLock0();
    void releaseWriterLock0() noexcept;

    // Take the lock if that needs no waiting.
    bool try_lock();
    bool try_lock_shared() noexcept;

private:
    static constexpr std::uint32_t kWriter = 1; // a writer is in
    static constexpr std::uint32_t kReader = 2; // the rest of the word counts readers

    static std::uint64_t thread_id() noexcept { return pthread_self(); }

    // Needs no order: a thread finds its own id here only if it wrote it itself.
    bool is_owner() const noexcept { return owner_.load(std::memory_order_relaxed) == thread_id(); }

    void enter_behind_writer();
    void own() noexcept;
    bool try_enter_writer() noexcept;

    std::atomic<std::uint32_t> state_ = 0;
    const std::unique_ptr<Mutex> gate_;
    std::atomic<std::uint64_t> owner_ = 0; // the writer's thread; 0: none. Changed by it alone
    std::uint32_t depth_ = 0;              // how often the owner has entered; its own
};

using SimpleRWMutex = IUnknownImpl<IRWMutexSimpleImpl, IRWMutex>;

} // namespace core
