// Classes of the test program that patterns name: a type of objects, a class that is no type, and
// providers.
#pragma once

#include <core/component/Registration.h>
#include <core/values/IValue.h>
#include <core/values/TypeDomain.h>

#include <functional>

namespace test {

using namespace core::literals;

inline constexpr _GUID CLSID_WidgetType = "6f0b7c52-0f5e-4a55-9a5d-b46cd2d5f0b1"_guid;
inline constexpr _GUID CLSID_Trap = "0d8f3b4a-5c9e-4ab0-8f6e-0f6f7a6f3f55"_guid;
inline constexpr _GUID CLSID_Provider = "3b0a8b6e-98bb-4c21-9d6f-5a2c1f5f9f10"_guid;
inline constexpr _GUID CLSID_OuterProvider = "a7a3a1de-3f0b-45a0-a1a5-7f6c0a5c1c11"_guid;
inline constexpr _GUID CLSID_EmptyProvider = "c2c7d9f4-64b3-4d49-9a09-40c5a8f5d812"_guid;
inline constexpr _GUID kUnknownType = "e1e1e1e1-0000-4000-8000-000000000001"_guid;

// An object of no class that anybody asks for by right: it counts how often it was created.
inline int traps = 0;

// What the provider gives, or it throws when `providerFails`; and what it does before.
inline core::TypeDomainPattern provided;
inline bool providerFails = false;
inline std::function<void()> whileProviding;

} // namespace test
