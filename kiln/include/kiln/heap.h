// The general heap: raw memory whose size may change, what the heap holds, and the clean-up that a
// thread calls when it goes idle.
//
//   kiln::memory_heap()->cleanThread();   // at the end of a job, before the worker waits
//
// Blocks here are for data that is not an object; objects come from kiln/memory.h.
#pragma once

#include <kiln/api.h>

#include <cstddef>

namespace kiln {

struct HeapStatistics {
    std::size_t used;     // bytes in living blocks, the heap's own records included
    std::size_t reserved; // bytes that the heap holds from the system, `used` among them
};

// The order of the operations is part of the binary interface: the destructor takes the first two
// places, and `cleanThread` is the tenth. Any thread may call, several at once.
class ORB_KILN_API IMemoryHeap {
public:
    virtual ~IMemoryHeap();

    // A block aligned for every standard type; null when there is none.
    virtual void* allocate(std::size_t size) noexcept = 0;

    // The same at an address divisible by `alignment`, a power of two.
    virtual void* allocateAligned(std::size_t size, std::size_t alignment) noexcept = 0;

    // Gives `block` a new size and perhaps a new place; contents stay up to the smaller size. Null
    // for `block` allocates. When there is no memory the result is null and `block` is untouched.
    // Only blocks of `allocate` and `reallocate` keep their alignment. `size` is not 0.
    virtual void* reallocate(void* block, std::size_t size) noexcept = 0;

    // Takes back a block of any of the three; null does nothing.
    virtual void release(void* block) noexcept = 0;

    // How many bytes of a living block may be used: what was asked for, or a little more.
    virtual std::size_t blockSize(void* block) noexcept = 0;

    // A walk over all arenas of the C library: for diagnostics, not for loops.
    virtual HeapStatistics statistics() noexcept = 0;

    // Gives unused pages of the whole process back to the system. Slow: walks the heap under its
    // locks. True when something was given back.
    virtual bool trim() noexcept = 0;

    // Gives up what kiln keeps aside for the calling thread alone: its buffers go to the shared
    // pools (kiln/buffer_pools.h). The C library's own small cache of the thread stays, since
    // there is no call that empties it before the thread ends. A few nanoseconds when nothing is
    // kept.
    virtual void cleanThread() noexcept = 0;
};

} // namespace kiln

extern "C" {

// The heap of the process; never null, never destroyed.
ORB_KILN_API kiln::IMemoryHeap* kiln_memory_heap() noexcept;
}

namespace kiln {

inline IMemoryHeap* memory_heap() noexcept {
    return kiln_memory_heap();
}

} // namespace kiln
