#include <core/values/TypesInfo.h>

#include "TypeLookup.h"

#include <core/component/ClassDescriptor.h>
#include <core/values/EnumPresentation.h>

#include <algorithm>

namespace core {
namespace {

constexpr unsigned kMostDisplayed = 50;

} // namespace

// ---- The aggregator

void TypesInfoProvidersAgregatorImpl::addProvider(ITypesInfoProvider* provider) {
    if (provider) providers_.emplace_back(provider, true);
}

template <class Answer, class... Parameters, class... Arguments>
Answer
TypesInfoProvidersAgregatorImpl::first_answer(Answer (ITypesInfoProvider::*ask)(Parameters...),
                                              Arguments&&... arguments) {
    for (const InterfacePtr<ITypesInfoProvider>& provider : providers_)
        if (Answer answer = (provider.get()->*ask)(arguments...)) return answer;
    return Answer();
}

void TypesInfoProvidersAgregatorImpl::collectTypesInfo(const _GUID& category, int language,
                                                       std::vector<TypeInfo>& types) {
    for (const InterfacePtr<ITypesInfoProvider>& provider : providers_)
        provider->collectTypesInfo(category, language, types);
}
bool TypesInfoProvidersAgregatorImpl::getTypeInfo(const _GUID& type, int language, TypeInfo& info) {
    return first_answer(&ITypesInfoProvider::getTypeInfo, type, language, info);
}
bool TypesInfoProvidersAgregatorImpl::isTypeCollectable(const _GUID& type, bool flag) {
    return first_answer(&ITypesInfoProvider::isTypeCollectable, type, flag);
}
unsigned TypesInfoProvidersAgregatorImpl::getDisplayLength(const TypeDomainPattern& pattern) {
    unsigned length = 0;
    for (const InterfacePtr<ITypesInfoProvider>& provider : providers_)
        length = std::max(length, provider->getDisplayLength(pattern));
    return std::min(length, kMostDisplayed);
}
InterfacePtr<IUnknown> TypesInfoProvidersAgregatorImpl::createTypeObject(const _GUID& type) {
    return first_answer(&ITypesInfoProvider::createTypeObject, type);
}
InterfacePtr<IUnknown> TypesInfoProvidersAgregatorImpl::createTypeObjectEx(const _GUID& type) {
    return first_answer(&ITypesInfoProvider::createTypeObjectEx, type);
}
unsigned TypesInfoProvidersAgregatorImpl::getTypeExtra(const _GUID& type) {
    return first_answer(&ITypesInfoProvider::getTypeExtra, type);
}
bool TypesInfoProvidersAgregatorImpl::getTypeKind(const _GUID& type, unsigned& kind) {
    return first_answer(&ITypesInfoProvider::getTypeKind, type, kind);
}
bool TypesInfoProvidersAgregatorImpl::isSimpleType(const _GUID& type, bool& isSimple) {
    return first_answer(&ITypesInfoProvider::isSimpleType, type, isSimple);
}

class TypesInfoProvidersAgregator
    : public ObjectRoot
    , public SCOM_Class<TypesInfoProvidersAgregator, &CLSID_TypesInfoProvidersAgregator>
    , public TypesInfoProvidersAgregatorImpl {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<TypesInfoProvidersAgregator, ITypesInfoProvider,
                             ITypesInfoProvidersAgregator>();
    }
};

// ---- The types of this library

