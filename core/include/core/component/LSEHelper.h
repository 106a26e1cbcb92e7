// A mark on the calling thread: while one lives, an exception that somebody looks at is expected to
// be the subject of work, such as becoming an exception object, and is no news.
#pragma once

#include <core/platform/api.h>

namespace core {

class ORBCORE_API LSEHelper {
public:
    LSEHelper() noexcept;
    ~LSEHelper();
    LSEHelper(const LSEHelper&) = delete;
    LSEHelper& operator=(const LSEHelper&) = delete;

    // True while at least one lives on the calling thread.
    static bool expected() noexcept;
};

} // namespace core
