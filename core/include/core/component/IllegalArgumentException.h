// A caller broke the contract of a function; what `ORB_ASSERT` throws.
//
//   ORB_ASSERT(position <= size());      // on in all builds; never for input from outside
#pragma once

#include <core/component/Exception.h>

namespace core {

inline constexpr _GUID CLSID_IllegalArgumentExceptionObject =
    "e04b5b27-0bc0-4d1d-b99f-2748aad263db"_guid;

// The description is the message of the class, then `description` in a line of its own, then the
// place (see `format_exception_descr`).
class ORBCORE_API IllegalArgumentException : public Exception {
public:
    explicit IllegalArgumentException(IExceptionObject* inner = nullptr);
    IllegalArgumentException(const char* component, unsigned int line, const char16_t* file,
                             IExceptionObject* inner = nullptr);
    IllegalArgumentException(const char* component, unsigned int line, const char16_t* file,
                             const stdx::ustring& description, IExceptionObject* inner = nullptr);
};

// Throws for a failed assertion: out of the way of the code that holds it.
[[noreturn, gnu::cold]] ORBCORE_API void fail_assertion(const char* component, unsigned int line,
                                                        const char16_t* file,
                                                        const char16_t* expression);

} // namespace core

#define ORB_ASSERT(expression)                                                                     \
    (static_cast<bool>(expression) ? void(0) : core::fail_assertion(ORB_HERE, u"" #expression))
