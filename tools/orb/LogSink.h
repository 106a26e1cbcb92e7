// The sink of `orb`: log records go to stderr, a line each, as text or as JSON.
#pragma once

#include <core/component/LogLevel.h>

#include <string_view>

namespace orb {

// The level of a name such as "debug", in any case of letters. Throws UsageError.
core::SCOM_LogLevel log_level_of(std::string_view name);

// From now on records from `level` on are written; called once, inside the process of the tool.
void start_log(core::SCOM_LogLevel level, bool json);

} // namespace orb
