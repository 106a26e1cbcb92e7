// Text between UTF-16, which the library works in, and UTF-8, which the outside speaks. Malformed
// input becomes U+FFFD.
//
//   std::cout << core::to_utf8(exception.description()) << '\n';
#pragma once

#include <core/platform/api.h>
#include <elm/string>

#include <string_view>

namespace core {

ORBCORE_API stdx::ustring from_utf8(std::string_view text);
ORBCORE_API stdx::string to_utf8(std::u16string_view text);

} // namespace core
