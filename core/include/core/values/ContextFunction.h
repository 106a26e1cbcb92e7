// A method of a context as an object, to be kept and called later.
//
//   auto close = core::context_method_to_function(form, u"Close", false);
//   std::vector<core::GenericValue*> none;
//   close->call(nullptr, none);
#pragma once

#include <core/values/IContext.h>

namespace core {

inline constexpr _GUID IID_IFunction = "de293ec7-d2fc-4b84-a3c9-ec495e86c860"_guid;
inline constexpr _GUID IID_IParameter = "85713a7f-85e7-49a1-98ae-6ece49d31c48"_guid;
inline constexpr _GUID CLSID_MethodPromise = "e0b2a3b5-b4be-4c3b-88b6-061a8c9b0a63"_guid;
inline constexpr _GUID IID_IMethodPromise = "a967d875-babf-4e5e-bc71-5c7184c8a295"_guid;

class IParameter : public IUnknown {
public:
    ORB_INTERFACE(IParameter, IID_IParameter)

    virtual bool isIn() = 0;
    virtual bool isOut() = 0;
    // Whether it may be left out; what stands for it then, where `out` is given.
    virtual bool getDefValue(GenericValue* out) = 0;
};

class IFunction : public IUnknown {
public:
    ORB_INTERFACE(IFunction, IID_IFunction)

    virtual bool hasRetVal() = 0;
    virtual int getNParams() = 0;
    // Lent as long as the function lives; null for a number that is out of range. For one thread at
    // a time.
    virtual IParameter* getParameter(int parameter) = 0;
    // See `IContext_::call`.
    virtual bool call(GenericValue* result, std::vector<GenericValue*>& arguments) = 0;
};

// A function holds its context, and so do its parameters; with `weak` they do not, and the caller
// keeps the context alive. Throw `IllegalArgumentException` for a context that has no such method.
ORBCORE_API InterfacePtr<IFunction> context_method_to_function(IContext_* context, int method,
                                                               bool weak);
ORBCORE_API InterfacePtr<IFunction>
context_method_to_function(IContext_* context, const stdx::ustring& name, bool weak);

// What scripts wait for when they call a method that goes on by itself; another component brings the
// class.
class IMethodPromise : public IUnknown {
public:
    ORB_INTERFACE(IMethodPromise, IID_IMethodPromise)

    // The value that such a method takes as the description of what to call when it is done, and
    // which keeps the promise.
    virtual void getCallback(bool flag, GenericValue& out) = 0;
};

// Calls a method whose first parameter is a callback, with the further ones in `arguments`, and gives
// a promise in its place. What the call answers; when that is true, the promise is in `result`,
// which may be null. Throws `UnsupportedOperationException` without the class of promises.
ORBCORE_API bool call_old_async_as_new(IContext_* context, int method, GenericValue* result,
                                       std::vector<GenericValue*>& arguments, bool flag);

} // namespace core
