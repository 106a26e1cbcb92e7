// How lines end, and the encoding that the library's own text files have.
#pragma once

namespace core {

// Inside the system.
inline constexpr char16_t kDefaultLineSeparator[] = u"\n";
// In files that other systems read.
inline constexpr char16_t kWindowsLineSeparator[] = u"\r\n";

inline constexpr char16_t kUTF8Encoding[] = u"UTF-8";

} // namespace core
