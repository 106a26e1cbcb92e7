// Where this library lies. Everything that comes with it (components, message bundles) is found
// from there, so that an installation can be moved.
#pragma once

#include <string>

namespace core {

// The directory of orbcore.so with a slash at its end.
const std::string& own_library_directory();

} // namespace core
