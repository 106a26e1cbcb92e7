// The user refused an action that needs a confirmation.
#pragma once

#include <core/component/Exception.h>

namespace core {

inline constexpr _GUID CLSID_InteractiveSecurityExceptionObject =
    "a791c104-a6d4-4d0c-8ec2-7f23b9853100"_guid;

class ORBCORE_API InteractiveSecurityException : public Exception {
public:
    explicit InteractiveSecurityException(IExceptionObject* inner = nullptr);
    explicit InteractiveSecurityException(const stdx::ustring& description,
                                          IExceptionObject* inner = nullptr);
};

} // namespace core
