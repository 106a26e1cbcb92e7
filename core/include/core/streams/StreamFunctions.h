// Functions between readers, writers and strings.
#pragma once

#include <core/platform/api.h>
#include <core/streams/IWriter.h>
#include <elm/string>

#include <cstdarg>
#include <cstdint>

namespace core {

// Moves at most `n` units in blocks; returns how many. Both streams stand behind the last unit
// moved, also when the target throws, but for the block at hand.
ORBCORE_API unsigned long long copy_stream(IWriter* to, IReader* from, unsigned long long n);

// At most `n` units as a string.
ORBCORE_API stdx::ustring read_stream(IReader* from, unsigned n = kAllUnits);

// string_printf() into a writer; returns the units written.
ORBCORE_API int writer_printf(IWriter* to, const char16_t* format, ...);
ORBCORE_API int writer_vprintf(IWriter* to, const char16_t* format, std::va_list arguments);

// --- numbers into buffers: appended, as string_lto and its like write them ---

ORBCORE_API void string_lto(std::int32_t value, IStringBuffer* to, int radix = 10);
ORBCORE_API void string_ulto(std::uint32_t value, IStringBuffer* to, int radix = 10);
ORBCORE_API void string_i64to(std::int64_t value, IStringBuffer* to, int radix = 10);
ORBCORE_API void string_ui64to(std::uint64_t value, IStringBuffer* to, int radix = 10);

// --- base64 and hexadecimal digits, as in core/text/Base64.h and Hex.h ---

ORBCORE_API void encode_base64(const void* data, std::size_t size, IWriter* to,
                               unsigned lineLength = 0, bool urlAlphabet = false);

// Reads base64 from the stream and leaves it in front of the character that ends the text. False if
// the text ends inside a group or has "=" where none may stand.
//
// Into memory of `size` bytes: `size` becomes the number of bytes that stand there. False also if
// there are more than fit; where the stream then stands is not told.
ORBCORE_API bool decode_base64(IReader* from, void* data, unsigned& size, bool urlAlphabet = false);
// Replaces the string, but leaves it as it was where the result is false.
ORBCORE_API bool decode_base64(IReader* from, stdx::string& data, bool urlAlphabet = false);

} // namespace core
