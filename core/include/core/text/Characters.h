// Single units of text: what kind they are, their case, their value as a digit.
//
//   if (core::is_alpha(unit)) unit = core::to_upper(unit);
//   stdx::ustring shout = core::to_upper(text.cbegin(), text.cend());
//
// A `char16_t` is one UTF-16 unit; half of a surrogate pair has no kind and no case. A `char` is
// one code of Latin-1: take the 8-bit forms for ASCII and bytes, not for UTF-8. The process's
// locale has no say. All functions may be called from any thread; none of those on single units
// throws.
//
// ASCII and the Russian letters U+0410 to U+044F cost a few instructions, in ranges sixteen bytes
// at a time; anything else asks ICU's tables, some 5 ns a unit.
#pragma once

#include <core/platform/api.h>
#include <elm/string>

#include <array>
#include <cstdint>

namespace core {

namespace detail {

// The kinds of a unit, as bits.
enum CharKind : std::uint16_t {
    kSpace = 1,
    kCntrl = 2,
    kUpper = 4,
    kLower = 8,
    kPunct = 16,
    kAlpha = 32,
    kAlnum = 64,
    kPrint = 128,
    kGraph = 256,
    kTitle = 512,
    kDigit = 1024,
};

constexpr std::uint16_t ascii_kind(unsigned c) noexcept {
    constexpr std::string_view kSymbols = "$+<=>^`|~";
    constexpr unsigned kVisible = kPrint | kGraph;
    if (c < 0x20 || c == 0x7F) {
        const bool space = (c >= 0x09 && c <= 0x0D) || (c >= 0x1C && c <= 0x1F);
        return static_cast<std::uint16_t>(kCntrl | (space ? kSpace : 0));
    }
    if (c == ' ') return kSpace | kPrint;
    if (c >= '0' && c <= '9') return kVisible | kAlnum | kDigit;
    if (c >= 'A' && c <= 'Z') return kVisible | kAlnum | kAlpha | kUpper;
    if (c >= 'a' && c <= 'z') return kVisible | kAlnum | kAlpha | kLower;
    const bool symbol = kSymbols.find(static_cast<char>(c)) != std::string_view::npos;
    return static_cast<std::uint16_t>(kVisible | (symbol ? 0 : kPunct));
}

inline constexpr std::array<std::uint16_t, 128> kAsciiKinds = [] {
    std::array<std::uint16_t, 128> kinds{};
    for (unsigned c = 0; c < 128; ++c) kinds[c] = ascii_kind(c);
    return kinds;
}();

// Alphabets that need no tables: the letters of the basic Cyrillic block.
constexpr bool is_basic_cyrillic(char16_t c) noexcept {
    return c >= 0x410 && c <= 0x44F;
}

// Everything beyond them.
ORBCORE_API bool is_of_kind(char16_t c, CharKind kind) noexcept;
ORBCORE_API char16_t icu_to_upper(char16_t c) noexcept;
ORBCORE_API char16_t icu_to_lower(char16_t c) noexcept;
ORBCORE_API int icu_digit(char16_t c) noexcept;

inline bool has_kind(char16_t c, CharKind kind) noexcept {
    if (c < 0x80) return (kAsciiKinds[c] & kind) != 0;
    return is_of_kind(c, kind);
}

} // namespace detail

// A byte as the unit with the same code, U+0000 to U+00FF.
constexpr char16_t widen(char c) noexcept {
    return static_cast<unsigned char>(c);
}

// A unit below 0x80 as it stands, any other as "?".
constexpr char narrow(char16_t c) noexcept {
    return c < 0x80 ? static_cast<char>(c) : '?';
}

// narrow() of each unit.
ORBCORE_API stdx::string narrow(const char16_t* begin, const char16_t* end);

// --- kinds, by the Unicode properties: u_isspace and its sisters of ICU ---

// White space: separators of Unicode (no-break spaces too), U+0009 to U+000D, U+001C to U+001F and
// U+0085.
inline bool is_space(char16_t c) noexcept {
    return detail::has_kind(c, detail::kSpace);
}
inline bool is_cntrl(char16_t c) noexcept {
    return detail::has_kind(c, detail::kCntrl);
}
inline bool is_upper(char16_t c) noexcept {
    return detail::has_kind(c, detail::kUpper);
}
inline bool is_lower(char16_t c) noexcept {
    return detail::has_kind(c, detail::kLower);
}
// Punctuation; symbols like "+" and "$" are none.
inline bool is_punct(char16_t c) noexcept {
    return detail::has_kind(c, detail::kPunct);
}
inline bool is_alpha(char16_t c) noexcept {
    return detail::is_basic_cyrillic(c) || detail::has_kind(c, detail::kAlpha);
}
inline bool is_alnum(char16_t c) noexcept {
    return detail::is_basic_cyrillic(c) || detail::has_kind(c, detail::kAlnum);
}
// Visible, or a blank.
inline bool is_print(char16_t c) noexcept {
    return detail::has_kind(c, detail::kPrint);
}
inline bool is_graph(char16_t c) noexcept {
    return detail::has_kind(c, detail::kGraph);
}
// The letters that are a capital and a small one in one: U+01C5 and the like.
inline bool is_title(char16_t c) noexcept {
    return detail::has_kind(c, detail::kTitle);
}
// A decimal digit of any script.
inline bool is_digit(char16_t c) noexcept {
    return detail::has_kind(c, detail::kDigit);
}

inline bool is_space(char c) noexcept {
    return is_space(widen(c));
}
inline bool is_cntrl(char c) noexcept {
    return is_cntrl(widen(c));
}
inline bool is_upper(char c) noexcept {
    return is_upper(widen(c));
}
inline bool is_lower(char c) noexcept {
    return is_lower(widen(c));
}
inline bool is_punct(char c) noexcept {
    return is_punct(widen(c));
}
inline bool is_alpha(char c) noexcept {
    return is_alpha(widen(c));
}
inline bool is_alnum(char c) noexcept {
    return is_alnum(widen(c));
}
inline bool is_print(char c) noexcept {
    return is_print(widen(c));
}
inline bool is_graph(char c) noexcept {
    return is_graph(widen(c));
}
constexpr bool is_digit(char c) noexcept {
    return c >= '0' && c <= '9';
}

// --- digits ---

// The value of a decimal digit of any script, 0 to 9; -1 for anything else.
inline int digit(char16_t c) noexcept {
    if (c < 0x80) return c >= u'0' && c <= u'9' ? c - u'0' : -1;
    return detail::is_basic_cyrillic(c) ? -1 : detail::icu_digit(c);
}
constexpr int digit(char c) noexcept {
    return is_digit(c) ? c - '0' : -1;
}

// The value of a hexadecimal digit, 0 to 15; -1 for anything else. Beside digit(), "a" to "f" in
// either case, as `char16_t` in full width too.
inline int xdigit(char16_t c) noexcept {
    const char16_t letter = c >= 0xFF21 ? static_cast<char16_t>(c - 0xFEE0) : c;
    const unsigned value = (letter | 0x20u) - u'a';
    return value < 6 ? static_cast<int>(value) + 10 : digit(c);
}
constexpr int xdigit(char c) noexcept {
    const unsigned value = (static_cast<unsigned char>(c) | 0x20u) - 'a';
    return value < 6 ? static_cast<int>(value) + 10 : digit(c);
}

inline bool is_xdigit(char16_t c) noexcept {
    return xdigit(c) >= 0;
}
constexpr bool is_xdigit(char c) noexcept {
    return xdigit(c) >= 0;
}

// "0" to "9"; 0 for a value above 9.
template <class T = char16_t> constexpr T for_digit(unsigned value) noexcept {
    return value <= 9 ? static_cast<T>('0' + value) : T();
}

// "0" to "9", "a" to "f"; 0 for a value above 15.
template <class T = char16_t> constexpr T for_xdigit(unsigned value) noexcept {
    if (value <= 9) return static_cast<T>('0' + value);
    return value <= 15 ? static_cast<T>('a' + (value - 10)) : T();
}

// --- case ---

// The capital of a letter; anything else as it stands. One unit stays one unit: U+00DF stays.
inline char16_t to_upper(char16_t c) noexcept {
    if (c < 0x80) return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 32) : c;
    if (detail::is_basic_cyrillic(c)) return c >= 0x430 ? static_cast<char16_t>(c - 32) : c;
    return detail::icu_to_upper(c);
}

