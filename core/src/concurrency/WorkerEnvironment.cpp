#include "WorkerEnvironment.h"

#include <core/component/Exception.h>
#include <core/component/TechLog.h>
#include <core/component/Utf8.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <system_error>

#include <time.h>

namespace core {
namespace {

constexpr std::size_t kStackSize = 0x100000;

std::uint32_t monotonic_milliseconds() {
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::uint32_t>(now.tv_sec * 1000 + now.tv_nsec / 1'000'000);
}

// Without the destructors of statics: other threads go on using them.
void end_program(int code) {
    std::_Exit(code);
}

class ThreadAttributes {
public:
    explicit ThreadAttributes(int detachState) {
        pthread_attr_init(&attributes_);
        pthread_attr_setdetachstate(&attributes_, detachState);
    }
    ~ThreadAttributes() { pthread_attr_destroy(&attributes_); }
    ThreadAttributes(const ThreadAttributes&) = delete;
    ThreadAttributes& operator=(const ThreadAttributes&) = delete;

    pthread_attr_t* get() { return &attributes_; }

private:
    pthread_attr_t attributes_;
};

} // namespace

const WorkerEnvironment kSystemEnvironment = {&monotonic_milliseconds, &pthread_create,
                                              &end_program};

void log_failure(const Exception& failure, const char16_t* where) noexcept {
    try {
        write_exception_to_techlog(failure, where);
    } catch (...) {}
}

pthread_t create_system_thread(const WorkerEnvironment& environment, int detachState,
                               ThreadRoutine routine, void* argument) {
    pthread_t thread = {};
    ThreadAttributes attributes(detachState);
    int error = pthread_attr_setstacksize(attributes.get(), kStackSize);
    if (error == 0) error = environment.create_thread(&thread, attributes.get(), routine, argument);
    if (error != 0) {
        const std::string words = std::generic_category().message(error);
        std::fprintf(stderr, "orbcore: cannot create a thread: %s\n", words.c_str());
        log_failure(Exception(from_utf8(words)), u"Create thread error");
        environment.terminate_process(0);
    }
    return thread;
}

} // namespace core
