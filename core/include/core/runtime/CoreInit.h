// The start of the library. A host puts a `core::CoreInitManager` first in its `main`; nothing else
// of the library is used before it.
#pragma once

#include <core/platform/api.h>

// Raises the soft limit of open files to the hard one, ignores SIGPIPE, starts ICU and builds the
// library's module. Main thread only; every call after the first does nothing.
extern "C" ORBCORE_API void CoreInit();
// Does nothing: what CoreInit made lives as long as the program.
extern "C" ORBCORE_API void CoreDeinit();

namespace core {

// Component libraries of a program that starts with it stay mapped to the end.
class ORBCORE_API CoreInitManager {
public:
    CoreInitManager();
    ~CoreInitManager();
    CoreInitManager(const CoreInitManager&) = delete;
    CoreInitManager& operator=(const CoreInitManager&) = delete;
};

} // namespace core
