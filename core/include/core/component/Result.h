// The result codes of calls inside the component model. Negative is failure.
#pragma once

#include <cstdint>

using HRESULT = std::int32_t;

inline constexpr HRESULT S_OK = 0;
// An allocation or a constructor failed in a creator; the registry throws `std::bad_alloc` for it.
inline constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x80000002u);
// The object has no such interface.
inline constexpr HRESULT E_NOINTERFACE = static_cast<HRESULT>(0x80000004u);
// The out-parameter is null.
inline constexpr HRESULT E_POINTER = static_cast<HRESULT>(0x80000005u);
// Unspecified failure; also: a service class was created without an outer object.
inline constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80000008u);
// A class that cannot be aggregated was given an outer object.
inline constexpr HRESULT CLASS_E_NOAGGREGATION = static_cast<HRESULT>(0x80040110u);

namespace core {

using ::CLASS_E_NOAGGREGATION;
using ::E_FAIL;
using ::E_NOINTERFACE;
using ::E_OUTOFMEMORY;
using ::E_POINTER;
using ::HRESULT;
using ::S_OK;

constexpr bool succeeded(HRESULT result) noexcept {
    return result >= 0;
}
constexpr bool failed(HRESULT result) noexcept {
    return result < 0;
}

} // namespace core
