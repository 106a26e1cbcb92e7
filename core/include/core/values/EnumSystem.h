// Enumerations of data and of the system: columns, sorting, encodings, identifiers, errors.
#pragma once

#include <core/component/ExceptionCategory.h>
#include <core/numbers/Numeric.h>
#include <core/values/EnumValue.h>

namespace core {

// ---- AllowedLength / ДопустимаяДлина

// Whether strings shorter than the length of their column are filled up.
enum class AllowedLength : std::int32_t { Fixed = 0, Variable = 1 };

inline constexpr Term kPropEnumTermAllowedLength = {u"AllowedLength", u"ДопустимаяДлина"};
inline constexpr _GUID CLSID_AllowedLength_Factory = "bfb4bea8-2308-42a6-ab53-c88318b6104a"_guid;
inline constexpr _GUID CLSID_AllowedLength_FactoryType =
    "2992a0b9-4758-446e-95e2-bdd52d5c8d5c"_guid;
inline constexpr _GUID CLSID_AllowedLength_Type = "c06dbb06-1d3a-4626-a7f9-bc54e32cfe91"_guid;

// ---- AllowedSign / ДопустимыйЗнак

// Which numbers a column takes.
enum class AllowedSign : std::int32_t { Any = 0, Nonnegative = 1 };

inline constexpr Term kPropEnumTermAllowedSign = {u"AllowedSign", u"ДопустимыйЗнак"};
inline constexpr _GUID CLSID_AllowedSign_Factory = "5fbed03a-9001-4afd-89d5-3e62d60dacf5"_guid;
inline constexpr _GUID CLSID_AllowedSign_FactoryType = "8e0da815-a41e-4ab9-b547-f015542976a9"_guid;
inline constexpr _GUID CLSID_AllowedSign_Type = "f3c852db-a82a-4a0a-b3f4-5439376c2af7"_guid;

// ---- RoundMode / РежимОкругления

// Where an exact half goes; core/numbers/Numeric.h has the values.
inline constexpr Term kPropEnumTermRoundMode = {u"RoundMode", u"РежимОкругления"};
inline constexpr _GUID CLSID_RoundMode_Factory = "15d0c4f7-8063-4224-8d78-6e7250cb9299"_guid;
inline constexpr _GUID CLSID_RoundMode_FactoryType = "5b252e32-a1dd-44eb-a65a-1873c53857f0"_guid;
inline constexpr _GUID CLSID_RoundMode_Type = "71a1a3d5-bf13-4511-9306-eb34f7d1833e"_guid;

// ---- FillChecking / ПроверкаЗаполнения

// Whether a column wants its cells filled in.
enum class FillCheckEnum : std::int32_t { DontCheck = 0, ShowError = 1 };

inline constexpr Term kPropEnumTermFillCheck = {u"FillChecking", u"ПроверкаЗаполнения"};
inline constexpr Term kFillCheckDoNotCkeckEnumValTerm = {u"DontCheck", u"НеПроверять"};
inline constexpr Term kFillCheckShowErrorEnumValTerm = {u"ShowError", u"ВыдаватьОшибку"};
inline constexpr _GUID CLSID_EnumValuesFillCheck_Factory =
    "6ba1ac50-4132-4cc0-be2c-91b127f74a92"_guid;
inline constexpr _GUID CLSID_EnumValuesFillCheck_FactoryType =
    "ba5c6fa5-db4a-4ecf-81ec-3e8b0ad48d98"_guid;
inline constexpr _GUID CLSID_EnumValuesFillCheck_Type = "3033161b-c8a4-44c9-bdf1-42cdd5ccb2df"_guid;

// ---- SortDirection / НаправлениеСортировки

// Where a sort goes.
enum class SortTypes : std::int32_t { Asc = 0, Desc = 1 };

inline constexpr Term kPropEnumTermSortTypes = {u"SortDirection", u"НаправлениеСортировки"};
inline constexpr _GUID CLSID_SortTypes_Factory = "30473050-468f-4177-b3fc-69f04955df61"_guid;
inline constexpr _GUID CLSID_SortTypes_FactoryType = "dc2f4c51-b2a9-40cb-b1c1-b893d1043594"_guid;
inline constexpr _GUID CLSID_SortTypes_Type = "9235b235-917e-486e-ada9-6d4f6c564eae"_guid;

// ---- SearchDirection / НаправлениеПоиска

// From which end a text is searched.
enum class SearchDirection : std::int32_t { FromBegin = 0, FromEnd = 1 };

inline constexpr Term kPropEnumTermSearchDirection = {u"SearchDirection", u"НаправлениеПоиска"};
inline constexpr _GUID CLSID_SearchDirection_Factory = "9bb2c9b1-17f4-4b60-a4c5-e2540ae5e9d8"_guid;
inline constexpr _GUID CLSID_SearchDirection_FactoryType =
    "bb672713-2acd-4471-bbac-03934983d494"_guid;
inline constexpr _GUID CLSID_SearchDirection_Type = "63f2a62f-5e4a-4021-93a0-acc66b0f1937"_guid;

// ---- UUIDVersion / ВерсияУникальногоИдентификатора

// How an identifier is drawn.
enum class UUIDVersion : std::int32_t { Version1 = 0, Version3 = 1, Version4 = 2, Version5 = 3 };

inline constexpr Term kPropEnumTermUUIDVersion = {u"UUIDVersion",
                                                  u"ВерсияУникальногоИдентификатора"};
inline constexpr Term kPropUUIDVersion1 = {u"Version1", u"Версия1"};
inline constexpr Term kPropUUIDVersion3 = {u"Version3", u"Версия3"};
inline constexpr Term kPropUUIDVersion4 = {u"Version4", u"Версия4"};
inline constexpr Term kPropUUIDVersion5 = {u"Version5", u"Версия5"};
inline constexpr _GUID CLSID_UUIDVersion_Factory = "d765a47e-8c19-4187-a456-3c75bc42dd09"_guid;
inline constexpr _GUID CLSID_UUIDVersion_FactoryType = "30db33f6-1662-4b1c-8e2b-32f93d9b5254"_guid;
inline constexpr _GUID CLSID_UUIDVersion_Type = "913cb257-36c8-4450-bd41-b72e820c581e"_guid;

// ---- TextEncoding / КодировкаТекста

// Encodings of text files; single bits.
enum class EnumValuesFileType : std::int32_t {
    UTF16 = 1,
    UTF8 = 2,
    ANSI = 4,
    OEM = 8,
    System = 16
};

inline constexpr Term kPropEnumTermFileType = {u"TextEncoding", u"КодировкаТекста"};
inline constexpr _GUID CLSID_EnumValuesFileType_Factory =
    "058517d8-e745-4b6d-93c4-59cf24a806ca"_guid;
inline constexpr _GUID CLSID_EnumValuesFileType_FactoryType =
    "c1f696c6-fe8b-4db4-b7c8-a9050c691774"_guid;
inline constexpr _GUID CLSID_EnumValuesFileType_Type = "746a0553-60a2-4ef8-a32d-08a9170dac26"_guid;

// ---- FileDragMode / СпособПеретаскиванияФайлов

// What is dragged when a file is.
enum class EnumFileDragModeType : std::int32_t { AsFile = 0, AsFileRef = 1 };

inline constexpr Term kPropEnumTermFileDragModeType = {u"FileDragMode",
                                                       u"СпособПеретаскиванияФайлов"};
inline constexpr _GUID CLSID_EnumFileDragModeType_Factory =
    "af0e1268-1ecf-49f1-a7af-cc9e234a54e2"_guid;
inline constexpr _GUID CLSID_EnumFileDragModeType_FactoryType =
    "86be3661-4e81-4ddd-b46a-54f6c9d1dcac"_guid;
inline constexpr _GUID CLSID_EnumFileDragModeType_Type =
    "b8b617b3-bfff-4d40-bf8a-4c131b00a7a0"_guid;

// ---- PlatformType / ТипПлатформы

// Where a program runs. There are no Russian names.
enum class OrbPlatformType : std::int32_t {
    Windows_x86 = 0,
    Windows_x86_64 = 1,
    Linux_x86 = 2,
    Linux_x86_64 = 3,
    Linux_ARM64 = 4,
    MacOS_x86 = 5,
    MacOS_x86_64 = 6,
    Android_ARM_64 = 7,
    Android_x86_64 = 8,
    Android_ARM = 9,
    Android_x86 = 10,
    iOS_ARM = 11,
    iOS_ARM_64 = 12,
    WinRT_ARM = 13,
    WinRT_x86_64 = 14,
    WinRT_x86 = 15,
    Linux_E2K = 16
};

inline constexpr Term kPropEnumTermOrbPlatformType = {u"PlatformType", u"ТипПлатформы"};
inline constexpr _GUID CLSID_OrbPlatformType_Factory = "35fd2037-9721-4b68-aaf6-ce89e3eeaef8"_guid;
inline constexpr _GUID CLSID_OrbPlatformType_FactoryType =
    "7e40a9b5-581e-4ae5-8e3b-69cbbeeff547"_guid;
inline constexpr _GUID CLSID_OrbPlatformType_Type = "e3b40c6c-7234-4d24-9d92-af977ef53f4a"_guid;

// ---- ErrorCategory / КатегорияОшибки

// What failed; core/component/ExceptionCategory.h has the values.
inline constexpr Term kPropEnumTermExceptionCategory = {u"ErrorCategory", u"КатегорияОшибки"};
inline constexpr _GUID CLSID_EnumValuesExceptionCategory_Factory =
    "b41e8991-541e-4572-b8b1-2fe959203771"_guid;
inline constexpr _GUID CLSID_EnumValuesExceptionCategory_FactoryType =
    "9bf2950b-773d-4fc8-b689-9cacf7c6d975"_guid;
inline constexpr _GUID CLSID_EnumValuesExceptionCategory_Type =
    "d1ffa211-68a9-4595-9a67-3efaaa75eaf3"_guid;

} // namespace core

