#include "NumericSettings.h"

#include <core/component/SCOM_Process.h>
#include <core/concurrency/Thread.h>
#include <core/numbers/NumericLimits.h>

#include <vector>

namespace core {
namespace {

// The limits of a thread, the innermost last; never empty.
class NumericLimitsTLSData final : public Thread::TLSData {
public:
    std::vector<unsigned int> limits;
};

const Thread::TLSIndex& slot() {
    static const Thread::TLSIndex index = Thread::allocTLS();
    return index;
}

NumericLimitsTLSData* limits_of(Thread& thread) {
    return static_cast<NumericLimitsTLSData*>(thread.getTLSValue(slot()));
}

} // namespace

NumericLimits::NumericLimits(unsigned int maxIntegerDigits) {
    Thread* const thread = current_thread();
    pushed_ = thread != nullptr;
    if (!thread) return;
    if (NumericLimitsTLSData* const data = limits_of(*thread)) {
        data->limits.push_back(maxIntegerDigits);
        return;
    }
    auto data = std::make_unique<NumericLimitsTLSData>();
    data->limits.push_back(maxIntegerDigits);
    thread->setTLSValue(slot(), data.release()); // the room was made by limits_of()
}

NumericLimits::~NumericLimits() {
    Thread* const thread = pushed_ ? current_thread() : nullptr;
    NumericLimitsTLSData* const data = thread ? limits_of(*thread) : nullptr;
    if (!data) return; // the thread's storage was cleared
    data->limits.pop_back();
    if (data->limits.empty()) thread->setTLSValue(slot(), nullptr);
}

std::optional<unsigned int> numeric_limit() {
    Thread* const thread = current_thread();
    NumericLimitsTLSData* const data = thread ? limits_of(*thread) : nullptr;
    if (!data) return {};
    return data->limits.back();
}

NumericRoundMode process_round_mode() {
    SCOM_Process* const process = current_process();
    return process && process->getRoundMode() == 0 ? NumericRoundMode::HalfDown
                                                   : NumericRoundMode::HalfUp;
}

} // namespace core
