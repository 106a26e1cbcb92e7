// Values that cannot be stored: a save goes on without them, and tells a handler if there is one.
//
//   const auto guard = core::create_serialize_guard(&handler);   // until it is released
//   object->serialize(storage.get());
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/platform/api.h>

namespace core {

inline constexpr _GUID IID_ISerializeErrorHandler = "ce7ba80e-eddc-4449-8e31-4ad3fe5f4ccd"_guid;

// Fired on the thread that saves; `source` is the value, an `IUnknown*`.
inline constexpr _GUID SerializeFailureEvent = "d5dabe12-2642-4f75-9505-837af73aaa32"_guid;

class ISerializeErrorHandler : public IUnknown {
public:
    ORB_INTERFACE(ISerializeErrorHandler, IID_ISerializeErrorHandler)

    // Called on the thread of the guard with the value that could not be written. What it throws
    // ends the save.
    virtual void onSerializeError(IUnknown* value) = 0;
};

// While the result lives, values that the calling thread cannot store go to the handler, which it
// holds; of several guards all are told, the last made first. It is to be released on the thread and
// in the process that made it. Without a process, or in one without events, nothing is ever told.
ORBCORE_API InterfacePtr<IUnknown> create_serialize_guard(ISerializeErrorHandler* handler);

} // namespace core
