// While it lives, allocations of the memory layer fail from the n-th on; all threads see it.
#pragma once

#include <kiln/memory.h>

#include <atomic>

namespace test {

class FailingMemory final : private kiln::IMemoryManager {
public:
    explicit FailingMemory(int allowed) : left_(allowed), former_(kiln_set_memory_manager(this)) {}
    ~FailingMemory() override { kiln_set_memory_manager(former_); }
    FailingMemory(const FailingMemory&) = delete;
    FailingMemory& operator=(const FailingMemory&) = delete;

private:
    void* allocate(std::size_t size, std::size_t alignment) noexcept override {
        return left_-- > 0 ? former_->allocate(size, alignment) : nullptr;
    }
    void release(void* block) noexcept override { former_->release(block); }

    std::atomic<int> left_;
    kiln::IMemoryManager* const former_;
};

} // namespace test
