// The pointer that values keep to what their process has for them.
#include "SampleTypes.h"
#include "support/ProcessTest.h"

#include <core/values/FoundOnce.h>
#include <core/values/Value.h>

#include <atomic>
#include <latch>
#include <memory>
#include <thread>
#include <vector>

namespace {

using namespace core;

// A type like any; it counts how many of its kind live.
class Found
    : public ObjectRoot
    , public SCOM_InternalClass<Found>
    , public ObjectTypeCore {
public:
    static const InterfaceEntry* _GetEntries() { return interface_map<Found, IType>(); }
    Found() { ++living; }
    ~Found() { --living; }
    const _GUID* getTypeClsid() override { return &test::CLSID_WidgetType; }
    InterfacePtr<IValue> createIValue() override { return nullptr; }

    static inline std::atomic<int> living = 0;
};

TEST(FoundOnce, HoldsWhatCountsReferences) {
    Found::living = 0;
    {
        auto second = std::make_unique<FoundOnce<IType>>();
        {
            FoundOnce<IType> first;
            EXPECT_EQ(first.publish(nullptr), nullptr);
            EXPECT_EQ(first.get(), nullptr);
            IType* const published = first.publish(make_object<Found>());
            EXPECT_EQ(first.get(), published);
            EXPECT_EQ(first.publish(make_object<Found>()), published);
            EXPECT_EQ(first.publish(nullptr), published);
            EXPECT_EQ(Found::living, 1);
            second = std::make_unique<FoundOnce<IType>>(first);
            *second = FoundOnce<IType>(); // stays as it is
            EXPECT_EQ(second->get(), published);
        }
        EXPECT_EQ(Found::living, 1);
        EXPECT_EQ(second->get()->getTypeCode(), TypeCode::Object);
    }
    EXPECT_EQ(Found::living, 0);
}

// Whoever comes second drops what it found.
TEST(FoundOnce, IsPublishedByOneOfManyThreads) {
    constexpr int kThreads = 4, kRounds = 300;
    Found::living = 0;
    {
        std::vector<FoundOnce<IType>> pointers(kRounds);
        std::latch start(kThreads);
        std::vector<IType*> seen[kThreads];
        std::vector<std::thread> threads;
        for (auto& mine : seen)
            threads.emplace_back([&] {
                start.arrive_and_wait();
                for (FoundOnce<IType>& pointer : pointers) {
                    IType* const known = pointer.get();
                    mine.push_back(known ? known : pointer.publish(make_object<Found>()));
                    EXPECT_EQ(mine.back()->getTypeCode(), TypeCode::Object);
                }
            });
        for (std::thread& thread : threads) thread.join();
        for (const auto& mine : seen) EXPECT_EQ(mine, seen[0]);
        EXPECT_EQ(Found::living, kRounds);
    }
    EXPECT_EQ(Found::living, 0);
}

// The type is a singleton, which ends with the process.
TEST(FoundOnce, LetsAValueEndAfterItsProcess) {
    Value kept;
    {
        const test::ManualProcess process;
        kept = Type(test::CLSID_WidgetType)->createIValue();
        EXPECT_EQ(kept.type(), Type(u"Widget"));
    }
}

} // namespace
