// Numbers cut to fewer digits.
#include <core/component/IllegalArgumentException.h>

#include "LimbDigits.h"
#include "NumericAccess.h"
#include "NumericSettings.h"

#include <algorithm>

namespace core {

Numeric Numeric::floor() const {
    if (exponent_ <= 0) return *this;
    const std::int32_t cut = std::min(exponent_, size_);
    Numeric result;
    result.assign(limbs_ + cut, size_ - cut, 0, sign_);
    if (sign_ < 0) result -= 1;
    return result;
}

Numeric Numeric::round(int places) const {
    return round(places, process_round_mode());
}

// No limb at either end is zero: where lower limbs exist, what they hold is more than nothing.
Numeric Numeric::round(int places, NumericRoundMode mode) const {
    std::int64_t keep = places / kLimbDigits; // the exponent of the result
    int cut = places % kLimbDigits;           // the digits to clear in its lowest limb
    if (places > 0 && cut != 0) {
        ++keep;
        cut = kLimbDigits - cut;
    } else {
        cut = -cut;
    }
    const std::int64_t low = exponent_ - keep; // the limbs to drop
    if (low < 1 && (low != 0 || cut < 1)) return *this;
    Numeric result;
    if (size_ < low) return result;

    const bool halfUp = mode == NumericRoundMode::HalfUp;
    Limb cleared = low < size_ ? limbs_[low] : 0;
    bool up = false;
    if (cut == 0) {
        constexpr Limb kHalf = kLimbBase / 2;
        const Limb dropped = limbs_[low - 1];
        up = dropped > kHalf || (dropped == kHalf && (low > 1 || halfUp));
    } else {
        const Limb half = 5 * kPowersOfTen[cut - 1];
        const Limb rest = cleared % kPowersOfTen[cut];
        up = rest > half || (rest == half && (low > 0 || halfUp));
        cleared -= rest;
    }
    const auto kept = static_cast<std::int32_t>(size_ - low);
    result.reserve(kept);
    std::memcpy(result.limbs_, limbs_ + low, sizeof(Limb) * static_cast<std::size_t>(kept));
    result.size_ = kept;
    result.exponent_ = static_cast<std::int32_t>(keep);
    result.sign_ = sign_;
    if (kept != 0) result.limbs_[0] = cleared;
    if (up) result.add1(cut);
    result.delUnsigned();
    return result;
}

void Numeric::add1(int pos) {
    ORB_ASSERT(pos < kLimbDigits);
    const Limb step = kPowersOfTen[std::max(pos, 0)];
    if (size_ == 0) limbs_[size_++] = 0;
    if (limbs_[0] < kLimbBase - step) {
        limbs_[0] += step;
        return;
    }
    Limb* const end = limbs_ + size_;
    Limb* const stop =
        std::find_if(limbs_ + 1, end, [](Limb limb) { return limb != kLimbBase - 1; });
    const Limb lowest = limbs_[0] + step - static_cast<Limb>(kLimbBase);
    if (stop != end) {
        ++*stop;
        std::fill(limbs_ + 1, stop, Limb{0});
    } else { // all limbs above the lowest become zero
        const std::int32_t size = size_;
        reserve(std::int64_t{size} + 1);
        std::fill(limbs_ + 1, limbs_ + size, Limb{0});
        limbs_[size_++] = 1;
    }
    limbs_[0] = lowest;
}

} // namespace core
