#include <core/values/Value.h>

namespace core {

const Value& Value::undefined() noexcept {
    static const union Immortal {
        Immortal() noexcept : value() {}
        ~Immortal() {}
        Value value;
    } undefined;
    return undefined.value;
}

// Both take the new reference first: the old value may hold the new one.

void Value::setIValue(IValue* value) noexcept {
    if (!value) value = create_undefined_value();
    add_reference(value);
    release(std::exchange(value_, value));
}

void WeakValue::setIValue(IValue* value) noexcept {
    if (!value) value = create_undefined_value();
    value->AddRef();
    IValue* const former = std::exchange(value_, value);
    if (std::exchange(owned_, true)) former->Release();
}

} // namespace core
