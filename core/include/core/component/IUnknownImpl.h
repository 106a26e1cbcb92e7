// For things that live as members of their owner and only need to look like an `IUnknown` on one
// interface: nothing is counted, and the owner keeps the storage.
//
//   core::IUnknownImpl<core::IMutexImpl, core::IMutex> mutex_;
#pragma once

#include <core/component/IUnknown.h>

namespace core {

template <class Impl, class Interface> class IUnknownImpl final : public Impl {
public:
    using Impl::Impl;

    // Knows `IUnknown` and `Interface`; touches no count.
    HRESULT QueryInterface(const _GUID& iid, void** out) noexcept override {
        if (!out) return E_POINTER;
        *out = nullptr;
        if (iid != IID_IUnknown && iid != interface_id_of<Interface>()) return E_NOINTERFACE;
        *out = static_cast<Interface*>(this);
        return S_OK;
    }
    std::uint32_t AddRef() noexcept override { return 1; }
    std::uint32_t Release() noexcept override { return 1; }
};

} // namespace core
