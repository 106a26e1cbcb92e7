// Values on many threads: shared ones are copied by all, and cells go where they are freed.
#include "SampleTypes.h"

#include <core/component/ClassDescriptor.h>

#include "support/FailingMemory.h"

#include <atomic>
#include <new>
#include <thread>

namespace {

using namespace core;
using namespace core::literals;

TEST(ValueThreads, ShareValues) {
    const std::vector<Value> shared = {Value(), 5, 12.5_num, u"a text with a block of its own",
                                       "20200515"_date};
    std::vector<std::thread> threads;
    for (int t = 0; t != 4; ++t)
        threads.emplace_back([&] {
            for (int i = 0; i != 2'000; ++i) {
                std::vector<Value> copies = shared;
                std::swap(copies.front(), copies.back());
                ASSERT_TRUE(copies.front() == shared.back());
                copies.front() = copies[2];
            }
        });
    for (std::thread& thread : threads) thread.join();
    for (const Value& value : shared) EXPECT_TRUE(value == value);
}

TEST(ValueThreads, FreeWhatOthersMade) {
    constexpr int kRounds = 20, kValues = 500; // more than a thread keeps
    std::vector<Value> handed;
    for (int round = 0; round != kRounds; ++round) {
        std::thread([&] {
            std::vector<Value> made;
            for (int i = 0; i != kValues; ++i) {
                if (i % 3 == 0)
                    made.emplace_back(1000 + i);
                else if (i % 3 == 1)
                    made.emplace_back(stdx::ustring(1u + static_cast<unsigned>(i) % 9, u'x'));
                else
                    made.emplace_back(Date::fromTicks(static_cast<unsigned>(i)));
            }
            handed.swap(made); // those of the thread before end here
        }).join();
        for (int i = 0; i < kValues; i += 3)
            ASSERT_TRUE(handed[static_cast<std::size_t>(i)] == 1000 + i);
    }
}

// Values that end with their thread, behind the cells that it keeps.
TEST(ValueThreads, EndWithTheirThread) {
    struct Late {
        Value value;
        ~Late() {
            for (int i = 0; i != 300; ++i) value = Value(1000 + i);
            std::vector<Value> more(300, Value(12.5_num));
            for (Value& each : more) each = u"text";
        }
    };
    std::thread([] {
        static thread_local Late early; // constructed first, destroyed last
        early.value = 1000;
        Value(2000), Value(u"text");
        static thread_local Late late;
        late.value = 3000;
    }).join();
}

TEST(ValueThreads, ReportWantOfMemory) {
    // The thread keeps nothing yet, so each value asks for memory.
    std::thread([] {
        const test::FailingMemory none(0);
        EXPECT_THROW(Value(1000), std::bad_alloc);
        EXPECT_THROW(Value(u"x"), std::bad_alloc);
        EXPECT_NO_THROW(Value(5));
    }).join();
}

} // namespace
