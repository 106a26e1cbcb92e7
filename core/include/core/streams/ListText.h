// The tokens of the text form of lists, on bare readers and writers.
//
//   core::to_stream(writer, u"say \"hi\"");        // "say ""hi"""
//   stdx::ustring text;
//   if (!core::from_stream(reader, text)) …
//
// What reads passes spaces first, tells a failure by false and throws only what the reader throws.
// The reader stands behind the token then, or somewhere inside of one that failed.
#pragma once

#include <core/component/Guid.h>
#include <core/platform/api.h>
#include <elm/string>

#include <cstdint>

namespace core {

class IReader;
class IWriter;

ORBCORE_API void to_stream(IWriter* writer, bool value);
ORBCORE_API void to_stream(IWriter* writer, int value);
ORBCORE_API void to_stream(IWriter* writer, unsigned value);
ORBCORE_API void to_stream(IWriter* writer, long long value);
ORBCORE_API void to_stream(IWriter* writer, unsigned long long value);
ORBCORE_API void to_stream(IWriter* writer, double value); // as string_dto
// Strings in quotes: a quote is doubled, a surrogate is written as `"\d83d`, outside of the quotes,
// and the string goes on behind it. `n` units, or up to the terminator if that comes first.
ORBCORE_API void to_stream(IWriter* writer, const stdx::ustring& value);
ORBCORE_API void to_stream(IWriter* writer, const char16_t* value);
ORBCORE_API void to_stream(IWriter* writer, const char16_t* value, unsigned n);
ORBCORE_API void to_stream(IWriter* writer, const _GUID& value); // 36 characters

ORBCORE_API bool from_stream(IReader* reader, bool& value); // "1" or "0"
// One sign or none, then digits of any script, as many as there are, modulo 2^32 or 2^64. Narrower
// types take the low bits, `long` the low 32 with their sign.
ORBCORE_API bool from_stream(IReader* reader, signed char& value);
ORBCORE_API bool from_stream(IReader* reader, short& value);
ORBCORE_API bool from_stream(IReader* reader, int& value);
ORBCORE_API bool from_stream(IReader* reader, long& value);
ORBCORE_API bool from_stream(IReader* reader, long long& value);
ORBCORE_API bool from_stream(IReader* reader, unsigned char& value);
ORBCORE_API bool from_stream(IReader* reader, unsigned short& value);
ORBCORE_API bool from_stream(IReader* reader, unsigned int& value);
ORBCORE_API bool from_stream(IReader* reader, unsigned long& value);
ORBCORE_API bool from_stream(IReader* reader, unsigned long long& value);
// At most 31 characters: "-", digits with one ".", and an exponent without "+".
ORBCORE_API bool from_stream(IReader* reader, float& value);
ORBCORE_API bool from_stream(IReader* reader, double& value);
// Empty after a failure. The second form fails for a text that does not fit into `capacity` units
// with its terminator.
ORBCORE_API bool from_stream(IReader* reader, stdx::ustring& value);
ORBCORE_API bool from_stream(IReader* reader, char16_t* value, unsigned capacity);
ORBCORE_API bool from_stream(IReader* reader, _GUID& value);

ORBCORE_API void skip_spaces(IReader* reader);
ORBCORE_API void skip_and_save_spaces(IReader* reader, stdx::ustring& spaces); // appended

// Pass spaces and tell what stands behind them.
ORBCORE_API bool is_begin_of_list(IReader* reader);
ORBCORE_API bool is_end_of_list(IReader* reader);
ORBCORE_API bool is_comma(IReader* reader);

// Pass spaces and the character expected; any other one is passed, too, and the result is false.
ORBCORE_API bool get_begin_of_list(IReader* reader);
ORBCORE_API bool get_end_of_list(IReader* reader);
ORBCORE_API bool get_comma(IReader* reader);

} // namespace core
