// Pieces of text: at delimiters, by replacement, of a path.
//
//   for (const stdx::ustring& name : core::string_tokenize(u"a, b,,c", u", ")) ... // a b c
//   core::string_split(u"a,,b", u",")                                             // a, empty, b
//
// All functions may be called from any thread and throw std::bad_alloc only.
#pragma once

#include <core/platform/api.h>
#include <elm/string>

#include <string_view>
#include <vector>

namespace core {

// The pieces between units of the delimiter set; empty pieces are skipped.
ORBCORE_API std::vector<stdx::ustring> string_tokenize(const char16_t* begin, const char16_t* end,
                                                       const char16_t* delimBegin,
                                                       const char16_t* delimEnd);
ORBCORE_API std::vector<stdx::string> string_tokenize(const char* begin, const char* end,
                                                      const char* delimBegin, const char* delimEnd);

// The pieces between units of the delimiter set; n delimiters give n + 1 pieces.
ORBCORE_API std::vector<stdx::ustring> string_split(const char16_t* begin, const char16_t* end,
                                                    const char16_t* delimBegin,
                                                    const char16_t* delimEnd);
ORBCORE_API std::vector<stdx::string> string_split(const char* begin, const char* end,
                                                   const char* delimBegin, const char* delimEnd);

inline std::vector<stdx::ustring> string_tokenize(std::u16string_view text,
                                                  std::u16string_view delimiters) {
    return string_tokenize(text.data(), text.data() + text.size(), delimiters.data(),
                           delimiters.data() + delimiters.size());
}
inline std::vector<stdx::ustring> string_split(std::u16string_view text,
                                               std::u16string_view delimiters) {
    return string_split(text.data(), text.data() + text.size(), delimiters.data(),
                        delimiters.data() + delimiters.size());
}

// The text with the first occurrence of `from` replaced. The text itself without an occurrence or
// with an empty `from`.
ORBCORE_API stdx::ustring replace(const stdx::ustring& text, std::u16string_view from,
                                  std::u16string_view to);
ORBCORE_API stdx::string replace(const stdx::string& text, std::string_view from,
                                 std::string_view to);

// The text with every occurrence replaced, from left to right, in time linear in the text and the
// result.
ORBCORE_API stdx::ustring replace_all(const stdx::ustring& text, std::u16string_view from,
                                      std::u16string_view to);
ORBCORE_API stdx::string replace_all(const stdx::string& text, std::string_view from,
                                     std::string_view to);

// Takes a path apart: "C:/reports/may.txt" is "C:", "/reports/", "may", ".txt". The four pieces
// joined are the path. A drive is a letter and ":"; "/" and "\" separate; the extension starts at
// the last "." behind the last separator.
ORBCORE_API void string_splitpath(std::u16string_view path, stdx::ustring& drive,
                                  stdx::ustring& dir, stdx::ustring& name, stdx::ustring& ext);
ORBCORE_API void string_splitpath(std::string_view path, stdx::string& drive, stdx::string& dir,
                                  stdx::string& name, stdx::string& ext);

// Joins the pieces of a path. Where they lack it, adds ":" behind a drive, "/" behind a directory
// and "." before an extension; to an empty piece nothing is added.
ORBCORE_API stdx::ustring string_makepath(std::u16string_view drive, std::u16string_view dir,
                                          std::u16string_view name, std::u16string_view ext);
ORBCORE_API stdx::string string_makepath(std::string_view drive, std::string_view dir,
                                         std::string_view name, std::string_view ext);

} // namespace core
