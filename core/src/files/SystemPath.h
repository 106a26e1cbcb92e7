// Paths between the library, which speaks UTF-16, and the system, which speaks bytes.
#pragma once

#include <elm/string>

#include <string_view>

namespace core {

// False for a path that has no such form: one that holds a zero, which the system would take for its
// end, or a character that its encoding lacks.
bool to_system_path(const stdx::ustring& path, stdx::string& bytes);
// Bytes that are no text in the system's encoding are read as UTF-8, with U+FFFD for what is none.
stdx::ustring from_system_path(std::string_view bytes);

} // namespace core
