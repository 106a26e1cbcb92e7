// A count of things that others wait for: a wait passes while the count is above 0.
//
//   core::CountedSemaphore clients;
//   clients.incrementCounter();      // one more
//   clients.wait(1000);              // true: there is one
//   clients.decrementCounter();      // it is gone
//
// All functions may be called from any thread.
#pragma once

#include <core/concurrency/Semaphore.h>

#include <atomic>
#include <cstdint>

namespace core {

class ORBCORE_API CountedSemaphore {
public:
    void incrementCounter() noexcept {
        counter_.fetch_add(1, std::memory_order_acq_rel);
        semaphore_.raise();
    }

    // Throws core::IllegalStateException when the counter is 0, and leaves it so.
    void decrementCounter();

    // True at once while the counter is above 0, else whether it is raised within so many
    // milliseconds. A decrement does not take back what its increment raised: after it a wait may
    // return true once for each earlier increment.
    bool wait(int milliseconds) {
        return counter_.load(std::memory_order_acquire) != 0 || semaphore_.wait(milliseconds);
    }

private:
    std::atomic<std::uint32_t> counter_ = 0;
    Semaphore semaphore_;
};

} // namespace core
