#include "TypeDomainBody.h"

#include "BaseTypeTable.h"
#include "component/MessageFormat.h"

#include <core/component/Messages.h>
#include <core/component/SCOM_Process.h>
#include <core/values/ContextException.h>

namespace core {

// ---- Qualifiers

void QualifiedTypes::widen(const _GUID& type, const QualifiedTypes& from) noexcept {
    const auto take = [both = types.contains(type)](auto& own, const auto& other) {
        own = both ? own.merge(own, other) : other;
    };
    if (type == CLSID_NumericType)
        take(numeric, from.numeric);
    else if (type == CLSID_StringType)
        take(string, from.string);
    else if (type == CLSID_DateType)
        take(date, from.date);
    else if (type == CLSID_BinaryDataType)
        take(binary, from.binary);
}

void QualifiedTypes::merge(const QualifiedTypes& from) {
    for (const _GUID& type : from.types) widen(type, from);
    types.merge(from.types.all());
}

bool QualifiedTypes::hasEqualQualifier(const QualifiedTypes& other,
                                       const _GUID& type) const noexcept {
    if (type == CLSID_NumericType) return numeric == other.numeric;
    if (type == CLSID_StringType) return string == other.string;
    if (type == CLSID_DateType) return date == other.date;
    if (type == CLSID_BinaryDataType) return binary == other.binary;
    return true;
}

namespace {

bool fits(const NumericQualifiers& inner, const NumericQualifiers& outer) noexcept {
    return (inner.nonNegative || !outer.nonNegative) && inner.fraction <= outer.fraction &&
           inner.digits - inner.fraction <= outer.digits - outer.fraction;
}
bool fits(const LengthQualifiers& inner, const LengthQualifiers& outer) noexcept {
    return (outer.variable || !inner.variable) && inner.length <= outer.length;
}
bool fits(const DateQualifiers& inner, const DateQualifiers& outer) noexcept {
    return (inner.parts & ~outer.parts) == 0;
}

} // namespace

bool QualifiedTypes::qualifiersFit(const QualifiedTypes& other) const noexcept {
    return (!types.contains(CLSID_NumericType) || fits(numeric, other.numeric)) &&
           (!types.contains(CLSID_StringType) || fits(string, other.string)) &&
           (!types.contains(CLSID_DateType) || fits(date, other.date)) &&
           (!types.contains(CLSID_BinaryDataType) || fits(binary, other.binary));
}

// ---- From patterns to domains

// The base types are known without a process, too.
bool is_domain_type(const _GUID& type) {
    if (type == CLSID_UndefinedType) return false;
    if (find_base_type_row(type)) return true;
    SCOM_Process* const process = current_process();
    return process && process->hasClass(type);
}

namespace {

bool is_provider(const _GUID& type) {
    SCOM_Process* const process = current_process();
    return process && process->isClassInCategory(CATID_TypeDomainPatternProvider, type);
}

// A class that gives no object stands for nothing.
TypeDomainPattern provided_by(const _GUID& class_) {
    const auto provider = create_object<ITypeDomainPatternProvider>(class_);
    if (!provider) return {};
    try {
        return provider->getTypeDomainPattern();
    } catch (const TypeDomainPatternProviderException&) {
        throw;
    } catch (const Exception& fault) {
        throw TypeDomainPatternProviderException(
            format_message(load_core_wstring("IDS_TYPEERROR_PROVIDER"), to_string(class_)),
            fault.object().get());
    }
}

InterfacePtr<TypeDomainBody> make_domain(const QualifiedTypes& pattern) {
    InterfacePtr<TypeDomainBody> domain(new TypeDomainBody, true);
    const auto add = [&domain](const _GUID& type, const QualifiedTypes& from) {
        domain->widen(type, from);
        if (is_domain_type(type)) domain->types.insert(type);
    };
    for (const _GUID& type : pattern.types) {
        if (!is_provider(type)) {
            add(type, pattern);
            continue;
        }
        const TypeDomainPattern provided = provided_by(type);
        for (const _GUID& member : provided.reference().types) add(member, provided.reference());
    }
    return domain;
}

} // namespace

InterfacePtr<TypeDomainBody> TypeDomainPatternBody::domain() const {
    if (TypeDomainBody* const made = domain_.load(std::memory_order_acquire)) return {made, true};
    // Held, so that a provider which writes to the handle does not write to this body.
    const InterfacePtr<const TypeDomainPatternBody> held(this, true);
    InterfacePtr<TypeDomainBody> made = make_domain(*this), cached = made;
    TypeDomainBody* published = nullptr;
    if (!domain_.compare_exchange_strong(published, cached.get(), std::memory_order_acq_rel,
                                         std::memory_order_acquire))
        return {published, true};
    static_cast<void>(cached.detach()); // the reference is the cache's now
    return made;
}

} // namespace core
