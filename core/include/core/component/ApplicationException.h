// An application could not start, or failed as a whole.
#pragma once

#include <core/component/Exception.h>

namespace core {

inline constexpr _GUID CLSID_ApplicationExceptionObject =
    "e5ee5aad-c759-4e81-a696-b6426dcc7d96"_guid;

class ORBCORE_API ApplicationException : public Exception {
public:
    // With the message of the class.
    explicit ApplicationException(IExceptionObject* inner = nullptr);
    // With `description` alone.
    explicit ApplicationException(const stdx::ustring& description,
                                  IExceptionObject* inner = nullptr);
};

} // namespace core
