// An operation that this implementation of an interface does not offer.
#pragma once

#include <core/component/Exception.h>

namespace core {

inline constexpr _GUID CLSID_UnsupportedOperationExceptionObject =
    "8374d82f-a2ac-4799-918e-25f9f1b8f3cc"_guid;

// The description is the message of the class, then `description` in a line of its own, then the
// place (see `format_exception_descr`).
class ORBCORE_API UnsupportedOperationException : public Exception {
public:
    explicit UnsupportedOperationException(IExceptionObject* inner = nullptr);
    UnsupportedOperationException(const char* component, unsigned int line, const char16_t* file,
                                  IExceptionObject* inner = nullptr);
    UnsupportedOperationException(const char* component, unsigned int line, const char16_t* file,
                                  const stdx::ustring& description,
                                  IExceptionObject* inner = nullptr);
};

} // namespace core
