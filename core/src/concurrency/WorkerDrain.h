// For the end of a process. A thread is over when its end semaphore is raised, but its worker still
// has to drop its references, which may destroy the thread object: code of the library that the
// class came from. So that library must not be unloaded before the workers are through.
#pragma once

namespace core {

class ThreadSet;

// Waits until no worker has anything of the threads of `set`. They must have ended, and the set
// take no more.
void drain_workers(const ThreadSet& set);

} // namespace core
