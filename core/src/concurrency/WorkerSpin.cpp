#include "WorkerSpin.h"

#include <core/concurrency/Thread.h>

#include <atomic>
#include <chrono>

namespace core {
namespace {

constexpr std::chrono::microseconds kSpinTime(20);
constexpr int kLooksPerYield = 32;

std::atomic<unsigned int> spinners = 0;

bool is_raised(sem_t* semaphore) {
    int value = 0;
    sem_getvalue(semaphore, &value);
    return value > 0;
}

// Gives the processor up now and then: who is to raise the semaphore may be waiting for it.
void look_for(sem_t* semaphore) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point end = Clock::now() + kSpinTime;
    do {
        for (int look = 0; look != kLooksPerYield; ++look) {
            if (is_raised(semaphore)) return;
            __builtin_ia32_pause();
        }
        Thread::yield();
    } while (Clock::now() < end);
}

} // namespace

void spin_for(ISemaphore& semaphore) {
    static const unsigned int processors = hardware_concurrency();
    if (processors == 1) return;
    if (spinners.fetch_add(1, std::memory_order_relaxed) < processors)
        look_for(semaphore.eventHandle());
    spinners.fetch_sub(1, std::memory_order_relaxed);
}

} // namespace core
