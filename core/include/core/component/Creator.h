// Creators: the functions behind class factories. Every registered class has one, chosen by its
// registration template:
//
// | class                           | without outer object     | with outer object         |
// |---------------------------------|--------------------------|---------------------------|
// | SCOM_Class                      | SCOM_Object              | CLASS_E_NOAGGREGATION     |
// | SCOM_Class with kAggregatable   | SCOM_Object              | CComAggObject             |
// | SCOM_Singleton                  | SingletonObject          | CLASS_E_NOAGGREGATION     |
// | SCOM_Service                    | E_FAIL                   | CComAggObject             |
//
// An exception out of an allocation or a constructor becomes `E_OUTOFMEMORY`; none leaves a
// creator.
#pragma once

#include <core/component/Object.h>
#include <core/component/Registration.h>

namespace core {

using Creator = HRESULT (*)(IUnknown* outer, const _GUID& iid, void** out) noexcept;

namespace detail {

template <class X> constexpr bool is_aggregatable() {
    if constexpr (requires { X::kAggregatable; }) return X::kAggregatable;
    return X::kRegisterType == RegisterService;
}

template <class X> constexpr bool is_uncounted() {
    if constexpr (requires { X::kUncounted; }) return X::kUncounted;
    return false;
}

// Makes the wrapper, asks it for the interface and ends it again when it has none. The new object
// has no reference of its own: the interface that is given out holds the only one.
template <class Wrapper, class... Outer>
HRESULT create(const _GUID& iid, void** out, Outer... outer) noexcept {
    try {
        auto* const object = new Wrapper(outer...);
        const HRESULT result = object->QueryInterface(iid, out);
        if (failed(result)) delete object;
        return result;
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

template <class X> HRESULT creator(IUnknown* outer, const _GUID& iid, void** out) noexcept {
    if (!outer) {
        if constexpr (X::kRegisterType == RegisterService)
            return E_FAIL;
        else if constexpr (is_uncounted<X>())
            return create<SingletonObject<X>>(iid, out);
        else
            return create<SCOM_Object<X>>(iid, out);
    }
    if constexpr (is_aggregatable<X>())
        return create<ATL::CComAggObject<X>>(iid, out, outer);
    else
        return CLASS_E_NOAGGREGATION;
}

} // namespace detail

template <class X> constexpr Creator creator_of() noexcept {
    return &detail::creator<X>;
}

} // namespace core
