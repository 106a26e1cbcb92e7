// Copies of one string belong to different threads. The thread sanitizer judges this file best.
#include "strings/Family.h"

#include <atomic>
#include <thread>
#include <vector>

namespace {

template <class S> class Concurrency : public testing::Test {};
TYPED_TEST_SUITE(Concurrency, Family);

TYPED_TEST(Concurrency, LetsThreadsCopyChangeAndDropSharedStrings) {
    using S = TypeParam;
    using T = typename S::value_type;
    constexpr int kThreads = 4;
    constexpr int kRounds = 2000;
    const S original = letters<S>(40);
    std::atomic<int> damaged = 0;
    {
        std::vector<std::thread> threads;
        for (int i = 0; i < kThreads; ++i) {
            threads.emplace_back([&, mine = original]() mutable {
                for (int round = 0; round < kRounds; ++round) {
                    S changed = round % 2 == 0 ? original : mine;
                    changed[3] = T('!');
                    changed.append(mine);
                    if (changed.size() != 80 || changed.find(T('!')) != 3 || mine != original)
                        ++damaged;
                    mine = changed.substr(40);
                    if (round % 3 == 0) mine = original;
                }
            });
        }
        for (auto& thread : threads) thread.join();
    }
    EXPECT_EQ(damaged, 0);
    EXPECT_EQ(original, letters<S>(40));
    EXPECT_EQ(original._get_refs(), 1u);
}

// The last two owners of a block let go, or write in place, at the same time.
TYPED_TEST(Concurrency, LetsTheLastOwnersPartAtOnce) {
    using S = TypeParam;
    using T = typename S::value_type;
    constexpr int kRounds = 2000;
    std::vector<S> left, right;
    for (int i = 0; i < kRounds; ++i) {
        left.push_back(letters<S>(20));
        right.push_back(left.back());
    }
    const auto part = [](std::vector<S>& strings, T sign) {
        for (std::size_t i = 0; i < strings.size(); ++i) {
            if (i % 2 == 0)
                strings[i].clear();
            else
                strings[i][0] = sign;
        }
    };
    std::thread other([&] { part(right, T('>')); });
    part(left, T('<'));
    other.join();
    for (int i = 1; i < kRounds; i += 2) {
        const auto at = static_cast<std::size_t>(i);
        EXPECT_EQ(left[at].view()[0], T('<'));
        EXPECT_EQ(right[at].view()[0], T('>'));
        EXPECT_EQ(left[at]._get_refs(), 1u);
    }
}

} // namespace
