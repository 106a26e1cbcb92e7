// ORBCORE_API marks what leaves the library; everything else is hidden. ORBCORE_HIDDEN marks a
// declaration that every library defines for itself.
#pragma once

#define ORBCORE_API    __attribute__((visibility("default")))
#define ORBCORE_HIDDEN __attribute__((visibility("hidden")))
