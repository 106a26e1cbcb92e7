// Waiting for what is about to come: a thread that sleeps is woken 5 to 50 microseconds after the
// event, one that looks for it sees it within a fraction of one. Whoever spins here goes on to a
// real wait afterwards in any case.
#pragma once

#include <core/concurrency/Semaphore.h>
#include <core/concurrency/Thread.h>

#include <chrono>

namespace core {

// Never more threads spin at a time than there are processors, and none where there is only one.
class SpinPermit {
public:
    SpinPermit() noexcept;
    ~SpinPermit();
    SpinPermit(const SpinPermit&) = delete;
    SpinPermit& operator=(const SpinPermit&) = delete;

    explicit operator bool() const noexcept { return granted_; }

private:
    const bool granted_;
};

// Looks for about 20 microseconds. Between looks it gives the processor up: who is to bring the
// event about may be waiting for this very one.
template <class Condition> void spin_until(Condition isMet) {
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::microseconds kSpinTime(20);
    constexpr int kLooksPerYield = 8;

    const SpinPermit permit;
    if (!permit) return;
    const Clock::time_point end = Clock::now() + kSpinTime;
    do {
        for (int look = 0; look != kLooksPerYield; ++look) {
            if (isMet()) return;
            __builtin_ia32_pause();
        }
        Thread::yield();
    } while (Clock::now() < end);
}

// Until the semaphore has been raised; takes nothing from it.
void spin_for(ISemaphore& semaphore);

} // namespace core
