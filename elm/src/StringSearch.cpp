// The search: a filter on the first and last unit of the needle over sixteen bytes at a time, and
// the two-way method of Crochemore and Perrin (1991) for text that defeats the filter. The filter
// keeps count of the work it spends on false candidates and gives way once that exceeds a fixed
// share of the text behind it, so the whole is linear in time.
//
// Every algorithm is written once for both directions: from the end, it is the same search on the
// reversed text for the reversed needle.
#include "elm/StringSearch.h"

#include <algorithm>
#include <bit>
#include <cstdint>

#include <emmintrin.h>

namespace elm {

namespace {

enum class Direction { Forward, Backward };

template <class T> constexpr std::size_t kLanes = 16 / sizeof(T);

template <class T> __m128i load(const T* at) noexcept {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
}

template <class T> __m128i broadcast(T unit) noexcept {
    if constexpr (sizeof(T) == 1) return _mm_set1_epi8(static_cast<char>(unit));
    if constexpr (sizeof(T) == 2) return _mm_set1_epi16(static_cast<short>(unit));
    if constexpr (sizeof(T) == 4) return _mm_set1_epi32(static_cast<int>(unit));
}

template <class T> __m128i equal_lanes(__m128i a, __m128i b) noexcept {
    if constexpr (sizeof(T) == 1) return _mm_cmpeq_epi8(a, b);
    if constexpr (sizeof(T) == 2) return _mm_cmpeq_epi16(a, b);
    if constexpr (sizeof(T) == 4) return _mm_cmpeq_epi32(a, b);
}

// The lanes that are set, as one bit each: bit sizeof(T) * i stands for lane i.
template <class T> unsigned lane_bits(__m128i lanes) noexcept {
    constexpr unsigned kFirstBits = sizeof(T) == 1 ? 0xFFFF : sizeof(T) == 2 ? 0x5555 : 0x1111;
    return static_cast<unsigned>(_mm_movemask_epi8(lanes)) & kFirstBits;
}

// Takes the lane that comes first in the direction out of `bits`, which is not 0.
template <Direction D, class T> std::size_t take_lane(unsigned& bits) noexcept {
    const int bit = D == Direction::Forward ? std::countr_zero(bits) : 31 - std::countl_zero(bits);
    bits &= ~(1u << bit);
    return static_cast<std::size_t>(bit) / sizeof(T);
}

// Text that is read from the direction's end.
template <Direction D, class T> class Reading {
public:
    Reading(const T* text, std::size_t n) : first_(D == Direction::Forward ? text : text + n - 1) {}
    const T& operator[](std::ptrdiff_t i) const noexcept {
        return D == Direction::Forward ? first_[i] : *(first_ - i);
    }

private:
    const T* first_;
};

// How many units agree from the start on.
template <class T> std::size_t agreement(const T* a, const T* b, std::size_t n) noexcept {
    std::size_t i = 0;
    for (; n - i >= kLanes<T>; i += kLanes<T>) {
        const int same = _mm_movemask_epi8(_mm_cmpeq_epi8(load(a + i), load(b + i)));
        if (same != 0xFFFF)
            return i + static_cast<std::size_t>(std::countr_one(static_cast<unsigned>(same))) /
                           sizeof(T);
    }
    while (i < n && a[i] == b[i]) ++i;
    return i;
}

// --- the two-way method ---

struct Suffix {
    std::ptrdiff_t start; // of the maximal suffix, less one
    std::ptrdiff_t period;
};

// The maximal suffix of the needle in the order of its units, or in the opposite order.
template <class Needle, class Before>
Suffix maximal_suffix(const Needle& needle, std::ptrdiff_t m, Before before) noexcept {
    Suffix suffix{-1, 1};
    std::ptrdiff_t j = 0;
    std::ptrdiff_t k = 1;
    while (j + k < m) {
        const auto a = needle[j + k];
        const auto b = needle[suffix.start + k];
        if (before(a, b)) {
            j += k;
            k = 1;
            suffix.period = j - suffix.start;
        } else if (a == b) {
            if (k != suffix.period) {
                ++k;
            } else {
                j += suffix.period;
                k = 1;
            }
        } else {
            suffix = {j++, 1};
            k = 1;
        }
    }
    return suffix;
}

// The place of the needle in reading order, or -1. The needle is cut at its critical position:
// the right part is compared first, and tells how far the needle may move on; what is known to
// agree of a periodic needle is remembered and not compared again.
template <class Text>
std::ptrdiff_t two_way(const Text& text, std::ptrdiff_t n, const Text& needle,
                       std::ptrdiff_t m) noexcept {
    const Suffix less = maximal_suffix(needle, m, [](auto a, auto b) { return a < b; });
    const Suffix more = maximal_suffix(needle, m, [](auto a, auto b) { return a > b; });
    auto [cut, period] = less.start > more.start ? less : more;

    std::ptrdiff_t i = 0;
    while (i <= cut && i + period < m && needle[i] == needle[i + period]) ++i;
    const bool periodic = i > cut;
    if (!periodic) period = std::max(cut + 1, m - cut - 1) + 1;

    std::ptrdiff_t known = -1; // the last unit of the needle's start that is known to agree
    for (std::ptrdiff_t at = 0; at <= n - m;) {
        i = std::max(cut, known) + 1;
        while (i < m && needle[i] == text[at + i]) ++i;
        if (i < m) {
            at += i - cut;
            known = -1;
            continue;
        }
        i = cut;
        while (i > known && needle[i] == text[at + i]) --i;
        if (i <= known) return at;
        at += period;
        known = periodic ? m - period - 1 : -1;
    }
    return -1;
}

// --- the search ---

template <Direction D, class T>
const T* search_two_way(const T* text, std::size_t n, const T* needle, std::size_t m) noexcept {
    const std::ptrdiff_t at = two_way(Reading<D, T>(text, n), static_cast<std::ptrdiff_t>(n),
                                      Reading<D, T>(needle, m), static_cast<std::ptrdiff_t>(m));
    if (at < 0) return nullptr;
    return D == Direction::Forward ? text + at : text + (n - m) - at;
}

// For a needle of two units at least that is no longer than the text.
template <Direction D, class T>
const T* search_filtered(const T* text, std::size_t n, const T* needle, std::size_t m) noexcept {
    constexpr bool kForward = D == Direction::Forward;
    const std::size_t starts = n - m + 1;
    const __m128i first = broadcast(needle[0]);
    const __m128i last = broadcast(needle[m - 1]);

    std::size_t done = 0;  // starts that are settled
    std::size_t spent = 0; // blocks looked at for false candidates
    while (starts - done >= kLanes<T>) {
        const T* const block = text + (kForward ? done : starts - done - kLanes<T>);
        unsigned candidates = lane_bits<T>(_mm_and_si128(
            equal_lanes<T>(load(block), first), equal_lanes<T>(load(block + m - 1), last)));
        while (candidates) {
            const T* const candidate = block + take_lane<D, T>(candidates);
            const std::size_t agreed = agreement(candidate + 1, needle + 1, m - 2);
            if (agreed == m - 2) return candidate;
            spent += 1 + agreed / kLanes<T>;
        }
        done += kLanes<T>;
        if (spent > 64 + done / 4)
            return search_two_way<D>(kForward ? text + done : text, n - done, needle, m);
    }
    for (; done < starts; ++done) {
        const T* const candidate = text + (kForward ? done : starts - done - 1);
        if (candidate[0] == needle[0] && agreement(candidate + 1, needle + 1, m - 1) == m - 1)
            return candidate;
    }
    return nullptr;
}

template <Direction D, class T>
const T* search_unit(const T* text, std::size_t n, T unit) noexcept {
    constexpr bool kForward = D == Direction::Forward;
    const __m128i wanted = broadcast(unit);
    std::size_t done = 0;
    for (; n - done >= kLanes<T>; done += kLanes<T>) {
        const T* const block = text + (kForward ? done : n - done - kLanes<T>);
        unsigned hits = lane_bits<T>(equal_lanes<T>(load(block), wanted));
        if (hits) return block + take_lane<D, T>(hits);
    }
    for (; done < n; ++done) {
        const T* const at = text + (kForward ? done : n - done - 1);
        if (*at == unit) return at;
    }
    return nullptr;
}

template <Direction D, class T>
const T* search(const T* text, std::size_t n, const T* needle, std::size_t m) noexcept {
    if (m == 0) return D == Direction::Forward ? text : text + n;
    if (m > n) return nullptr;
    return m == 1 ? search_unit<D>(text, n, *needle) : search_filtered<D>(text, n, needle, m);
}

// A set of units: a map of their low eight bits, which is the whole truth for bytes; wider units
// that pass it are looked up.
template <class T> class UnitSet {
public:
    UnitSet(const T* units, std::size_t m) noexcept : units_(units), m_(m) {
        for (std::size_t i = 0; i < m; ++i) map_[low(units[i]) / 64] |= bit(units[i]);
    }

    bool contains(T unit) const noexcept {
        if (!(map_[low(unit) / 64] & bit(unit))) return false;
        return sizeof(T) == 1 || search_unit<Direction::Forward>(units_, m_, unit) != nullptr;
    }

private:
    static unsigned char low(T unit) noexcept { return static_cast<unsigned char>(unit); }
    static std::uint64_t bit(T unit) noexcept { return std::uint64_t{1} << (low(unit) % 64); }

    const T* units_;
    std::size_t m_;
    std::uint64_t map_[4]{};
};

template <Direction D, class T>
const T* search_of(const T* text, std::size_t n, const T* set, std::size_t m,
                   detail::Membership wanted) noexcept {
    const UnitSet<T> units(set, m);
    for (std::size_t i = 0; i < n; ++i) {
        const T* const at = text + (D == Direction::Forward ? i : n - i - 1);
        if (units.contains(*at) == (wanted == detail::Membership::In)) return at;
    }
    return nullptr;
}

} // namespace

const void* memmem(const void* haystack, std::size_t n, const void* needle,
                   std::size_t m) noexcept {
    return search<Direction::Forward>(static_cast<const char*>(haystack), n,
                                      static_cast<const char*>(needle), m);
}

const void* rmemmem(const void* haystack, std::size_t n, const void* needle,
                    std::size_t m) noexcept {
    return search<Direction::Backward>(static_cast<const char*>(haystack), n,
                                       static_cast<const char*>(needle), m);
}

const void* memrchr(const void* memory, int byte, std::size_t n) noexcept {
    return n ? ::memrchr(memory, byte, n) : nullptr;
}

template <class T, template <class> class Traits>
const T* findstr(const T* haystack, std::size_t n, const T* needle, std::size_t m) noexcept {
    return search<Direction::Forward>(haystack, n, needle, m);
}

template <class T, template <class> class Traits>
const T* rfindstr(const T* haystack, std::size_t n, const T* needle, std::size_t m) noexcept {
    return search<Direction::Backward>(haystack, n, needle, m);
}

namespace detail {

template <class T> const T* find_unit(const T* text, std::size_t n, T unit) noexcept {
    if constexpr (sizeof(T) == 1)
        return n ? static_cast<const T*>(std::memchr(text, unit, n)) : nullptr;
    else
        return search_unit<Direction::Forward>(text, n, unit);
}

template <class T> const T* rfind_unit(const T* text, std::size_t n, T unit) noexcept {
    if constexpr (sizeof(T) == 1)
        return n ? static_cast<const T*>(::memrchr(text, unit, n)) : nullptr;
    else
        return search_unit<Direction::Backward>(text, n, unit);
}

template <class T>
const T* find_of(const T* text, std::size_t n, const T* set, std::size_t m,
                 Membership wanted) noexcept {
    return search_of<Direction::Forward>(text, n, set, m, wanted);
}

template <class T>
const T* rfind_of(const T* text, std::size_t n, const T* set, std::size_t m,
                  Membership wanted) noexcept {
    return search_of<Direction::Backward>(text, n, set, m, wanted);
}

template <class T> int compare_wide(const T* a, const T* b, std::size_t n) noexcept {
    // The library's memcmp has wider vectors, but does not tell the place of a difference.
    constexpr std::size_t kStride = 512 / sizeof(T);
    std::size_t i = 0;
    while (n - i > kStride && std::memcmp(a + i, b + i, kStride * sizeof(T)) == 0) i += kStride;
    i += agreement(a + i, b + i, n - i);
    if (i == n) return 0;
    return std::char_traits<T>::lt(a[i], b[i]) ? -1 : 1;
}

} // namespace detail

ORB_ELM_SEARCH_ALL()

} // namespace elm
