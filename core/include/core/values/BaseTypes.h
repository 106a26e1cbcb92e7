// The types of the values that have no class of their own, by GUID.
//
// | type      | names                      | letter in lists |
// |-----------|----------------------------|-----------------|
// | Undefined | Undefined / Неопределено   | U               |
// | Null      | Null                       | L               |
// | Boolean   | Boolean / Булево           | B               |
// | Numeric   | Number / Число             | N               |
// | String    | String / Строка            | S               |
// | Date      | Date / Дата                | D               |
// | Type      | Type / Тип                 | T               |
//
// Their objects are `base_type(code)` of core/values/Type.h.
#pragma once

#include <core/component/Guid.h>

namespace core {

inline constexpr _GUID CLSID_UndefinedType = "ee8d3e7c-f930-4a76-8aad-4ff9083a6ea6"_guid;
inline constexpr _GUID CLSID_NullType = "af40a278-63bc-478e-91a8-19e0d16b10b5"_guid;
inline constexpr _GUID CLSID_BooleanType = "5d4125ad-f6e7-4313-be32-f71d0ab60915"_guid;
inline constexpr _GUID CLSID_NumericType = "b0be78f2-0ee6-4d31-a3bb-77dd32ba5bec"_guid;
inline constexpr _GUID CLSID_StringType = "9b6abf8b-0173-48e5-b0a0-83b21fcf63c5"_guid;
inline constexpr _GUID CLSID_DateType = "aae38c48-a877-411c-a6d3-fbaa1f83c4bd"_guid;
inline constexpr _GUID CLSID_TypeType = "d47d59f8-73f0-481c-8b5e-f6384c0a4804"_guid;

// Types of the library that domains know by name as well.
inline constexpr _GUID CLSID_BinaryDataType = "87126200-3e98-44e0-b931-ccb1d7edc497"_guid;

// Types of other components, whose names this library registers.
inline constexpr _GUID CLSID_COMObjectType = "2319dcf1-f4ee-438d-b16f-6a145d6b9422"_guid;
inline constexpr _GUID CLSID_COMSafeArrayType = "44a60d92-2624-46bf-ae82-c9ab6abc07df"_guid;

} // namespace core