ORBCORE_ENUMERATION(AllowedLength, AllowedLength, kPropEnumTermAllowedLength);
ORBCORE_ENUMERATION(AllowedSign, AllowedSign, kPropEnumTermAllowedSign);
ORBCORE_ENUMERATION(NumericRoundMode, RoundMode, kPropEnumTermRoundMode);
ORBCORE_ENUMERATION(FillCheckEnum, EnumValuesFillCheck, kPropEnumTermFillCheck);
ORBCORE_ENUMERATION(SortTypes, SortTypes, kPropEnumTermSortTypes);
ORBCORE_ENUMERATION(SearchDirection, SearchDirection, kPropEnumTermSearchDirection);
ORBCORE_ENUMERATION(UUIDVersion, UUIDVersion, kPropEnumTermUUIDVersion);
ORBCORE_ENUMERATION(EnumValuesFileType, EnumValuesFileType, kPropEnumTermFileType);
ORBCORE_ENUMERATION(EnumFileDragModeType, EnumFileDragModeType, kPropEnumTermFileDragModeType);
ORBCORE_ENUMERATION(OrbPlatformType, OrbPlatformType, kPropEnumTermOrbPlatformType);
ORBCORE_ENUMERATION(ValuesExceptionCategory, EnumValuesExceptionCategory,
                    kPropEnumTermExceptionCategory);
