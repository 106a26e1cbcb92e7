#include <core/values/UnknownValue.h>

#include <core/component/ClassDescriptor.h>
#include <core/component/Object.h>
#include <core/values/IValue.h>

namespace core {
namespace {

class UnknownValue
    : public ObjectRoot
    , public SCOM_InternalClass<UnknownValue>
    , public IValueImpl<&CLSID_UnknownValue>
    , public IUnknownValue {
public:
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<UnknownValue, IValue, IUnknownValue>();
    }

    void setObject(IUnknown* object) override { object_ = {object, true}; }
    IUnknown* getObject() override { return object_.get(); }

private:
    InterfacePtr<IUnknown> object_;
};

class UnknownType
    : public ObjectRoot
    , public SCOM_Singleton<UnknownType, &CLSID_UnknownValue>
    , public ITypeImpl<&CLSID_UnknownValue, UnknownValue> {
public:
    static constexpr auto categories = core::categories(&CATID_Type);
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<UnknownType, IType>();
    }
};

} // namespace

InterfacePtr<IValue> create_unknown_value(IUnknown* object) {
    auto value = make_object<UnknownValue>();
    value->setObject(object);
    return value;
}

} // namespace core

ORBCORE_REGISTER(core::UnknownType);
