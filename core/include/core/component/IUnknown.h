// The root interfaces. Every interface derives from `IUnknown` singly, is named by a GUID, and says
// so in its first line:
//
//   inline constexpr _GUID IID_ICounter = "0f2a…"_guid;
//
//   class ICounter : public IUnknown {
//   public:
//       ORB_INTERFACE(ICounter, IID_ICounter)
//       virtual int increment() = 0;
//   };
//
// Interfaces have no virtual destructor: an object ends by `Release`, never by `delete`.
#pragma once

#include <core/component/Guid.h>
#include <core/component/Result.h>

#include <type_traits>

// Ties an interface to its GUID. The name makes sure that a derived interface does not go by the
// GUID of its base (see `core::interface_id_of`).
#define ORB_INTERFACE(Interface, iid)                                                              \
    using interface_type = Interface;                                                              \
    static constexpr const _GUID& interface_id() noexcept {                                        \
        return iid;                                                                                \
    }

namespace core {
inline constexpr _GUID IID_IUnknown = "00000000-0000-0000-c000-000000000046"_guid;
inline constexpr _GUID IID_IClassFactory = "00000001-0000-0000-c000-000000000046"_guid;
inline constexpr _GUID IID_ISCOMSingleton = "3a5946e9-c7dc-46dc-9838-6394f419644b"_guid;
} // namespace core

class IUnknown {
public:
    ORB_INTERFACE(IUnknown, core::IID_IUnknown)

    // Gives the interface `iid` of the same object with a reference added, or writes null and
    // returns `E_NOINTERFACE`; a null `out` gives `E_POINTER`.
    virtual HRESULT QueryInterface(const _GUID& iid, void** out) noexcept = 0;
    // Both return the count after the call.
    virtual std::uint32_t AddRef() noexcept = 0;
    virtual std::uint32_t Release() noexcept = 0;

protected:
    IUnknown() = default;
    IUnknown(const IUnknown&) = default;
    IUnknown& operator=(const IUnknown&) = default;
    ~IUnknown() = default;
};

class IClassFactory : public IUnknown {
public:
    ORB_INTERFACE(IClassFactory, core::IID_IClassFactory)

    virtual HRESULT CreateInstance(IUnknown* outer, const _GUID& iid, void** out) noexcept = 0;
    virtual HRESULT LockServer(bool lock) noexcept = 0;
};

namespace core {

using ::IClassFactory;
using ::IUnknown;

// What a singleton has beside its own interfaces: since its references are not counted, somebody
// must be able to end it.
class ISCOMSingleton : public IUnknown {
public:
    ORB_INTERFACE(ISCOMSingleton, IID_ISCOMSingleton)

    virtual void destroySingleton() noexcept = 0;
};

template <class Interface> constexpr const _GUID& interface_id_of() noexcept {
    static_assert(std::is_same_v<typename Interface::interface_type, Interface>,
                  "an interface names its own GUID with ORB_INTERFACE");
    return Interface::interface_id();
}

} // namespace core
