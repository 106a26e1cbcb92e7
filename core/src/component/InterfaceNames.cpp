#include <core/component/InterfaceNames.h>

#include <core/component/SCOM_Process.h>

#include <algorithm>
#include <cstring>
#include <mutex>

namespace core {
namespace {

struct Names {
    std::mutex mutex;
    std::vector<NamedInterface> all; // in the order of their names
};

// Libraries may take their names back after the statics of this one have ended.
Names& names() {
    static auto& table = *new Names;
    return table;
}

bool by_name(const NamedInterface& a, const NamedInterface& b) noexcept {
    return std::strcmp(a.name, b.name) < 0;
}

} // namespace

InterfaceName::InterfaceName(const _GUID& iid, const char* name) : named_{&iid, name} {
    const std::lock_guard guard(names().mutex);
    std::vector<NamedInterface>& all = names().all;
    all.insert(std::upper_bound(all.begin(), all.end(), named_, by_name), named_);
}

InterfaceName::~InterfaceName() {
    const std::lock_guard guard(names().mutex);
    std::erase_if(names().all, [&](const NamedInterface& named) {
        return named.name == named_.name && named.iid == named_.iid;
    });
}

std::vector<NamedInterface> interfaces_of(IUnknown* object) {
    std::vector<NamedInterface> candidates;
    {
        const std::lock_guard guard(names().mutex);
        candidates = names().all;
    }
    std::erase_if(candidates, [&](const NamedInterface& named) {
        void* found = nullptr;
        if (object->QueryInterface(*named.iid, &found) != S_OK) return true;
        static_cast<IUnknown*>(found)->Release();
        return false;
    });
    return candidates;
}

} // namespace core

ORBCORE_NAME_INTERFACE(IUnknown);
ORBCORE_NAME_INTERFACE(IClassFactory);
ORBCORE_NAME_INTERFACE(core::ISCOMSingleton);
ORBCORE_NAME_INTERFACE(core::SCOM_ClassBundle);
ORBCORE_NAME_INTERFACE(core::SCOM_ClassBundleHierarchy);
ORBCORE_NAME_INTERFACE(core::SCOM_ClassRegistrar);
ORBCORE_NAME_INTERFACE(core::SCOM_Process);
