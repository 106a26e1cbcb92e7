#include <core/values/EnumPrinting.h>

#include <core/values/EnumValueClasses.h>

namespace core {
namespace {

constexpr EnumRow<EnumValuesPageOrientation> kPageOrientation[] = {
    {EnumValuesPageOrientation::Portrait,
     {u"Portrait", u"Портрет"},
     "IDS_PROPVAL_PAGEORIENTATION_PORTRAIT"},
    {EnumValuesPageOrientation::Landscape,
     {u"Landscape", u"Ландшафт"},
     "IDS_PROPVAL_PAGEORIENTATION_LANDSCAPE"},
};

constexpr EnumRow<EnumValuesPageMarginType> kPagePlacementAlternation[] = {
    {EnumValuesPageMarginType::Auto, {u"Auto", u"Авто"}, "IDS_PROPVAL_PAGEPLACEMENT_AUTO"},
    {EnumValuesPageMarginType::DontUse,
     {u"DontUse", u"НеИспользовать"},
     "IDS_PROPVAL_PAGEPLACEMENT_DONTUSE"},
    {EnumValuesPageMarginType::MirrorOnLeft,
     {u"MirrorOnLeft", u"ЗеркальноСлева"},
     "IDS_PROPVAL_PAGEPLACEMENT_MIRRORONLEFT"},
    {EnumValuesPageMarginType::MirrorOnTop,
     {u"MirrorOnTop", u"ЗеркальноСверху"},
     "IDS_PROPVAL_PAGEPLACEMENT_MIRRORONTOP"},
};

constexpr EnumRow<EnumValuesDuplexType> kDuplexPrintingType[] = {
    {EnumValuesDuplexType::None, {u"None", u"Нет"}, "IDS_PROPVAL_DUPLEX_NONE"},
    {EnumValuesDuplexType::FlipPagesLeft,
     {u"FlipPagesLeft", u"ПереворотВлево"},
     "IDS_PROPVAL_DUPLEX_FLIPPAGESLEFT"},
    {EnumValuesDuplexType::FlipPagesUp,
     {u"FlipPagesUp", u"ПереворотВверх"},
     "IDS_PROPVAL_DUPLEX_FLIPPAGESUP"},
    {EnumValuesDuplexType::UsePrinterSettings,
     {u"UsePrinterSettings", u"ИспользоватьНастройкиПринтера"},
     "IDS_PROPVAL_DUPLEX_USEPRINTERSETTINGS"},
};

constexpr EnumRow<EnumValuesUseOutput> kUseOutput[] = {
    {EnumValuesUseOutput::Auto, {u"Auto", u"Авто"}, "IDS_PROPVAL_USEOUTPUT_AUTO"},
    {EnumValuesUseOutput::Enable, {u"Enable", u"Разрешить"}, "IDS_PROPVAL_USEOUTPUT_ENABLE"},
    {EnumValuesUseOutput::Disable, {u"Disable", u"Запретить"}, "IDS_PROPVAL_USEOUTPUT_DISABLE"},
};

constexpr EnumRow<EnumValuesUsePrintDlgMode> kPrintDialogUseMode[] = {
    {EnumValuesUsePrintDlgMode::Use, {u"Use", u"Использовать"}, "IDS_PROPVAL_PRINTDIALOG_USE"},
    {EnumValuesUsePrintDlgMode::DontUse,
     {u"DontUse", u"НеИспользовать"},
     "IDS_PROPVAL_PRINTDIALOG_DONTUSE"},
};

using FileType = EnumValuesRepresentableDocumentBatchFileType;
constexpr EnumRow<FileType> kRepresentableDocumentBatchFileType[] = {
    {FileType::DOCX, {u"DOCX", nullptr}},   {FileType::HTML4, {u"HTML4", nullptr}},
    {FileType::HTML5, {u"HTML5", nullptr}}, {FileType::ODS, {u"ODS", nullptr}},
    {FileType::PDF, {u"PDF", nullptr}},     {FileType::TXT, {u"TXT", nullptr}},
    {FileType::XLS, {u"XLS", nullptr}},     {FileType::XLSX, {u"XLSX", nullptr}},
};

} // namespace

ORBCORE_REGISTER_ENUMERATION(EnumValuesPageOrientation, EnumValuesPageOrientation,
                             kPageOrientation);
ORBCORE_REGISTER_ENUMERATION(EnumValuesPageMarginType, EnumValuesPageMarginType,
                             kPagePlacementAlternation);
ORBCORE_REGISTER_ENUMERATION(EnumValuesDuplexType, EnumValuesDuplexType, kDuplexPrintingType);
ORBCORE_REGISTER_ENUMERATION(EnumValuesUseOutput, EnumValuesUseOutput, kUseOutput);
ORBCORE_REGISTER_ENUMERATION(EnumValuesUsePrintDlgMode, EnumValuesUsePrintDlgMode,
                             kPrintDialogUseMode);
ORBCORE_REGISTER_ENUMERATION(EnumValuesRepresentableDocumentBatchFileType,
                             EnumValuesRepresentableDocumentBatchFileType,
                             kRepresentableDocumentBatchFileType);

} // namespace core
