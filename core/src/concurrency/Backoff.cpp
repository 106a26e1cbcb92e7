#include "Backoff.h"

#include <algorithm>
#include <iterator>
#include <limits>

#include <time.h>

namespace core {
namespace {

constexpr long kNoSleep = -1;

struct Row {
    unsigned int last; // the row holds up to this step
    int pauses;
    long sleep; // nanoseconds; 0 gives up the processor
};

constexpr Row kRows[] = {
    {9, 1, kNoSleep},
    {19, 50, kNoSleep},
    {23, 0, 0},
    {25, 0, 1'000'000},
    {std::numeric_limits<unsigned int>::max(), 0, 10'000'000},
};

// Tells the processor that this is a spin loop.
void pause() noexcept {
#if defined(__x86_64__)
    __builtin_ia32_pause();
#elif defined(__aarch64__)
    asm volatile("yield");
#endif
}

} // namespace

void back_off(unsigned int& step) noexcept {
    const Row& row = *std::ranges::lower_bound(kRows, step++, {}, &Row::last);
    for (int i = 0; i != row.pauses; ++i) pause();
    if (row.sleep == kNoSleep) return;
    const timespec time = {0, row.sleep};
    nanosleep(&time, nullptr);
}

} // namespace core
