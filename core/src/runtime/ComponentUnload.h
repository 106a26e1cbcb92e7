#pragma once

namespace core {

// Whether `disable_scom_component_module_unload` was called.
bool component_unload_is_disabled() noexcept;

} // namespace core
