// An operation was called on an object that is not in a state for it.
#pragma once

#include <core/component/Exception.h>

namespace core {

inline constexpr _GUID CLSID_IllegalStateExceptionObject =
    "0ffc382e-e1dc-448c-83d2-62be9a4f8071"_guid;

// The description is the message of the class, then `description` in a line of its own, then the
// place (see `format_exception_descr`).
class ORBCORE_API IllegalStateException : public Exception {
public:
    explicit IllegalStateException(IExceptionObject* inner = nullptr);
    IllegalStateException(const char* component, unsigned int line, const char16_t* file,
                          IExceptionObject* inner = nullptr);
    IllegalStateException(const char* component, unsigned int line, const char16_t* file,
                          const stdx::ustring& description, IExceptionObject* inner = nullptr);
};

} // namespace core
