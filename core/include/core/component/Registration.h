// The registration templates: exactly one of them is a base of each class of the component model
// and says how its objects come about. A complete class:
//
//   class Counter
//       : public core::ObjectRoot
//       , public core::SCOM_Class<Counter, &CLSID_Counter>
//       , public ICounter {
//   public:
//       static constexpr auto aliases = core::aliases(u"Counter", u"Счётчик");
//       static const core::InterfaceEntry* _GetEntries() {
//           return core::interface_map<Counter, ICounter>();
//       }
//       int increment() override { return ++value_; }
//   private:
//       int value_ = 0;
//   };
//
// and in its source `ORBCORE_REGISTER(Counter);` (see ClassDescriptor.h). A class may also say
//   static constexpr bool kAggregatable = true;           it can be part of an outer object
//   static constexpr auto categories = core::categories(&CATID_A, &CATID_B);
//   static void _ClassMain(bool start);                   called once by CoreInit
// It is not `final`: the object is made of it by a wrapper (see Object.h).
#pragma once

#include <core/component/IUnknown.h>

#include <cstdint>

namespace core {

enum SCOM_RegisterType : std::uint32_t {
    RegisterClass = 0,     // every creation yields a new object
    RegisterSingleton = 1, // one object a process
    RegisterService = 2,   // bound to the process, reached by the GUID of its interface
};

} // namespace core

namespace ATL {

// Ties a class to its GUID.
template <class X, const _GUID* clsid> class CComCoClass {
public:
    static constexpr const _GUID& class_id() noexcept { return *clsid; }
};

} // namespace ATL

namespace core {

class SCOM_EmptyObjectRoot {};

// Created only in code, by `make_object`; has no class GUID and is not registered.
template <class X, class Root = SCOM_EmptyObjectRoot> class SCOM_InternalClass : public Root {};

// Registered: a new object for every creation, or one shared, counted object.
template <class X, const _GUID* clsid, SCOM_RegisterType type = RegisterClass>
class SCOM_Class
    : public ATL::CComCoClass<X, clsid>
    , public SCOM_InternalClass<X, SCOM_EmptyObjectRoot> {
    static_assert(type != RegisterService, "a service derives from SCOM_Service");

public:
    static constexpr SCOM_RegisterType kRegisterType = type;
};

// Registered: one object a process that counts no references and lives until the process ends.
template <class X, const _GUID* clsid> class SCOM_Singleton : public ATL::CComCoClass<X, clsid> {
public:
    static constexpr SCOM_RegisterType kRegisterType = RegisterSingleton;
    static constexpr bool kUncounted = true;
};

// Registered: a service of the process, reached by the interface `iid`.
template <class X, const _GUID* clsid, const _GUID* iid>
class SCOM_Service : public ATL::CComCoClass<X, clsid> {
public:
    static constexpr SCOM_RegisterType kRegisterType = RegisterService;
    static constexpr const _GUID* kServiceInterface = iid;
};

} // namespace core
