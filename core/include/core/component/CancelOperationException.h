// The user, or whoever may, cancelled an operation: no failure, and nothing to show.
#pragma once

#include <core/component/Exception.h>

namespace core {

inline constexpr _GUID CLSID_CancelOperationExceptionObject =
    "8d438a43-e3e1-4a70-a21b-eb18f84c0d4d"_guid;

class ORBCORE_API CancelOperationException : public Exception {
public:
    explicit CancelOperationException(IExceptionObject* inner = nullptr);
};

} // namespace core
