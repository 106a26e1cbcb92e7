// The objects of the base types: static, all of one class and told apart by the rows of a table.
#include <core/values/BaseTypes.h>

#include "BaseTypeTable.h"

#include <core/component/ClassDescriptor.h>
#include <core/component/Messages.h>
#include <core/streams/ListRecord.h>
#include <core/streams/PersistenceStorage.h>
#include <core/values/CreateValue.h>
#include <core/values/Type.h>

#include <algorithm>
#include <utility>

namespace core {
namespace {

template <class T> T next_item(ListInStream& list) {
    T item{};
    get_item(list, item);
    return item;
}

IValue* read_undefined(ListInStream&) {
    return create_undefined_value();
}
IValue* read_null(ListInStream&) {
    return create_null_value();
}
IValue* read_boolean(ListInStream& list) {
    return create_boolean_value(next_item<bool>(list));
}
IValue* read_numeric(ListInStream& list) {
    return create_numeric_value(next_item<Numeric>(list));
}
IValue* read_string(ListInStream& list) {
    return create_string_value(next_item<stdx::ustring>(list));
}
IValue* read_date(ListInStream& list) {
    return create_date_value(next_item<Date>(list));
}
// A value of its own: those of the service live as long as the process, and here the GUIDs come
// from outside.
IValue* read_type(ListInStream& list) {
    return create_type_value(next_item<_GUID>(list));
}

IValue* default_boolean() {
    return create_boolean_value(false);
}
IValue* default_numeric() {
    return create_numeric_value(0);
}
IValue* default_string() {
    return create_string_value(u"");
}
IValue* default_date() {
    return create_date_value(Date());
}
IValue* default_type() {
    return create_type_value(CLSID_UndefinedType);
}

IValue* default_undefined() {
    return create_undefined_value();
}
IValue* default_null() {
    return create_null_value();
}

} // namespace

constexpr std::array<BaseTypeRow, 7> base_type_rows = {{
    {TypeCode::Undefined,
     &CLSID_UndefinedType,
     {u"Undefined", u"Неопределено"},
     u'U',
     "IDS_TYPE_PRESENTATION_UNDEFINED",
     default_undefined,
     read_undefined},
    {TypeCode::Null,
     &CLSID_NullType,
     {u"Null", nullptr},
     u'L',
     "IDS_TYPE_PRESENTATION_NULL",
     default_null,
     read_null},
    {TypeCode::Boolean,
     &CLSID_BooleanType,
     {u"Boolean", u"Булево"},
     u'B',
     "IDS_TYPE_PRESENTATION_BOOLEAN",
     default_boolean,
     read_boolean},
    {TypeCode::Numeric,
     &CLSID_NumericType,
     {u"Number", u"Число"},
     u'N',
     "IDS_TYPE_PRESENTATION_NUMERIC",
     default_numeric,
     read_numeric},
    {TypeCode::String,
     &CLSID_StringType,
     {u"String", u"Строка"},
     u'S',
     "IDS_TYPE_PRESENTATION_STRING",
     default_string,
     read_string},
    {TypeCode::Date,
     &CLSID_DateType,
     {u"Date", u"Дата"},
     u'D',
     "IDS_TYPE_PRESENTATION_DATE",
     default_date,
     read_date},
    {TypeCode::Type,
     &CLSID_TypeType,
     {u"Type", u"Тип"},
     u'T',
     "IDS_TYPE_PRESENT_TYPE",
     default_type,
     read_type},
}};

namespace {

class BaseType final
    : public IType
    , public IPersistableType {
public:
    constexpr explicit BaseType(const BaseTypeRow& row) noexcept : row_(row) {}

    HRESULT QueryInterface(const _GUID& iid, void** out) noexcept override {
        return InternalQueryInterface(this, interface_map<BaseType, IType, IPersistableType>(), iid,
                                      out);
    }
    std::uint32_t AddRef() noexcept override { return 1; }
    std::uint32_t Release() noexcept override { return 1; }

    TypeCode getTypeCode() override { return row_.code; }
    const _GUID* getTypeClsid() override { return row_.clsid; }
    const char16_t* getTypeString(int language) override {
        return term_string(row_.name, language);
    }
    void getString(stdx::ustring& out) override { out = load_core_wstring(row_.presentation); }
    bool isCOMType() override { return false; }
    bool isValueMutable() override { return false; }
    InterfacePtr<IValue> createIValue() override { return {row_.defaultValue(), true}; }
    bool hasCtor(unsigned) override { return false; }
    InterfacePtr<IValue> ctor(const std::vector<GenericValue*>&) override { return {}; }

    InterfacePtr<IValue> deserialize(IInPersistenceStorage* storage) override {
        return {row_.read(*storage->listStream()), true};
    }

private:
    const BaseTypeRow& row_;
};

using BaseTypeIndexes = std::make_index_sequence<base_type_rows.size()>;

template <std::size_t... i>
constexpr std::array<BaseType, sizeof...(i)> make_base_types(std::index_sequence<i...>) noexcept {
    return {BaseType(base_type_rows[i])...};
}

// Ready before any code runs, and without a destructor.
constinit std::array base_types = make_base_types(BaseTypeIndexes());

// The order that `detail::base_type_objects` is in.
static_assert([] {
    for (std::size_t i = 0; i + 1 != base_type_rows.size(); ++i)
        if (base_type_rows[i].code != static_cast<TypeCode>(i)) return false;
    return base_type_rows.back().code == TypeCode::Type;
}());

} // namespace

const BaseTypeRow* find_base_type_row(const _GUID& type) noexcept {
    for (const BaseTypeRow& row : base_type_rows)
        if (*row.clsid == type) return &row;
    return nullptr;
}

const BaseTypeRow* find_base_type_row(char16_t letter) noexcept {
    for (const BaseTypeRow& row : base_type_rows)
        if (row.letter == letter) return &row;
    return nullptr;
}

namespace detail {
constinit IType* const base_type_objects[7] = {&base_types[0], &base_types[1], &base_types[2],
                                               &base_types[3], &base_types[4], &base_types[5],
                                               &base_types[6]};
} // namespace detail

// ---- Registration

namespace {

constexpr auto type_categories = categories(&CATID_Type);

const CategoryEntry* categories_of_type() noexcept {
    return type_categories.data();
}

template <std::size_t i>
HRESULT give_base_type(IUnknown* outer, const _GUID& iid, void** out) noexcept {
    return outer ? CLASS_E_NOAGGREGATION : base_types[i].QueryInterface(iid, out);
}

// Types of other components, known by name. Whoever brings their objects gives them a factory, by
// `rewrite_SCOM_class_factory`; until then nothing is created.
struct ForeignType {
    const _GUID* clsid;
    Term name;
};
constexpr ForeignType foreign_types[] = {
    {&CLSID_COMObjectType, {u"COMObject", u"COMОбъект"}},
    {&CLSID_COMSafeArrayType, {u"COMSafeArray", nullptr}},
};

HRESULT give_nothing(IUnknown*, const _GUID&, void**) noexcept {
    return E_FAIL;
}

// A term without a Russian name ends after the English one.
template <const auto& table, std::size_t i> const char16_t* const* names_of_type() noexcept {
    static constexpr const char16_t* kNames[] = {table[i].name.first, table[i].name.second,
                                                 nullptr};
    return kNames;
}

template <const auto& table, std::size_t i>
constexpr ClassDescriptor describe_type(Creator creator) noexcept {
    return {table[i].clsid,
            &create_class_factory,
            creator,
            &categories_of_type,
            &detail::class_main<BaseType>,
            RegisterSingleton,
            &names_of_type<table, i>,
            nullptr,
            this_module_name,
            nullptr};
}

template <std::size_t... i> constexpr auto describe_types(std::index_sequence<i...>) noexcept {
    return std::array{describe_type<base_type_rows, i>(&give_base_type<i>)...,
                      describe_type<foreign_types, 0>(&give_nothing),
                      describe_type<foreign_types, 1>(&give_nothing)};
}
static_assert(std::size(foreign_types) == 2);

constinit auto descriptors = describe_types(BaseTypeIndexes());

[[maybe_unused]] const bool linked = [] {
    for (ClassDescriptor& descriptor : descriptors) this_module().link(descriptor);
    return true;
}();

} // namespace
} // namespace core
