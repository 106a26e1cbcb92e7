// Bytes as hexadecimal digits, and the checksum of the storage formats.
//
//   stdx::ustring text;
//   core::bin_hex(key.data(), key.size(), text);      // appends "00ff41"
//   stdx::string bytes;
//   if (!core::hex_bin(text.c_str(), text.size(), bytes)) ... // not all digits
//
// All functions may be called from any thread.
#pragma once

#include <core/platform/api.h>
#include <elm/string>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace core {

// The two digits of a byte, lower case; constants that live for ever.
ORBCORE_API std::u16string_view bin_hex(std::uint8_t byte) noexcept;

// The digits appended to a text.
ORBCORE_API void bin_hex(std::uint8_t byte, stdx::ustring& to);
ORBCORE_API void bin_hex(const void* data, std::size_t size, stdx::ustring& to);
inline void bin_hex(std::string_view data, stdx::ustring& to) {
    bin_hex(data.data(), data.size(), to);
}

// The digits of all bytes as a new text.
ORBCORE_API stdx::ustring bin_hex(std::string_view data);

// The value of two digits of either case; -1 if one of them is no hexadecimal digit, the
// terminator included: then the second unit is not read.
ORBCORE_API int hex_bin(const char16_t* digits) noexcept;
inline int hex_bin_check(const char16_t* digits) noexcept {
    return hex_bin(digits);
}

// The bytes of `length` digits. False, and `data` as it was, if a unit is no digit or the length
// is odd.
ORBCORE_API bool hex_bin(const char16_t* text, std::size_t length, stdx::string& data);
inline bool hex_bin(std::u16string_view text, stdx::string& data) {
    return hex_bin(text.data(), text.size(), data);
}

// A checksum over the table of CRC-32 (polynomial 0xEDB88320, reflected) that shifts to the left:
// for each byte, crc = ((crc << 8) | byte) ^ table[crc >> 24], from `seed` on. It is not the
// CRC-32 of the data. `finish` adds four zero bytes; a long text may be summed in parts, each with
// the sum of those before as its seed and only the last one finished.
ORBCORE_API std::uint32_t get_crc_32(const char* data, int size, unsigned long seed,
                                     bool finish) noexcept;

} // namespace core
