// Three methods by the size of the shorter factor, all with the digits of the first:
//   up to 16 limbs   columns: all products of equal weight are summed before one division
//   below 96 limbs   the same over pairs of limbs
//   above            Karatsuba's three products of halves instead of four, over pairs
#include "LimbProduct.h"

#include "LimbPairs.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace core {
namespace {

constexpr std::size_t kColumnLimbs = 16; // products below 10^18 that 64 bits can sum
constexpr std::size_t kKaratsubaPairs = 48;

void multiply_by_columns(const Limb* a, std::size_t n, const Limb* b, std::size_t m,
                         Limb* out) noexcept {
    std::uint64_t sum = 0;
    for (std::size_t column = 0; column != n + m - 1; ++column) {
        const std::size_t first = column < n ? 0 : column - n + 1;
        const std::size_t last = std::min(column, m - 1);
        for (std::size_t j = first; j <= last; ++j) sum += std::uint64_t{a[column - j]} * b[j];
        out[column] = static_cast<Limb>(sum % kLimbBase);
        sum /= kLimbBase;
    }
    out[n + m - 1] = static_cast<Limb>(sum);
}

// A column of up to kKaratsubaPairs products. Eight products and what is left of those before stay
// below 1.8 * 10^37, which divide_by_pair_base takes: of the rest, multiples of 10^37 are counted.
class PairColumn {
public:
    // a[count - 1] * b[0] and so on to a[0] * b[count - 1].
    void add(const Pair* a, const Pair* b, std::size_t count) noexcept {
        while (count > 8) {
            for (int i = 0; i != 8; ++i) sum_ += Wide{a[--count]} * *b++;
            fold();
        }
        while (count != 0) sum_ += Wide{a[--count]} * *b++;
        fold();
    }
    // The lowest digit; the rest carries into the next column.
    Pair take_digit() noexcept {
        Pair digit;
        sum_ = divide_by_pair_base(sum_, digit) + Wide{folds_} * 10 * kPairBase;
        folds_ = 0;
        return digit;
    }

private:
    static constexpr Wide kFold = Wide{kPairBase} * 10 * kPairBase;

    void fold() noexcept {
        if (sum_ < kFold) return;
        sum_ -= kFold;
        ++folds_;
    }

