// What becomes of an exception that a destructor caught and must not let go:
//
//   ~Connection() { try { close(); } catch (const core::Exception& e) {
//   core::destructor_exception(e); } }
//
// One handler serves the whole library. All functions are safe on any thread.
#pragma once

#include <core/component/Exception.h>

namespace core {

inline constexpr _GUID IID_IExceptionHandler = "a007eca8-9d38-4502-80be-e612983304c9"_guid;

// Is called on the thread of the destructor.
class IExceptionHandler : public IUnknown {
public:
    ORB_INTERFACE(IExceptionHandler, IID_IExceptionHandler)

    virtual void handleException(const Exception& exception) = 0;
};

// Calls the handler, outside any lock. Without one, throws `exception.as_plain()`: the destructor
// is then `noexcept(false)`, or the program ends.
ORBCORE_API void destructor_exception(const Exception& exception);

// A reference is taken; null removes the handler.
ORBCORE_API void set_destructor_exception_handler(IExceptionHandler* handler);
ORBCORE_API InterfacePtr<IExceptionHandler> get_destructor_exception_handler();

} // namespace core
