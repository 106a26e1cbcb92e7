// A component of another version than the library.
#include <core/component/ClassDescriptor.h>

ORBCORE_COMPONENT("newer_component", "99.0.0.0");
