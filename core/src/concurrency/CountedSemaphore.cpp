#include <core/concurrency/CountedSemaphore.h>

#include <core/component/IllegalStateException.h>

namespace core {

void CountedSemaphore::decrementCounter() {
    std::uint32_t count = counter_.load(std::memory_order_relaxed);
    do
        if (count == 0) throw IllegalStateException(ORB_HERE);
    while (!counter_.compare_exchange_weak(count, count - 1, std::memory_order_acq_rel,
                                           std::memory_order_relaxed));
}

} // namespace core