    Wide sum_ = 0;
    std::uint64_t folds_ = 0;
};

void multiply_by_pair_columns(const Pair* a, std::size_t n, const Pair* b, std::size_t m,
                              Pair* out) noexcept {
    PairColumn column;
    for (std::size_t k = 0; k != n + m - 1; ++k) {
        const std::size_t first = k < n ? 0 : k - n + 1;
        const std::size_t last = std::min(k, m - 1);
        column.add(a + (k - last), b + first, last - first + 1);
        out[k] = column.take_digit();
    }
    out[n + m - 1] = column.take_digit();
}

// to += what, carried on to the end of `to`, which has room for the sum.
void add_pairs(Pair* to, const Pair* what, std::size_t size) noexcept {
    bool carry = false;
    for (std::size_t i = 0; i != size; ++i) {
        const Pair sum = to[i] + what[i] + carry;
        carry = sum >= kPairBase;
        to[i] = carry ? sum - kPairBase : sum;
    }
    for (std::size_t i = size; carry; ++i) {
        carry = to[i] == kPairBase - 1;
        to[i] = carry ? 0 : to[i] + 1;
    }
}

// to -= what, not larger than `to`.
void subtract_pairs(Pair* to, const Pair* what, std::size_t size) noexcept {
    bool borrow = false;
    for (std::size_t i = 0; i != size; ++i) {
        const Pair taken = what[i] + borrow;
        borrow = to[i] < taken;
        to[i] = borrow ? to[i] + kPairBase - taken : to[i] - taken;
    }
    for (std::size_t i = size; borrow; ++i) {
        borrow = to[i] == 0;
        to[i] = borrow ? kPairBase - 1 : to[i] - 1;
    }
}

// |low - high| of a number's halves, n pairs; whether `high` is the larger.
bool difference_of_halves(const Pair* low, std::size_t n, const Pair* high, std::size_t m,
                          Pair* out) noexcept {
    const auto at = [&](std::size_t i) { return i < m ? high[i] : 0; };
    std::size_t top = n;
    while (top != 0 && low[top - 1] == at(top - 1)) --top;
    const bool negative = top != 0 && low[top - 1] < at(top - 1);
    bool borrow = false;
    for (std::size_t i = 0; i != n; ++i) {
        const Pair from = negative ? at(i) : low[i];
        const Pair taken = (negative ? low[i] : at(i)) + borrow;
        borrow = from < taken;
        out[i] = borrow ? from + kPairBase - taken : from - taken;
    }
    return negative;
}

// What multiply_halves() needs beside its result.
constexpr std::size_t scratch_of(std::size_t n) noexcept {
    return 8 * n + 512;
}

// Both factors have n pairs. With a = a1 * B + a0 and b alike, the middle of the product is
// a0 * b0 + a1 * b1 - (a0 - a1) * (b0 - b1).
void multiply_halves(const Pair* a, const Pair* b, std::size_t n, Pair* out,
                     Pair* scratch) noexcept {
    if (n < kKaratsubaPairs) return multiply_by_pair_columns(a, n, b, n, out);
    const std::size_t low = (n + 1) / 2;
    const std::size_t high = n - low;
    Pair* const middle = scratch;
    Pair* const differences = scratch + 2 * low + 1; // their product goes in front of them
    Pair* const product = differences + 2 * low;
    Pair* const rest = product + 2 * low;

    multiply_halves(a, b, low, out, rest);
    multiply_halves(a + low, b + low, high, out + 2 * low, rest);
    const bool aNegative = difference_of_halves(a, low, a + low, high, differences);
    const bool bNegative = difference_of_halves(b, low, b + low, high, differences + low);
    multiply_halves(differences, differences + low, low, product, rest);

    std::memcpy(middle, out, 2 * low * sizeof(Pair));
    middle[2 * low] = 0;
    add_pairs(middle, out + 2 * low, 2 * high);
    if (aNegative == bNegative)
        subtract_pairs(middle, product, 2 * low);
    else
        add_pairs(middle, product, 2 * low);
    add_pairs(out + low, middle, 2 * low + 1);
}

// n >= m. A long factor is cut into pieces as long as the short one.
void multiply_pairs(const Pair* a, std::size_t n, const Pair* b, std::size_t m, Pair* out) {
    if (m < kKaratsubaPairs) return multiply_by_pair_columns(a, n, b, m, out);
    WordBuffer<Pair> scratch(scratch_of(m));
    if (n == m) return multiply_halves(a, b, n, out, scratch);

    WordBuffer<Pair> product(2 * m);
    std::fill_n(out, n + m, Pair{0});
    for (std::size_t at = 0; at < n; at += m) {
        const std::size_t size = std::min(m, n - at);
        if (size == m)
            multiply_halves(a + at, b, m, product, scratch);
        else
            multiply_pairs(b, m, a + at, size, product);
        add_pairs(out + at, product, size + m);
    }
}

} // namespace

void multiply_limbs(const Limb* a, std::size_t n, const Limb* b, std::size_t m, Limb* out) {
    if (n < m) {
        std::swap(a, b);
        std::swap(n, m);
    }
    if (m <= kColumnLimbs) return multiply_by_columns(a, n, b, m, out);

    const std::size_t aPairs = pairs_of(n), bPairs = pairs_of(m);
    WordBuffer<Pair> pairs(2 * (aPairs + bPairs));
    Pair* const aWords = pairs;
    Pair* const bWords = aWords + aPairs;
    Pair* const product = bWords + bPairs;
    to_pairs(a, n, aWords);
    to_pairs(b, m, bWords);
    multiply_pairs(aWords, aPairs, bWords, bPairs, product);
    to_limbs(product, out, n + m);
}

} // namespace core
