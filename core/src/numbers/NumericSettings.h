// What the thread and its process decide about arithmetic.
#pragma once

#include <core/numbers/Numeric.h>

#include <optional>

namespace core {

// The mode of the current process; HalfUp without one.
NumericRoundMode process_round_mode();

// The innermost NumericLimits of the calling thread.
std::optional<unsigned int> numeric_limit();

} // namespace core
