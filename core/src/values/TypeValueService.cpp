#include <core/values/TypeValueService.h>

#include "BaseTypeTable.h"

#include <core/component/ClassDescriptor.h>
#include <core/concurrency/LockGuards.h>
#include <core/concurrency/RWMutex.h>
#include <core/values/CreateValue.h>

#include <boost/unordered/unordered_flat_map.hpp>

namespace core {

class TypeValueService
    : public ObjectRoot
    , public SCOM_Service<TypeValueService, &CLSID_TypeValueService, &IID_ITypeValueService>
    , public ITypeValueService {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<TypeValueService, ITypeValueService>();
    }

    TypeValueService();

    ITypeValue* getTypeValue(const _GUID& type) override;

private:
    // Values stay where they are when a map grows.
    using Values = boost::unordered_flat_map<_GUID, InterfacePtr<ITypeValue>, std::hash<_GUID>>;

    static InterfacePtr<ITypeValue> make(const _GUID& type) {
        return InterfacePtr<ITypeValue>(static_cast<IUnknown*>(create_type_value(type)));
    }
    static ITypeValue* find(const Values& values, const _GUID& type) {
        const auto found = values.find(type);
        return found == values.end() ? nullptr : found->second.get();
    }

    Values builtIn_; // not written after the constructor, and so read without a lock
    RWMutex mutex_;
    Values others_; // guarded by `mutex_`; nothing leaves it
};

TypeValueService::TypeValueService() {
    for (const BaseTypeRow& row : base_type_rows) builtIn_.emplace(*row.clsid, make(*row.clsid));
}

ITypeValue* TypeValueService::getTypeValue(const _GUID& type) {
    if (ITypeValue* const value = find(builtIn_, type)) return value;
    {
        const ReaderLock lock(mutex_);
        if (ITypeValue* const value = find(others_, type)) return value;
    }
    const WriterLock lock(mutex_);
    if (ITypeValue* const value = find(others_, type)) return value;
    return others_.emplace(type, make(type)).first->second.get();
}

} // namespace core

ORBCORE_REGISTER(core::TypeValueService);
