// The class factory of all classes: a counted object around a creator.
#pragma once

#include <core/component/Creator.h>

namespace ATL {

class CComClassFactory
    : public IClassFactory
    , public CComObjectRootEx<CComMultiThreadModel> {
public:
    explicit CComClassFactory(core::Creator wrapped) noexcept : creator_(wrapped) {}

    core::Creator creator() const noexcept { return creator_; }

    // A null `out` gives `E_POINTER`; an outer object with another `iid` than that of `IUnknown`
    // gives `CLASS_E_NOAGGREGATION`.
    ORBCORE_API HRESULT CreateInstance(IUnknown* outer, const _GUID& iid,
                                       void** out) noexcept override;
    // Raises or lowers the lock count of the library's module.
    ORBCORE_API HRESULT LockServer(bool lock) noexcept override;

private:
    core::Creator creator_;
};

template <class X> class CComObject;

template <>
class ORBCORE_API CComObject<CComClassFactory> final
    : public CComClassFactory
    , public core::ObjectMemory {
public:
    explicit CComObject(core::Creator wrapped) noexcept;
    ~CComObject();

    HRESULT QueryInterface(const _GUID& iid, void** out) noexcept override;
    std::uint32_t AddRef() noexcept override;
    std::uint32_t Release() noexcept override;
};

} // namespace ATL

namespace core {

// Makes the factory around `creator` and gives its interface `iid`; `E_OUTOFMEMORY` without memory.
ORBCORE_API HRESULT create_class_factory(Creator creator, const _GUID& iid, void** out) noexcept;

// The same for callers: throws `std::bad_alloc` without memory.
ORBCORE_API InterfacePtr<IClassFactory> make_class_factory(Creator creator);

} // namespace core
