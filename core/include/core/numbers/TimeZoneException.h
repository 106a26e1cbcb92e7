// A time zone was asked for by an id that names none.
#pragma once

#include <core/component/Exception.h>

namespace core {

inline constexpr _GUID CLSID_TimeZoneExceptionObject = "3097aa98-a03b-47cd-baff-59828c1d568f"_guid;

class ORBCORE_API TimeZoneException : public Exception {
public:
    TimeZoneException();
    // The description shows the id.
    explicit TimeZoneException(const char16_t* id);
};

} // namespace core
