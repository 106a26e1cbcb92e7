// Services that the tests bind in the place of the platform's. They are off until a test says else.
#pragma once

#include <core/files/FileSystemServices.h>

#include <optional>
#include <vector>

namespace test {

struct Services {
    static inline std::optional<std::vector<core::SecurityAlias>> profile; // none: not restricted
    static inline std::vector<core::SecurityAlias> seances;
    static inline std::vector<core::URL> temporaryFiles;
    static inline bool lockFilesPossible = true;

    static void reset() {
        profile.reset();
        seances.clear();
        temporaryFiles.clear();
        lockFilesPossible = true;
    }
};

} // namespace test
