#include <kiln/buffer_pools.h>
#include <kiln/heap.h>

#include <gtest/gtest.h>

#include <cstring>
#include <thread>
#include <vector>

namespace {

using kiln::BufferPool;
using kiln::PooledBuffer;

const auto kAllPools = [] {
    kiln::BufferPools& pools = kiln::buffer_pools();
    return std::vector<BufferPool*>{&pools.kib8, &pools.kib16, &pools.kib32, &pools.kib256};
};

TEST(BufferPools, AreFoundBySize) {
    const std::size_t sizes[] = {8192, 16384, 32768, 262144};
    for (std::size_t i = 0; i != 4; ++i) {
        EXPECT_EQ(kAllPools()[i]->buffer_size(), sizes[i]);
        EXPECT_EQ(kiln::buffer_pools().find(sizes[i]), kAllPools()[i]);
        EXPECT_EQ(kiln::buffer_pools().find(sizes[i] + 1), nullptr);
    }
    EXPECT_EQ(kiln::buffer_pools().find(0), nullptr);
}

TEST(BufferPools, KeepABoundedNumber) {
    for (BufferPool* pool : kAllPools()) {
        SCOPED_TRACE(pool->buffer_size());
        std::vector<std::byte*> taken(pool->limit() + 5);
        for (std::byte*& buffer : taken) {
            buffer = pool->get();
            std::memset(buffer, 0x5a, pool->buffer_size());
        }
        EXPECT_EQ(pool->free_count(), 0u);
        for (std::byte* buffer : taken) pool->put(buffer);
        EXPECT_EQ(pool->free_count(), pool->limit());
    }
}

TEST(BufferPools, GiveTheBufferThatCameBackLast) {
    BufferPool& pool = kiln::buffer_pools().kib32;
    std::byte* const buffer = pool.get();
    pool.put(buffer);
    std::byte* const again = pool.get();
    EXPECT_EQ(again, buffer);
    pool.put(again);
    pool.put(nullptr);
}

TEST(BufferPools, CleaningAThreadHandsItsBuffersOver) {
    BufferPool& pool = kiln::buffer_pools().kib256;
    kiln::memory_heap()->cleanThread();
    { PooledBuffer mine(pool); }
    const std::size_t before = pool.free_count();
    kiln::memory_heap()->cleanThread();
    const std::size_t after = pool.free_count();
    EXPECT_TRUE(after == before + 1 || after == pool.limit());

    kiln::memory_heap()->cleanThread();
    EXPECT_EQ(pool.free_count(), after);
}

// The second buffer is put by a destructor that runs behind the pools' own.
TEST(BufferPools, AnEndingThreadHandsItsBuffersOver) {
    BufferPool& pool = kiln::buffer_pools().kib256;
    std::vector<std::byte*> taken(pool.limit() + 1); // makes room for both
    for (std::byte*& buffer : taken) buffer = pool.get();
    ASSERT_EQ(pool.free_count(), 0u);
    std::thread([&] {
        static thread_local PooledBuffer late;
        late = PooledBuffer(pool);
        { PooledBuffer early(pool); }
        EXPECT_EQ(pool.free_count(), 0u);
    }).join();
    EXPECT_EQ(pool.free_count(), 2u);
    for (std::byte* buffer : taken) pool.put(buffer);
}

TEST(PooledBuffer, MovesItsOneBuffer) {
    PooledBuffer none;
    EXPECT_FALSE(none);
    EXPECT_EQ(none.size(), 0u);

    PooledBuffer a(kiln::buffer_pools().kib8);
    std::byte* const data = a.data();
    EXPECT_EQ(a.size(), 8192u);
    PooledBuffer b(std::move(a));
    EXPECT_EQ(b.data(), data);
    EXPECT_FALSE(a);
    none = std::move(b);
    EXPECT_EQ(none.data(), data);
    EXPECT_FALSE(b);
}

// A buffer belongs to one holder at a time: each writes its mark and must find it untouched.
TEST(BufferPools, ThreadsShareThem) {
    BufferPool& pool = kiln::buffer_pools().kib8;
    std::vector<std::thread> threads;
    for (int mark = 1; mark != 5; ++mark)
        threads.emplace_back([&pool, mark] {
            for (int n = 0; n != 2'000; ++n) {
                PooledBuffer held[3];
                for (PooledBuffer& buffer : held) {
                    buffer = PooledBuffer(pool);
                    std::memset(buffer.data(), mark, 64);
                }
                for (PooledBuffer& buffer : held)
                    for (int i = 0; i != 64; ++i)
                        ASSERT_EQ(buffer.data()[i], static_cast<std::byte>(mark));
            }
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_LE(pool.free_count(), pool.limit());
}

} // namespace
