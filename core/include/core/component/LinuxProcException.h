// The kernel's files about processes and processors could not be read. Both classes have no twin of
// their own: `object()` keeps them as a plain `Exception`.
#pragma once

#include <core/component/Exception.h>

namespace core {

class ORBCORE_API LinuxProcStatusException : public Exception {
public:
    using Exception::Exception;
};

class ORBCORE_API LinuxProcCpuInfoException : public Exception {
public:
    using Exception::Exception;
};

} // namespace core
