// One slot for an exception that cannot pass where it was caught, as in a callback through a
// foreign library:
//
//   extern "C" int callback() { try { … } catch (...) { core::defer_exception(); return 1; } }
//   …
//   foreign_call(callback);
//   core::raise_deferred_exception();
//
// The slot exists once and is not guarded: it is for a single control flow at a time.
#pragma once

#include <core/platform/api.h>

namespace core {

// In a `catch` block: keeps the exception that is being handled, unless one is kept already.
ORBCORE_API void defer_exception() noexcept;
ORBCORE_API bool have_deferred_exception() noexcept;
// Empties the slot and throws what it held; returns when it was empty.
ORBCORE_API void raise_deferred_exception();

} // namespace core
