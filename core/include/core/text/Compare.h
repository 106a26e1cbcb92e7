// Order, equality without regard to case, and hashes of texts; the C library's string functions for
// UTF-16.
//
//   if (core::compare_nocase(name, u"Count") == 0) ...
//   std::uint32_t h = core::hash_nocase(name);       // equal for "Count" and "COUNT"
//
// Case is taken off unit by unit and without a locale, as core/text/Characters.h does it. Lengths
// are in units, at most 0x7FFFFFFF. Nothing here throws; all functions may be called from any
// thread.
#pragma once

#include <core/platform/api.h>
#include <elm/string>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace core {

// The two spellings of a name, English and Russian, of which the second may be null. Both are
// constants that live for ever.
struct Term {
    const char16_t* first;
    const char16_t* second;
};

// --- order ---

// Negative, 0 or positive by the codes of the units over the shorter length, then lenA - lenB.
ORBCORE_API int compare(const char16_t* a, std::size_t lenA, const char16_t* b,
                        std::size_t lenB) noexcept;
ORBCORE_API int compare(const char* a, std::size_t lenA, const char* b, std::size_t lenB) noexcept;

// The same without regard to case: the difference of the first two units that differ, as small
// letters (bytes as signed), then lenA - lenB.
ORBCORE_API int compare_nocase(const char16_t* a, std::size_t lenA, const char16_t* b,
                               std::size_t lenB) noexcept;
ORBCORE_API int compare_nocase(const char* a, std::size_t lenA, const char* b,
                               std::size_t lenB) noexcept;

inline int compare(std::u16string_view a, std::u16string_view b) noexcept {
    return compare(a.data(), a.size(), b.data(), b.size());
}
inline int compare(std::string_view a, std::string_view b) noexcept {
    return compare(a.data(), a.size(), b.data(), b.size());
}
inline int compare_nocase(std::u16string_view a, std::u16string_view b) noexcept {
    return compare_nocase(a.data(), a.size(), b.data(), b.size());
}
inline int compare_nocase(std::string_view a, std::string_view b) noexcept {
    return compare_nocase(a.data(), a.size(), b.data(), b.size());
}

// Whether the text is one of the term's spellings, without regard to case.
ORBCORE_API bool compare_term(std::u16string_view text, const Term& term) noexcept;

// --- hashes: h = h * 37 + unit from 0 on, modulo 2^32, bytes as signed ---

ORBCORE_API std::uint32_t hash(const char16_t* begin, const char16_t* end) noexcept;
ORBCORE_API std::uint32_t hash(const char* begin, const char* end) noexcept;

// The hash of the text in small letters: equal for texts that compare_nocase() finds equal.
ORBCORE_API std::uint32_t hash_nocase(const char16_t* begin, const char16_t* end) noexcept;
ORBCORE_API std::uint32_t hash_nocase(const char* begin, const char* end) noexcept;

// The same for C strings, string objects and views, and for a pointer with a length.
inline std::uint32_t hash(std::u16string_view s) noexcept {
    return hash(s.data(), s.data() + s.size());
}
inline std::uint32_t hash(std::string_view s) noexcept {
    return hash(s.data(), s.data() + s.size());
}
inline std::uint32_t hash_nocase(std::u16string_view s) noexcept {
    return hash_nocase(s.data(), s.data() + s.size());
}
inline std::uint32_t hash_nocase(std::string_view s) noexcept {
    return hash_nocase(s.data(), s.data() + s.size());
}
inline std::uint32_t hash(const char16_t* s, std::size_t length) noexcept {
    return hash(s, s + length);
}
inline std::uint32_t hash(const char* s, std::size_t length) noexcept {
    return hash(s, s + length);
}
inline std::uint32_t hash_nocase(const char16_t* s, std::size_t length) noexcept {
    return hash_nocase(s, s + length);
}
inline std::uint32_t hash_nocase(const char* s, std::size_t length) noexcept {
    return hash_nocase(s, s + length);
}

// --- C strings: what the functions str... of the C library do, on UTF-16 ---

ORBCORE_API std::size_t string_len(const char16_t* s) noexcept;
ORBCORE_API std::size_t string_nlen(const char16_t* s, std::size_t limit) noexcept;
ORBCORE_API char16_t* string_cpy(char16_t* to, const char16_t* from) noexcept;
// Writes exactly `n` units: the text, cut if need be, then zeros.
ORBCORE_API char16_t* string_ncpy(char16_t* to, const char16_t* from, std::size_t n) noexcept;
ORBCORE_API char16_t* string_cat(char16_t* to, const char16_t* from) noexcept;
// Appends at most `n` units and then a terminator.
ORBCORE_API char16_t* string_ncat(char16_t* to, const char16_t* from, std::size_t n) noexcept;
// The first or the last `c`, the terminator among the units searched; null without one.
ORBCORE_API const char16_t* string_chr(const char16_t* s, char16_t c) noexcept;
ORBCORE_API const char16_t* string_rchr(const char16_t* s, char16_t c) noexcept;
ORBCORE_API const char16_t* string_str(const char16_t* s, const char16_t* needle) noexcept;

inline char16_t* string_chr(char16_t* s, char16_t c) noexcept {
    return const_cast<char16_t*>(string_chr(static_cast<const char16_t*>(s), c));
}
inline char16_t* string_rchr(char16_t* s, char16_t c) noexcept {
    return const_cast<char16_t*>(string_rchr(static_cast<const char16_t*>(s), c));
}
inline char16_t* string_str(char16_t* s, const char16_t* needle) noexcept {
    return const_cast<char16_t*>(string_str(static_cast<const char16_t*>(s), needle));
}

} // namespace core
