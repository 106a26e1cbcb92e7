// Pools of buffers in four sizes, so that short-lived readers, writers and memory files do not
// take large blocks from the heap again and again.
//
//   kiln::PooledBuffer buffer(kiln::buffer_pools().kib8);
//   read(file, buffer.data(), buffer.size());          // back in the pool at the end of the scope
//
//   kiln::BufferPool* pool = kiln::buffer_pools().find(size);   // null: use the general heap
//
// Any thread may get, any thread may put, whichever thread got. A thread keeps the last buffer of
// each size that it put, so that a get and a put in turn take no lock;
// `kiln::memory_heap()->cleanThread()` and the end of the thread hand these to the pools.
#pragma once

#include <kiln/api.h>

#include <array>
#include <cstddef>
#include <mutex>
#include <utility>

namespace kiln {
class BufferPools;
}

// The pools of the process; never null, never destroyed.
extern "C" ORB_KILN_API kiln::BufferPools* kiln_buffer_pools() noexcept;

namespace kiln {

// One of the four pools of `BufferPools`. Buffers come from `kiln_new` when none is free.
class ORB_KILN_API BufferPool {
public:
    BufferPool(const BufferPool&) = delete;
    BufferPool& operator=(const BufferPool&) = delete;

    std::size_t buffer_size() const noexcept { return bufferSize_; }

    // How many free buffers the pool keeps at most. Each thread may keep one more.
    std::size_t limit() const noexcept { return limit_; }

    // Free buffers in the pool at this moment, without those that threads keep.
    std::size_t free_count() const noexcept;

    // A buffer of `buffer_size()` bytes with any contents, aligned for every standard type.
    // Throws std::bad_alloc.
    [[nodiscard]] std::byte* get();

    // Takes back a buffer of this pool and frees it when the pool is full; null does nothing.
    void put(std::byte* buffer) noexcept;

    // Moves what the calling thread keeps of all four sizes to the pools.
    static void clean_thread() noexcept;

private:
    friend class BufferPools;

    static constexpr std::size_t kMaxLimit = 128;

    constexpr BufferPool(unsigned slot, std::size_t bufferSize, std::size_t limit) noexcept
        : slot_(slot), bufferSize_(bufferSize), limit_(limit) {}

    std::byte* take_shared() noexcept;
    void put_shared(std::byte* buffer) noexcept;

    const unsigned slot_; // the pool's place in what a thread keeps
    const std::size_t bufferSize_;
    const std::size_t limit_; // at most kMaxLimit
    mutable std::mutex mutex_;
    std::size_t freeCount_ = 0;                   // under mutex_
    std::array<std::byte*, kMaxLimit> free_ = {}; // under mutex_; the first freeCount_ count
};

// The pools by size in KiB. Their limits keep 1 MiB in each of the smaller sizes and 2 MiB in the
// largest.
class ORB_KILN_API BufferPools {
public:
    BufferPool kib8{0, 8'192, 128};
    BufferPool kib16{1, 16'384, 64};
    BufferPool kib32{2, 32'768, 32};
    BufferPool kib256{3, 262'144, 8};

    // The pool whose buffers have exactly `size` bytes, or null.
    BufferPool* find(std::size_t size) noexcept;

private:
    friend BufferPools* ::kiln_buffer_pools() noexcept;

    constexpr BufferPools() noexcept = default;
};

inline BufferPools& buffer_pools() noexcept {
    return *kiln_buffer_pools();
}

// The owner of one buffer: puts it back when it goes.
class PooledBuffer {
public:
    PooledBuffer() noexcept = default;
    explicit PooledBuffer(BufferPool& pool) : pool_(&pool), data_(pool.get()) {}

    PooledBuffer(PooledBuffer&& other) noexcept
        : pool_(std::exchange(other.pool_, nullptr)), data_(std::exchange(other.data_, nullptr)) {}
    PooledBuffer& operator=(PooledBuffer&& other) noexcept {
        PooledBuffer taken(std::move(other));
        std::swap(pool_, taken.pool_);
        std::swap(data_, taken.data_);
        return *this;
    }
    ~PooledBuffer() {
        if (pool_) pool_->put(data_);
    }

    std::byte* data() const noexcept { return data_; }
    std::size_t size() const noexcept { return pool_ ? pool_->buffer_size() : 0; }
    explicit operator bool() const noexcept { return data_ != nullptr; }

private:
    BufferPool* pool_ = nullptr; // null together with data_
    std::byte* data_ = nullptr;
};

} // namespace kiln
