// The file that takes everything and gives nothing. It has no state: any thread may use it.
#pragma once

#include <core/files/IFile.h>

namespace core {

inline constexpr _GUID CLSID_NullFile = "6fa07497-f111-4404-8f1a-a8cf2407e456"_guid;

// One object a process.
ORBCORE_API InterfacePtr<IFileEx> dev_null();

} // namespace core
