// What the calling operating-system thread is at the moment: a `core::Thread` in a logical process,
// or neither. `ThreadAttach` and `Process::init` install pairs and restore the former ones.
#pragma once

namespace core {

class SCOM_Process;
class Thread;

struct CurrentPair {
    Thread* thread;
    SCOM_Process* process;
};

// Two words of the static thread-local block: read on every creation of an object, so no function
// call stands in front of them.
extern thread_local constinit CurrentPair current_pair __attribute__((tls_model("initial-exec")));

} // namespace core
