#include <core/values/ValueOrder.h>

#include <core/component/SCOM_Process.h>

namespace core {
namespace {

template <class Payload> const Payload& payload_of(IValue* value) {
    return *static_cast<const Payload*>(value->getDataPtr());
}

// What a value goes by that is compared as text, kept in `converted` unless it is one.
std::u16string_view text_of(IValue* value, TypeCode code, stdx::ustring& converted) {
    if (code != TypeCode::String) value->getString(converted);
    std::u16string_view text =
        code == TypeCode::String ? payload_of<stdx::ustring>(value).view() : converted.view();
    while (!text.empty() && text.back() == u' ') text.remove_suffix(1);
    return text;
}

int compare_texts(IValue* a, IValue* b, TypeCode code, const Collator& collator) {
    stdx::ustring convertedA, convertedB;
    const std::u16string_view textA = text_of(a, code, convertedA);
    return collator.compareNocase(textA, text_of(b, code, convertedB));
}

TypeCode code_of(IType* type) {
    return type ? type->getTypeCode() : TypeCode::Object;
}

int sign_of(std::strong_ordering order) noexcept {
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

} // namespace

Collator process_collator() {
    SCOM_Process* const process = current_process();
    return Collator(process ? process->getLocale() : Locale::system());
}

int compare_values(IValue* a, IValue* b, const Collator& collator) {
    if (a == b) return 0;
    IType* const typeA = a->getIType();
    IType* const typeB = b->getIType();
    const TypeCode code = code_of(typeA), other = typeA == typeB ? code : code_of(typeB);
    if (code != other) return sign_of(static_cast<int>(code) <=> static_cast<int>(other));
    switch (code) {
    case TypeCode::Undefined:
    case TypeCode::Null:
        return 0;
    case TypeCode::Boolean:
        return sign_of(payload_of<bool>(a) <=> payload_of<bool>(b));
    case TypeCode::Numeric:
        return payload_of<Numeric>(a).compare(payload_of<Numeric>(b));
    case TypeCode::Date:
        return sign_of(payload_of<Date>(a).ticks() <=> payload_of<Date>(b).ticks());
    case TypeCode::String:
    case TypeCode::Object:
    case TypeCode::Type:
        break;
    }
    return compare_texts(a, b, code, collator);
}

} // namespace core
