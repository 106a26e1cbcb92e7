#include <core/concurrency/CountedSemaphore.h>

#include <core/component/IllegalStateException.h>

#include <gtest/gtest.h>

namespace {

TEST(CountedSemaphore, PassesWhileTheCountIsAboveZero) {
    core::CountedSemaphore semaphore;
    EXPECT_FALSE(semaphore.wait(0));
    semaphore.incrementCounter();
    semaphore.incrementCounter();
    for (int i = 0; i != 5; ++i) EXPECT_TRUE(semaphore.wait(0));
    semaphore.decrementCounter();
    EXPECT_TRUE(semaphore.wait(0));
    semaphore.decrementCounter();
    // One pass for each of the two increments, and no more.
    EXPECT_TRUE(semaphore.wait(0));
    EXPECT_TRUE(semaphore.wait(0));
    EXPECT_FALSE(semaphore.wait(0));
}

TEST(CountedSemaphore, RefusesToGoBelowZero) {
    core::CountedSemaphore semaphore;
    EXPECT_THROW(semaphore.decrementCounter(), core::IllegalStateException);
    EXPECT_FALSE(semaphore.wait(0)) << "the counter is still 0";
    semaphore.incrementCounter();
    semaphore.decrementCounter();
    EXPECT_THROW(semaphore.decrementCounter(), core::IllegalStateException);
}

} // namespace
