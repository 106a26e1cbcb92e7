// Waiting for what is about to come: a thread that goes to sleep is woken some 5 to 50 microseconds
// after the event, one that looks for it sees it in a fraction of one.
#pragma once

#include <core/concurrency/Semaphore.h>

namespace core {

// Looks for about 20 microseconds whether the semaphore has been raised, and takes nothing: the
// caller waits next in any case. Never more threads look at a time than there are processors, and
// none where there is only one.
void spin_for(ISemaphore& semaphore);

} // namespace core
