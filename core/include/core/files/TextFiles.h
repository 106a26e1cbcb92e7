// Whole text files, and files as text.
#pragma once

#include <core/files/IFile.h>
#include <core/files/URL.h>
#include <core/streams/IWriter.h>

namespace core {

class Date;

// --- the text form of the library's own files: UTF-8 with a mark, lines end with "\r\n" ---
//
// Both read and write from where the file stands and throw IOException.

// The text with "\n" for its line ends, without the mark.
ORBCORE_API void load_utf8(IFile* file, stdx::ustring& text);
// "\r\n" and "\n" in the text are line ends alike.
ORBCORE_API void save_utf8(IFile* file, const stdx::ustring& text);

// --- the image of a file: no decoding, marks are not looked at ---
//
// As UTF-16 in the machine's order, where an odd byte at the end is left out, or as bytes. False,
// and an empty string, if there is no such file or it cannot be read. Throws std::bad_alloc for what
// no string can hold.

// `modified`, if given, gets the time of the last modification.
ORBCORE_API bool get_text_from_file(const URL& url, stdx::ustring& text, Date* modified = nullptr);
ORBCORE_API bool get_text_from_file(const URL& url, stdx::string& text, Date* modified = nullptr);
// From the file's start to its end.
ORBCORE_API bool get_text_from_file(const InterfacePtr<IFileEx>& file, stdx::ustring& text);

// --- bytes of a file, from where it stands to its end, as base64 and hexadecimal digits ---

ORBCORE_API void encode_base64(IFile* from, IWriter* to, unsigned lineLength = 0,
                               bool urlAlphabet = false);
ORBCORE_API void encode_hex(IFile* from, IWriter* to);

// They leave the reader in front of what ends the text. False for base64 that ends inside a group,
// for an odd number of digits, and where the digits end before the reader does; what was decoded
// before is written.
ORBCORE_API bool decode_base64(IReader* from, IFile* to, bool urlAlphabet = false);
ORBCORE_API bool decode_hex(IReader* from, IFile* to);

} // namespace core
