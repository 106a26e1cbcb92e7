// Faults that cannot be thrown where they arise.
#pragma once

#include <exception>
#include <utility>

namespace core {

// Runs steps that must all be tried, or that must not throw, and keeps the first fault of them until
// somebody can be told.
class FirstFault {
public:
    template <class Step> void attempt(Step&& step) noexcept {
        try {
            step();
        } catch (...) {
            if (!fault_) fault_ = std::current_exception();
        }
    }

    // Throws the fault, if there is one, and forgets it.
    void raise() {
        if (fault_) std::rethrow_exception(std::exchange(fault_, nullptr));
    }

private:
    std::exception_ptr fault_;
};

} // namespace core
