#include <core/values/ScriptNative.h>

#include <core/component/SCOM_Process.h>
#include <core/values/ContextException.h>
#include <core/values/TypeValueService.h>

namespace core {

void ScriptPlace::refuse_type() const {
    if (kind_ == Kind::Parameter) parameter_type_mismatch(position_);
    if (kind_ == Kind::CtorParameter) ctor_parameter_type_mismatch(position_);
    property_type_mismatch();
}

void ScriptPlace::refuse_value() const {
    if (kind_ == Kind::Parameter) parameter_value_mismatch(position_);
    if (kind_ == Kind::CtorParameter) ctor_parameter_value_mismatch(position_);
    property_value_mismatch(nullptr);
}

namespace detail {

// The value that the process has for the type, where it has one.
void write_type(GenericValue& to, const _GUID& type) {
    ITypeValueService* const service = get_service<ITypeValueService>();
    const InterfacePtr<IValue> shared{
        static_cast<IUnknown*>(service ? service->getTypeValue(type) : nullptr)};
    to.setIValue(shared ? shared.get() : create_type_value(type));
}

} // namespace detail

} // namespace core
