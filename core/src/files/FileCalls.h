// The system calls that move the data of files, in one table, so that a test can put interruptions
// and short transfers in their place.
#pragma once

#include <core/platform/api.h>

#include <cerrno>
#include <cstddef>

#include <sys/types.h>

namespace core::detail {

struct FileCalls {
    ssize_t (*read)(int fd, void* dst, std::size_t n);
    ssize_t (*write)(int fd, const void* src, std::size_t n);
};

// Changed only while no other thread uses files.
ORBCORE_API extern FileCalls file_calls;

// A call that a signal broke off before it did anything is made again.
template <class Call> auto uninterrupted(Call&& call) {
    for (;;)
        if (const auto result = call(); result != -1 || errno != EINTR) return result;
}

} // namespace core::detail
