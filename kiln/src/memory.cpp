#include <kiln/memory.h>

#include "immortal.h"

#include <kiln/heap.h>

#include <atomic>
#include <cstdlib>
#include <new>

namespace kiln {

IMemoryManager::~IMemoryManager() = default;

namespace {

// Blocks of both kinds, the heap's included, go back by `free`: one `kiln_delete` serves all.
void* allocate_by_default(std::size_t size, std::size_t alignment) noexcept {
    if (alignment <= __STDCPP_DEFAULT_NEW_ALIGNMENT__) return std::malloc(size);
    return memory_heap()->allocateAligned(size, alignment);
}

class DefaultManager final : public IMemoryManager {
public:
    void* allocate(std::size_t size, std::size_t alignment) noexcept override {
        return allocate_by_default(size, alignment);
    }
    void release(void* block) noexcept override { std::free(block); }
};

constinit Immortal<DefaultManager> defaultManager;

// Null stands for the default manager, which is then passed by without a virtual call.
constinit std::atomic<IMemoryManager*> installed = nullptr;

IMemoryManager* or_default(IMemoryManager* manager) noexcept {
    return manager ? manager : &defaultManager.object;
}

// Inlined with a constant alignment, so that the usual path is a load and `malloc`.
[[gnu::always_inline]] inline void* allocate(std::size_t size, std::size_t alignment) noexcept {
    if (IMemoryManager* const manager = installed.load(std::memory_order_acquire)) [[unlikely]]
        return manager->allocate(size, alignment);
    return allocate_by_default(size, alignment);
}

[[gnu::always_inline]] inline void* not_null(void* block) {
    if (!block) [[unlikely]]
        throw std::bad_alloc();
    return block;
}

} // namespace
} // namespace kiln

kiln::IMemoryManager* kiln_memory_manager() noexcept {
    return kiln::or_default(kiln::installed.load(std::memory_order_acquire));
}

kiln::IMemoryManager* kiln_set_memory_manager(kiln::IMemoryManager* manager) noexcept {
    if (manager == &kiln::defaultManager.object) manager = nullptr;
    return kiln::or_default(kiln::installed.exchange(manager, std::memory_order_acq_rel));
}

void* kiln_new(std::size_t size) {
    return kiln::not_null(kiln::allocate(size, __STDCPP_DEFAULT_NEW_ALIGNMENT__));
}

void* kiln_new_nothrow(std::size_t size) noexcept {
    return kiln::allocate(size, __STDCPP_DEFAULT_NEW_ALIGNMENT__);
}

void* kiln_new_aligned(std::size_t size, std::size_t alignment) {
    return kiln::not_null(kiln::allocate(size, alignment));
}

void* kiln_new_aligned_nothrow(std::size_t size, std::size_t alignment) noexcept {
    return kiln::allocate(size, alignment);
}

void kiln_delete(void* block) noexcept {
    if (kiln::IMemoryManager* const manager = kiln::installed.load(std::memory_order_acquire))
        [[unlikely]]
        return manager->release(block);
    std::free(block);
}
