// Enumerations as scripts see them: one global object for each, which hands out its values by name,
// in either language; a value has a type of its own, compares, prints and is stored like any other.
//
//   core::Value value = core::enum_value(core::EnumValuesVAlign::Top);
//   auto align = core::to_enum<core::EnumValuesVAlign>(value);     // throws for any other value
//   auto factory = core::enumeration(u"ВертикальноеПоложение");    // what a script sees by this name
//
// The enumerations of the library are in core/values/Enumerations.h. To declare one of your own, tie
// its native enumeration to three GUIDs in a header:
//
//   enum class Shade : std::int32_t { Light = 0, Dark = 1 };
//   inline constexpr core::Term kShadeTerm = {u"Shade", u"Оттенок"};
//   inline constexpr _GUID CLSID_Shade_Factory = "..."_guid;
//   inline constexpr _GUID CLSID_Shade_FactoryType = "..."_guid;
//   inline constexpr _GUID CLSID_Shade_Type = "..."_guid;
//   ORBCORE_ENUMERATION(Shade, Shade, kShadeTerm);
//
// and write its table in a source, see core/values/EnumValueClasses.h.
//
// An enumeration is made at its first use in a process and only read afterwards, by any number of
// threads. It ends with the process, and whoever holds the factory ends before; values may end after.
#pragma once

#include <core/values/Arguments.h>
#include <core/values/Value.h>

namespace core {

inline constexpr _GUID IID_IEnumValFactory = "b670dd9d-6ec3-43b5-8d8e-95a8016fe993"_guid;
inline constexpr _GUID IID_IEnumValType = "b3811947-8540-40d8-ad6b-bba60af33e7a"_guid;

// The category of the types of enumerations' values: to list the enumerations of a process without
// making any of them, ask it for the classes of this category and their aliases.
inline constexpr _GUID CATID_EnumValType = "bb1c283c-cda7-4d2e-92df-34562b26c4f9"_guid;

// The classes of a native enumeration: the members `names`, `factory`, `factoryType` and `type`.
template <class Native> struct EnumClasses;

template <class Native>
concept ScriptEnum = requires {
    EnumClasses<Native>::type;
};

// ---- Interfaces

// Of the object that scripts see.
class IEnumValFactory : public IUnknown {
public:
    ORB_INTERFACE(IEnumValFactory, IID_IEnumValFactory)

    virtual Value getValue(int value) = 0; // undefined when no row has this integer
    virtual Value getDefaultValue() = 0;   // the one of 0, else the first
    // All, in the order of the rows, instead of what the vector held.
    virtual void getValues(std::vector<Value>& values) = 0;
};

// Of the type of a value.
class IEnumValType : public IUnknown {
public:
    ORB_INTERFACE(IEnumValType, IID_IEnumValType)

    virtual InterfacePtr<IEnumValFactory> enumValFactory() = 0;
};

// ---- For code that knows the enumeration

// The shared value; undefined where the current process does not know the enumeration or it has no
// such value.
ORBCORE_API Value enum_value(const _GUID& factory, int value);
template <ScriptEnum Native> Value enum_value(Native value) {
    return enum_value(EnumClasses<Native>::factory, static_cast<int>(value));
}

// Throws `property_type_mismatch` for a value of any other type.
template <ScriptEnum Native> Native to_enum(const GenericValue& value) {
    return static_cast<Native>(get_enum(value, EnumClasses<Native>::type));
}
// The same of an argument: `parameter_type_mismatch`.
template <ScriptEnum Native> Native to_enum(const Arguments& arguments, unsigned position) {
    return static_cast<Native>(get_enum(arguments, position, EnumClasses<Native>::type));
}

// By the name of the enumeration in either language, in any case of letters; null when the current
// process knows none such.
ORBCORE_API InterfacePtr<IEnumValFactory> enumeration(const stdx::ustring& name);

} // namespace core

// Ties a native enumeration to its classes; outside any namespace, in a header. `stem` is what their
// names begin with, `term` the name of the enumeration.
#define ORBCORE_ENUMERATION(Native, stem, term)                                                    \
    namespace core {                                                                               \
    template <> struct EnumClasses<Native> {                                                       \
        static constexpr const Term& names = term;                                                 \
        static constexpr const _GUID& factory = CLSID_##stem##_Factory;                            \
        static constexpr const _GUID& factoryType = CLSID_##stem##_FactoryType;                    \
        static constexpr const _GUID& type = CLSID_##stem##_Type;                                  \
    };                                                                                             \
    }                                                                                              \
    static_assert(true)
