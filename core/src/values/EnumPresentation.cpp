#include <core/values/EnumPresentation.h>

#include <core/values/EnumValueClasses.h>

namespace core {
namespace {

constexpr EnumRow<EnumValuesBorderType> kControlBorderType[] = {
    {EnumValuesBorderType::WithoutBorder,
     {u"WithoutBorder", u"БезРамки"},
     "IDS_PROPVAL_BORDERTYPE_WITHOUTBORDER"},
    {EnumValuesBorderType::Double, {u"Double", u"Двойная"}, "IDS_PROPVAL_BORDERTYPE_DOUBLE"},
    {EnumValuesBorderType::Single, {u"Single", u"Одинарная"}, "IDS_PROPVAL_BORDERTYPE_SINGLE"},
    {EnumValuesBorderType::Embossed, {u"Embossed", u"Выпуклая"}, "IDS_PROPVAL_BORDERTYPE_EMBOSSED"},
    {EnumValuesBorderType::Indented,
     {u"Indented", u"Вдавленная"},
     "IDS_PROPVAL_BORDERTYPE_INDENTED"},
    {EnumValuesBorderType::Underline,
     {u"Underline", u"Подчеркивание"},
     "IDS_PROPVAL_BORDERTYPE_UNDERLINE"},
    {EnumValuesBorderType::DoubleUnderline,
     {u"DoubleUnderline", u"ДвойноеПодчеркивание"},
     "IDS_PROPVAL_BORDERTYPE_DOUBLEUNDERLINE"},
    {EnumValuesBorderType::Rounded, {u"Rounded", u"Скругленная"}, "IDS_PROPVAL_BORDERTYPE_ROUNDED"},
    {EnumValuesBorderType::Overline,
     {u"Overline", u"ЧертаСверху"},
     "IDS_PROPVAL_BORDERTYPE_OVERLINE"},
};

constexpr EnumRow<EnumValuesBorderKind> kBorderType[] = {
    {EnumValuesBorderKind::Absolute,
     {u"Absolute", u"Абсолютная"},
     "IDS_PROPVAL_BORDERKIND_ABSOLUTE"},
    {EnumValuesBorderKind::StyleItem,
     {u"StyleItem", u"ЭлементСтиля"},
     "IDS_PROPVAL_BORDERKIND_STYLEITEM"},
};

constexpr EnumRow<EnumValuesColorType> kColorType[] = {
    {EnumValuesColorType::Absolute, {u"Absolute", u"Абсолютный"}, "IDS_PROPVAL_COLORTYPE_ABSOLUTE"},
    {EnumValuesColorType::StyleItem,
     {u"StyleItem", u"ЭлементСтиля"},
     "IDS_PROPVAL_COLORTYPE_STYLEITEM"},
    {EnumValuesColorType::WebColor, {u"WebColor", u"WebЦвет"}, "IDS_PROPVAL_COLORTYPE_WEBCOLOR"},
    {EnumValuesColorType::WindowsColor,
     {u"WindowsColor", u"WindowsЦвет"},
     "IDS_PROPVAL_COLORTYPE_WINDOWSCOLOR"},
    {EnumValuesColorType::AutoColor,
     {u"AutoColor", u"АвтоЦвет"},
     "IDS_PROPVAL_COLORTYPE_AUTOCOLOR"},
};

constexpr EnumRow<EnumValuesColorDepthType> kColorDepth[] = {
    {EnumValuesColorDepthType::BitPerPixel1,
     {u"BitPerPixel1", u"БитНаПиксел1"},
     "IDS_PROPVAL_COLORDEPTH_BITPERPIXEL1"},
    {EnumValuesColorDepthType::BitPerPixel4,
     {u"BitPerPixel4", u"БитНаПиксел4"},
     "IDS_PROPVAL_COLORDEPTH_BITPERPIXEL4"},
    {EnumValuesColorDepthType::BitPerPixel8,
     {u"BitPerPixel8", u"БитНаПиксел8"},
     "IDS_PROPVAL_COLORDEPTH_BITPERPIXEL8"},
    {EnumValuesColorDepthType::BitPerPixel24,
     {u"BitPerPixel24", u"БитНаПиксел24"},
     "IDS_PROPVAL_COLORDEPTH_BITPERPIXEL24"},
    {EnumValuesColorDepthType::BitPerPixel32,
     {u"BitPerPixel32", u"БитНаПиксел32"},
     "IDS_PROPVAL_COLORDEPTH_BITPERPIXEL32"},
};

constexpr EnumRow<EnumValuesFontType> kFontType[] = {
    {EnumValuesFontType::Absolute, {u"Absolute", u"Абсолютный"}, "IDS_PROPVAL_FONTTYPE_ABSOLUTE"},
    {EnumValuesFontType::StyleItem,
     {u"StyleItem", u"ЭлементСтиля"},
     "IDS_PROPVAL_FONTTYPE_STYLEITEM"},
    {EnumValuesFontType::WindowsFont,
     {u"WindowsFont", u"WindowsШрифт"},
     "IDS_PROPVAL_FONTTYPE_WINDOWSFONT"},
    {EnumValuesFontType::AutoFont, {u"AutoFont", u"АвтоШрифт"}, "IDS_PROPVAL_FONTTYPE_AUTOFONT"},
};

constexpr EnumRow<EnumValuesPictureType> kPictureType[] = {
    {EnumValuesPictureType::Empty, kPropEnumTermPictureTypeEmpty, "IDS_PROPVAL_PICTURETYPE_EMPTY"},
    {EnumValuesPictureType::FromLib, kPropEnumTermPictureTypeFromLib,
     "IDS_PROPVAL_PICTURETYPE_FROMLIB"},
    {EnumValuesPictureType::Absolute, kPropEnumTermPictureTypeAbsolute,
     "IDS_PROPVAL_PICTURETYPE_ABSOLUTE"},
};

constexpr EnumRow<EnumValuesPictureSize> kPictureSize[] = {
    {EnumValuesPictureSize::RealSize,
     {u"RealSize", u"РеальныйРазмер"},
     "IDS_PROPVAL_PICTURESIZE_REALSIZE"},
    {EnumValuesPictureSize::Stretch, {u"Stretch", u"Растянуть"}, "IDS_PROPVAL_PICTURESIZE_STRETCH"},
    {EnumValuesPictureSize::Proportionally,
     {u"Proportionally", u"Пропорционально"},
     "IDS_PROPVAL_PICTURESIZE_PROPORTIONALLY"},
    {EnumValuesPictureSize::Tile, {u"Tile", u"Черепица"}, "IDS_PROPVAL_PICTURESIZE_TILE"},
    {EnumValuesPictureSize::AutoSize,
     {u"AutoSize", u"АвтоРазмер"},
     "IDS_PROPVAL_PICTURESIZE_AUTOSIZE"},
    {EnumValuesPictureSize::RealSizeIgnoreScale,
     {u"RealSizeIgnoreScale", u"РеальныйРазмерБезУчетаМасштаба"},
     "IDS_PROPVAL_PICTURESIZE_REALSIZEIGNORESCALE"},
    {EnumValuesPictureSize::AutoSizeIgnoreScale,
     {u"AutoSizeIgnoreScale", u"АвтоРазмерБезУчетаМасштаба"},
     "IDS_PROPVAL_PICTURESIZE_AUTOSIZEIGNORESCALE"},
    {EnumValuesPictureSize::ByFontSize,
     {u"ByFontSize", u"ПоРазмеруШрифта"},
     "IDS_PROPVAL_PICTURESIZE_BYFONTSIZE"},
};

constexpr EnumRow<EnumValuesPictureFormat> kPictureFormat[] = {
    {EnumValuesPictureFormat::UnknownFormat, {u"UnknownFormat", u"НеизвестныйФормат"}},
    {EnumValuesPictureFormat::BMP, {u"BMP", nullptr}},
    {EnumValuesPictureFormat::GIF, {u"GIF", nullptr}},
    {EnumValuesPictureFormat::Icon, {u"Icon", nullptr}},
    {EnumValuesPictureFormat::JPEG, {u"JPEG", nullptr}},
    {EnumValuesPictureFormat::PNG, {u"PNG", nullptr}},
    {EnumValuesPictureFormat::TIFF, {u"TIFF", nullptr}},
    {EnumValuesPictureFormat::EMF, {u"EMF", nullptr}},
    {EnumValuesPictureFormat::WMF, {u"WMF", nullptr}},
    {EnumValuesPictureFormat::SVG, {u"SVG", nullptr}},
};

constexpr EnumRow<EnumValuesHAlign> kHorizontalAlign[] = {
    {EnumValuesHAlign::Left, {u"Left", u"Лево"}, "IDS_PROPVAL_HALIGN_LEFT"},
    {EnumValuesHAlign::Center, {u"Center", u"Центр"}, "IDS_PROPVAL_HALIGN_CENTER"},
    {EnumValuesHAlign::Right, {u"Right", u"Право"}, "IDS_PROPVAL_HALIGN_RIGHT"},
    {EnumValuesHAlign::Justify, {u"Justify", u"ПоШирине"}, "IDS_PROPVAL_HALIGN_JUSTIFY"},
    {EnumValuesHAlign::Auto, {u"Auto", u"Авто"}, "IDS_PROPVAL_HALIGN_AUTO"},
};

constexpr EnumRow<EnumValuesVAlign> kVerticalAlign[] = {
    {EnumValuesVAlign::Top, {u"Top", u"Верх"}, "IDS_PROPVAL_VALIGN_TOP"},
    {EnumValuesVAlign::Center, {u"Center", u"Центр"}, "IDS_PROPVAL_VALIGN_CENTER"},
    {EnumValuesVAlign::Bottom, {u"Bottom", u"Низ"}, "IDS_PROPVAL_VALIGN_BOTTOM"},
};

constexpr EnumRow<EnumValuesCellTextPosition> kTextPositionRelativeToPicture[] = {
    {EnumValuesCellTextPosition::Left, {u"Left", u"Слева"}, "IDS_PROPVAL_TEXTPOSITION_LEFT"},
    {EnumValuesCellTextPosition::Right, {u"Right", u"Справа"}, "IDS_PROPVAL_TEXTPOSITION_RIGHT"},
    {EnumValuesCellTextPosition::Top, {u"Top", u"Сверху"}, "IDS_PROPVAL_TEXTPOSITION_TOP"},
    {EnumValuesCellTextPosition::Bottom, {u"Bottom", u"Снизу"}, "IDS_PROPVAL_TEXTPOSITION_BOTTOM"},
    {EnumValuesCellTextPosition::OnTop, {u"OnTop", u"Поверх"}, "IDS_PROPVAL_TEXTPOSITION_ONTOP"},
    {EnumValuesCellTextPosition::Auto, {u"Auto", u"Авто"}, "IDS_PROPVAL_TEXTPOSITION_AUTO"},
};

constexpr EnumRow<EnumValuesTextDirection> kTextDirection[] = {
    {EnumValuesTextDirection::LeftToRight,
     {u"LeftToRight", u"СлеваНаправо"},
     "IDS_PROPVAL_TEXTDIRECTION_LEFTTORIGHT"},
    {EnumValuesTextDirection::RightToLeft,
     {u"RightToLeft", u"СправаНалево"},
     "IDS_PROPVAL_TEXTDIRECTION_RIGHTTOLEFT"},
};

constexpr EnumRow<EnumValuesResizeType> kSizeChangeMode[] = {
    {EnumValuesResizeType::Normal, {u"Normal", u"Обычный"}, "IDS_PROPVAL_RESIZE_NORMAL"},
    {EnumValuesResizeType::QuickChange,
     {u"QuickChange", u"БыстроеИзменение"},
     "IDS_PROPVAL_RESIZE_QUICKCHANGE"},
};

constexpr EnumRow<EnumMainWindowModeType> kMainClientApplicationWindowMode[] = {
    {EnumMainWindowModeType::Normal, {u"Normal", u"Обычный"}, "IDS_PROPVAL_MAINWINDOW_NORMAL"},
    {EnumMainWindowModeType::Workplace,
     {u"Workplace", u"РабочееМесто"},
     "IDS_PROPVAL_MAINWINDOW_WORKPLACE"},
    {EnumMainWindowModeType::EmbeddedWorkplace,
     {u"EmbeddedWorkplace", u"ВстроенноеРабочееМесто"},
     "IDS_PROPVAL_MAINWINDOW_EMBEDDEDWORKPLACE"},
    {EnumMainWindowModeType::FullscreenWorkplace,
     {u"FullscreenWorkplace", u"ПолноэкранноеРабочееМесто"},
     "IDS_PROPVAL_MAINWINDOW_FULLSCREENWORKPLACE"},
    {EnumMainWindowModeType::Kiosk, {u"Kiosk", u"Киоск"}, "IDS_PROPVAL_MAINWINDOW_KIOSK"},
};

} // namespace

ORBCORE_REGISTER_ENUMERATION(EnumValuesBorderType, EnumValuesBorderType, kControlBorderType);
ORBCORE_REGISTER_ENUMERATION(EnumValuesBorderKind, EnumValuesBorderKind, kBorderType);
ORBCORE_REGISTER_ENUMERATION(EnumValuesColorType, EnumValuesColorType, kColorType);
ORBCORE_REGISTER_ENUMERATION(EnumValuesColorDepthType, EnumValuesColorDepthType, kColorDepth);
ORBCORE_REGISTER_ENUMERATION(EnumValuesFontType, EnumValuesFontType, kFontType);
ORBCORE_REGISTER_ENUMERATION(EnumValuesPictureType, EnumValuesPictureType, kPictureType);
ORBCORE_REGISTER_ENUMERATION(EnumValuesPictureSize, EnumValuesPictureSize, kPictureSize);
ORBCORE_REGISTER_ENUMERATION(EnumValuesPictureFormat, EnumValuesPictureFormat, kPictureFormat);
ORBCORE_REGISTER_ENUMERATION(EnumValuesHAlign, EnumValuesHAlign, kHorizontalAlign);
ORBCORE_REGISTER_ENUMERATION(EnumValuesVAlign, EnumValuesVAlign, kVerticalAlign);
ORBCORE_REGISTER_ENUMERATION(EnumValuesCellTextPosition, EnumValuesCellTextPosition,
                             kTextPositionRelativeToPicture);
ORBCORE_REGISTER_ENUMERATION(EnumValuesTextDirection, EnumValuesTextDirection, kTextDirection);
ORBCORE_REGISTER_ENUMERATION(EnumValuesResizeType, EnumValuesResizeType, kSizeChangeMode);
ORBCORE_REGISTER_ENUMERATION(EnumMainWindowModeType, EnumMainWindowModeType,
                             kMainClientApplicationWindowMode);

} // namespace core
