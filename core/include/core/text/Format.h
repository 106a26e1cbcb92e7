// Text by a format of the printf family, without a locale.
//
//   stdx::ustring line = core::format_string(u"%-10s %8.2f", name, price);
//   core::string_printf(line, u"%d of %I64u", part, total);        // C's way: types must fit
//
// Take format_string(): it knows the types of its arguments and refuses what does not fit. The
// others take arguments as C does, where a directive that does not fit its argument is undefined
// behaviour; they are for formats that stand beside their arguments.
//
// docs/text.md tells the directives. All functions may be called from any thread.
#pragma once

#include <core/platform/api.h>
#include <elm/string>

#include <concepts>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <type_traits>

namespace core {

// --- C's way ---
//
// The result is the length of the whole text in units. A directive that does not exist is copied as
// it stands. Width, and precision but for %s, are cut to 65,535.

// Replaces the string. Throws std::bad_alloc.
ORBCORE_API int string_printf(stdx::ustring& to, const char16_t* format, ...);
ORBCORE_API int string_printf(stdx::string& to, const char* format, ...);

// Writes at most `size` units, the terminator among them; none if `size` is 0.
ORBCORE_API int string_nprintf(char16_t* to, std::size_t size, const char16_t* format, ...);
ORBCORE_API int string_nprintf(char* to, std::size_t size, const char* format, ...);

// string_printf() with the arguments as a list, which is used up.
ORBCORE_API int string_vprintf(stdx::ustring& to, const char16_t* format, std::va_list arguments);
ORBCORE_API int string_vprintf(stdx::string& to, const char* format, std::va_list arguments);

// --- with checked types ---

// An argument of format_string(), with its type. Texts are lent.
class FormatArgument {
public:
    enum class Kind { Signed, Unsigned, Char, WideChar, Real, LongReal, Text, WideText, Pointer };

    FormatArgument(char c) noexcept : kind_(Kind::Char), bits_(static_cast<unsigned char>(c)) {}
    FormatArgument(char16_t c) noexcept : kind_(Kind::WideChar), bits_(c) {}
    template <std::integral I>
    FormatArgument(I value) noexcept
        : kind_(std::signed_integral<I> ? Kind::Signed : Kind::Unsigned),
          size_(sizeof(I)),
          bits_(static_cast<std::uint64_t>(value)) {}
    FormatArgument(float value) noexcept : FormatArgument(double{value}) {}
    FormatArgument(double value) noexcept : kind_(Kind::Real), real_(value) {}
    FormatArgument(long double value) noexcept : kind_(Kind::LongReal), longReal_(value) {}
    FormatArgument(std::string_view s) noexcept : kind_(Kind::Text), text_(s) {}
    FormatArgument(std::u16string_view s) noexcept : kind_(Kind::WideText), wideText_(s) {}
    FormatArgument(const char* s) noexcept : FormatArgument(std::string_view(s ? s : "(null)")) {}
    FormatArgument(const char16_t* s) noexcept
        : FormatArgument(std::u16string_view(s ? s : u"(null)")) {}
    FormatArgument(const stdx::string& s) noexcept : FormatArgument(s.view()) {}
    FormatArgument(const stdx::ustring& s) noexcept : FormatArgument(s.view()) {}
    FormatArgument(std::nullptr_t) noexcept : FormatArgument(static_cast<const void*>(nullptr)) {}
    FormatArgument(const void* p) noexcept
        : kind_(Kind::Pointer), bits_(reinterpret_cast<std::uintptr_t>(p)) {}

    Kind kind() const noexcept { return kind_; }
    // The bytes of an integer.
    std::size_t size() const noexcept { return size_; }
    // An integer, sign-extended if signed, the code of a unit, or an address.
    std::uint64_t bits() const noexcept { return bits_; }
    double real() const noexcept { return real_; }
    long double long_real() const noexcept { return longReal_; }
    std::string_view text() const noexcept { return text_; }
    std::u16string_view wide_text() const noexcept { return wideText_; }

private:
    Kind kind_;
    std::uint8_t size_ = 0;
    // The one that `kind_` names.
    union {
        std::uint64_t bits_;
        double real_;
        long double longReal_;
        std::string_view text_;
        std::u16string_view wideText_;
    };
};

ORBCORE_API stdx::ustring format_arguments(std::u16string_view format,
                                           std::span<const FormatArgument> arguments);
ORBCORE_API stdx::string format_arguments(std::string_view format,
                                          std::span<const FormatArgument> arguments);

// The text of the format with the arguments. A length in a directive has no effect: the argument's
// type tells its size. Throws IllegalArgumentException with the place in the format for a
// directive that does not exist or does not fit its argument, for %n, and for arguments too few or
// too many.
template <class... Arguments>
stdx::ustring format_string(std::u16string_view format, const Arguments&... arguments) {
    const FormatArgument list[] = {FormatArgument(arguments)..., FormatArgument(0)};
    return format_arguments(format, std::span(list, sizeof...(arguments)));
}
template <class... Arguments>
stdx::string format_string(std::string_view format, const Arguments&... arguments) {
    const FormatArgument list[] = {FormatArgument(arguments)..., FormatArgument(0)};
    return format_arguments(format, std::span(list, sizeof...(arguments)));
}

} // namespace core
