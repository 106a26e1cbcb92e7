// A type was asked for by a name or a GUID that names none.
#pragma once

#include <core/component/Exception.h>

namespace core {

inline constexpr _GUID CLSID_TypeExceptionObject = "8dd9d5af-8e48-48e2-b3ad-bd0d8d94c0cf"_guid;

class ORBCORE_API TypeException : public Exception {
public:
    explicit TypeException(IExceptionObject* inner = nullptr);
    // The description is the message of the class and the name, or the GUID as text, between
    // apostrophes.
    explicit TypeException(const stdx::ustring& name);
    explicit TypeException(const _GUID& type);
};

} // namespace core
