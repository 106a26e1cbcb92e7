// A handle on a type.
//
//   core::Type number(core::Type::Code::Numeric);
//   core::Type same(u"Число");                       // by name, in either language, in any case
//   if (value.type() == number) ...
//
// It is one pointer and holds a reference. It is never empty: where no type is given, it is that of
// the undefined value. The types of objects end with their process, and handles on them end before.
#pragma once

#include <core/values/IType.h>

#include <functional>

namespace core {

class ITypeValue;

class ORBCORE_API Type {
public:
    using Code = TypeCode;

    Type() noexcept;                     // that of the undefined value
    explicit Type(IType* type) noexcept; // null gives that of the undefined value
    // Takes the pointer as it stands. `addRef` false takes over a reference of the caller.
    Type(IType* type, bool addRef) noexcept;
    // One of the base types. Throws `IllegalArgumentException` for `Object`, which names none.
    Type(Code code);
    // A registered type. Throws `TypeException` for what names none in the current process.
    explicit Type(const _GUID& type);
    explicit Type(const stdx::ustring& name);
    explicit Type(const char16_t* name);
    // The type that the value stands for; null gives that of the undefined value.
    explicit Type(ITypeValue* value);

    Type(const Type& other) noexcept = default;
    Type(Type&& other) noexcept;
    Type& operator=(const Type& other) noexcept = default;
    Type& operator=(Type&& other) noexcept;
    ~Type() = default;

    static Type create_type(Code code) { return Type(code); }
    static Type create_type(const _GUID& type) { return Type(type); }
    static Type create_type(const stdx::ustring& name) { return Type(name); }

    IType* get() const noexcept { return type_.get(); }
    IType* operator->() const noexcept { return type_.get(); }
    Code code() const { return type_->getTypeCode(); }
    const _GUID& clsid() const { return *type_->getTypeClsid(); }

    // The one value that stands for this type in the current process; lent as long as that lives. Null
    // without a process.
    ITypeValue* getITypeValue() const;

    friend bool operator==(const Type& a, const Type& b) noexcept { return a.type_ == b.type_; }

private:
    InterfacePtr<IType> type_;
};

namespace detail {
// By their codes, that of `Type` last.
ORBCORE_API extern IType* const base_type_objects[7];
} // namespace detail

// The object of a base type; null for `Object`. It is static: no reference is needed.
inline IType* base_type(TypeCode code) noexcept {
    if (code <= TypeCode::Date) return detail::base_type_objects[static_cast<unsigned>(code)];
    return code == TypeCode::Type ? detail::base_type_objects[6] : nullptr;
}

} // namespace core

template <> struct std::hash<core::Type> {
    std::size_t operator()(const core::Type& type) const noexcept {
        return std::hash<core::IType*>()(type.get());
    }
};
