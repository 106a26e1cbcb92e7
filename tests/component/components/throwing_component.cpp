// A component whose start fails in the way that an environment variable names.
#include <core/component/Exception.h>
#include <core/component/SCOM_Process.h>

#include <cstdlib>
#include <stdexcept>
#include <string_view>

extern "C" ORBCORE_API void SCOM_Main(core::SCOM_Process*, core::SCOM_ClassRegistrar*, int phase) {
    const char* const way = std::getenv("ORB_TEST_FAILURE");
    if (phase != 0 || !way) return;
    if (std::string_view(way) == "plain") throw core::Exception(u"no disk");
    if (std::string_view(way) == "cause")
        throw core::Exception(u"no data", core::Exception(u"no disk").object().get());
    throw std::runtime_error("unexpected");
}
