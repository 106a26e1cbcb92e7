#include <core/numbers/TimeZoneException.h>

#include <core/component/ExceptionObject.h>
#include <core/component/Messages.h>

namespace core {

TimeZoneException::TimeZoneException()
    : Exception(CLSID_TimeZoneExceptionObject, stdx::ustring(), nullptr) {}

TimeZoneException::TimeZoneException(const char16_t* id)
    : Exception(CLSID_TimeZoneExceptionObject,
                load_core_wstring("IDS_BADTIMEZONEID") + u" '" + id + u'\'', nullptr) {}

} // namespace core

ORBCORE_EXCEPTION_OBJECT(TimeZoneException);
