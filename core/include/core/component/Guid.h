// The names of classes, interfaces and categories: 16-byte GUIDs, their text and their bytes.
//
//   inline constexpr _GUID CLSID_Counter = "5b0e9a3c-8d1f-4b6e-9f27-3a6c51d7e0b4"_guid;
//   stdx::ustring text = core::to_string(CLSID_Counter);   // lower case, 36 characters, no braces
//
// A GUID is a plain value: everything here is safe on any thread, and nothing but the functions
// that return strings allocates.
#pragma once

#include <core/platform/api.h>
#include <elm/string>

#include <array>
#include <bit>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>

struct _GUID {
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];

    // All 16 bytes; two words at a time, as it stands in the hottest loops.
    friend constexpr bool operator==(const _GUID& a, const _GUID& b) noexcept {
        using Words = std::array<std::uint64_t, 2>;
        const Words left = std::bit_cast<Words>(a), right = std::bit_cast<Words>(b);
        return ((left[0] ^ right[0]) | (left[1] ^ right[1])) == 0;
    }
    // By `Data1`, `Data2`, `Data3`, then by the bytes of `Data4`; all unsigned.
    friend constexpr std::strong_ordering operator<=>(const _GUID&, const _GUID&) = default;
};
static_assert(sizeof(_GUID) == 16 && alignof(_GUID) == 4);

using GUID = _GUID;

// The hash of a GUID is its first field as it stands: GUIDs are random there already.
template <> struct std::hash<_GUID> {
    std::size_t operator()(const _GUID& guid) const noexcept { return guid.Data1; }
};

namespace core {

using ::_GUID;
using ::GUID;

inline constexpr _GUID kUUIDNull = {};
inline constexpr _GUID GUID_NULL = {};

// ---- Text: groups of 8-4-4-4-12 hexadecimal digits, written in lower case, read in either case.

inline constexpr std::size_t kGuidTextLength = 36;

ORBCORE_API stdx::ustring to_string(const _GUID& guid);
ORBCORE_API stdx::string to_cstring(const _GUID& guid);

// Write 36 characters and a terminating zero into `buffer`, which has room for 37; return `buffer`.
ORBCORE_API char16_t* to_string(const _GUID& guid, char16_t* buffer) noexcept;
ORBCORE_API char* to_string(const _GUID& guid, char* buffer) noexcept;

// Read the first 36 characters of `text` and ignore what follows. On failure (a null pointer, a
// shorter text, a wrong character) `guid` becomes all zero and the result is false.
ORBCORE_API bool from_string(const char16_t* text, _GUID& guid) noexcept;
ORBCORE_API bool from_string(const char* text, _GUID& guid) noexcept;
ORBCORE_API bool from_string(const stdx::ustring& text, _GUID& guid) noexcept;
ORBCORE_API bool from_string(const stdx::string& text, _GUID& guid) noexcept;

// ---- Bytes: the big-endian form of RFC 4122, section 4.1.2. This is what stored data holds; it
// is not the memory layout of `_GUID`.

ORBCORE_API void to_binary(const _GUID& guid, char* buffer) noexcept;
ORBCORE_API void from_binary(const char* buffer, _GUID& guid) noexcept;

// Appends the 16 bytes; `guid` may lie inside the buffer of `out` itself.
ORBCORE_API void to_binary(const _GUID& guid, stdx::string& out);
ORBCORE_API stdx::string to_binary(const _GUID& guid);

// The halves of the memory layout as numbers: `hi` is Data1 | Data2 << 32 | Data3 << 48, `lo` the
// bytes of `Data4` read as one little-endian number.
ORBCORE_API void to_digits(const _GUID& guid, unsigned long long& hi,
                           unsigned long long& lo) noexcept;

// ---- Literals. A text that is no GUID does not compile.

namespace detail {

constexpr std::uint64_t guid_digits(const char* text, std::size_t begin, std::size_t count) {
    std::uint64_t value = 0;
    for (std::size_t i = begin; i != begin + count; ++i) {
        const char c = text[i];
        const int digit = c >= '0' && c <= '9'   ? c - '0'
                          : c >= 'a' && c <= 'f' ? c - 'a' + 10
                          : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                                 : -1;
        if (digit < 0) throw "a GUID literal has the form 00000000-0000-0000-0000-000000000000";
        value = value * 16 + static_cast<std::uint64_t>(digit);
    }
    return value;
}

} // namespace detail

inline namespace literals {

consteval _GUID operator""_guid(const char* text, std::size_t length) {
    if (length != kGuidTextLength || text[8] != '-' || text[13] != '-' || text[18] != '-' ||
        text[23] != '-')
        throw "a GUID literal has the form 00000000-0000-0000-0000-000000000000";
    _GUID guid = {static_cast<std::uint32_t>(detail::guid_digits(text, 0, 8)),
                  static_cast<std::uint16_t>(detail::guid_digits(text, 9, 4)),
                  static_cast<std::uint16_t>(detail::guid_digits(text, 14, 4)),
                  {}};
    for (std::size_t i = 0; i != 8; ++i)
        guid.Data4[i] = static_cast<std::uint8_t>(
            detail::guid_digits(text, i < 2 ? 19 + 2 * i : 20 + 2 * i, 2));
    return guid;
}

} // namespace literals
} // namespace core
