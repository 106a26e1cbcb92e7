#include "SampleTypes.h"

#include <core/component/ClassDescriptor.h>
#include <core/component/Exception.h>

namespace test {

class WidgetValue
    : public core::ObjectRoot
    , public core::SCOM_InternalClass<WidgetValue>
    , public core::IValueImpl<&CLSID_WidgetType> {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<WidgetValue, core::IValue>();
    }
};

class WidgetType
    : public core::ObjectRoot
    , public core::SCOM_Singleton<WidgetType, &CLSID_WidgetType>
    , public core::ITypeImpl<&CLSID_WidgetType, WidgetValue> {
public:
    static constexpr auto aliases = core::aliases(u"Widget", u"Штуковина");
    static constexpr auto categories = core::categories(&core::CATID_Type);
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<WidgetType, core::IType>();
    }
};

// It has an interface of types but is not registered as one.
class Trap
    : public core::ObjectRoot
    , public core::SCOM_Class<Trap, &CLSID_Trap>
    , public core::ITypeImpl<&CLSID_Trap, WidgetValue> {
public:
    static constexpr auto aliases = core::aliases(u"Trap");
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<Trap, core::IType>();
    }
    Trap() { ++traps; }
};

class Provider
    : public core::ObjectRoot
    , public core::SCOM_Class<Provider, &CLSID_Provider>
    , public core::ITypeDomainPatternProvider {
public:
    static constexpr auto categories = core::categories(&core::CATID_TypeDomainPatternProvider);
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<Provider, core::ITypeDomainPatternProvider>();
    }
    core::TypeDomainPattern getTypeDomainPattern() override {
        if (whileProviding) whileProviding();
        if (providerFails) throw core::Exception(u"no data");
        return provided;
    }
};

// Names another provider.
class OuterProvider
    : public core::ObjectRoot
    , public core::SCOM_Class<OuterProvider, &CLSID_OuterProvider>
    , public core::ITypeDomainPatternProvider {
public:
    static constexpr auto categories = core::categories(&core::CATID_TypeDomainPatternProvider);
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<OuterProvider, core::ITypeDomainPatternProvider>();
    }
    core::TypeDomainPattern getTypeDomainPattern() override {
        return core::TypeDomainPattern({CLSID_Provider, core::CLSID_BooleanType});
    }
};

// Of the category but without the interface.
class EmptyProvider
    : public core::ObjectRoot
    , public core::SCOM_Class<EmptyProvider, &CLSID_EmptyProvider>
    , public IUnknown {
public:
    static constexpr auto categories = core::categories(&core::CATID_TypeDomainPatternProvider);
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<EmptyProvider, IUnknown>();
    }
};

} // namespace test

ORBCORE_REGISTER(test::WidgetType);
ORBCORE_REGISTER(test::Trap);
ORBCORE_REGISTER(test::Provider);
ORBCORE_REGISTER(test::OuterProvider);
ORBCORE_REGISTER(test::EmptyProvider);
