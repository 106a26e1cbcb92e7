// A limit on what Numeric::pow() of this thread may grow to.
//
//   const core::NumericLimits limit(100);
//   price.pow(exponent);      // NumericException, Overflow, beyond 100 integer digits
//
// Guards nest; the innermost counts. They serve a `core::Thread`: on any other thread a guard does
// nothing. A guard ends on the thread that made it.
#pragma once

#include <core/platform/api.h>

namespace core {

class ORBCORE_API NumericLimits {
public:
    explicit NumericLimits(unsigned int maxIntegerDigits);
    ~NumericLimits();
    NumericLimits(const NumericLimits&) = delete;
    NumericLimits& operator=(const NumericLimits&) = delete;

private:
    bool pushed_;
};

} // namespace core
