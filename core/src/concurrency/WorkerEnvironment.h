// What the pools take from the system. A pool gets it at construction, so that tests can move its
// clock and refuse it threads.
#pragma once

#include <cstdint>

#include <pthread.h>

namespace core {

class Exception;

using ThreadRoutine = void* (*)(void* argument);

struct WorkerEnvironment {
    // A clock in milliseconds that wraps around and never goes back otherwise.
    std::uint32_t (*milliseconds)();
    // As pthread_create; workers are created detached, monitors joinable.
    int (*create_thread)(pthread_t* thread, const pthread_attr_t* attributes, ThreadRoutine routine,
                         void* argument);
    // Ends the program. Does not return normally.
    void (*terminate_process)(int code);
};

extern const WorkerEnvironment kSystemEnvironment;

// An entry in the technical log. What goes wrong with that goes no further.
void log_failure(const Exception& failure, const char16_t* where) noexcept;

// A thread with a stack of 1 MiB; `detachState` as for pthread_attr_setdetachstate. When the system
// gives none, the failure goes to the technical log and the program ends: a job that was accepted
// could never run.
pthread_t create_system_thread(const WorkerEnvironment& environment, int detachState,
                               ThreadRoutine routine, void* argument);

} // namespace core