namespace {

constexpr unsigned kKindOfCoreType = 3;

// What a type is listed for.
enum class Use { Data, Form };

struct CatalogueRow {
    const _GUID* type;
    Use use;
    int group;
    int order;
    bool isSimple;
};
constexpr int kDataGroup = 2;
constexpr int kFormGroup = 3;
constexpr CatalogueRow kCatalogue[] = {
    {&CLSID_NumericType, Use::Data, kDataGroup, 10, true},
    {&CLSID_StringType, Use::Data, kDataGroup, 20, true},
    {&CLSID_BooleanType, Use::Data, kDataGroup, 30, true},
    {&CLSID_DateType, Use::Data, kDataGroup, 40, true},
    {&CLSID_EnumValuesHAlign_Type, Use::Form, kFormGroup, 10, false},
    {&CLSID_EnumValuesVAlign_Type, Use::Form, kFormGroup, 20, false},
};

struct CategoryRow {
    const _GUID* category;
    bool hasFormTypes;
};
constexpr CategoryRow kCategories[] = {
    {&kUserDefinedTypeInfoCategory, false}, {&kMobileAppTypeInfoCategory, false},
    {&kEDBPropertyTypeInfoCategory, false}, {&kEDBDimensionTableTypeInfoCategory, false},
    {&kLogFormTypeInfoCategory, true},
};

const CatalogueRow* find_row(const _GUID& type) noexcept {
    for (const CatalogueRow& row : kCatalogue)
        if (*row.type == type) return &row;
    return nullptr;
}

unsigned length_of(const DateQualifiers& qualifiers) noexcept {
    const bool date = (qualifiers.parts & DateQualifiers::kDate) != 0;
    const bool time = (qualifiers.parts & DateQualifiers::kTime) != 0;
    return (date ? 10u : 0u) + (time ? 8u : 0u) + (date && time ? 2u : 0u);
}

unsigned length_of(const TypeDomainPattern& pattern, const _GUID& type) {
    const NumericQualifiers& number = pattern.getNumericQualifiers();
    if (type == CLSID_NumericType)
        return number.digits + number.fraction + (number.nonNegative ? 0 : 1);
    if (type == CLSID_StringType) return pattern.getStringQualifiers().length;
    if (type == CLSID_BinaryDataType) return pattern.getBinaryQualifiers().length;
    if (type == CLSID_DateType) return length_of(pattern.getDateQualifiers());
    return type == CLSID_BooleanType ? 10 : 0;
}

} // namespace

class CoreTypesInfoProvider
    : public ObjectRoot
    , public SCOM_Class<CoreTypesInfoProvider, &CLSID_CoreTypesInfoProvider>
    , public ITypesInfoProvider
    , public ITypesInfoSettings {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<CoreTypesInfoProvider, ITypesInfoProvider, ITypesInfoSettings>();
    }

    void setSetting(const _GUID& key, IUnknown* value) override {
        if (key == kTypePictureServiceSetting) pictures_ = InterfacePtr<ITypePictureService>(value);
    }

    void collectTypesInfo(const _GUID& category, int language,
                          std::vector<TypeInfo>& types) override {
        for (const auto& [listed, hasFormTypes] : kCategories) {
            if (*listed != category) continue;
            for (const CatalogueRow& row : kCatalogue)
                if (row.use == Use::Data || hasFormTypes) types.push_back(info_of(row, language));
        }
    }
    bool getTypeInfo(const _GUID& type, int language, TypeInfo& info) override {
        const CatalogueRow* const row = find_row(type);
        if (row) info = info_of(*row, language);
        return row != nullptr;
    }
    bool isTypeCollectable(const _GUID&, bool) override { return false; }
    unsigned getDisplayLength(const TypeDomainPattern& pattern) override {
        unsigned length = 0;
        pattern.forEach(
            [&](const _GUID& type) { length = std::max(length, length_of(pattern, type)); });
        return std::min(length, kMostDisplayed);
    }
    InterfacePtr<IUnknown> createTypeObject(const _GUID& type) override {
        if (!find_row(type)) return nullptr;
        return find_type(type);
    }
    InterfacePtr<IUnknown> createTypeObjectEx(const _GUID&) override { return nullptr; }
    unsigned getTypeExtra(const _GUID&) override { return 0; }
    bool getTypeKind(const _GUID& type, unsigned& kind) override {
        const CatalogueRow* const row = find_row(type);
        if (row) kind = kKindOfCoreType;
        return row != nullptr;
    }
    bool isSimpleType(const _GUID& type, bool& isSimple) override {
        const CatalogueRow* const row = find_row(type);
        if (row) isSimple = row->isSimple;
        return row != nullptr;
    }

private:
    TypeInfo info_of(const CatalogueRow& row, int language) const {
        TypeInfo info;
        info.type = *row.type;
        info.name = type_name(find_type(*row.type).get(), language);
        info.group = row.group;
        info.order = row.order;
        if (pictures_) info.picture = pictures_->getTypePicture(*row.type);
        return info;
    }

    InterfacePtr<ITypePictureService> pictures_; // may be null
};

} // namespace core

ORBCORE_REGISTER(core::TypesInfoProvidersAgregator);
ORBCORE_REGISTER(core::CoreTypesInfoProvider);
