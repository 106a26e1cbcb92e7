#include <core/values/TypeException.h>

#include <core/component/ExceptionObject.h>
#include <core/component/Messages.h>

namespace core {

TypeException::TypeException(IExceptionObject* inner)
    : Exception(CLSID_TypeExceptionObject, stdx::ustring(), inner) {}

TypeException::TypeException(const stdx::ustring& name)
    : Exception(CLSID_TypeExceptionObject,
                load_core_wstring("IDS_TYPEERROR_TYPENOTDEFINED") + u" '" + name + u'\'', nullptr) {
}

TypeException::TypeException(const _GUID& type) : TypeException(to_string(type)) {}

} // namespace core

ORBCORE_EXCEPTION_OBJECT(TypeException);
