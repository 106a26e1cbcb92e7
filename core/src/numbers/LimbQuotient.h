// The quotient of magnitudes, limb by limb.
#pragma once

#include "LimbBuffer.h"

namespace core {

// The first `count` limbs of a quotient, highest in quotient[count - 1]: long division whose first
// step takes the top `m` limbs of `a`, and each further one the next limb of `a`, or 0 behind its
// end. The highest limb of `b` is not zero. Throws std::bad_alloc, for long divisors only.
void divide_limbs(const Limb* a, std::size_t n, const Limb* b, std::size_t m, Limb* quotient,
                  std::size_t count);

} // namespace core
