// Numbers from text and to text, without a locale.
//
//   const char16_t* end;
//   std::int32_t count = core::string_tol(u"  42 pieces", &end);   // end: " pieces"
//   stdx::ustring bits = core::string_ulto(0xBEEF, 16);             // "beef"
//   stdx::ustring half = core::string_dto(0.5);                     // "5e-1"
//
// All functions may be called from any thread. Those that read take a text up to its terminator and
// never throw.
#pragma once

#include <core/platform/api.h>
#include <elm/string>

#include <cstdint>

namespace core {

// --- from text ---
//
// White space is skipped, then come the digits: decimal digits of any script, no prefix of a radix.
// A value that is too large wraps. The signed forms take one "+" or "-" in front of the digits.
// `end`, if given, is set behind the last digit, or to `s` if there is no digit; the value is 0
// then.

ORBCORE_API std::int32_t string_tol(const char16_t* s, const char16_t** end = nullptr) noexcept;
ORBCORE_API std::int32_t string_tol(const char* s, const char** end = nullptr) noexcept;
ORBCORE_API std::uint32_t string_toul(const char16_t* s, const char16_t** end = nullptr) noexcept;
ORBCORE_API std::uint32_t string_toul(const char* s, const char** end = nullptr) noexcept;
ORBCORE_API std::int64_t string_toi64(const char16_t* s, const char16_t** end = nullptr) noexcept;
ORBCORE_API std::int64_t string_toi64(const char* s, const char** end = nullptr) noexcept;
ORBCORE_API std::uint64_t string_toui64(const char16_t* s, const char16_t** end = nullptr) noexcept;
ORBCORE_API std::uint64_t string_toui64(const char* s, const char** end = nullptr) noexcept;

// A sign, digits with at most one ".", and an exponent of "e" or "E", a sign and digits; white
// space is skipped in front. The nearest double, an infinity if the value is too large. No "inf",
// "nan" or hexadecimal forms. `end` as above. Throws std::bad_alloc for very long numbers.
ORBCORE_API double string_tod(const char16_t* s, const char16_t** end = nullptr);
ORBCORE_API double string_tod(const char* s, const char** end = nullptr);

// --- to text ---
//
// Digits in lower case. "-" stands only before a negative value in radix 10; other radixes show the
// bits of the value as unsigned. The radix is 2 to 36, else IllegalArgumentException.
//
//   stdx::ustring string_lto(value, radix = 10)
//   void string_lto(value, stdx::ustring& to, radix = 10)      // replaces the string; stdx::string too
//   char16_t* string_lto(value, char16_t* to, radix = 10)      // char* too; returns the terminator
//
// A buffer needs room for the terminator and as many digits as the value has bits in radix 2, at
// most 21 units in radix 10.
#define ORB_NUMBER_TO_TEXT(NAME, VALUE)                                                            \
    ORBCORE_API stdx::ustring NAME(VALUE value, int radix = 10);                                   \
    ORBCORE_API void NAME(VALUE value, stdx::ustring& to, int radix = 10);                         \
    ORBCORE_API void NAME(VALUE value, stdx::string& to, int radix = 10);                          \
    ORBCORE_API char16_t* NAME(VALUE value, char16_t* to, int radix = 10);                         \
    ORBCORE_API char* NAME(VALUE value, char* to, int radix = 10);

ORB_NUMBER_TO_TEXT(string_lto, std::int32_t)
ORB_NUMBER_TO_TEXT(string_ulto, std::uint32_t)
ORB_NUMBER_TO_TEXT(string_i64to, std::int64_t)
ORB_NUMBER_TO_TEXT(string_ui64to, std::uint64_t)
#undef ORB_NUMBER_TO_TEXT

// Sixteen significant digits, rounded half to even, without trailing zeros: "0" for both zeros,
// "12.5", "-7"; with an exponent where the digits do not reach the decimal point or all lie behind
// it: "1.2e2" for 120, "5e-1" for a half. "inf", "-inf" and "nan" for what is no number.
ORBCORE_API stdx::ustring string_dto(double value);
// The same, replacing the string.
ORBCORE_API void string_dto(double value, stdx::ustring& to);
// The same into memory of 24 units, without a terminator; returns the end.
ORBCORE_API char16_t* string_dto(double value, char16_t* to) noexcept;

} // namespace core
