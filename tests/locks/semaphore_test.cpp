#include "actors.h"

#include <core/concurrency/Semaphore.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include <pthread.h>
#include <signal.h>
#include <unistd.h>

namespace {

using namespace stdx::literals;
using std::chrono::milliseconds;
using std::chrono::steady_clock;
using test::Actor;

TEST(Semaphore, CountsWhatWasRaised) {
    core::Semaphore semaphore;
    EXPECT_FALSE(semaphore.wait(0));
    EXPECT_FALSE(semaphore.wait(-5));
    for (int i = 0; i != 3; ++i) semaphore.raise();
    int value = 0;
    EXPECT_EQ(sem_getvalue(semaphore.eventHandle(), &value), 0);
    EXPECT_EQ(value, 3);
    semaphore.wait();
    EXPECT_TRUE(semaphore.wait(0));
    EXPECT_TRUE(semaphore.wait(-1));
    EXPECT_FALSE(semaphore.wait(0));
}

TEST(Semaphore, WaitsAsLongAsTold) {
    for (const int time : {30, 1990}) { // whole seconds, and nanoseconds that carry
        core::Semaphore semaphore;
        const auto begin = steady_clock::now();
        EXPECT_FALSE(semaphore.wait(time));
        // The clocks of the wait and of this test may drift apart a little.
        EXPECT_GE(steady_clock::now() - begin, milliseconds(time) - milliseconds(1));
    }
    core::Semaphore semaphore;
    Actor other;
    auto waiting = other.starts([&] { return semaphore.wait(60'000); });
    EXPECT_TRUE(test::waits(waiting));
    semaphore.raise();
    EXPECT_TRUE(waiting.get());
}

// A signal ends a wait with a time limit, and only such a one.
TEST(Semaphore, ASignalIsNoRaise) {
    struct sigaction handler = {}, former = {};
    handler.sa_handler = [](int) {};
    ASSERT_EQ(sigaction(SIGUSR1, &handler, &former), 0);
    core::Semaphore semaphore;
    Actor other;
    const pthread_t thread = other.does([] { return pthread_self(); });

    auto waiting = other.starts([&] { semaphore.wait(); });
    for (int i = 0; i != 3; ++i) {
        ASSERT_TRUE(test::waits(waiting));
        pthread_kill(thread, SIGUSR1);
    }
    ASSERT_TRUE(test::waits(waiting));
    semaphore.raise();
    waiting.get();

    auto timed = other.starts([&] { return semaphore.wait(60'000); });
    while (test::waits(timed)) pthread_kill(thread, SIGUSR1);
    EXPECT_FALSE(timed.get());
    sigaction(SIGUSR1, &former, nullptr);
}

TEST(Semaphore, HandsOverBetweenThreads) {
    core::Semaphore there, back;
    core::ISemaphore& face = back;
    int turn = 0; // written by one side at a time
    Actor other;
    auto answered = other.starts([&] {
        for (int i = 0; i != 2'000; ++i) {
            there.wait();
            ++turn;
            back.raise();
        }
    });
    for (int i = 0; i != 2'000; ++i) {
        ASSERT_EQ(turn, i);
        there.raise();
        face.wait();
    }
    answered.get();
}

TEST(OneTimeSemaphore, StaysOpenOnceRaised) {
    core::OneTimeSemaphore over;
    EXPECT_FALSE(over.wait(0));
    Actor first, second;
    auto a = first.starts([&] { over.wait(); });
    auto b = second.starts([&] { return over.wait(60'000); });
    EXPECT_TRUE(test::waits(a));
    over.raise();
    a.get();
    EXPECT_TRUE(b.get());
    for (int i = 0; i != 5; ++i) {
        over.wait();
        EXPECT_TRUE(over.wait(0));
    }
}

// Names are the machine's: each test process has its own.
stdx::ustring unique_name(const char* what) {
    stdx::ustring name;
    for (const char c : std::string("orbcore-test-") + what + "-" + std::to_string(getpid()))
        name.push_back(static_cast<unsigned char>(c));
    return name;
}

int error_of(const stdx::ustring& name, bool openExisting) {
    try {
        core::NamedSemaphore semaphore(name, openExisting);
        return 0;
    } catch (const std::system_error& error) {
        return error.code().value();
    }
}

TEST(NamedSemaphore, IsSharedByName) {
    const stdx::ustring name = unique_name("shared");
    EXPECT_EQ(error_of(name, true), ENOENT);
    std::optional<core::NamedSemaphore> creator(std::in_place, name, false);
    EXPECT_FALSE(creator->wait(0));
    core::NamedSemaphore user(name, true);
    creator->raise();
    EXPECT_TRUE(user.wait(0));
    EXPECT_FALSE(creator->wait(0));

    creator.reset(); // takes the name, not the semaphore
    EXPECT_EQ(error_of(name, true), ENOENT);
    user.raise();
    EXPECT_TRUE(user.wait(0));
}

TEST(NamedSemaphore, OnlyTheCreatorTakesTheNameAway) {
    const stdx::ustring name = unique_name("kept");
    const core::NamedSemaphore creator(name, false);
    { const core::NamedSemaphore user(name, true); }
    EXPECT_EQ(error_of(name, true), 0);
}

TEST(NamedSemaphore, RefusesNamesThatCannotBe) {
    EXPECT_EQ(error_of(stdx::ustring(300, u'a'), false), ENAMETOOLONG);
    EXPECT_EQ(error_of(stdx::ustring(100'000, u'a'), false), ENAMETOOLONG);
    EXPECT_NE(error_of(u"no/slash"_us, false), 0);
    EXPECT_NE(error_of(stdx::ustring(), false), 0);
    EXPECT_EQ(error_of(stdx::ustring(1, static_cast<char16_t>(0xD800)), false), EILSEQ);
}

} // namespace
