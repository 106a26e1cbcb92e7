// A stored list that cannot be read.
#pragma once

#include <core/component/Exception.h>

namespace core {

inline constexpr _GUID CLSID_ListStreamExceptionObject =
    "0d3c7f52-6b1e-4c83-9a7d-f2154be8a9c6"_guid;

class ORBCORE_API ListStreamException : public Exception {
public:
    explicit ListStreamException(IExceptionObject* inner = nullptr);
};

} // namespace core
