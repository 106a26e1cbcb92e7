// The twin of an exception class: an object of the component model that keeps an exception after
// its `catch`, is the cause of another one, and throws it again with its true class.
//
//   core::InterfacePtr<core::IExceptionObject> cause;
//   try { … } catch (const core::Exception& exception) { cause = exception.object(); }
//   throw core::ApplicationException(cause.get());
#pragma once

#include <core/component/InterfacePtr.h>

namespace core {

class Exception;

inline constexpr _GUID IID_IExceptionObject = "15061ec3-e730-4fdc-a7d1-3f424bad9ad2"_guid;

class IExceptionObject : public IUnknown {
public:
    ORB_INTERFACE(IExceptionObject, IID_IExceptionObject)

    // Copies the whole exception, added fields included. Its class must be the one that this object
    // is made for; `Exception::object` sees to that.
    virtual void assign(const Exception& exception) = 0;
    virtual void setDescription(const stdx::ustring& description) = 0;
    virtual void setInner(IExceptionObject* inner) = 0; // takes a reference; null: no cause
    // Throws a copy of the held exception.
    [[noreturn]] virtual void rethrow() = 0;
    // The held exception; it lives as long as the object.
    virtual Exception* exception() = 0;
    virtual void setOnClientFromServer() = 0;
};

} // namespace core
