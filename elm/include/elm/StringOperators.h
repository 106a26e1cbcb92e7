// What surrounds `elm::BasicString`: concatenation, removal, output, hashing, the names
// `stdx::ustring` and `stdx::string` and their literals. Part of <elm/string>.
#pragma once

#include "elm/string"

#include <concepts>
#include <cstddef>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string_view>
#include <type_traits>
#include <utility>

namespace elm {

namespace detail {

template <class S> inline constexpr bool kIsString = false;
template <class T, unsigned A, unsigned E, template <class> class Alloc>
inline constexpr bool kIsString<BasicString<T, A, E, Alloc>> = true;

template <class S>
concept AnyString = kIsString<std::remove_cvref_t<S>>;

// What can stand beside a string of `T` in a concatenation: text or one unit.
template <class X, class T>
concept OperandFor = std::same_as<X, T> || std::convertible_to<const X&, std::basic_string_view<T>>;

template <class T, OperandFor<T> X>
constexpr std::basic_string_view<T> text_of(const X& operand) noexcept {
    if constexpr (std::same_as<X, T>)
        return {&operand, 1};
    else
        return operand;
}

template <class S> S concatenated(typename S::view_type a, typename S::view_type b) {
    S both;
    both._resize_nofill(checked_size(a.size() + b.size()));
    a.copy(both.data(), a.size());
    b.copy(both.data() + a.size(), b.size());
    return both;
}

} // namespace detail

// String + string, view, C string or unit: a new string of exact capacity; a string that is about
// to end is continued instead.
template <detail::AnyString S, detail::OperandFor<typename std::remove_cvref_t<S>::value_type> X>
std::remove_cvref_t<S> operator+(S&& left, const X& right) {
    using String = std::remove_cvref_t<S>;
    const auto text = detail::text_of<typename String::value_type>(right);
    if constexpr (std::same_as<S, String>)
        return std::move(left.append(text));
    else
        return detail::concatenated<String>(left, text);
}

// View, C string or unit + string, alike.
template <class X, detail::AnyString S>
requires(!detail::AnyString<X> &&
         detail::OperandFor<X, typename std::remove_cvref_t<S>::value_type>) std::remove_cvref_t<S>
operator+(const X& left, S&& right) {
    using String = std::remove_cvref_t<S>;
    const auto text = detail::text_of<typename String::value_type>(left);
    if constexpr (std::same_as<S, String>)
        return std::move(right.insert(0, text));
    else
        return detail::concatenated<String>(text, right);
}

// Removes every unit for which `is_unwanted` holds, and gives their number.
template <class T, unsigned A, unsigned E, template <class> class Alloc, class Predicate>
unsigned int erase_if(BasicString<T, A, E, Alloc>& s, Predicate is_unwanted) {
    const auto kept = std::remove_if(s.begin(), s.end(), is_unwanted);
    const auto removed = static_cast<unsigned int>(s.end() - kept);
    s.erase(kept, s.end());
    return removed;
}

template <class T, unsigned A, unsigned E, template <class> class Alloc, class U>
unsigned int erase(BasicString<T, A, E, Alloc>& s, const U& unwanted) {
    return erase_if(s, [&](T c) { return c == unwanted; });
}

// Writes narrow text as the stream writes a std::string_view.
template <unsigned A, unsigned E, template <class> class Alloc, class Traits>
std::basic_ostream<char, Traits>& operator<<(std::basic_ostream<char, Traits>& out,
                                             const BasicString<char, A, E, Alloc>& s) {
    return out << std::basic_string_view<char, Traits>(s.c_str(), s.size());
}

} // namespace elm

// The hash of the equal view, so that tables can be asked by view.
template <class T, unsigned A, unsigned E, template <class> class Alloc>
struct std::hash<elm::BasicString<T, A, E, Alloc>> {
    using is_transparent = void;
    std::size_t operator()(std::basic_string_view<T> s) const noexcept {
        return std::hash<std::basic_string_view<T>>()(s);
    }
};

namespace stdx {

// Text, in UTF-16 units.
using ustring = elm::BasicString<char16_t, 0u, 0u, std::allocator>;
// Bytes and narrow text.
using string = elm::BasicString<char, 0u, 0u, std::allocator>;

inline namespace literals {

constexpr ustring operator""_us(const char16_t* text, std::size_t n) {
    return ustring(std::u16string_view(text, n));
}

constexpr string operator""_s(const char* text, std::size_t n) {
    return string(std::string_view(text, n));
}

} // namespace literals
} // namespace stdx
