// The classes behind an enumeration, made of one table:
//
//   // A script sees the values in this order.
//   constexpr core::EnumRow<Shade> kShade[] = {
//       {Shade::Light, {u"Light", u"Светлый"}, "SHADE_LIGHT"},
//       {Shade::Dark, {u"Dark", u"Тёмный"}, "SHADE_DARK"},
//   };
//   ORBCORE_REGISTER_ENUMERATION(Shade, Shade, kShade);
//
// | class              | name        | is                                                          |
// |--------------------|-------------|-------------------------------------------------------------|
// | Shade_Factory      |             | the object that scripts see                                 |
// | Shade_Value        |             | a value: the factory has one object for each row            |
// | Shade_Type         | "Shade"     | the type of the values                                      |
// | Shade_FactoryType  | "EnumShade" | the type of the factory, which tells design tools the names |
//
// The factory, made at its first use, makes the value objects and fills the cache of names; nothing
// changes afterwards.
#pragma once

#include <core/component/ClassDescriptor.h>
#include <core/values/ContextDef.h>
#include <core/values/ContextDefExt.h>
#include <core/values/EnumValue.h>
#include <core/values/IValueCollection.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace core {

// ---- What an enumeration is declared with

// A value of the native enumeration, its names, of which the Russian one may be null, and the key of
// the text that presents it, or null.
template <class Native> struct EnumRow {
    Native value;
    Term names;
    const char* key = nullptr;
};

// A row as the factory holds it. The names are constants.
class EnumValItem {
public:
    constexpr EnumValItem(int value, const Term& terms, bool deprecated) noexcept
        : EnumValItem(value, terms, {nullptr, nullptr}, deprecated) {}
    constexpr EnumValItem(int value, const Term& terms, const Term& terms2,
                          bool deprecated) noexcept
        : value_(value), terms_(terms), terms2_(terms2), deprecated_(deprecated) {}

    constexpr int value() const noexcept { return value_; }
    constexpr const Term& terms() const noexcept { return terms_; }
    // A second pair of names, for whoever declares one; nothing finds the value by them.
    constexpr const Term& terms2() const noexcept { return terms2_; }
    constexpr bool deprecated() const noexcept { return deprecated_; }
    // See `term_string`.
    constexpr const char16_t* termString(int language) const noexcept {
        return term_string(terms_, language);
    }

private:
    int value_;
    Term terms_;
    Term terms2_;
    bool deprecated_;
};

// A row of the table of presentations, which ends with a null key.
struct EnumValResource {
    int value;
    const char* key;
};
// The table of an enumeration whose values are shown by their names.
inline constexpr std::array<EnumValResource, 1> kEmtyEnumValResource = {{{0, nullptr}}};

// What the name of the type of a factory begins with.
inline constexpr Term kEnumFactoryTypeTerm = {u"Enum", u"Перечисление"};

// ---- The bases of the four classes

// A value: the integer, its names, where its presentation comes from. It never counts as empty, and
// as a string it is its presentation in the language of messages, else its name.
class ORBCORE_API EnumValValueBase
    : public ValueImplBase
    , public IPersistableValue
    , public ICheckDefaultValue
    , public ICloneableObject {
public:
    // The text of `key` in the bundle of `module`; null: there is none.
    struct Resource {
        const SCOM_Module* module;
        const char* key;
        bool expand = false; // see `load_wstring`
    };

    EnumValValueBase(const EnumValItem& item, const Resource& resource) noexcept
        : value_(item.value()), names_(item.terms()), resource_(resource) {}

    const void* getDataPtr() override { return &value_; }
    bool getString(stdx::ustring& out) override;
    bool isEqual(IValue* other) override;
    std::uint32_t hashCode() override { return static_cast<std::uint32_t>(value_); }
    void serialize(IOutPersistenceStorage* storage) override;
    bool isDefaultValue() override { return false; }
    InterfacePtr<IUnknown> clone() override;

private:
    std::int32_t value_;
    Term names_;
    Resource resource_;
};

template <class Derived, const _GUID* clsid>
class EnumValValue
    : public ObjectRoot
    , public SCOM_InternalClass<Derived>
    , public EnumValValueBase {
public:
    using EnumValValueBase::EnumValValueBase;
    static const InterfaceEntry* _GetEntries() {
        return interface_map<Derived, IValue, IPersistableValue, ICheckDefaultValue,
                             ICloneableObject>();
    }
    const _GUID& getTypeClsid() override { return *clsid; }
};

