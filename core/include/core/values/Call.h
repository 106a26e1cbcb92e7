// Members of scriptable objects by name, in a line, as a script would use them.
//
//   core::Value total = core::get_property(invoice, u"Итог");
//   core::set_property(invoice, u"Number", u"A-17");
//   core::call(invoice, u"Add", u"Paper", 12.5);          // the parameters left out take defaults
//
// Names are in either language and in any case of letters. A wrong use (no such member, one that
// cannot be read or written, a wrong number of arguments) throws `ContextException` with a text
// that names the type and the member; what the member itself throws passes. A lookup by name comes
// before each call: code in a loop resolves the name once, see core/values/IContext.h.
#pragma once

#include <core/values/IContext.h>
#include <core/values/Value.h>

#include <array>
#include <span>

namespace core {

// What has members: made of a context, of an object that has one, or of a value. Holds the object.
class ORBCORE_API Scriptable {
public:
    Scriptable(IContext_* context) noexcept;
    Scriptable(IUnknown* object) noexcept;
    Scriptable(const GenericValue& value);
    template <class Interface>
    Scriptable(const InterfacePtr<Interface>& object) noexcept
        : Scriptable(static_cast<first_interface<Interface>*>(object.get())) {}

    // Throws `ContextException` for an object without members.
    IContext_& context() const;
    // The name of the type, in the language of messages.
    stdx::ustring typeName() const;

private:
    // Of an implementation class, which is an `IUnknown` by several bases, the context.
    template <class Interface>
    using first_interface =
        std::conditional_t<std::convertible_to<Interface*, IContext_*>, IContext_, IUnknown>;

    InterfacePtr<IUnknown> object_;
    InterfacePtr<IContext_> context_; // null, no members
};

ORBCORE_API Value get_property(const Scriptable& object, const stdx::ustring& name);
ORBCORE_API void set_property(const Scriptable& object, const stdx::ustring& name,
                              const GenericValue& value);

// `arguments` are what the method writes to; missing ones take their defaults. Undefined where the
// method has no result.
ORBCORE_API Value call_method(const Scriptable& object, const stdx::ustring& name,
                              std::span<GenericValue* const> arguments);

namespace detail {

// A handle that the method may write to is passed on; anything else becomes a value.
template <class T> class CallArgument {
public:
    explicit CallArgument(const T& native) : value_(native) {}
    GenericValue* get() { return &value_; }

private:
    Value value_;
};
template <class T>
requires std::derived_from<T, GenericValue> &&(!std::is_const_v<T>)class CallArgument<T&> {
public:
    explicit CallArgument(T& handle) : handle_(&handle) {}
    GenericValue* get() { return handle_; }

private:
    GenericValue* handle_;
};
template <class T>
using CallArgumentOf =
    std::conditional_t<std::is_lvalue_reference_v<T> &&
                           std::derived_from<std::remove_reference_t<T>, GenericValue> &&
                           !std::is_const_v<std::remove_reference_t<T>>,
                       CallArgument<T>, CallArgument<std::decay_t<T>>>;

} // namespace detail

inline void set_property(const Scriptable& object, const stdx::ustring& name, const auto& native) {
    const Value value(native);
    set_property(object, name, static_cast<const GenericValue&>(value));
}

// What a parameter gives back goes to a `Value&` among the arguments.
template <class... Arguments>
Value call(const Scriptable& object, const stdx::ustring& name, Arguments&&... arguments) {
    return [&](detail::CallArgumentOf<Arguments>... held) {
        const std::array<GenericValue*, sizeof...(Arguments)> all{held.get()...};
        return call_method(object, name, all);
    }(detail::CallArgumentOf<Arguments>(arguments)...);
}

} // namespace core
