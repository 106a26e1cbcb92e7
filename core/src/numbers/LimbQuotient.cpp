#include "LimbQuotient.h"

#include "LimbPairs.h"

#include <algorithm>
#include <bit>

namespace core {
namespace {

// The limbs of the dividend from the top, and zeros without end behind them.
class Dividend {
public:
    Dividend(const Limb* limbs, std::size_t size) noexcept : limbs_(limbs), left_(size) {}
    Limb next() noexcept { return left_ != 0 ? limbs_[--left_] : 0; }
    bool used_up() const noexcept { return left_ == 0; }

private:
    const Limb* limbs_;
    std::size_t left_;
};

// One step of a division: takes the divisor off the remainder as often as it goes.
class OneLimbDivisor {
public:
    using Remainder = std::uint64_t;
    explicit OneLimbDivisor(const Limb* limbs) noexcept : divisor_(limbs[0]) {}
    Limb step(Remainder& remainder) const noexcept {
        const auto quotient = static_cast<Limb>(remainder / divisor_);
        remainder %= divisor_;
        return quotient;
    }

private:
    std::uint64_t divisor_;
};

// Two or three limbs: 30 to 90 bits. The quotient, which is below 10^9, comes from the highest 64 bits
// of the remainder and an inverse that is good to 50 bits, so it is at most one off, and rarely.
class ShortDivisor {
public:
    using Remainder = Wide;
    ShortDivisor(const Limb* limbs, std::size_t size) noexcept {
        while (size-- != 0) divisor_ = divisor_ * kLimbBase + limbs[size];
        const auto high = static_cast<std::uint64_t>(divisor_ >> 45); // 45 bits at most
        const double divisor = static_cast<double>(static_cast<std::int64_t>(high)) * 0x1p45 +
                               static_cast<double>(static_cast<std::int64_t>(divisor_ & kLow));
        const int bits =
            high != 0 ? 45 + static_cast<int>(std::bit_width(high))

                      : static_cast<int>(std::bit_width(static_cast<std::uint64_t>(divisor_)));
        shift_ = std::max(bits - 34, 0); // leaves 34 bits of the divisor, 64 of the remainder
        inverse_ = static_cast<std::uint64_t>(
            static_cast<std::int64_t>(power_of_two(92 + shift_) / divisor));
    }
    Limb step(Remainder& remainder) const noexcept {
        const auto high = static_cast<std::uint64_t>(remainder >> shift_);
        auto quotient = static_cast<std::uint64_t>((Wide{high} * inverse_) >> 92);
        remainder -= divisor_ * quotient;
        if (static_cast<std::int64_t>(remainder >> 64) < 0) {
            --quotient;
            remainder += divisor_;
        } else if (remainder >= divisor_) {
            ++quotient;
            remainder -= divisor_;
        }
        return static_cast<Limb>(quotient);
    }

private:
    static double power_of_two(int power) noexcept {
        return std::bit_cast<double>(static_cast<std::uint64_t>(1023 + power) << 52);
    }

    static constexpr std::uint64_t kLow = (std::uint64_t{1} << 45) - 1;

