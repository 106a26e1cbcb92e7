#include <core/component/ClassFactory.h>

#include <new>

namespace ATL {

HRESULT CComClassFactory::CreateInstance(IUnknown* outer, const _GUID& iid, void** out) noexcept {
    if (!out) return E_POINTER;
    *out = nullptr;
    if (outer && iid != core::IID_IUnknown) return CLASS_E_NOAGGREGATION;
    return creator_(outer, iid, out);
}

HRESULT CComClassFactory::LockServer(bool lock) noexcept {
    if (lock)
        core::this_module().lock();
    else
        core::this_module().unlock();
    return S_OK;
}

CComObject<CComClassFactory>::CComObject(core::Creator wrapped) noexcept
    : CComClassFactory(wrapped) {
    core::this_module().lock();
}

CComObject<CComClassFactory>::~CComObject() {
    core::this_module().unlock();
    set_references(0);
}

HRESULT CComObject<CComClassFactory>::QueryInterface(const _GUID& iid, void** out) noexcept {
    return core::InternalQueryInterface(static_cast<CComClassFactory*>(this),
                                        core::interface_map<CComClassFactory, IClassFactory>(), iid,
                                        out);
}

std::uint32_t CComObject<CComClassFactory>::AddRef() noexcept {
    return increment_references();
}

std::uint32_t CComObject<CComClassFactory>::Release() noexcept {
    const std::uint32_t left = decrement_references();
    if (left != 0) return left;
    set_references(1);
    delete this;
    return 0;
}

} // namespace ATL

namespace core {

HRESULT create_class_factory(Creator creator, const _GUID& iid, void** out) noexcept {
    return detail::create<ATL::CComObject<ATL::CComClassFactory>>(iid, out, creator);
}

InterfacePtr<IClassFactory> make_class_factory(Creator creator) {
    void* factory = nullptr;
    if (create_class_factory(creator, IID_IClassFactory, &factory) != S_OK) throw std::bad_alloc();
    return {static_cast<IClassFactory*>(factory), false};
}

} // namespace core
