// Enumerations of what people see: borders, colours, fonts, pictures, the place of text.
#pragma once

#include <core/values/EnumValue.h>

namespace core {

// ---- ControlBorderType / ТипРамкиЭлементаУправления

// What the border of a control looks like.
enum class EnumValuesBorderType : std::int32_t {
    WithoutBorder = 0,
    Double = 200,
    Single = 1,
    Embossed = 2,
    Indented = 3,
    Underline = 4,
    DoubleUnderline = 5,
    Rounded = 6,
    Overline = 7
};

inline constexpr Term kPropEnumTermBorderType = {u"ControlBorderType",
                                                 u"ТипРамкиЭлементаУправления"};
inline constexpr _GUID CLSID_EnumValuesBorderType_Factory =
    "c215762f-9152-4ea4-9cba-d1ef37c6fe6e"_guid;
inline constexpr _GUID CLSID_EnumValuesBorderType_FactoryType =
    "cdfbdcd1-99dc-494e-87ce-0159620d7305"_guid;
inline constexpr _GUID CLSID_EnumValuesBorderType_Type =
    "ef456915-a3eb-4c03-a080-0f5b84786cf4"_guid;

// ---- BorderType / ВидРамки

// Where a border comes from.
enum class EnumValuesBorderKind : std::int32_t { Absolute = 0, StyleItem = 1 };

inline constexpr Term kPropEnumTermBorderKind = {u"BorderType", u"ВидРамки"};
inline constexpr _GUID CLSID_EnumValuesBorderKind_Factory =
    "e12564c0-43f0-4fe5-8508-76299ad88478"_guid;
inline constexpr _GUID CLSID_EnumValuesBorderKind_FactoryType =
    "59cf35c0-30fc-4173-8b9b-4371afdd3c44"_guid;
inline constexpr _GUID CLSID_EnumValuesBorderKind_Type =
    "025feb4e-19a1-48e7-8033-553050ef7271"_guid;

// ---- ColorType / ВидЦвета

// Where a colour comes from.
enum class EnumValuesColorType : std::int32_t {
    Absolute = 0,
    StyleItem = 3,
    WebColor = 2,
    WindowsColor = 1,
    AutoColor = 4
};

inline constexpr Term kPropEnumTermColorType = {u"ColorType", u"ВидЦвета"};
inline constexpr _GUID CLSID_EnumValuesColorType_Factory =
    "9f3a368d-061d-462a-8544-499d1aaa55bb"_guid;
inline constexpr _GUID CLSID_EnumValuesColorType_FactoryType =
    "8f510475-dc0c-4d53-8e37-c58ea4d6e5cc"_guid;
inline constexpr _GUID CLSID_EnumValuesColorType_Type = "9d18050d-b999-4024-8dfb-2bafefb8d9d1"_guid;

// ---- ColorDepth / ГлубинаЦвета

// Colours of a picture, in bits.
enum class EnumValuesColorDepthType : std::int32_t {
    BitPerPixel1 = 1,
    BitPerPixel4 = 4,
    BitPerPixel8 = 8,
    BitPerPixel24 = 24,
    BitPerPixel32 = 32
};

inline constexpr Term kPropEnumTermColorDepthType = {u"ColorDepth", u"ГлубинаЦвета"};
inline constexpr _GUID CLSID_EnumValuesColorDepthType_Factory =
    "513a41f6-eb6d-43ea-999a-52880a549e38"_guid;
inline constexpr _GUID CLSID_EnumValuesColorDepthType_FactoryType =
    "91e0e8a2-d76f-4386-9f4c-cc357674df63"_guid;
inline constexpr _GUID CLSID_EnumValuesColorDepthType_Type =
    "867645b3-59b3-437b-bb6c-010f0f794287"_guid;

// ---- FontType / ВидШрифта

// Where a font comes from.
enum class EnumValuesFontType : std::int32_t {
    Absolute = 0,
    StyleItem = 2,
    WindowsFont = 1,
    AutoFont = 3
};

inline constexpr Term kPropEnumTermFontType = {u"FontType", u"ВидШрифта"};
inline constexpr _GUID CLSID_EnumValuesFontType_Factory =
    "7a50f0bd-ce9b-4d2b-adab-bd83c4bbca6c"_guid;
inline constexpr _GUID CLSID_EnumValuesFontType_FactoryType =
    "3dea8377-9d22-4093-9285-95b3bd4126b9"_guid;
inline constexpr _GUID CLSID_EnumValuesFontType_Type = "55839e64-99fe-4f05-99a2-83cd09c5bb9e"_guid;

// ---- PictureType / ВидКартинки

// Where a picture comes from.
enum class EnumValuesPictureType : std::int32_t { Empty = 0, FromLib = 1, Absolute = 3 };

inline constexpr Term kPropEnumTermPictureType = {u"PictureType", u"ВидКартинки"};
inline constexpr Term kPropEnumTermPictureTypeEmpty = {u"Empty", u"Пустая"};
inline constexpr Term kPropEnumTermPictureTypeFromLib = {u"FromLib", u"ИзБиблиотеки"};
inline constexpr Term kPropEnumTermPictureTypeAbsolute = {u"Absolute", u"Абсолютная"};
inline constexpr _GUID CLSID_EnumValuesPictureType_Factory =
    "5238c300-2604-47cd-9098-2e1bf83713ba"_guid;
inline constexpr _GUID CLSID_EnumValuesPictureType_FactoryType =
    "efa400fd-0502-4d21-a2ea-a80ac495bfed"_guid;
inline constexpr _GUID CLSID_EnumValuesPictureType_Type =
    "cee2cc97-7f09-4371-b1c3-3b5dad9c8c3b"_guid;

// ---- PictureSize / РазмерКартинки

// How a picture fills its place.
enum class EnumValuesPictureSize : std::int32_t {
    RealSize = 0,
    Stretch = 1,
    Proportionally = 2,
    Tile = 3,
    AutoSize = 4,
    RealSizeIgnoreScale = 5,
    AutoSizeIgnoreScale = 6,
    ByFontSize = 7
};

inline constexpr Term kPropEnumTermPictureSize = {u"PictureSize", u"РазмерКартинки"};
inline constexpr _GUID CLSID_EnumValuesPictureSize_Factory =
    "f5391937-98cf-48af-bd6a-ab9ce3391362"_guid;
inline constexpr _GUID CLSID_EnumValuesPictureSize_FactoryType =
    "bb247fd9-5c23-42b9-be90-4a8234097650"_guid;
inline constexpr _GUID CLSID_EnumValuesPictureSize_Type =
    "9354a4f5-cbd3-4144-adbc-015a9fc78814"_guid;

// ---- PictureFormat / ФорматКартинки

// Formats of pictures.
enum class EnumValuesPictureFormat : std::int32_t {
    UnknownFormat = 0,
    BMP = 1,
    GIF = 2,
    Icon = 3,
    JPEG = 4,
    PNG = 5,
    TIFF = 6,
    EMF = 7,
    WMF = 8,
    SVG = 9
};

inline constexpr Term kPropEnumTermPictureFormat = {u"PictureFormat", u"ФорматКартинки"};
inline constexpr _GUID CLSID_EnumValuesPictureFormat_Factory =
    "8b44e2e4-3ace-49a7-8c23-331f89ab11d6"_guid;
inline constexpr _GUID CLSID_EnumValuesPictureFormat_FactoryType =
    "a8837b86-c2d0-4835-ae8e-496c1203f7b4"_guid;
inline constexpr _GUID CLSID_EnumValuesPictureFormat_Type =
    "579151c1-b85a-4629-99c6-7962183fb679"_guid;

// ---- HorizontalAlign / ГоризонтальноеПоложение

// Where text stands in the width of its place.
enum class EnumValuesHAlign : std::int32_t {
    Left = 0,
    Center = 1,
    Right = 2,
    Justify = 3,
    Auto = 4
};

inline constexpr Term kPropEnumTermHAlign = {u"HorizontalAlign", u"ГоризонтальноеПоложение"};
inline constexpr _GUID CLSID_EnumValuesHAlign_Factory = "227b3170-e475-4687-b490-40b18f7e5b17"_guid;
inline constexpr _GUID CLSID_EnumValuesHAlign_FactoryType =
    "e0408d74-4bd6-4f63-9ada-a6a7d18cdb0d"_guid;
inline constexpr _GUID CLSID_EnumValuesHAlign_Type = "b0606ad0-88e4-4bf9-9a49-9e590ef7f298"_guid;

// ---- VerticalAlign / ВертикальноеПоложение

// Where text stands in the height of its place.
enum class EnumValuesVAlign : std::int32_t { Top = 0, Center = 1, Bottom = 2 };

inline constexpr Term kPropEnumTermVAlign = {u"VerticalAlign", u"ВертикальноеПоложение"};
inline constexpr _GUID CLSID_EnumValuesVAlign_Factory = "810e122a-f255-44aa-a4f1-dd8f4d67056c"_guid;
inline constexpr _GUID CLSID_EnumValuesVAlign_FactoryType =
    "7e787ed8-87cf-4a97-8f6d-ef9b58da2efb"_guid;
inline constexpr _GUID CLSID_EnumValuesVAlign_Type = "450cae90-bcff-4127-9b8a-f6ee5a550d12"_guid;

// ---- TextPositionRelativeToPicture / ПоложениеТекстаОтносительноКартинки

// Where the text of a cell or button stands beside its picture.
enum class EnumValuesCellTextPosition : std::int32_t {
    Left = 0,
    Right = 1,
    Top = 2,
    Bottom = 3,
    OnTop = 4,
    Auto = 5
};

inline constexpr Term kPropEnumTermCellTextPosition = {u"TextPositionRelativeToPicture",
                                                       u"ПоложениеТекстаОтносительноКартинки"};
inline constexpr _GUID CLSID_EnumValuesCellTextPosition_Factory =
    "2a2bfafb-3623-4982-84e1-2baf78b2f659"_guid;
inline constexpr _GUID CLSID_EnumValuesCellTextPosition_FactoryType =
    "3fc86ec1-33d9-4d1a-a5e5-f144a4694667"_guid;
inline constexpr _GUID CLSID_EnumValuesCellTextPosition_Type =
    "4c75bca7-f8dc-4260-8caf-add58eb14856"_guid;

// ---- TextDirection / НаправлениеТекста

// How a line of text runs.
enum class EnumValuesTextDirection : std::int32_t { LeftToRight = 0, RightToLeft = 1 };

inline constexpr Term kPropEnumTermTextDirection = {u"TextDirection", u"НаправлениеТекста"};
inline constexpr _GUID CLSID_EnumValuesTextDirection_Factory =
    "d235928d-e111-4644-b99b-86579c0f8b96"_guid;
inline constexpr _GUID CLSID_EnumValuesTextDirection_FactoryType =
    "7af07bf4-0048-4e7f-9a06-fa4e8dbe8be8"_guid;
inline constexpr _GUID CLSID_EnumValuesTextDirection_Type =
    "059a1d28-95a0-4f43-a06c-ba4eb7f7f773"_guid;

// ---- SizeChangeMode / РежимИзмененияРазмера

// How columns are resized.
enum class EnumValuesResizeType : std::int32_t { Normal = 0, QuickChange = 1 };

inline constexpr Term kPropEnumTermResizeType = {u"SizeChangeMode", u"РежимИзмененияРазмера"};
inline constexpr _GUID CLSID_EnumValuesResizeType_Factory =
    "2b26b48d-68bb-44e2-b566-7b0170fd389d"_guid;
inline constexpr _GUID CLSID_EnumValuesResizeType_FactoryType =
    "2e9cce2c-8a39-4d4f-9cf1-aed09355d50c"_guid;
inline constexpr _GUID CLSID_EnumValuesResizeType_Type =
    "736498fc-279b-4ec5-b85f-4d04f61384d5"_guid;

// ---- MainClientApplicationWindowMode / РежимОсновногоОкнаКлиентскогоПриложения

// What the main window of a client shows. A script sees 4 before 2.
enum class EnumMainWindowModeType : std::int32_t {
    Normal = 0,
    Workplace = 1,
    EmbeddedWorkplace = 4,
    FullscreenWorkplace = 2,
    Kiosk = 3
};

inline constexpr Term kPropEnumTermMainWindowModeType = {
    u"MainClientApplicationWindowMode", u"РежимОсновногоОкнаКлиентскогоПриложения"};
inline constexpr _GUID CLSID_EnumMainWindowModeType_Factory =
    "4910001c-537c-4576-bb19-f5d86dfa46e4"_guid;
inline constexpr _GUID CLSID_EnumMainWindowModeType_FactoryType =
    "c76881dd-c94f-472f-a97e-bf68ad408423"_guid;
inline constexpr _GUID CLSID_EnumMainWindowModeType_Type =
    "2f997305-0730-4111-a7dc-345e5b18480c"_guid;

} // namespace core

