#include <core/values/EnumValueClasses.h>

#include "TypeLookup.h"

#include <core/component/IllegalArgumentException.h>
#include <core/component/Messages.h>
#include <core/component/Module.h>
#include <core/streams/PersistenceStorage.h>

namespace core {
namespace {

class EnumValEnumerator
    : public ObjectRoot
    , public SCOM_InternalClass<EnumValEnumerator>
    , public IEnumValue {
public:
    explicit EnumValEnumerator(EnumValFactoryBase* factory) : factory_(factory, true) {}
    static const InterfaceEntry* _GetEntries() {
        return interface_map<EnumValEnumerator, IEnumValue>();
    }

    bool next(GenericValue& out) override {
        if (!factory_->getPropVal(position_, out)) return false;
        ++position_;
        return true;
    }

private:
    const InterfacePtr<IContext_> factory_;
    int position_ = 0;
};

} // namespace

// ---- Values

// The text of the presentation is that of messages; a name goes by the language of the process.
bool EnumValValueBase::getString(stdx::ustring& out) {
    if (resource_.key) {
        out = load_wstring(resource_.module->resourceBundle(), resource_.key, resource_.expand);
        if (!out.empty()) return true;
    }
    const char16_t* const name = term_string(names_, term_language());
    if (!name)
        out.clear();
    else
        out = *name ? name : names_.first;
    return true;
}

// A type that is not known here has no equal values: whatever it is, the integers may be of two.
bool EnumValValueBase::isEqual(IValue* other) {
    if (other == this) return true;
    IType* const type = getIType();
    return type && other && other->getIType() == type &&
           *static_cast<const std::int32_t*>(other->getDataPtr()) == value_;
}

void EnumValValueBase::serialize(IOutPersistenceStorage* storage) {
    (*storage->listStream())->putInt32(value_);
}

InterfacePtr<IUnknown> EnumValValueBase::clone() {
    return {static_cast<IValue*>(this), true};
}

// ---- Factories

EnumValFactoryBase::EnumValFactoryBase(const _GUID& type, std::vector<EnumValItem> items,
                                       MakeValue makeValue, const EnumValResource* presents,
                                       const SCOM_Module* module)
    : type_(type), items_(std::move(items)) {
    const auto key_of = [&](int value) {
        const EnumValResource* row = presents;
        while (row->key && row->value != value) ++row;
        return row->key;
    };
    for (const EnumValItem& item : items_) {
        values_.push_back(makeValue(item, {module, key_of(item.value())}));
        valuesByInteger_.emplace_back(item.value(), values_.back().get());
    }
    std::ranges::stable_sort(valuesByInteger_, {}, &std::pair<int, IValue*>::first);
    fillCaches();
}

const char16_t* EnumValFactoryBase::getPropName(int property, int language) {
    return is_property(property) ? items_[static_cast<unsigned>(property)].termString(language)
                                 : nullptr;
}

bool EnumValFactoryBase::getPropVal(int property, GenericValue& out) {
    if (!is_property(property)) return false;
    out.setIValue(values_[static_cast<unsigned>(property)].get());
    return true;
}

bool EnumValFactoryBase::getPropInfo(int property, ContextValueInfo& info) {
    if (!is_property(property)) return false;
    info = {getPropName(property, 0), getPropName(property, 1), TypeDomainPattern(type_), false};
    return true;
}

Value EnumValFactoryBase::getValue(int value) {
    const auto found =
        std::ranges::lower_bound(valuesByInteger_, value, {}, &std::pair<int, IValue*>::first);
    return found != valuesByInteger_.end() && found->first == value ? Value(found->second)
                                                                    : Value();
}

Value EnumValFactoryBase::getDefaultValue() {
    const Value zero = getValue(0);
    return !is_undefined_value(zero) || values_.empty() ? zero : Value(values_.front().get());
}

void EnumValFactoryBase::getValues(std::vector<Value>& values) {
    values.assign(values_.begin(), values_.end());
}

InterfacePtr<IEnumValue> EnumValFactoryBase::getEnumValue() {
    return make_object<EnumValEnumerator>(this);
}

InterfacePtr<IUnknown> EnumValFactoryBase::clone() {
    return {static_cast<IContext_*>(this), true};
}

// ---- The types of factories

EnumValFactoryTypeBase::EnumValFactoryTypeBase(const _GUID& factory)
    : factory_(create_object<IContext_>(factory).get()) {
    ORB_ASSERT(factory_);
}

InterfacePtr<IValue> EnumValFactoryTypeBase::createIValue() {
    return InterfacePtr<IValue>(static_cast<IUnknown*>(factory_));
}

// ---- The types of values

InterfacePtr<IEnumValFactory> EnumValTypeBase::enumValFactory() {
    return create_object<IEnumValFactory>(factory_);
}

InterfacePtr<IValue> EnumValTypeBase::createIValue() {
    return enum_value(factory_, defaultValue_).detachIValue();
}

InterfacePtr<IValue> EnumValTypeBase::deserialize(IInPersistenceStorage* storage) {
    std::int32_t value = 0;
    (*storage->listStream())->getInt32(value);
    return enum_value(factory_, value).detachIValue();
}

// ---- For code that knows the enumeration

Value enum_value(const _GUID& factory, int value) {
    const auto known = create_object<IEnumValFactory>(factory);
    return known ? known->getValue(value) : Value();
}

InterfacePtr<IEnumValFactory> enumeration(const stdx::ustring& name) {
    SCOM_Process* const process = current_process();
    if (!process) return nullptr;
    for (const _GUID& type : process->getClassesOfCategory(CATID_EnumValType))
        for (const stdx::ustring& alias : process->getClassAliases(type))
            if (compare_nocase(alias, name) == 0) {
                const auto known = create_object<IEnumValType>(type);
                return known ? known->enumValFactory() : nullptr;
            }
    return nullptr;
}

} // namespace core
