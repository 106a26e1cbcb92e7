#include <core/values/EnumSystem.h>

#include <core/values/EnumValueClasses.h>

namespace core {
namespace {

constexpr EnumRow<AllowedLength> kAllowedLength[] = {
    {AllowedLength::Fixed, {u"Fixed", u"Фиксированная"}, "IDS_PROPVAL_ALLOWEDLENGTH_FIXED"},
    {AllowedLength::Variable, {u"Variable", u"Переменная"}, "IDS_PROPVAL_ALLOWEDLENGTH_VARIABLE"},
};

constexpr EnumRow<AllowedSign> kAllowedSign[] = {
    {AllowedSign::Any, {u"Any", u"Любой"}, "IDS_PROPVAL_ALLOWEDSIGN_ANY"},
    {AllowedSign::Nonnegative,
     {u"Nonnegative", u"Неотрицательный"},
     "IDS_PROPVAL_ALLOWEDSIGN_NONNEGATIVE"},
};

constexpr EnumRow<NumericRoundMode> kRoundMode[] = {
    {NumericRoundMode::HalfDown,
     {u"Round15as10", u"Окр15как10"},
     "IDS_PROPVAL_ROUNDMODE_ROUND15AS10"},
    {NumericRoundMode::HalfUp,
     {u"Round15as20", u"Окр15как20"},
     "IDS_PROPVAL_ROUNDMODE_ROUND15AS20"},
};

constexpr EnumRow<FillCheckEnum> kFillChecking[] = {
    {FillCheckEnum::DontCheck, kFillCheckDoNotCkeckEnumValTerm, "IDS_FILLCHECK_MDENUM_DONOTCHECK"},
    {FillCheckEnum::ShowError, kFillCheckShowErrorEnumValTerm, "IDS_FILLCHECK_MDENUM_SHOWERROR"},
};

constexpr EnumRow<SortTypes> kSortDirection[] = {
    {SortTypes::Asc, {u"Asc", u"Возр"}, "IDS_PROPVAL_SORT_ASC"},
    {SortTypes::Desc, {u"Desc", u"Убыв"}, "IDS_PROPVAL_SORT_DESC"},
};

constexpr EnumRow<SearchDirection> kSearchDirection[] = {
    {SearchDirection::FromBegin, {u"FromBegin", u"СНачала"}, "IDS_PROPVAL_SEARCH_FROMBEGIN"},
    {SearchDirection::FromEnd, {u"FromEnd", u"СКонца"}, "IDS_PROPVAL_SEARCH_FROMEND"},
};

constexpr EnumRow<UUIDVersion> kUUIDVersion[] = {
    {UUIDVersion::Version1, kPropUUIDVersion1},
    {UUIDVersion::Version3, kPropUUIDVersion3},
    {UUIDVersion::Version4, kPropUUIDVersion4},
    {UUIDVersion::Version5, kPropUUIDVersion5},
};

constexpr EnumRow<EnumValuesFileType> kTextEncoding[] = {
    {EnumValuesFileType::UTF16, {u"UTF16", nullptr}},
    {EnumValuesFileType::UTF8, {u"UTF8", nullptr}},
    {EnumValuesFileType::ANSI, {u"ANSI", nullptr}},
    {EnumValuesFileType::OEM, {u"OEM", nullptr}},
    {EnumValuesFileType::System, {u"System", u"Системная"}},
};

constexpr EnumRow<EnumFileDragModeType> kFileDragMode[] = {
    {EnumFileDragModeType::AsFile, {u"AsFile", u"КакФайл"}, "IDS_PROPVAL_FILEDRAG_ASFILE"},
    {EnumFileDragModeType::AsFileRef,
     {u"AsFileRef", u"КакСсылкаНаФайл"},
     "IDS_PROPVAL_FILEDRAG_ASFILEREF"},
};

constexpr EnumRow<OrbPlatformType> kPlatformType[] = {
    {OrbPlatformType::Windows_x86, {u"Windows_x86", nullptr}},
    {OrbPlatformType::Windows_x86_64, {u"Windows_x86_64", nullptr}},
    {OrbPlatformType::Linux_x86, {u"Linux_x86", nullptr}},
    {OrbPlatformType::Linux_x86_64, {u"Linux_x86_64", nullptr}},
    {OrbPlatformType::Linux_ARM64, {u"Linux_ARM64", nullptr}},
    {OrbPlatformType::MacOS_x86, {u"MacOS_x86", nullptr}},
    {OrbPlatformType::MacOS_x86_64, {u"MacOS_x86_64", nullptr}},
    {OrbPlatformType::Android_ARM_64, {u"Android_ARM_64", nullptr}},
    {OrbPlatformType::Android_x86_64, {u"Android_x86_64", nullptr}},
    {OrbPlatformType::Android_ARM, {u"Android_ARM", nullptr}},
    {OrbPlatformType::Android_x86, {u"Android_x86", nullptr}},
    {OrbPlatformType::iOS_ARM, {u"iOS_ARM", nullptr}},
    {OrbPlatformType::iOS_ARM_64, {u"iOS_ARM_64", nullptr}},
    {OrbPlatformType::WinRT_ARM, {u"WinRT_ARM", nullptr}},
    {OrbPlatformType::WinRT_x86_64, {u"WinRT_x86_64", nullptr}},
    {OrbPlatformType::WinRT_x86, {u"WinRT_x86", nullptr}},
    {OrbPlatformType::Linux_E2K, {u"Linux_E2K", nullptr}},
};

// The table is that of the exceptions.
constexpr auto kErrorCategory = [] {
    std::array<EnumRow<ValuesExceptionCategory>, std::size(kExceptionCategoryRows)> rows = {};
    std::ranges::transform(kExceptionCategoryRows, rows.begin(), [](const auto& row) {
        return EnumRow<ValuesExceptionCategory>{row.value, {row.names[0], row.names[1]}, row.key};
    });
    return rows;
}();

} // namespace

ORBCORE_REGISTER_ENUMERATION(AllowedLength, AllowedLength, kAllowedLength);
ORBCORE_REGISTER_ENUMERATION(AllowedSign, AllowedSign, kAllowedSign);
ORBCORE_REGISTER_ENUMERATION(NumericRoundMode, RoundMode, kRoundMode);
ORBCORE_REGISTER_ENUMERATION(FillCheckEnum, EnumValuesFillCheck, kFillChecking);
ORBCORE_REGISTER_ENUMERATION(SortTypes, SortTypes, kSortDirection);
ORBCORE_REGISTER_ENUMERATION(SearchDirection, SearchDirection, kSearchDirection);
ORBCORE_REGISTER_ENUMERATION(UUIDVersion, UUIDVersion, kUUIDVersion);
ORBCORE_REGISTER_ENUMERATION(EnumValuesFileType, EnumValuesFileType, kTextEncoding);
ORBCORE_REGISTER_ENUMERATION(EnumFileDragModeType, EnumFileDragModeType, kFileDragMode);
ORBCORE_REGISTER_ENUMERATION(OrbPlatformType, OrbPlatformType, kPlatformType);
ORBCORE_REGISTER_ENUMERATION(ValuesExceptionCategory, EnumValuesExceptionCategory, kErrorCategory);

} // namespace core