ORBCORE_ENUMERATION(EnumValuesBorderType, EnumValuesBorderType, kPropEnumTermBorderType);
ORBCORE_ENUMERATION(EnumValuesBorderKind, EnumValuesBorderKind, kPropEnumTermBorderKind);
ORBCORE_ENUMERATION(EnumValuesColorType, EnumValuesColorType, kPropEnumTermColorType);
ORBCORE_ENUMERATION(EnumValuesColorDepthType, EnumValuesColorDepthType,
                    kPropEnumTermColorDepthType);
ORBCORE_ENUMERATION(EnumValuesFontType, EnumValuesFontType, kPropEnumTermFontType);
ORBCORE_ENUMERATION(EnumValuesPictureType, EnumValuesPictureType, kPropEnumTermPictureType);
ORBCORE_ENUMERATION(EnumValuesPictureSize, EnumValuesPictureSize, kPropEnumTermPictureSize);
ORBCORE_ENUMERATION(EnumValuesPictureFormat, EnumValuesPictureFormat, kPropEnumTermPictureFormat);
ORBCORE_ENUMERATION(EnumValuesHAlign, EnumValuesHAlign, kPropEnumTermHAlign);
ORBCORE_ENUMERATION(EnumValuesVAlign, EnumValuesVAlign, kPropEnumTermVAlign);
ORBCORE_ENUMERATION(EnumValuesCellTextPosition, EnumValuesCellTextPosition,
                    kPropEnumTermCellTextPosition);
ORBCORE_ENUMERATION(EnumValuesTextDirection, EnumValuesTextDirection, kPropEnumTermTextDirection);
ORBCORE_ENUMERATION(EnumValuesResizeType, EnumValuesResizeType, kPropEnumTermResizeType);
ORBCORE_ENUMERATION(EnumMainWindowModeType, EnumMainWindowModeType,
                    kPropEnumTermMainWindowModeType);
