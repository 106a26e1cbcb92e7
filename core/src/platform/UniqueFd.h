// The owner of a file descriptor.
#pragma once

#include <utility>

#include <unistd.h>

namespace core {

class UniqueFd {
public:
    UniqueFd() noexcept = default;
    explicit UniqueFd(int fd) noexcept : fd_(fd) {}
    UniqueFd(UniqueFd&& other) noexcept : fd_(other.detach()) {}
    UniqueFd& operator=(UniqueFd&& other) noexcept {
        reset(other.detach());
        return *this;
    }
    ~UniqueFd() { reset(); }

    int get() const noexcept { return fd_; }
    explicit operator bool() const noexcept { return fd_ >= 0; }
    void reset(int fd = -1) noexcept {
        if (const int old = std::exchange(fd_, fd); old >= 0) ::close(old);
    }
    [[nodiscard]] int detach() noexcept { return std::exchange(fd_, -1); }

private:
    int fd_ = -1;
};

} // namespace core
