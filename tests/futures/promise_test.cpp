#include "listeners.h"

#include "support/ProcessTest.h"

#include <kiln/suspend_monitor.h>

#include <gmock/gmock.h>

#include <chrono>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using core::IFuture;
using core::InterfacePtr;
using core::IPromise;
using test::listener;
using test::some_object;
using test::thread_error;
using Error = core::ThreadException::Error;

InterfacePtr<core::IExceptionObject> failure(const char16_t* text) {
    return core::Exception(text).object();
}

// A promise that has gone through the steps named by letters: r run, s succeed, f fail, c cancel.
// Gives which of them had effect.
std::string effects(IPromise& promise, const std::string& steps) {
    std::string result;
    for (const char step : steps) {
        const bool effect = step == 'r'   ? promise.setRunning()
                            : step == 's' ? promise.setResult(nullptr)
                            : step == 'f' ? promise.setException(nullptr)
                                          : promise.getFuture()->cancel();
        result += effect ? step : '-';
    }
    return result;
}

std::string answers(IFuture& future) {
    std::string result;
    if (future.isDone()) result += "done ";
    if (future.isSucceeded()) result += "succeeded ";
    if (future.isCancelled()) result += "cancelled ";
    return result;
}

TEST(PromiseStates, ChangeOnlyAlongTheTable) {
    const struct {
        const char* steps;
        const char* effects;
        const char* answers;
    } rows[] = {
        {"", "", ""},
        {"rr", "r-", ""},
        {"s", "-", ""}, // a result needs a running promise
        {"srs", "-rs", "done succeeded "},
        {"sf", "-f", "done "}, // a failure does not
        {"rf", "rf", "done "},
        {"c", "c", "done cancelled "},
        {"rc", "rc", "done cancelled "},
        {"rsrsfc", "rs----", "done succeeded "},
        {"frsfc", "f----", "done "},
        {"crsfc", "c----", "done cancelled "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.steps);
        const auto promise = core::create_promise();
        EXPECT_EQ(effects(*promise, row.steps), row.effects);
        EXPECT_EQ(answers(*promise->getFuture()), row.answers);
    }
}

class FutureResults : public test::ProcessTest {};

