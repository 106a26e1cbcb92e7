// Enumerations of pages, printing and saved documents.
#pragma once

#include <core/values/EnumValue.h>

namespace core {

// ---- PageOrientation / ОриентацияСтраницы

// How a page lies.
enum class EnumValuesPageOrientation : std::int32_t { Portrait = 0, Landscape = 1 };

inline constexpr Term kPropEnumTermPageOrientation = {u"PageOrientation", u"ОриентацияСтраницы"};
inline constexpr _GUID CLSID_EnumValuesPageOrientation_Factory =
    "a35c8203-ceed-428b-b66b-cd7c9006c6ee"_guid;
inline constexpr _GUID CLSID_EnumValuesPageOrientation_FactoryType =
    "6e50e0e4-9178-475b-85d8-c7629c4ac4b2"_guid;
inline constexpr _GUID CLSID_EnumValuesPageOrientation_Type =
    "7b9b6fce-24fb-45c6-9909-a5791caa4223"_guid;

// ---- PagePlacementAlternation / ЧередованиеРасположенияСтраниц

// How the margins of odd and even pages differ.
enum class EnumValuesPageMarginType : std::int32_t {
    Auto = 0,
    DontUse = 1,
    MirrorOnLeft = 2,
    MirrorOnTop = 3
};

inline constexpr Term kPropEnumTermPageMarginType = {u"PagePlacementAlternation",
                                                     u"ЧередованиеРасположенияСтраниц"};
inline constexpr _GUID CLSID_EnumValuesPageMarginType_Factory =
    "c6308531-7548-4d36-8955-34232d56c73f"_guid;
inline constexpr _GUID CLSID_EnumValuesPageMarginType_FactoryType =
    "73f3fa2d-0df7-4b61-a86b-57561fee96cd"_guid;
inline constexpr _GUID CLSID_EnumValuesPageMarginType_Type =
    "665f76c4-6a6c-4d68-a1ff-98e6d587601a"_guid;

// ---- DuplexPrintingType / ТипДвустороннейПечати

// How both sides of a sheet are printed. There is no 0.
enum class EnumValuesDuplexType : std::int32_t {
    None = 1,
    FlipPagesLeft = 2,
    FlipPagesUp = 3,
    UsePrinterSettings = 4
};

inline constexpr Term kPropEnumTermDuplexType = {u"DuplexPrintingType", u"ТипДвустороннейПечати"};
inline constexpr _GUID CLSID_EnumValuesDuplexType_Factory =
    "2b6112af-d2be-440d-902a-1bca4df49652"_guid;
inline constexpr _GUID CLSID_EnumValuesDuplexType_FactoryType =
    "6e05f5ae-a893-4cf7-82af-a1c1a52ba689"_guid;
inline constexpr _GUID CLSID_EnumValuesDuplexType_Type =
    "204d30f2-3281-4a45-9d1f-a8c43ad409ee"_guid;

// ---- UseOutput / ИспользованиеВывода

// Whether a document may be printed and saved.
enum class EnumValuesUseOutput : std::int32_t { Auto = 0, Enable = 1, Disable = 2 };

inline constexpr Term kPropEnumTermUseOutput = {u"UseOutput", u"ИспользованиеВывода"};
inline constexpr _GUID CLSID_EnumValuesUseOutput_Factory =
    "eedaa1c6-fed9-41fd-a328-de985d59caca"_guid;
inline constexpr _GUID CLSID_EnumValuesUseOutput_FactoryType =
    "c25ee059-6741-4a76-87bb-72a90ef05429"_guid;
inline constexpr _GUID CLSID_EnumValuesUseOutput_Type = "d85c61d1-dc5e-49e0-9918-59d06f53440d"_guid;

// ---- PrintDialogUseMode / РежимИспользованияДиалогаПечати

// Whether printing asks first.
enum class EnumValuesUsePrintDlgMode : std::int32_t { Use = 0, DontUse = 1 };

inline constexpr Term kPropEnumTermUsePrintDlgMode = {u"PrintDialogUseMode",
                                                      u"РежимИспользованияДиалогаПечати"};
inline constexpr _GUID CLSID_EnumValuesUsePrintDlgMode_Factory =
    "4ac5a3ac-21ea-429e-b399-bc71c17e0f04"_guid;
inline constexpr _GUID CLSID_EnumValuesUsePrintDlgMode_FactoryType =
    "d5fe260e-1071-44ea-b9fa-75047bc63ef4"_guid;
inline constexpr _GUID CLSID_EnumValuesUsePrintDlgMode_Type =
    "0580a3d7-07a7-41b3-8bcc-3449a97d53a4"_guid;

// ---- RepresentableDocumentBatchFileType / ТипФайлаПакетаОтображаемыхДокументов

// Formats of the files that a batch of documents is saved to.
enum class EnumValuesRepresentableDocumentBatchFileType : std::int32_t {
    DOCX = 0,
    HTML4 = 1,
    HTML5 = 2,
    ODS = 3,
    PDF = 4,
    TXT = 5,
    XLS = 6,
    XLSX = 7
};

inline constexpr Term kPropEnumTermRepresentableDocumentBatchFileType = {
    u"RepresentableDocumentBatchFileType", u"ТипФайлаПакетаОтображаемыхДокументов"};
inline constexpr _GUID CLSID_EnumValuesRepresentableDocumentBatchFileType_Factory =
    "5f670b9a-0de0-44fc-a876-712bc27dd5bc"_guid;
inline constexpr _GUID CLSID_EnumValuesRepresentableDocumentBatchFileType_FactoryType =
    "1dc2317c-a74b-431b-bf2f-ba93310a3168"_guid;
inline constexpr _GUID CLSID_EnumValuesRepresentableDocumentBatchFileType_Type =
    "7e81b4e0-d062-4f46-add0-4308534d037e"_guid;

} // namespace core

ORBCORE_ENUMERATION(EnumValuesPageOrientation, EnumValuesPageOrientation,
                    kPropEnumTermPageOrientation);
ORBCORE_ENUMERATION(EnumValuesPageMarginType, EnumValuesPageMarginType,
                    kPropEnumTermPageMarginType);
ORBCORE_ENUMERATION(EnumValuesDuplexType, EnumValuesDuplexType, kPropEnumTermDuplexType);
ORBCORE_ENUMERATION(EnumValuesUseOutput, EnumValuesUseOutput, kPropEnumTermUseOutput);
ORBCORE_ENUMERATION(EnumValuesUsePrintDlgMode, EnumValuesUsePrintDlgMode,
                    kPropEnumTermUsePrintDlgMode);
ORBCORE_ENUMERATION(EnumValuesRepresentableDocumentBatchFileType,
                    EnumValuesRepresentableDocumentBatchFileType,
                    kPropEnumTermRepresentableDocumentBatchFileType);