// The small letter of a letter; anything else as it stands.
inline char16_t to_lower(char16_t c) noexcept {
    if (c < 0x80) return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
    if (detail::is_basic_cyrillic(c)) return c < 0x430 ? static_cast<char16_t>(c + 32) : c;
    return detail::icu_to_lower(c);
}

// The title form of a letter: the capital, but for the few letters that have a third form.
ORBCORE_API char16_t to_title(char16_t c) noexcept;

// The simple case folding of Unicode.
ORBCORE_API char16_t fold_case(char16_t c) noexcept;

// The 8-bit forms. A byte whose other case lies outside Latin-1 (0xB5, 0xFF) stays as it is.
ORBCORE_API char to_upper(char c) noexcept;
ORBCORE_API char to_lower(char c) noexcept;
ORBCORE_API char to_title(char c) noexcept;
ORBCORE_API char fold_case(char c) noexcept;

// Ranges, unit by unit, without rules of context: the length never changes.
ORBCORE_API stdx::ustring to_upper(const char16_t* begin, const char16_t* end);
ORBCORE_API stdx::ustring to_lower(const char16_t* begin, const char16_t* end);
ORBCORE_API stdx::ustring to_title(const char16_t* begin, const char16_t* end);
ORBCORE_API stdx::ustring fold_case(const char16_t* begin, const char16_t* end);
ORBCORE_API stdx::string to_upper(const char* begin, const char* end);
ORBCORE_API stdx::string to_lower(const char* begin, const char* end);
ORBCORE_API stdx::string to_title(const char* begin, const char* end);
ORBCORE_API stdx::string fold_case(const char* begin, const char* end);

// The same into memory of the caller, which may be the range itself.
ORBCORE_API void to_upper(const char16_t* begin, const char16_t* end, char16_t* to) noexcept;
ORBCORE_API void to_lower(const char16_t* begin, const char16_t* end, char16_t* to) noexcept;
ORBCORE_API void to_upper(const char* begin, const char* end, char* to) noexcept;
ORBCORE_API void to_lower(const char* begin, const char* end, char* to) noexcept;

// The one empty text, for functions that give a reference. Lives for ever.
ORBCORE_API const stdx::ustring& empty_string() noexcept;

} // namespace core