// The context, the list and the enumerator of a factory.
class ORBCORE_API EnumValFactoryBase
    : public IContextImpl<ContextDefIntern<
          EnumValFactoryBase, ContextDefCached<EnumValFactoryBase, ContextDefCachedRules::Eager>,
          ContextStability::Stable>>
    , public ContextDefExtImpl<EnumValFactoryBase, false, false>
    , public IEnumValFactory
    , public IProvideEnumValue
    , public ICloneableObject {
public:
    int getNProps() override { return static_cast<int>(items_.size()); }
    const char16_t* getPropName(int property, int language) override;
    bool isPropWritable(int) override { return false; }
    bool getPropVal(int property, GenericValue& out) override;
    bool getPropInfo(int property, ContextValueInfo& info) override;

    Value getValue(int value) override;
    Value getDefaultValue() override;
    void getValues(std::vector<Value>& values) override;
    InterfacePtr<IEnumValue> getEnumValue() override;
    InterfacePtr<IUnknown> clone() override;

protected:
    using MakeValue = InterfacePtr<IValue> (*)(const EnumValItem& item,
                                               const EnumValValueBase::Resource& resource);

    // `presents` is a table that ends with a null key, for `module`.
    EnumValFactoryBase(const _GUID& type, std::vector<EnumValItem> items, MakeValue makeValue,
                       const EnumValResource* presents, const SCOM_Module* module);

private:
    bool is_property(int property) const noexcept {
        return property >= 0 && static_cast<unsigned>(property) < items_.size();
    }

    const _GUID& type_; // of the values
    const std::vector<EnumValItem> items_;
    std::vector<InterfacePtr<IValue>> values_; // of the items
    // Ascending; of equal integers that of the first item stands first.
    std::vector<std::pair<int, IValue*>> valuesByInteger_;
};

// `Derived` has a static `init(std::vector<EnumValItem>&)`, which appends the rows.
template <class Derived, class Object, const _GUID* factoryType, const _GUID* type,
          const auto* presents>
class EnumValFactory
    : public ObjectRoot
    , public IValueImpl<factoryType>
    , public EnumValFactoryBase {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<Derived, IValue, IContext_, Via<IContextDefBase, IContext_>,
                             IContextDefExt, IEnumValFactory, IProvideEnumValue,
                             ICloneableObject>();
    }

protected:
    EnumValFactory()
        : EnumValFactoryBase(*type, items(), &make, presents->data(), &this_module()) {}

private:
    static std::vector<EnumValItem> items() {
        std::vector<EnumValItem> items;
        Derived::init(items);
        return items;
    }
    static InterfacePtr<IValue> make(const EnumValItem& item,
                                     const EnumValValueBase::Resource& resource) {
        return make_object<Object>(item, resource);
    }
};

namespace detail {

// "Enum" and the name of an enumeration.
template <const auto& names, int language>
inline constexpr auto factory_type_name = [] {
    constexpr std::u16string_view prefix = term_string(kEnumFactoryTypeTerm, language);
    constexpr std::u16string_view name = term_string(names, language);
    std::array<char16_t, prefix.size() + name.size() + 1> joined = {};
    std::ranges::copy(name, std::ranges::copy(prefix, joined.begin()).out);
    return joined;
}();

} // namespace detail

// The type of a factory. Its members are those of the factory, which is made with it.
class ORBCORE_API EnumValFactoryTypeBase
    : public ObjectTypeCore
    , public ContextDefCore
    , public ContextDefExtForwarder {
public:
    bool isValueMutable() override { return false; }
    bool hasCtor(unsigned) override { return false; }
    InterfacePtr<IValue> ctor(const std::vector<GenericValue*>&) override { return nullptr; }
    InterfacePtr<IValue> createIValue() override;

    int getNProps() override { return factory_->getNProps(); }
    const char16_t* getPropName(int property, int language) override {
        return factory_->getPropName(property, language);
    }
    bool isPropReadable(int property) override { return factory_->isPropReadable(property); }
    bool isPropWritable(int property) override { return factory_->isPropWritable(property); }
    int findProp(const stdx::ustring& name) override { return factory_->findProp(name); }

protected:
    explicit EnumValFactoryTypeBase(const _GUID& factory);

private:
    IContextDefBase* describing() override { return factory_; }

    IContext_* const factory_; // lives as long as the process
};

template <const _GUID* clsid, const _GUID* factory, const Term& names>
class EnumValFactoryType
    : public ObjectRoot
    , public SCOM_Singleton<EnumValFactoryType<clsid, factory, names>, clsid>
    , public EnumValFactoryTypeBase {
public:
    static constexpr auto aliases = core::aliases(detail::factory_type_name<names, 0>.data(),
                                                  detail::factory_type_name<names, 1>.data());
    static constexpr auto categories = core::categories(&CATID_Type);
    static const InterfaceEntry* _GetEntries() {
        return interface_map<EnumValFactoryType, IType, IContextDef,
                             Via<IContextDefBase, IContextDef>, IContextDefExt>();
    }

    EnumValFactoryType() : EnumValFactoryTypeBase(*factory) {}
    const _GUID* getTypeClsid() override { return clsid; }
    const char16_t* getTypeString(int language) override {
        return term_string({aliases[0], aliases[1]}, language);
    }
};

