#include "WorkerSpin.h"

#include <atomic>

namespace core {
namespace {

std::atomic<unsigned int> spinners = 0;

bool is_turn() noexcept {
    static const unsigned int processors = hardware_concurrency();
    return spinners.fetch_add(1, std::memory_order_relaxed) < processors && processors > 1;
}

} // namespace

SpinPermit::SpinPermit() noexcept : granted_(is_turn()) {}

SpinPermit::~SpinPermit() {
    spinners.fetch_sub(1, std::memory_order_relaxed);
}

void spin_for(ISemaphore& semaphore) {
    sem_t* const handle = semaphore.eventHandle();
    spin_until([handle] {
        int value = 0;
        sem_getvalue(handle, &value);
        return value > 0;
    });
}

} // namespace core
