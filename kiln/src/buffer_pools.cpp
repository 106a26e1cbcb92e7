#include <kiln/buffer_pools.h>

#include <kiln/memory.h>

#include <type_traits>

#if __has_include(<sanitizer/asan_interface.h>)
#include <sanitizer/asan_interface.h>
#else
#define ASAN_POISON_MEMORY_REGION(address, size)   static_cast<void>(0)
#define ASAN_UNPOISON_MEMORY_REGION(address, size) static_cast<void>(0)
#endif

namespace kiln {
namespace {

constexpr unsigned kPools = 4;

// The buffers that this thread keeps, by the slot of their pool. It has no destructor, and so may
// be used by destructors of other thread-local objects, even behind the one of `Cleaner`.
constinit thread_local struct {
    std::byte* buffers[kPools];
    bool watched; // the cleaner stands ready
    bool ended;   // the cleaner has run: nothing is kept any more
} kept = {};

struct Cleaner {
    void stand_ready() noexcept { kept.watched = true; }
    ~Cleaner() {
        kept.ended = true;
        BufferPool::clean_thread();
    }
};
thread_local Cleaner cleaner;

} // namespace

std::size_t BufferPool::free_count() const noexcept {
    const std::lock_guard lock(mutex_);
    return freeCount_;
}

std::byte* BufferPool::get() {
    std::byte* buffer = std::exchange(kept.buffers[slot_], nullptr);
    if (!buffer) buffer = take_shared();
    if (!buffer) return static_cast<std::byte*>(kiln_new(bufferSize_));
    ASAN_UNPOISON_MEMORY_REGION(buffer, bufferSize_);
    return buffer;
}

void BufferPool::put(std::byte* buffer) noexcept {
    if (!buffer) return;
    ASAN_POISON_MEMORY_REGION(buffer, bufferSize_); // finds those who still use it
    if (kept.buffers[slot_] || kept.ended) return put_shared(buffer);
    if (!kept.watched) cleaner.stand_ready();
    kept.buffers[slot_] = buffer;
}

std::byte* BufferPool::take_shared() noexcept {
    const std::lock_guard lock(mutex_);
    return freeCount_ == 0 ? nullptr : free_[--freeCount_];
}

void BufferPool::put_shared(std::byte* buffer) noexcept {
    {
        const std::lock_guard lock(mutex_);
        if (freeCount_ != limit_) {
            free_[freeCount_++] = buffer;
            return;
        }
    }
    ASAN_UNPOISON_MEMORY_REGION(buffer, bufferSize_);
    kiln_delete(buffer);
}

void BufferPool::clean_thread() noexcept {
    if (!kept.watched) return;
    BufferPools& pools = buffer_pools();
    for (BufferPool* pool : {&pools.kib8, &pools.kib16, &pools.kib32, &pools.kib256})
        if (std::byte* const buffer = std::exchange(kept.buffers[pool->slot_], nullptr))
            pool->put_shared(buffer);
}

BufferPool* BufferPools::find(std::size_t size) noexcept {
    for (BufferPool* pool : {&kib8, &kib16, &kib32, &kib256})
        if (pool->buffer_size() == size) return pool;
    return nullptr;
}

} // namespace kiln

kiln::BufferPools* kiln_buffer_pools() noexcept {
    static constinit kiln::BufferPools pools;
    static_assert(std::is_trivially_destructible_v<kiln::BufferPools>,
                  "threads may put buffers after the statics are gone");
    return &pools;
}
