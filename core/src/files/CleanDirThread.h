// Defined in `runtime`, where the threads live that are process objects.
#pragma once

#include <core/concurrency/Thread.h>

#include <functional>

namespace core {

// Runs `work` within the calling thread's process on a thread that the process does not count. Null,
// and nothing is run, where no process is entered.
InterfacePtr<Thread> start_clean_dir_thread(std::function<void()> work);

} // namespace core
