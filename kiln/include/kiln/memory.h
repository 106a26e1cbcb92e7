// Memory for objects, from a manager that can be replaced.
//
//   void* X::operator new(std::size_t size) { return kiln_new(size); }
//   void X::operator delete(void* block) noexcept { kiln_delete(block); }
//
// A program or a test that wants to see, count or refuse allocations installs its own manager:
//
//   struct Refusing : kiln::IMemoryManager { ... };
//   kiln::IMemoryManager* former = kiln::set_memory_manager(&refusing);
//
// Every function here may be called from any thread. With the default manager installed an
// allocation costs one atomic load more than `malloc`.
#pragma once

#include <kiln/api.h>

#include <cstddef>

namespace kiln {

// Where the blocks of `kiln_new` come from. Any thread may call, several at once.
//
// A manager is replaced while blocks live. So every manager must be able to release a block that
// any other one gave: take memory from the default manager, or from the C library itself.
class ORB_KILN_API IMemoryManager {
public:
    virtual ~IMemoryManager();

    // A block of at least `size` bytes at an address divisible by `alignment`, a power of two;
    // null when there is none. A size of 0 gives a block too. Never throws.
    virtual void* allocate(std::size_t size, std::size_t alignment) noexcept = 0;

    // Takes back a block of `allocate`; null does nothing.
    virtual void release(void* block) noexcept = 0;
};

} // namespace kiln

extern "C" {

// The manager in force: the default one, over `malloc`, until another is installed.
ORB_KILN_API kiln::IMemoryManager* kiln_memory_manager() noexcept;

// Puts `manager` in force, null the default one, and gives the former. Calls that run meanwhile on
// other threads may still reach the former manager: it must outlive them.
ORB_KILN_API kiln::IMemoryManager* kiln_set_memory_manager(kiln::IMemoryManager* manager) noexcept;

// A block aligned for every standard type. Throws std::bad_alloc; the `_nothrow` form gives null.
[[nodiscard]] ORB_KILN_API void* kiln_new(std::size_t size);
[[nodiscard]] ORB_KILN_API void* kiln_new_nothrow(std::size_t size) noexcept;

// The same at an address divisible by `alignment`, a power of two.
[[nodiscard]] ORB_KILN_API void* kiln_new_aligned(std::size_t size, std::size_t alignment);
[[nodiscard]] ORB_KILN_API void* kiln_new_aligned_nothrow(std::size_t size,
                                                          std::size_t alignment) noexcept;

// Takes back a block of any of the four; null does nothing.
ORB_KILN_API void kiln_delete(void* block) noexcept;

} // extern "C"

namespace kiln {

inline IMemoryManager* memory_manager() noexcept {
    return kiln_memory_manager();
}
inline IMemoryManager* set_memory_manager(IMemoryManager* manager) noexcept {
    return kiln_set_memory_manager(manager);
}

} // namespace kiln