TEST_F(FutureResults, AreLentOrThrown) {
    const auto object = some_object();
    const auto cause = failure(u"no paper");
    const auto promise_after = [](auto step) {
        auto promise = core::create_promise();
        promise->setRunning();
        step(*promise);
        return InterfacePtr<IFuture>(promise->getFuture(), true);
    };
    const struct {
        const char* what;
        InterfacePtr<IFuture> future;
        Error error;
        const char* answers;
    } rows[] = {
        {"finished: succeeded", core::create_succeeded_future(object.get()), Error::None,
         "done succeeded "},
        {"finished: failed", core::create_failed_future(cause.get()), Error::Execution, "done "},
        {"finished: cancelled", core::create_cancelled_future(), Error::Cancelled, "cancelled "},
        {"promise: succeeded", promise_after([&](IPromise& p) { p.setResult(object.get()); }),
         Error::None, "done succeeded "},
        {"promise: failed", promise_after([&](IPromise& p) { p.setException(cause.get()); }),
         Error::Execution, "done "},
        {"promise: cancelled", promise_after([&](IPromise& p) { p.getFuture()->cancel(); }),
         Error::Cancelled, "done cancelled "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        IFuture& future = *row.future;
        EXPECT_FALSE(future.cancel());
        EXPECT_EQ(answers(future), row.answers);
        EXPECT_EQ(future.getException(), row.error == Error::Execution ? cause.get() : nullptr);
        for (const bool timed : {false, true}) {
            try {
                EXPECT_EQ(timed ? future.getResultTimed(0) : future.getResult(), object.get());
                EXPECT_EQ(row.error, Error::None);
            } catch (const core::ThreadException& exception) {
                EXPECT_EQ(exception.error(), row.error);
                EXPECT_EQ(exception.inner(), future.getException());
            }
        }
        int calls = 0;
        future.addListener(listener([&](IFuture& told) { calls += &told == &future; }).get());
        EXPECT_EQ(calls, 1) << "a finished future calls a listener at once";
    }
}

TEST(FutureWaiting, EndsWithTheResultOrTheTime) {
    const auto object = some_object();
    const auto promise = core::create_promise();
    IFuture* const future = promise->getFuture();
    EXPECT_EQ(thread_error([&] { future->getResultTimed(0); }), Error::Timeout);

    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(thread_error([&] { future->getResultTimed(30); }), Error::Timeout);
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(25));

    IUnknown* results[3] = {};
    std::vector<std::thread> waiters;
    for (IUnknown*& result : results)
        waiters.emplace_back([&result, &results, future] {
            result = &result == results ? future->getResult() : future->getResultTimed(60'000);
        });
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
    promise->setRunning();
    promise->setResult(object.get());
    for (std::thread& waiter : waiters) waiter.join();
    EXPECT_THAT(results, testing::Each(object.get()));
}

TEST(FutureListeners, AreCalledOnceInTheOrderOfAdding) {
    const auto promise = core::create_promise();
    IFuture* const future = promise->getFuture();
    std::string calls;
    const auto named = [&](char name) {
        return listener([&calls, name](IFuture&) { calls += name; });
    };
    const auto a = named('a'), b = named('b'), c = named('c'), d = named('d');
    for (const auto& each : {a, b, c, b, d, a}) future->addListener(each.get());
    future->removeListener(b.get()); // from the list: every entry
    future->removeListener(a.get()); // from the slot: one, and c moves up
    future->removeListener(named('x').get());
    promise->setException(nullptr);
    EXPECT_EQ(calls, "cda");

    future->cancel();
    future->removeListener(d.get());
    EXPECT_EQ(calls, "cda");
}

TEST(FutureListeners, LeaveNothingBehindWhenTheLastIsRemoved) {
    const auto promise = core::create_promise();
    int calls = 0;
    const auto only = listener([&](IFuture&) { ++calls; });
    promise->getFuture()->addListener(only.get());
    promise->getFuture()->removeListener(only.get());
    EXPECT_EQ(only->AddRef(), 2u) << "the future still holds the listener";
    only->Release();
    promise->setException(nullptr);
    EXPECT_EQ(calls, 0);
}

TEST(FutureListeners, MayThrowAndAllOthersAreStillCalled) {
    const auto promise = core::create_promise();
    IFuture* const future = promise->getFuture();
    int calls = 0;
    const auto count = listener([&](IFuture&) { ++calls; });
    future->addListener(listener([](IFuture&) { throw core::Exception(u"swallowed"); }).get());
    future->addListener(count.get());
    future->addListener(listener([](IFuture&) { throw std::runtime_error("passes"); }).get());
    future->addListener(count.get());
    EXPECT_THROW(promise->setException(nullptr), std::runtime_error);
    EXPECT_EQ(calls, 2);
    EXPECT_TRUE(future->isDone());
}

// From inside a call the future is finished: adding calls at once, removing and cancelling do
// nothing, and the last reference may go.
TEST(FutureListeners, MayUseTheFutureTheyAreCalledFor) {
    auto promise = core::create_promise();
    std::string calls;
    const auto last = listener([&](IFuture&) { calls += "last "; });
    promise->getFuture()->addListener(listener([&](IFuture& future) {
                                          future.addListener(
                                              listener([&](IFuture&) { calls += "added "; }).get());
                                          future.removeListener(last.get());
                                          calls += future.cancel() ? "cancelled " : "refused ";
                                          promise.reset();
                                      }).get());
    promise->getFuture()->addListener(last.get());
    promise->getFuture()->cancel();
    EXPECT_EQ(calls, "added refused last ");
}

TEST(FutureMonitor, HearsOfTheMutexAndOfTheWait) {
    struct Counting final : kiln::IThreadSuspendMonitor {
        void enterWait() noexcept override { inside += 1, ++entered; }
        void leaveWait() noexcept override { inside -= 1; }
        int inside = 0, entered = 0;
    } monitor;
    const auto promise = core::create_promise();
    kiln::set_thread_suspend_monitor(&monitor);
    promise->setRunning();
    const int forTheMutex = monitor.entered;
    thread_error([&] { promise->getFuture()->getResultTimed(1); });
    kiln::set_thread_suspend_monitor(nullptr);
    EXPECT_EQ(forTheMutex, 1);
    EXPECT_EQ(monitor.entered, 3);
    EXPECT_EQ(monitor.inside, 0);
}

} // namespace
