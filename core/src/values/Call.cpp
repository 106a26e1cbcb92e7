#include <core/values/Call.h>

#include "TypeLookup.h"
#include "component/MessageFormat.h"

#include <core/component/ExceptionCategory.h>
#include <core/component/Messages.h>
#include <core/component/Utf8.h>
#include <core/locale/Locale.h>
#include <core/values/ContextException.h>

#include <algorithm>
#include <string>

namespace core {

namespace {

// In which messages show bilingual names.
int message_language() {
    return std::u16string_view(resource_locale().name()).starts_with(u"ru") ? 1 : 0;
}

template <class... Texts> [[noreturn]] void fail(const char* key, const Texts&... texts) {
    throw ContextException(format_message(load_core_wstring(key), texts...), nullptr,
                           Exception::Categories(1ull << static_cast<unsigned>(
                                                     ValuesExceptionCategory::ScriptUseError)));
}

stdx::ustring as_text(std::size_t number) {
    return from_utf8(std::to_string(number));
}

int property_of(const Scriptable& object, const stdx::ustring& name) {
    const int property = object.context().findProp(name);
    if (property < 0) fail("IDS_CONTEXT_NO_PROPERTY", object.typeName(), name);
    return property;
}

// A member as messages show it; each has a name in one language at least.
stdx::ustring shown(const char16_t* russian, const char16_t* english) {
    const bool isRussian = russian && message_language() == 1;
    return isRussian ? russian : english ? english : u"";
}

[[noreturn]] void fail_property(const char* key, const Scriptable& object, int property) {
    IContext_& context = object.context();
    fail(key, shown(context.getPropName(property, 1), context.getPropName(property, 0)),
         object.typeName());
}

template <class... Texts>
[[noreturn]] void fail_method(const char* key, const Scriptable& object, int method,
                              const Texts&... texts) {
    IContext_& context = object.context();
    fail(key, shown(context.getMethodName(method, 1), context.getMethodName(method, 0)),
         object.typeName(), texts...);
}

} // namespace

Scriptable::Scriptable(IContext_* context) noexcept
    : object_(context, true), context_(context, true) {}

Scriptable::Scriptable(IUnknown* object) noexcept : object_(object, true), context_(object) {}

Scriptable::Scriptable(const GenericValue& value)
    : Scriptable(static_cast<IUnknown*>(value.lentIValue())) {}

IContext_& Scriptable::context() const {
    if (!context_) fail("IDS_CONTEXT_NOT_SCRIPTABLE", typeName());
    return *context_;
}

stdx::ustring Scriptable::typeName() const {
    const InterfacePtr<IValue> value(object_.get());
    return type_name(value ? value->getIType() : nullptr, message_language());
}

Value get_property(const Scriptable& object, const stdx::ustring& name) {
    const int property = property_of(object, name);
    Value value;
    if (!object.context().isPropReadable(property) || !object.context().getPropVal(property, value))
        fail_property("IDS_CONTEXT_NOT_READABLE", object, property);
    return value;
}

void set_property(const Scriptable& object, const stdx::ustring& name, const GenericValue& value) {
    const int property = property_of(object, name);
    if (!object.context().isPropWritable(property) || !object.context().setPropVal(property, value))
        fail_property("IDS_CONTEXT_NOT_WRITABLE", object, property);
}

Value call_method(const Scriptable& object, const stdx::ustring& name,
                  std::span<GenericValue* const> arguments) {
    IContext_& context = object.context();
    const int method = context.findMethod(name);
    if (method < 0) fail("IDS_CONTEXT_NO_METHOD", object.typeName(), name);
    const auto count = static_cast<std::size_t>(std::max(context.getNParams(method), 0));
    if (arguments.size() > count)
        fail_method("IDS_CONTEXT_TOO_MANY_ARGUMENTS", object, method, as_text(count),
                    as_text(arguments.size()));

    std::vector<GenericValue*> all(arguments.begin(), arguments.end());
    std::vector<Value> defaults(count - arguments.size());
    for (Value& value : defaults) {
        if (!context.getParamDefValue(method, static_cast<int>(all.size()), &value))
            fail_method("IDS_CONTEXT_ARGUMENT_MISSING", object, method, as_text(all.size() + 1));
        all.push_back(&value);
    }
    Value result;
    if (!context.call(method, context.hasRetVal(method) ? &result : nullptr, all))
        fail_method("IDS_CONTEXT_CALL_FAILED", object, method);
    return result;
}

} // namespace core