    Wide divisor_ = 0;
    std::uint64_t inverse_; // 2^(92 + shift) / divisor
    int shift_;
};

// The remainder is one word, wide enough for the divisor and one limb more.
template <class Divisor>
void divide_short(Dividend dividend, const Divisor& divisor, std::size_t m, Limb* quotient,
                  std::size_t count) noexcept {
    typename Divisor::Remainder remainder = 0;
    while (--m != 0) remainder = remainder * kLimbBase + dividend.next();
    while (count-- != 0) {
        remainder = remainder * kLimbBase + dividend.next();
        quotient[count] = divisor.step(remainder);
        if (remainder == 0 && dividend.used_up()) {
            std::fill_n(quotient, count, Limb{0});
            return;
        }
    }
}

// words *= factor; returns what does not fit.
Pair scale(Pair* words, std::size_t size, Pair factor) noexcept {
    Pair carry = 0;
    for (std::size_t i = 0; i != size; ++i)
        carry = divide_by_pair_base(Wide{words[i]} * factor + carry, words[i]);
    return carry;
}

// remainder -= divisor * factor, over size + 1 words; whether it went below zero. The products do
// not wait for each other: only the borrow runs through.
bool subtract_product(Pair* remainder, const Pair* divisor, std::size_t size,
                      Pair factor) noexcept {
    constexpr auto kBase = static_cast<std::int64_t>(kPairBase);
    Pair carry = 0;
    std::int64_t borrow = 0; // 0, -1, -2
    for (std::size_t i = 0; i <= size; ++i) {
        Pair low = 0;
        const Pair high = i < size ? divide_by_pair_base(Wide{divisor[i]} * factor, low) : 0;
        auto digit = static_cast<std::int64_t>(remainder[i]) - static_cast<std::int64_t>(low) -
                     static_cast<std::int64_t>(carry) + borrow;
        carry = high;
        borrow = 0;
        if (digit < 0) {
            digit += kBase;
            --borrow;
        }
        if (digit < 0) {
            digit += kBase;
            --borrow;
        }
        remainder[i] = static_cast<Pair>(digit);
    }
    return borrow != 0;
}

void add_back(Pair* remainder, const Pair* divisor, std::size_t size) noexcept {
    bool carry = false;
    for (std::size_t i = 0; i <= size; ++i) {
        const Pair sum = remainder[i] + (i < size ? divisor[i] : 0) + carry;
        carry = sum >= kPairBase;
        remainder[i] = carry ? sum - kPairBase : sum;
    }
}

// The next digit of a quotient from the top three words of the remainder and two of the divisor,
// whose highest word is at least half of the base: right or one too large.
Pair guess_digit(const Pair* top, Pair divisor1, Pair divisor0) noexcept {
    const Wide two = Wide{top[0]} * kPairBase + top[-1];
    auto digit = static_cast<Pair>(std::min<Wide>(two / divisor1, kPairBase - 1));
    Wide rest = two - Wide{digit} * divisor1;
    while (rest < kPairBase && Wide{digit} * divisor0 > rest * kPairBase + top[-2]) {
        --digit;
        rest += divisor1;
    }
    return digit;
}

// Long division in base 10^18 (Knuth, The Art of Computer Programming 2, 4.3.1, algorithm D).
void divide_long(Dividend dividend, const Limb* b, std::size_t m, Limb* quotient,
                 std::size_t count) {
    const std::size_t limbs = m + count - 1; // of the dividend
    const std::size_t size = pairs_of(m);
    const std::size_t words = pairs_of(limbs) + 1;
    WordBuffer<Pair> buffer(size + words + words - size);
    Pair* const divisor = buffer;
    Pair* const remainder = divisor + size;
    Pair* const digits = remainder + words;

    to_pairs(b, m, divisor);
    std::fill_n(remainder, words, Pair{0});
    for (std::size_t i = limbs; i-- != 0;)
        remainder[i / 2] = remainder[i / 2] * (i % 2 == 0 ? kLimbBase : 1) + dividend.next();
    const Pair factor = kPairBase / (divisor[size - 1] + 1);
    scale(divisor, size, factor);
    remainder[words - 1] = scale(remainder, words - 1, factor);

    for (std::size_t i = words - size; i-- != 0;) {
        const Pair* const top = remainder + i + size;
        Pair digit = guess_digit(top, divisor[size - 1], divisor[size - 2]);
        if (digit != 0 && subtract_product(remainder + i, divisor, size, digit)) {
            --digit;
            add_back(remainder + i, divisor, size);
        }
        digits[i] = digit;
    }
    to_limbs(digits, quotient, count);
}

} // namespace

void divide_limbs(const Limb* a, std::size_t n, const Limb* b, std::size_t m, Limb* quotient,
                  std::size_t count) {
    const Dividend dividend(a, n);
    if (m == 1)
        divide_short(dividend, OneLimbDivisor(b), m, quotient, count);
    else if (m <= 3)
        divide_short(dividend, ShortDivisor(b, m), m, quotient, count);
    else
        divide_long(dividend, b, m, quotient, count);
}

} // namespace core
