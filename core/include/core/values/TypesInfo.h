// What types there are, for design tools: providers tell of the types of their library, and an
// aggregator asks several of them as if they were one.
//
//   using Provider = core::ITypesInfoProvider;
//   auto provider = core::create_object<Provider>(core::CLSID_CoreTypesInfoProvider);
//   std::vector<core::TypeInfo> types;
//   provider->collectTypesInfo(core::kUserDefinedTypeInfoCategory, 0, types);
//
// Providers and aggregators are put together by one thread; then any thread may ask.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/platform/api.h>
#include <core/values/TypeDomain.h>

#include <vector>

namespace core {

inline constexpr _GUID CLSID_CoreTypesInfoProvider = "30c77786-5511-40be-aaf1-329ab28b95e3"_guid;
inline constexpr _GUID CLSID_TypesInfoProvidersAgregator =
    "8052e6a5-4201-47fe-b6ce-585b3046564d"_guid;
inline constexpr _GUID IID_ITypesInfoProvider = "c7e5557b-e54b-4fc9-9df1-192a476f5475"_guid;
inline constexpr _GUID IID_ITypesInfoProvidersAgregator =
    "2bb25fc1-7392-4791-8ee0-e48dadfa725f"_guid;
inline constexpr _GUID IID_ITypesInfoSettings = "63e816a5-7e56-4689-8957-0ad74e239fce"_guid;
inline constexpr _GUID IID_ITypePictureService = "72e1d765-6572-4b22-8372-a7d68f45be05"_guid;

// The setting of a provider that is its `ITypePictureService`.
inline constexpr _GUID kTypePictureServiceSetting = "476956f8-d461-4735-8b79-9c6385a13c19"_guid;

// What types are collected for.
inline constexpr _GUID kUserDefinedTypeInfoCategory = "5af2b155-aedf-444f-b2f5-b6d5bd43048a"_guid;
inline constexpr _GUID kLogFormTypeInfoCategory = "129c4226-919c-40b4-aa07-d67bd5ab5445"_guid;
inline constexpr _GUID kMobileAppTypeInfoCategory = "9f3d793b-f052-4144-9796-62bc6d553240"_guid;
inline constexpr _GUID kEDBPropertyTypeInfoCategory = "fd543de4-47c8-40c3-bdd6-b3dafc0bd862"_guid;
inline constexpr _GUID kEDBDimensionTableTypeInfoCategory =
    "55ee93d0-8f5b-42c7-9e34-0d903b7a17fb"_guid;

struct TypeInfo {
    _GUID type = {};
    stdx::ustring name;             // in the language that was asked for
    int group = 0;                  // tools show the types of one group together, by `order`
    InterfacePtr<IUnknown> picture; // null where no service gives one
    int order = 0;
    unsigned flags = 0;
    stdx::ustring note; // for the provider's own use
};

// Languages are 0 and 1, as those of names.
class ITypesInfoProvider : public IUnknown {
public:
    ORB_INTERFACE(ITypesInfoProvider, IID_ITypesInfoProvider)

    // Appends the types of a category.
    virtual void collectTypesInfo(const _GUID& category, int language,
                                  std::vector<TypeInfo>& types) = 0;
    // False, and the record as it was, for a type that is not the provider's.
    virtual bool getTypeInfo(const _GUID& type, int language, TypeInfo& info) = 0;
    virtual bool isTypeCollectable(const _GUID& type, bool flag) = 0;
    // How many characters a value may need, at most 50.
    virtual unsigned getDisplayLength(const TypeDomainPattern& pattern) = 0;
    // The object of a type; null for a type that is not the provider's.
    virtual InterfacePtr<IUnknown> createTypeObject(const _GUID& type) = 0;
    virtual InterfacePtr<IUnknown> createTypeObjectEx(const _GUID& type) = 0;
    virtual unsigned getTypeExtra(const _GUID& type) = 0;
    // Both false for a type that is not the provider's.
    virtual bool getTypeKind(const _GUID& type, unsigned& kind) = 0;
    virtual bool isSimpleType(const _GUID& type, bool& isSimple) = 0;
};

// A provider that is set up by its owner. Settings that it does not know it ignores; null takes one
// back.
class ITypesInfoSettings : public IUnknown {
public:
    ORB_INTERFACE(ITypesInfoSettings, IID_ITypesInfoSettings)

    virtual void setSetting(const _GUID& key, IUnknown* value) = 0;
};

class ITypePictureService : public IUnknown {
public:
    ORB_INTERFACE(ITypePictureService, IID_ITypePictureService)

    virtual InterfacePtr<IUnknown> getTypePicture(const _GUID& type) = 0; // null for none
};

class ITypesInfoProvidersAgregator : public IUnknown {
public:
    ORB_INTERFACE(ITypesInfoProvidersAgregator, IID_ITypesInfoProvidersAgregator)

    // Takes a reference. The providers are asked in this order; null is ignored.
    virtual void addProvider(ITypesInfoProvider* provider) = 0;
};

// A base of aggregators. What is collected is that of all, a display length the largest, anything
// else the first answer that says something.
class ORBCORE_API TypesInfoProvidersAgregatorImpl
    : public ITypesInfoProvider
    , public ITypesInfoProvidersAgregator {
public:
    void addProvider(ITypesInfoProvider* provider) override;

    void collectTypesInfo(const _GUID& category, int language,
                          std::vector<TypeInfo>& types) override;
    bool getTypeInfo(const _GUID& type, int language, TypeInfo& info) override;
    bool isTypeCollectable(const _GUID& type, bool flag) override;
    unsigned getDisplayLength(const TypeDomainPattern& pattern) override;
    InterfacePtr<IUnknown> createTypeObject(const _GUID& type) override;
    InterfacePtr<IUnknown> createTypeObjectEx(const _GUID& type) override;
    unsigned getTypeExtra(const _GUID& type) override;
    bool getTypeKind(const _GUID& type, unsigned& kind) override;
    bool isSimpleType(const _GUID& type, bool& isSimple) override;

private:
    // Of all providers the first answer that converts to true, else an empty one.
    template <class Answer, class... Parameters, class... Arguments>
    Answer first_answer(Answer (ITypesInfoProvider::*ask)(Parameters...), Arguments&&... arguments);

    std::vector<InterfacePtr<ITypesInfoProvider>> providers_;
};

} // namespace core
