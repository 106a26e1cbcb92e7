#include <core/values/ContextException.h>

#include "component/MessageFormat.h"

#include <core/component/ExceptionCategory.h>
#include <core/component/ExceptionObject.h>
#include <core/component/Messages.h>
#include <core/component/Utf8.h>
#include <core/persistence/ExceptionFields.h>

#include <string>

namespace core {

namespace {

constexpr auto kScriptUse = 1ull << static_cast<unsigned>(ValuesExceptionCategory::ScriptUseError);

stdx::ustring with_extra(stdx::ustring text, const stdx::ustring& extra) {
    if (!extra.empty()) text += u" (" + extra + u")";
    return text;
}

template <class E>
[[noreturn]] void raise(const stdx::ustring& text, IExceptionObject* cause = nullptr) {
    throw E(text, cause, Exception::Categories(kScriptUse));
}

template <class E>
[[noreturn]] void raise(const char* key, unsigned position, const stdx::ustring& extra) {
    const std::string number = std::to_string(position + 1ull);
    raise<E>(with_extra(format_message(load_core_wstring(key), from_utf8(number)), extra));
}

constexpr const char* kTypeKey = "IDS_PARAMETER_N_TYPE_MISMATCH";
constexpr const char* kValueKey = "IDS_PARAMETER_N_VALUE_MISMATCH";

stdx::ustring description_of(ValueIsFilledException::Error error) {
    return error == ValueIsFilledException::Error::MutableType
               ? load_core_wstring("IDS_VALUE_IS_FILLED_ERROR_DESCR_MUTABLE_TYPE")
               : stdx::ustring();
}

} // namespace

ContextException::ContextException(IExceptionObject* inner)
    : ContextException(stdx::ustring(), inner) {}

ContextException::ContextException(const stdx::ustring& description, IExceptionObject* inner,
                                   const Categories& categories)
    : Exception(CLSID_ContextExceptionObject, description, inner, kUUIDNull, categories) {}

CtorException::CtorException(IExceptionObject* inner) : CtorException(stdx::ustring(), inner) {}

CtorException::CtorException(const stdx::ustring& description, IExceptionObject* inner,
                             const Categories& categories)
    : Exception(CLSID_CtorExceptionObject, description, inner, kUUIDNull, categories) {}

ValueIsFilledException::ValueIsFilledException(IExceptionObject* inner)
    : Exception(CLSID_ValueIsFilledExceptionObject, stdx::ustring(), inner) {}

ValueIsFilledException::ValueIsFilledException(Error error, const stdx::ustring& extra,
                                               IExceptionObject* inner)
    : Exception(CLSID_ValueIsFilledExceptionObject, with_extra(description_of(error), extra),
                inner),
      error_(error) {}

TypeDomainPatternProviderException::TypeDomainPatternProviderException(IExceptionObject* inner)
    : TypeDomainPatternProviderException(stdx::ustring(), inner) {}

TypeDomainPatternProviderException::TypeDomainPatternProviderException(
    const stdx::ustring& description, IExceptionObject* inner)
    : Exception(CLSID_TypeDomainPatternProviderExceptionObject, description, inner) {}

void parameter_type_mismatch(unsigned position, const stdx::ustring& extra) {
    raise<ContextException>(kTypeKey, position, extra);
}

void parameter_value_mismatch(unsigned position, const stdx::ustring& extra) {
    raise<ContextException>(kValueKey, position, extra);
}

void ctor_parameter_type_mismatch(unsigned position, const stdx::ustring& extra) {
    raise<CtorException>(kTypeKey, position, extra);
}

void ctor_parameter_value_mismatch(unsigned position, const stdx::ustring& extra) {
    raise<CtorException>(kValueKey, position, extra);
}

void property_type_mismatch() {
    raise<ContextException>(load_core_wstring("IDS_PROPERTY_TYPE_MISMATCH"));
}

void property_value_mismatch(IExceptionObject* cause) {
    raise<ContextException>(load_core_wstring("IDS_PROPERTY_VALUE_MISMATCH"), cause);
}

} // namespace core

ORBCORE_EXCEPTION_FIELDS(ValueIsFilledException, error_);
ORBCORE_EXCEPTION_OBJECT(ContextException);
ORBCORE_EXCEPTION_OBJECT(CtorException);
ORBCORE_EXCEPTION_OBJECT(ValueIsFilledException);
ORBCORE_EXCEPTION_OBJECT(TypeDomainPatternProviderException);
