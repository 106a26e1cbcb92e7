// Search and comparison on plain memory: what the string family finds with.
//
//   const void* hit = elm::memmem(file, size, "\r\n", 2);
//   const char16_t* name = elm::findstr<char16_t, std::char_traits>(text, n, u"name", 4);
//
// A search takes linear time, whatever the text: sixteen bytes at a time are filtered by the first
// and the last unit of the needle, and text that keeps passing the filter without a match goes to
// an algorithm that never looks back. No function allocates or throws; all may be called from any
// thread.
#pragma once

#include "elm/AllocWrapper.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>

namespace elm {

// The first place of the `m` bytes of the needle in the `n` bytes of the haystack, or null. An
// empty needle is found at the start.
ORB_ELM_API const void* memmem(const void* haystack, std::size_t n, const void* needle,
                               std::size_t m) noexcept;

// The last such place. An empty needle is found at the end.
ORB_ELM_API const void* rmemmem(const void* haystack, std::size_t n, const void* needle,
                                std::size_t m) noexcept;

// The last byte that equals `byte` (as an unsigned char) among the `n` bytes, or null.
ORB_ELM_API const void* memrchr(const void* memory, int byte, std::size_t n) noexcept;

// memmem() on units, for `char`, `char16_t` and `wchar_t`.
template <class T, template <class> class Traits>
const T* findstr(const T* haystack, std::size_t n, const T* needle, std::size_t m) noexcept;

// rmemmem() on units.
template <class T, template <class> class Traits>
const T* rfindstr(const T* haystack, std::size_t n, const T* needle, std::size_t m) noexcept;

namespace detail {

// The first unit that equals `unit`, or null.
template <class T> const T* find_unit(const T* text, std::size_t n, T unit) noexcept;

// The last unit that equals `unit`, or null.
template <class T> const T* rfind_unit(const T* text, std::size_t n, T unit) noexcept;

// What is looked for beside a set of units.
enum class Membership { In, NotIn };

// The first unit that is, or is not, one of the `m` units of the set; null if there is none.
template <class T>
const T* find_of(const T* text, std::size_t n, const T* set, std::size_t m, Membership) noexcept;

// The last such unit.
template <class T>
const T* rfind_of(const T* text, std::size_t n, const T* set, std::size_t m, Membership) noexcept;

// The sign of the comparison by std::char_traits<T>.
template <class T> int compare_wide(const T* a, const T* b, std::size_t n) noexcept;

// The sign of the comparison unit by unit; then the shorter text comes first.
template <class T>
constexpr int compare(std::basic_string_view<T> a, std::basic_string_view<T> b) noexcept {
    const std::size_t n = std::min(a.size(), b.size());
    int order = 0;
    if (sizeof(T) == 1 || std::is_constant_evaluated())
        order = std::char_traits<T>::compare(a.data(), b.data(), n);
    else
        order = compare_wide(a.data(), b.data(), n);
    if (order != 0) return order;
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

template <class T>
constexpr bool equal(std::basic_string_view<T> a,
                     std::type_identity_t<std::basic_string_view<T>> b) noexcept {
    if (a.size() != b.size()) return false;
    if (std::is_constant_evaluated())
        return std::char_traits<T>::compare(a.data(), b.data(), a.size()) == 0;
    return a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(T)) == 0;
}

} // namespace detail

#define ORB_ELM_SEARCH(KEYWORD, T)                                                                 \
    KEYWORD template ORB_ELM_API const T* findstr<T, std::char_traits>(                            \
        const T*, std::size_t, const T*, std::size_t) noexcept;                                    \
    KEYWORD template ORB_ELM_API const T* rfindstr<T, std::char_traits>(                           \
        const T*, std::size_t, const T*, std::size_t) noexcept;                                    \
    KEYWORD template ORB_ELM_API const T* detail::find_unit(const T*, std::size_t, T) noexcept;    \
    KEYWORD template ORB_ELM_API const T* detail::rfind_unit(const T*, std::size_t, T) noexcept;   \
    KEYWORD template ORB_ELM_API const T* detail::find_of(const T*, std::size_t, const T*,         \
                                                          std::size_t, Membership) noexcept;       \
    KEYWORD template ORB_ELM_API const T* detail::rfind_of(const T*, std::size_t, const T*,        \
                                                           std::size_t, Membership) noexcept;      \
    KEYWORD template ORB_ELM_API int detail::compare_wide(const T*, const T*, std::size_t) noexcept;
#define ORB_ELM_SEARCH_ALL(KEYWORD)                                                                \
    ORB_ELM_SEARCH(KEYWORD, char)                                                                  \
    ORB_ELM_SEARCH(KEYWORD, char16_t)                                                              \
    ORB_ELM_SEARCH(KEYWORD, wchar_t)

ORB_ELM_SEARCH_ALL(extern)

} // namespace elm
