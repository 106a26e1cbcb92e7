// The product of magnitudes.
#pragma once

#include "LimbBuffer.h"

namespace core {

// Writes all n + m limbs of a * b; the highest may be zero. `out` overlaps neither factor. Neither
// size is 0. Throws std::bad_alloc, for long factors only.
void multiply_limbs(const Limb* a, std::size_t n, const Limb* b, std::size_t m, Limb* out);

} // namespace core
