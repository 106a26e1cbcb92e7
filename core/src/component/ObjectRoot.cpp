#include <core/component/ObjectRoot.h>

#include <cstdio>
#include <cstdlib>

namespace core {

void stop_process(const char* condition) noexcept {
    std::fprintf(stderr, "orbcore: %s\n", condition);
    std::abort();
}

} // namespace core
