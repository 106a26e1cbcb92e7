#include <core/locale/LocaleException.h>

#include <core/component/ExceptionObject.h>
#include <core/component/Messages.h>

namespace core {

LocaleException::LocaleException(IExceptionObject* inner)
    : Exception(CLSID_LocaleExceptionObject, stdx::ustring(), inner) {}

LocaleException::LocaleException(const stdx::ustring& localeName)
    : Exception(CLSID_LocaleExceptionObject,
                load_core_wstring("IDS_BADLOCALENAME") + u" '" + localeName + u"'", nullptr),
      localeName_(localeName) {}

} // namespace core

ORBCORE_EXCEPTION_OBJECT(LocaleException);
