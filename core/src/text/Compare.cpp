#include <core/text/Compare.h>

#include "CaseBlock.h"

#include <algorithm>
#include <cstring>

namespace core {

namespace {

int length_difference(std::size_t a, std::size_t b) noexcept {
    return static_cast<int>(a) - static_cast<int>(b);
}

template <class T>
int compare_texts(const T* a, std::size_t lenA, const T* b, std::size_t lenB) noexcept {
    const std::size_t n = std::min(lenA, lenB);
    const std::basic_string_view<T> headA(a, n), headB(b, n);
    const int order = elm::detail::compare(headA, headB);
    return order != 0 ? order : length_difference(lenA, lenB);
}

template <class T> int difference(T a, T b) noexcept {
    return a == b ? 0 : int{without_case(a)} - int{without_case(b)};
}

// The lanes of two blocks that are not equal in any of the alphabets' cases. Only they need a look
// one by one: a unit outside the alphabets never equals one that was changed.
template <class T> unsigned doubtful_lanes(const T* a, const T* b) noexcept {
    constexpr unsigned kAllLanes = sizeof(T) == 1 ? 0xFFFF : 0x5555;
    const __m128i x = load_block(a), y = load_block(b);
    const auto equal = [](__m128i v, __m128i w) {
        return sizeof(T) == 1 ? _mm_cmpeq_epi8(v, w) : _mm_cmpeq_epi16(v, w);
    };
    const unsigned differ = lane_bits<T>(equal(x, y)) ^ kAllLanes;
    if (differ == 0) return 0;
    const __m128i lowX = in_case<Case::Lower, T>(x).units;
    const __m128i lowY = in_case<Case::Lower, T>(y).units;
    return lane_bits<T>(equal(lowX, lowY)) ^ kAllLanes;
}

template <class T>
int compare_texts_nocase(const T* a, std::size_t lenA, const T* b, std::size_t lenB) noexcept {
    const std::size_t n = std::min(lenA, lenB);
    std::size_t i = 0;
    for (; n - i >= kLanes<T>; i += kLanes<T>) {
        for (unsigned doubtful = doubtful_lanes(a + i, b + i); doubtful != 0;) {
            const std::size_t at = i + take_lane<T>(doubtful);
            if (const int order = difference(a[at], b[at])) return order;
        }
    }
    for (; i < n; ++i)
        if (const int order = difference(a[i], b[i])) return order;
    return length_difference(lenA, lenB);
}

constexpr std::uint32_t kFactor = 37;

// The code of a unit: a byte is signed.
template <class T> std::uint32_t code(T c) noexcept {
    return static_cast<std::uint32_t>(static_cast<std::int32_t>(c));
}

// The hash of `n` units more. By eight, so that only one multiplication of the eight waits for the
// result before.
template <class T> std::uint32_t hash_on(std::uint32_t h, const T* s, std::size_t n) noexcept {
    constexpr auto kPowers = [] {
        std::array<std::uint32_t, 9> powers{1};
        for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * kFactor;
        return powers;
    }();
    for (; n >= 8; n -= 8, s += 8) {
        h *= kPowers[8];
        for (std::size_t i = 0; i < 8; ++i) h += code(s[i]) * kPowers[7 - i];
    }
    for (; n != 0; --n, ++s) h = h * kFactor + code(*s);
    return h;
}

template <class T> std::uint32_t hash_text_nocase(const T* s, const T* end) noexcept {
    std::uint32_t h = 0;
    for (; end - s >= kLanes<T>; s += kLanes<T>) {
        T units[kLanes<T>];
        store_block(units, without_case<T>(load_block(s)));
        h = hash_on(h, units, kLanes<T>);
    }
    for (; s != end; ++s) h = h * kFactor + code(without_case(*s));
    return h;
}

} // namespace

int compare(const char16_t* a, std::size_t lenA, const char16_t* b, std::size_t lenB) noexcept {
    return compare_texts(a, lenA, b, lenB);
}
int compare(const char* a, std::size_t lenA, const char* b, std::size_t lenB) noexcept {
    return compare_texts(a, lenA, b, lenB);
}

int compare_nocase(const char16_t* a, std::size_t lenA, const char16_t* b,
                   std::size_t lenB) noexcept {
    return compare_texts_nocase(a, lenA, b, lenB);
}
int compare_nocase(const char* a, std::size_t lenA, const char* b, std::size_t lenB) noexcept {
    return compare_texts_nocase(a, lenA, b, lenB);
}

bool compare_term(std::u16string_view text, const Term& term) noexcept {
    for (const char16_t* const spelling : {term.second, term.first})
        if (spelling && compare_nocase(text, spelling) == 0) return true;
    return false;
}

std::uint32_t hash(const char16_t* begin, const char16_t* end) noexcept {
    return hash_on(0, begin, static_cast<std::size_t>(end - begin));
}
std::uint32_t hash(const char* begin, const char* end) noexcept {
    return hash_on(0, begin, static_cast<std::size_t>(end - begin));
}
std::uint32_t hash_nocase(const char16_t* begin, const char16_t* end) noexcept {
    return hash_text_nocase(begin, end);
}
std::uint32_t hash_nocase(const char* begin, const char* end) noexcept {
    return hash_text_nocase(begin, end);
}

std::size_t string_len(const char16_t* s) noexcept {
    const char16_t* end = s;
    while (*end) ++end;
    return static_cast<std::size_t>(end - s);
}

std::size_t string_nlen(const char16_t* s, std::size_t limit) noexcept {
    std::size_t n = 0;
    while (n < limit && s[n]) ++n;
    return n;
}

char16_t* string_cpy(char16_t* to, const char16_t* from) noexcept {
    std::copy_n(from, string_len(from) + 1, to);
    return to;
}

char16_t* string_ncpy(char16_t* to, const char16_t* from, std::size_t n) noexcept {
    const std::size_t length = string_nlen(from, n);
    std::fill_n(std::copy_n(from, length, to), n - length, u'\0');
    return to;
}

char16_t* string_cat(char16_t* to, const char16_t* from) noexcept {
    string_cpy(to + string_len(to), from);
    return to;
}

char16_t* string_ncat(char16_t* to, const char16_t* from, std::size_t n) noexcept {
    *std::copy_n(from, string_nlen(from, n), to + string_len(to)) = u'\0';
    return to;
}

const char16_t* string_chr(const char16_t* s, char16_t c) noexcept {
    for (;; ++s) {
        if (*s == c) return s;
        if (!*s) return nullptr;
    }
}

const char16_t* string_rchr(const char16_t* s, char16_t c) noexcept {
    return elm::detail::rfind_unit(s, string_len(s) + 1, c);
}

const char16_t* string_str(const char16_t* s, const char16_t* needle) noexcept {
    return elm::findstr<char16_t, std::char_traits>(s, string_len(s), needle, string_len(needle));
}

} // namespace core
