#include <kiln/heap.h>
#include <kiln/memory.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <new>
#include <thread>
#include <vector>

namespace {

// Counts what passes and refuses the allocation with the number `refuseAt`, from 1.
class CountingManager final : public kiln::IMemoryManager {
public:
    explicit CountingManager(int refuseAt = 0)
        : refuseAt_(refuseAt), former_(kiln_set_memory_manager(this)) {}
    ~CountingManager() override { kiln_set_memory_manager(former_); }

    void* allocate(std::size_t size, std::size_t alignment) noexcept override {
        if (++allocated == refuseAt_) return nullptr;
        return former_->allocate(size, alignment);
    }
    void release(void* block) noexcept override {
        ++released;
        former_->release(block);
    }

    int allocated = 0;
    int released = 0;

private:
    const int refuseAt_;
    kiln::IMemoryManager* const former_;
};

bool divisible(const void* address, std::size_t alignment) {
    return reinterpret_cast<std::uintptr_t>(address) % alignment == 0;
}

// The place of a virtual member in the table of its class, from 1, as the C++ ABI stores it in a
// pointer to member: one more than the offset in bytes.
template <class Member> std::size_t place_of(Member member) {
    std::uintptr_t offset;
    std::memcpy(&offset, &member, sizeof offset);
    return (offset - 1) / sizeof(void*) + 1;
}

TEST(Memory, BlocksAreAlignedAndWritable) {
    for (std::size_t alignment : {1u, 8u, 16u, 32u, 64u, 4096u})
        for (std::size_t size : {0u, 1u, 24u, 4095u, 100'000u}) {
            SCOPED_TRACE(testing::Message() << size << " aligned to " << alignment);
            for (void* block :
                 {kiln_new_aligned(size, alignment), kiln_new_aligned_nothrow(size, alignment)}) {
                ASSERT_TRUE(block);
                EXPECT_TRUE(divisible(block, alignment));
                std::memset(block, 0x5a, size);
                kiln_delete(block);
            }
            for (void* block : {kiln_new(size), kiln_new_nothrow(size)}) {
                ASSERT_TRUE(block);
                EXPECT_TRUE(divisible(block, alignof(std::max_align_t)));
                std::memset(block, 0x5a, size);
                kiln_delete(block);
            }
        }
    kiln_delete(nullptr);
}

TEST(Memory, ARefusedAllocationThrowsOrGivesNull) {
    CountingManager manager(2);
    void* const first = kiln_new(8);
    EXPECT_THROW(static_cast<void>(kiln_new(8)), std::bad_alloc);
    void* const third = kiln_new(8);
    EXPECT_EQ(manager.allocated, 3);
    kiln_delete(first);
    kiln_delete(third);

    EXPECT_THROW(
        {
            CountingManager refusing(1);
            static_cast<void>(kiln_new_aligned(8, 64));
        },
        std::bad_alloc);
    EXPECT_EQ(CountingManager(1).allocate(8, 8), nullptr);
    {
        CountingManager refusing(1);
        EXPECT_EQ(kiln_new_nothrow(8), nullptr);
    }
    CountingManager refusing(1);
    EXPECT_EQ(kiln_new_aligned_nothrow(8, 64), nullptr);
}

TEST(Memory, BlocksOutliveTheManagerThatGaveThem) {
    void* const before = kiln_new(16);
    void* during;
    {
        CountingManager manager;
        kiln_delete(before);
        during = kiln_new(16);
        EXPECT_EQ(manager.released, 1);
        EXPECT_EQ(manager.allocated, 1);
    }
    kiln_delete(during);
}

TEST(Memory, TheFormerManagerComesBack) {
    kiln::IMemoryManager* const standard = kiln::memory_manager();
    ASSERT_TRUE(standard);
    {
        CountingManager manager;
        EXPECT_EQ(kiln_memory_manager(), &manager);
        EXPECT_EQ(kiln::set_memory_manager(nullptr), &manager);
        EXPECT_EQ(kiln_memory_manager(), standard);
    }
    EXPECT_EQ(kiln_memory_manager(), standard);
}

TEST(Memory, ManagersChangeWhileOthersAllocate) {
    struct Passing final : kiln::IMemoryManager {
        kiln::IMemoryManager* standard = kiln_memory_manager();
        void* allocate(std::size_t size, std::size_t alignment) noexcept override {
            return standard->allocate(size, alignment);
        }
        void release(void* block) noexcept override { standard->release(block); }
    } passing;
    std::vector<std::thread> threads;
    for (int i = 0; i != 2; ++i)
        threads.emplace_back([] {
            for (int n = 0; n != 20'000; ++n) {
                void* const block = kiln_new(32);
                std::memset(block, n, 32);
                kiln_delete(block);
            }
        });
    for (int n = 0; n != 1'000; ++n) {
        kiln_set_memory_manager(&passing);
        kiln_set_memory_manager(nullptr);
    }
    for (std::thread& thread : threads) thread.join();
}

TEST(Heap, GivesResizesAndTakesBack) {
    kiln::IMemoryHeap* const heap = kiln::memory_heap();
    char* block = static_cast<char*>(heap->allocate(3));
    std::memcpy(block, "abc", 3);
    block = static_cast<char*>(heap->reallocate(block, 100'000));
    EXPECT_EQ(std::memcmp(block, "abc", 3), 0);
    EXPECT_GE(heap->blockSize(block), 100'000u);
    heap->release(block);

    void* const aligned = heap->allocateAligned(100, 256);
    EXPECT_TRUE(divisible(aligned, 256));
    EXPECT_GE(heap->blockSize(aligned), 100u);
    heap->release(aligned);
    heap->release(nullptr);
}

TEST(Heap, StatisticsFollowALargeBlock) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the sanitizer has a heap of its own";
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
    GTEST_SKIP() << "the sanitizer has a heap of its own";
#endif
#endif
    constexpr std::size_t kSize = 64 << 20;
    kiln::IMemoryHeap* const heap = kiln_memory_heap();
    const kiln::HeapStatistics before = heap->statistics();
    void* const block = heap->allocate(kSize);
    const kiln::HeapStatistics during = heap->statistics();
    EXPECT_GE(during.used, before.used + kSize);
    EXPECT_GE(during.reserved, during.used);
    heap->release(block);
    heap->trim();
    EXPECT_LT(heap->statistics().reserved, before.reserved + kSize);
}

// Code that was built apart from this library finds an operation by its place alone.
TEST(Heap, CleanThreadIsTheTenthOperation) {
    EXPECT_EQ(place_of(&kiln::IMemoryHeap::cleanThread), 10u);
}

} // namespace
