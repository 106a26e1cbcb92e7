// The parts of a number, for functions that are no members.
#pragma once

#include "LimbBuffer.h"

#include <core/numbers/Numeric.h>

namespace core {

struct NumericAccess {
    // As in Numeric; `limbs` is lent.
    struct Parts {
        const Limb* limbs;
        std::int32_t size;
        std::int32_t exponent;
        bool negative;

        // Limbs in front of the decimal point, at least 0.
        std::int64_t integer_limbs() const noexcept {
            return size > exponent ? std::int64_t{size} - exponent : 0;
        }
        // The limb of weight 10^(9 * place), 0 where there is none.
        Limb at(std::int64_t place) const noexcept {
            const std::int64_t index = place + exponent;
            return index >= 0 && index < size ? limbs[index] : 0;
        }
    };

    static Parts parts(const Numeric& number) noexcept {
        return {number.limbs_, number.size_, number.exponent_, number.sign_ < 0};
    }
    // Limbs with or without zeros at both ends. Throws std::bad_alloc.
    static void assign(Numeric& number, const Limb* limbs, std::int64_t size, std::int64_t exponent,
                       bool negative) {
        number.assign(limbs, size, exponent, negative ? -1 : 1);
    }
};

} // namespace core
