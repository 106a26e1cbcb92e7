#include <kiln/heap.h>

#include "immortal.h"

#include <kiln/buffer_pools.h>

#include <algorithm>
#include <cstdlib>
#include <malloc.h>

namespace kiln {

IMemoryHeap::~IMemoryHeap() = default;

namespace {

class MallocHeap final : public IMemoryHeap {
public:
    void* allocate(std::size_t size) noexcept override { return std::malloc(size); }
    void* allocateAligned(std::size_t size, std::size_t alignment) noexcept override {
        void* block = nullptr;
        const int error = ::posix_memalign(&block, std::max(alignment, sizeof(void*)), size);
        return error ? nullptr : block;
    }
    void* reallocate(void* block, std::size_t size) noexcept override {
        return std::realloc(block, size);
    }
    void release(void* block) noexcept override { std::free(block); }
    std::size_t blockSize(void* block) noexcept override { return ::malloc_usable_size(block); }

    HeapStatistics statistics() noexcept override {
        const struct ::mallinfo2 info = ::mallinfo2(); // large blocks are mapped one by one: hblkhd
        return {info.uordblks + info.hblkhd, info.arena + info.hblkhd};
    }
    bool trim() noexcept override { return ::malloc_trim(0) != 0; }
    void cleanThread() noexcept override { BufferPool::clean_thread(); }
};

constinit Immortal<MallocHeap> heap;

} // namespace
} // namespace kiln

kiln::IMemoryHeap* kiln_memory_heap() noexcept {
    return &kiln::heap.object;
}
