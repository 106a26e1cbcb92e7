// The buffer of a buffered file, and how reading goes through it.
#pragma once

#include <core/files/IFile.h>

#include <kiln/buffer_pools.h>
#include <kiln/memory.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

namespace core {

// Memory from the pool of its size, or from the heap.
class FileBuffer {
public:
    FileBuffer() noexcept = default;
    explicit FileBuffer(unsigned size)
        : pool_(kiln::buffer_pools().find(size)),
          begin_(pool_ ? pool_->get() : static_cast<std::byte*>(kiln_new(size))),
          size_(size) {}
    FileBuffer(FileBuffer&& other) noexcept
        : pool_(other.pool_),
          begin_(std::exchange(other.begin_, nullptr)),
          size_(std::exchange(other.size_, 0)) {}
    FileBuffer& operator=(FileBuffer&& other) noexcept {
        FileBuffer taken(std::move(other));
        std::swap(pool_, taken.pool_);
        std::swap(begin_, taken.begin_);
        std::swap(size_, taken.size_);
        return *this;
    }
    ~FileBuffer() {
        if (pool_)
            pool_->put(begin_);
        else
            kiln_delete(begin_);
    }

    std::byte* begin() const noexcept { return begin_; }
    unsigned size() const noexcept { return size_; }

private:
    kiln::BufferPool* pool_ = nullptr;
    std::byte* begin_ = nullptr;
    unsigned size_ = 0;
};

// What was read from a file and not yet asked for.
struct ReadAhead {
    std::byte* cursor = nullptr;
    unsigned left = 0;

    void take(void* dst, unsigned n) noexcept {
        std::memcpy(dst, cursor, n);
        cursor += n;
        left -= n;
    }
    void pass(unsigned n) noexcept {
        cursor += n;
        left -= n;
    }
    const std::uint8_t* bytes() const noexcept {
        return reinterpret_cast<const std::uint8_t*>(cursor);
    }
};

// Reads ahead where nothing is left; false at the end of the file.
template <class OnRefill>
bool read_ahead(IFile& file, const FileBuffer& buffer, ReadAhead& ahead, OnRefill&& onRefill) {
    if (ahead.left != 0) return true;
    ahead = {buffer.begin(), 0};
    ahead.left = file.read(buffer.begin(), buffer.size());
    if (ahead.left == 0) return false;
    onRefill(ahead.left);
    return true;
}

// Reads `n` bytes through the buffer: refills it whole until there are enough or the file ends.
// `onRefill` is told how many bytes each call to the file brought.
template <class OnRefill>
unsigned read_through(IFile& file, const FileBuffer& buffer, ReadAhead& ahead, void* dst,
                      unsigned n, OnRefill&& onRefill) {
    auto* to = static_cast<std::byte*>(dst);
    unsigned wanted = n;
    while (wanted > ahead.left) {
        const unsigned part = ahead.left;
        if (part) ahead.take(to, part);
        to += part;
        wanted -= part;
        if (!read_ahead(file, buffer, ahead, onRefill)) return n - wanted;
    }
    if (wanted) ahead.take(to, wanted);
    return n;
}

} // namespace core