// The type of a value. A stored integer that no row has reads as undefined.
class ORBCORE_API EnumValTypeBase
    : public ObjectTypeCore
    , public IPersistableType
    , public IEnumValType {
public:
    bool isValueMutable() override { return false; }
    bool hasCtor(unsigned) override { return false; }
    InterfacePtr<IValue> ctor(const std::vector<GenericValue*>&) override { return nullptr; }
    InterfacePtr<IValue> createIValue() override;
    InterfacePtr<IValue> deserialize(IInPersistenceStorage* storage) override;
    InterfacePtr<IEnumValFactory> enumValFactory() override;

protected:
    EnumValTypeBase(const _GUID& factory, int defaultValue) noexcept
        : factory_(factory), defaultValue_(defaultValue) {}

private:
    const _GUID& factory_;
    int defaultValue_;
};

template <class Native, const _GUID* clsid, const _GUID* factory, int defaultValue>
class EnumValType
    : public ObjectRoot
    , public SCOM_Singleton<EnumValType<Native, clsid, factory, defaultValue>, clsid>
    , public EnumValTypeBase {
    static_assert(sizeof(Native) == sizeof(std::int32_t), "a value is stored in 32 bits");
    static constexpr const Term& kNames = EnumClasses<Native>::names;

public:
    static constexpr auto aliases = core::aliases(kNames.first, kNames.second);
    static constexpr auto categories = core::categories(&CATID_Type, &CATID_EnumValType);
    static const InterfaceEntry* _GetEntries() {
        return interface_map<EnumValType, IType, IPersistableType, IEnumValType>();
    }

    EnumValType() noexcept : EnumValTypeBase(*factory, defaultValue) {}
    const _GUID* getTypeClsid() override { return clsid; }
    const char16_t* getTypeString(int language) override { return term_string(kNames, language); }
};

// ---- inline: from rows to tables, by the compiler

// Of a table that the compiler made of another one.
template <class Row, std::size_t count>
constexpr bool names_are_distinct(const std::array<Row, count>& rows) {
    Row plain[count] = {};
    std::ranges::copy(rows, plain);
    return names_are_distinct(plain);
}

// The table of presentations of an enumeration.
template <const auto& rows>
inline constexpr auto enum_resources = [] {
    constexpr auto count =
        std::ranges::count_if(rows, [](const auto& row) { return row.key != nullptr; });
    if constexpr (count == 0) {
        return kEmtyEnumValResource;
    } else {
        std::array<EnumValResource, count + 1> table = {};
        auto place = table.begin();
        for (const auto& row : rows)
            if (row.key) *place++ = {static_cast<int>(row.value), row.key};
        return table;
    }
}();

template <class Rows> void append_enum_items(std::vector<EnumValItem>& items, const Rows& rows) {
    items.reserve(items.size() + std::size(rows));
    for (const auto& row : rows) items.emplace_back(static_cast<int>(row.value), row.names, false);
}

} // namespace core

// The classes and their registration, in the source that has the table.
#define ORBCORE_REGISTER_ENUMERATION(Native, stem, rows)                                           \
    static_assert(core::names_are_distinct(rows), "two values of " #stem " have one name");        \
    class stem##_Value : public core::EnumValValue<stem##_Value, &CLSID_##stem##_Type> {           \
    public:                                                                                        \
        using EnumValValue::EnumValValue;                                                          \
    };                                                                                             \
    class stem##_Factory                                                                           \
        : public core::EnumValFactory<stem##_Factory, stem##_Value, &CLSID_##stem##_FactoryType,   \
                                      &CLSID_##stem##_Type, &core::enum_resources<rows>>           \
        , public core::SCOM_Singleton<stem##_Factory, &CLSID_##stem##_Factory> {                   \
    public:                                                                                        \
        static void init(std::vector<core::EnumValItem>& items) {                                  \
            core::append_enum_items(items, rows);                                                  \
        }                                                                                          \
    };                                                                                             \
    using stem##_FactoryType =                                                                     \
        core::EnumValFactoryType<&CLSID_##stem##_FactoryType, &CLSID_##stem##_Factory,             \
                                 core::EnumClasses<Native>::names>;                                \
    using stem##_Type =                                                                            \
        core::EnumValType<Native, &CLSID_##stem##_Type, &CLSID_##stem##_Factory, 0>;               \
    static constinit core::ClassDescriptor stem##_classes[] = {                                    \
        core::describe_class<stem##_FactoryType>(), core::describe_class<stem##_Type>(),           \
        core::describe_class<stem##_Factory>()};                                                   \
    static const core::ClassLink stem##_links[] = {core::ClassLink(stem##_classes[0]),             \
                                                   core::ClassLink(stem##_classes[1]),             \
                                                   core::ClassLink(stem##_classes[2])}
