#include <core/component/CompatibilityMode.h>

#include <core/component/SCOM_Process.h>

namespace core {

int compatibility_mode() {
    auto* const service = get_service<IPresentationService>();
    return service ? service->getCompatibilityMode() : kNewestCompatibilityMode;
}

} // namespace core
