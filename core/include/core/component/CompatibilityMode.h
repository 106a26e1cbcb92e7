// The version of the platform whose behaviour a process asks for.
//
//   if (core::compatibility_mode() < 80315) …   // as it was before 8.3.15
#pragma once

#include <core/component/IUnknown.h>
#include <core/platform/api.h>

#include <limits>

namespace core {

inline constexpr _GUID IID_IPresentationService = "c09e12f6-7fc0-4840-8b69-b16dde91e2ec"_guid;

// Belongs to the platform. This is all that the library asks of it.
class IPresentationService : public IUnknown {
public:
    ORB_INTERFACE(IPresentationService, IID_IPresentationService)

    virtual int getCompatibilityMode() = 0;
};

inline constexpr int kNewestCompatibilityMode = std::numeric_limits<int>::max();

// major * 10,000 + minor * 100 + patch, as the presentation service of the current process says;
// the newest behaviour without a process or a service. A look into the table of services.
ORBCORE_API int compatibility_mode();

} // namespace core
