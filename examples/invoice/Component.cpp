// The invoice as a component:
//
//   orb --component invoice describe Invoice
//
// A host that wants it inside links Invoice.cpp alone.
#include <core/component/Module.h>

ORBCORE_COMPONENT("invoice", "1.0.0.0");
