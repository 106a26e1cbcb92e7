#include <core/component/Exception.h>
#include <core/component/StackTrace.h>
#include <core/component/ThreadException.h>
#include <core/component/Utf8.h>

#include "support/ProcessTest.h"

#include <gmock/gmock.h>

#include <cstring>
#include <dlfcn.h>
#include <sstream>
#include <thread>
#include <unwind.h>

namespace {

using namespace core;
using namespace stdx::literals;

using Addresses = std::vector<std::uintptr_t>;

// The same addresses by the unwinder of the compiler's runtime, from this function on.
[[gnu::noinline]] Addresses plain_walk() {
    Addresses addresses;
    const auto note = [](_Unwind_Context* frame, void* out) {
        if (const auto address = _Unwind_GetIP(frame))
            static_cast<Addresses*>(out)->push_back(address);
        return _URC_NO_REASON;
    };
    _Unwind_Backtrace(note, &addresses);
    return addresses;
}

// Calls at the bottom of `depth` frames.
template <class Call> [[gnu::noinline]] void from_depth(int depth, Call&& call) {
    if (depth > 1)
        from_depth(depth - 1, call);
    else
        call();
    asm volatile(""); // no tail call
}

// What both walks see of the frames above the one that calls them.
struct Walks {
    Addresses ours, plain;
};
[[gnu::noinline]] void take_both(void* out) {
    auto& walks = *static_cast<Walks*>(out);
    walks.ours = get_stack_trace(2, 1024); // without itself and this function
    walks.plain = plain_walk();
    walks.plain.erase(walks.plain.begin(), walks.plain.begin() + 2);
}

TEST(StackTrace, AgreesWithThePlainWalk) {
    for (const int depth : {1, 2, 30, 300}) {
        Walks walks;
        from_depth(depth, [&] { take_both(&walks); });
        EXPECT_EQ(walks.ours, walks.plain) << depth;
        EXPECT_GT(walks.ours.size(), static_cast<std::size_t>(depth));
    }
}

TEST(StackTrace, SkipsAndStopsAsTold) {
    from_depth(200, [] {
        const struct {
            unsigned skip, count;
            std::size_t size;
        } rows[] = {
            {0, 0, 0}, {0, 1, 1}, {3, 100, 97}, {100, 100, 0}, {5000, 100, 0},
        };
        for (const auto& row : rows)
            EXPECT_EQ(get_stack_trace(row.skip, row.count).size(), row.size) << row.skip;
        EXPECT_LE(get_stack_trace(0, ~0u).size(), 1024u);
    });
}

// A library that was unloaded leaves its addresses to another one, with other frames.
TEST(StackTrace, FollowsLibrariesThatComeAndGo) {
    Dl_info info;
    ASSERT_NE(dladdr(dlsym(RTLD_DEFAULT, "CoreInit"), &info), 0);
    const std::string directory =
        std::string(info.dli_fname, std::strrchr(info.dli_fname, '/') + 1);
    void* former = nullptr;
    int samePlace = 0;
    for (int round = 0; round != 8; ++round) {
        void* const library = dlopen(
            (directory + (round % 2 ? "frame_small.so" : "frame_large.so")).c_str(), RTLD_NOW);
        ASSERT_NE(library, nullptr) << dlerror();
        const auto call =
            reinterpret_cast<void (*)(void (*)(void*), void*)>(dlsym(library, "call_from_frame"));
        samePlace += reinterpret_cast<void*>(call) == former;
        former = reinterpret_cast<void*>(call);
        Walks walks;
        call(&take_both, &walks);
        EXPECT_EQ(walks.ours, walks.plain) << round;
        std::thread([&] { call(&take_both, &walks); }).join();
        EXPECT_EQ(walks.ours, walks.plain) << round;
        dlclose(library);
    }
    if (samePlace == 0) GTEST_SKIP() << "the libraries never met at one address";
}

// The library that walks stacks brings an unwinder of its own under the names of the compiler's; a
// program that loads this library must not get it.
TEST(StackTrace, LeavesThrowingToTheCompilersRuntime) {
    Dl_info library, unwinder;
    ASSERT_NE(dladdr(dlsym(RTLD_DEFAULT, "CoreInit"), &library), 0);
    void* const handle = dlopen(library.dli_fname, RTLD_NOW | RTLD_NOLOAD);
    ASSERT_NE(dladdr(dlsym(handle, "_Unwind_RaiseException"), &unwinder), 0);
    EXPECT_THAT(unwinder.dli_fname, testing::HasSubstr("libgcc_s"));
    dlclose(handle);
}

[[gnu::noinline]] Exception make_exception() {
    Exception made(u"x");
    asm volatile("");
    return made;
}

TEST(ExceptionTrace, BeginsWhereTheExceptionWasMade) {
    const std::string trace(to_utf8(make_exception().creationStackTrace()));
    Dl_info info;
    ASSERT_NE(dladdr(reinterpret_cast<void*>(&make_exception), &info), 0);
    EXPECT_THAT(trace, testing::StartsWith("test_exceptions:0x"));
    // The text shows no offsets for programs that lie elsewhere than the library; the first frame
    // of a derived class, whose constructor calls that of the base, lies in the library.
    const ThreadException derived(ThreadException::Error::Timeout);
    EXPECT_THAT(std::string(to_utf8(derived.creationStackTrace())),
                testing::StartsWith("orbcore:0x"));
}

TEST(ExceptionTrace, IsLeftToTheDeepestCause) {
    test::ManualProcess process;
    const auto cause = Exception(u"cause").object();
    EXPECT_NE(cause->exception()->creationStackTrace(), u""_us);
    EXPECT_EQ(Exception(u"x", cause.get()).creationStackTrace(), u""_us);
    const Exception given(u"x", nullptr, kUUIDNull, {}, u"given");
    EXPECT_EQ(given.creationStackTrace(), u"given"_us);
}

TEST(ExceptionTrace, HoldsAtMost97Frames) {
    from_depth(300, [] {
        const std::string trace(to_utf8(Exception(u"x").creationStackTrace()));
        EXPECT_EQ(std::count(trace.begin(), trace.end(), ' '), 97);
    });
}

TEST(PrintedTrace, NamesModuleAndOffset) {
    const auto text = [](std::uintptr_t address) {
        return std::string(to_utf8(print_stack_trace({address})));
    };
    Dl_info info;
    const auto inLibrary = reinterpret_cast<std::uintptr_t>(dlsym(RTLD_DEFAULT, "CoreInit"));
    ASSERT_NE(dladdr(reinterpret_cast<void*>(inLibrary), &info), 0);
    std::ostringstream expected;
    expected << ":0x" << std::hex << inLibrary - reinterpret_cast<std::uintptr_t>(info.dli_fbase)
             << ' ';
    EXPECT_THAT(text(inLibrary), testing::EndsWith(expected.str()));
    EXPECT_THAT(text(inLibrary), testing::StartsWith("orbcore:0x"));

    const auto inProgram = reinterpret_cast<std::uintptr_t>(&plain_walk);
    EXPECT_EQ(text(inProgram), "test_exceptions:0x0 ");
    EXPECT_EQ(text(0x10), "unknown:0x10 ");
    EXPECT_EQ(print_stack_trace({}), u""_us);
    EXPECT_EQ(text(0x10) + text(0x20), std::string(to_utf8(print_stack_trace({0x10, 0x20}))));
}

} // namespace
