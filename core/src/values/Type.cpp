#include <core/values/Type.h>

#include "BaseTypeTable.h"
#include "TypeLookup.h"

#include <core/component/IllegalArgumentException.h>
#include <core/component/SCOM_Process.h>
#include <core/values/BaseTypes.h>
#include <core/values/IValue.h>
#include <core/values/TypeException.h>
#include <core/values/TypeValueService.h>

#include <algorithm>
#include <utility>

namespace core {
namespace {

// Null for what names no type. The base types are known without a process, too.
InterfacePtr<IType> look_up(const _GUID& type) {
    const BaseTypeRow* const row = find_base_type_row(type);
    return row ? InterfacePtr<IType>(base_type(row->code), false) : find_type(type);
}

InterfacePtr<IType> look_up(const stdx::ustring& name) {
    for (const BaseTypeRow& row : base_type_rows)
        if (compare_term(name, row.name)) return {base_type(row.code), false};
    SCOM_Process* const process = current_process();
    if (!process) return {};
    // By way of the types: names come from data, and to create by name would create any class.
    for (const _GUID& type : process->getClassesOfCategory(CATID_Type))
        for (const stdx::ustring& alias : process->getClassAliases(type))
            if (compare_nocase(alias, name) == 0) return create_object<IType>(type);
    return {};
}

template <class Key> InterfacePtr<IType> get_type(const Key& key) {
    InterfacePtr<IType> type = look_up(key);
    if (!type) throw TypeException(key);
    return type;
}

InterfacePtr<IType> get_type(TypeCode code) {
    IType* const type = base_type(code);
    ORB_ASSERT(type);
    return {type, false};
}

InterfacePtr<IType> undefined_type() noexcept {
    return {base_type(TypeCode::Undefined), false};
}

} // namespace

Type::Type() noexcept : type_(undefined_type()) {}
Type::Type(IType* type) noexcept : type_(type ? type : base_type(Code::Undefined), true) {}
Type::Type(IType* type, bool addRef) noexcept : type_(type, addRef) {}
Type::Type(Code code) : type_(get_type(code)) {}
Type::Type(const _GUID& type) : type_(get_type(type)) {}
Type::Type(const stdx::ustring& name) : type_(get_type(name)) {}
Type::Type(const char16_t* name) : Type(stdx::ustring(name ? name : u"")) {}
Type::Type(ITypeValue* value) : type_(value ? get_type(value->getTypeGuid()) : undefined_type()) {}

Type::Type(Type&& other) noexcept : type_(std::exchange(other.type_, undefined_type())) {}

Type& Type::operator=(Type&& other) noexcept {
    Type taken(std::move(other));
    std::swap(type_, taken.type_);
    return *this;
}

ITypeValue* Type::getITypeValue() const {
    auto* const service = get_service<ITypeValueService>();
    return service ? service->getTypeValue(clsid()) : nullptr;
}

// ---- The types of objects

const char16_t* ObjectTypeCore::getTypeString(int language) {
    return term_string(kUnknownObjectTypeString, language);
}

void ObjectTypeCore::getString(stdx::ustring& out) {
    out.clear();
}

InterfacePtr<IValue> ObjectTypeCore::ctor(const std::vector<GenericValue*>&) {
    return createIValue();
}

} // namespace core
