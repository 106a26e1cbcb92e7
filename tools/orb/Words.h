// What words of the command line name: classes and files.
#pragma once

#include <core/core.h>

#include <string_view>

namespace orb {

// A URL, or a path of the system. Throws `Failure` for an unknown scheme, `UsageError` for what is no
// URL.
core::URL url_of(std::string_view word);

// Null when the class is unknown or makes no objects.
inline core::InterfacePtr<IUnknown> object_named(const char* name) {
    _GUID clsid;
    if (std::string_view(name).size() == core::kGuidTextLength && core::from_string(name, clsid))
        return core::create_object<IUnknown>(clsid);
    return core::create_object_by_alias<IUnknown>(core::from_utf8(name));
}

} // namespace orb
