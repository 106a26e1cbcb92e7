// Enumerations of times: parts of dates, beginnings, periods.
#pragma once

#include <core/values/EnumValue.h>
#include <core/values/Qualifiers.h>

namespace core {

// ---- DateFractions / ЧастиДаты

// Parts of a date, as `DateQualifiers` has them.
enum class ValueDateFractions : std::int32_t { Date = 1, Time = 2, DateTime = 3 };
static_assert(static_cast<int>(ValueDateFractions::Date) == DateQualifiers::kDate &&
              static_cast<int>(ValueDateFractions::Time) == DateQualifiers::kTime);

inline constexpr Term kPropEnumTermDateFractions = {u"DateFractions", u"ЧастиДаты"};
inline constexpr _GUID CLSID_DateFractions_Factory = "6faa6596-4e2a-4390-9f12-6187040195a0"_guid;
inline constexpr _GUID CLSID_DateFractions_FactoryType =
    "ff2629ef-e80f-4f94-a25d-c4f493ebd432"_guid;
inline constexpr _GUID CLSID_DateFractions_Type = "025505b1-72ed-469a-a8b6-b4ceb9d2f48e"_guid;

// ---- StandardBeginningDateVariant / ВариантСтандартнойДатыНачала

// Dates told by the current one.
enum class EnumValuesStandardBeginningDateVariant : std::int32_t {
    Custom = 0,
    BeginningOfThisDay = 1,
    BeginningOfThisWeek = 2,
    BeginningOfThisTenDays = 3,
    BeginningOfThisMonth = 4,
    BeginningOfThisQuarter = 5,
    BeginningOfThisHalfYear = 6,
    BeginningOfThisYear = 7,
    BeginningOfLastDay = 8,
    BeginningOfLastWeek = 9,
    BeginningOfLastTenDays = 10,
    BeginningOfLastMonth = 11,
    BeginningOfLastQuarter = 12,
    BeginningOfLastHalfYear = 13,
    BeginningOfLastYear = 14,
    BeginningOfNextDay = 15,
    BeginningOfNextWeek = 16,
    BeginningOfNextTenDays = 17,
    BeginningOfNextMonth = 18,
    BeginningOfNextQuarter = 19,
    BeginningOfNextHalfYear = 20,
    BeginningOfNextYear = 21
};

inline constexpr Term kPropEnumTermStandardBeginningDateVariant = {u"StandardBeginningDateVariant",
                                                                   u"ВариантСтандартнойДатыНачала"};
inline constexpr _GUID CLSID_EnumValuesStandardBeginningDateVariant_Factory =
    "096db376-2ba1-4bbb-bba6-c6bf437de7ec"_guid;
inline constexpr _GUID CLSID_EnumValuesStandardBeginningDateVariant_FactoryType =
    "e3090989-024c-4a05-8fdd-1a30a297c639"_guid;
inline constexpr _GUID CLSID_EnumValuesStandardBeginningDateVariant_Type =
    "c79a488a-7665-491d-9f00-699abd3a3742"_guid;

// ---- StandardPeriodVariant / ВариантСтандартногоПериода

// Periods told by the current date.
enum class EnumValuesStandardPeriodVariant : std::int32_t {
    Custom = 0,
    Today = 1,
    ThisWeek = 2,
    ThisTenDays = 3,
    ThisMonth = 4,
    ThisQuarter = 5,
    ThisHalfYear = 6,
    ThisYear = 7,
    FromBeginningOfThisWeek = 8,
    FromBeginningOfThisTenDays = 9,
    FromBeginningOfThisMonth = 10,
    FromBeginningOfThisQuarter = 11,
    FromBeginningOfThisHalfYear = 12,
    FromBeginningOfThisYear = 13,
    Yesterday = 14,
    LastWeek = 15,
    LastTenDays = 16,
    LastMonth = 17,
    LastQuarter = 18,
    LastHalfYear = 19,
    LastYear = 20,
    LastWeekTillSameWeekDay = 21,
    LastTenDaysTillSameDayNumber = 22,
    LastMonthTillSameDate = 23,
    LastQuarterTillSameDate = 24,
    LastHalfYearTillSameDate = 25,
    LastYearTillSameDate = 26,
    Tomorrow = 27,
    NextWeek = 28,
    NextTenDays = 29,
    NextMonth = 30,
    NextQuarter = 31,
    NextHalfYear = 32,
    NextYear = 33,
    NextWeekTillSameWeekDay = 34,
    NextTenDaysTillSameDayNumber = 35,
    NextMonthTillSameDate = 36,
    NextQuarterTillSameDate = 37,
    NextHalfYearTillSameDate = 38,
    NextYearTillSameDate = 39,
    TillEndOfThisWeek = 40,
    TillEndOfThisTenDays = 41,
    TillEndOfThisMonth = 42,
    TillEndOfThisQuarter = 43,
    TillEndOfThisHalfYear = 44,
    TillEndOfThisYear = 45,
    Last7Days = 46,
    Next7Days = 47,
    Month = 48
};

inline constexpr Term kPropEnumTermStandardPeriodVariant = {u"StandardPeriodVariant",
                                                            u"ВариантСтандартногоПериода"};
inline constexpr _GUID CLSID_EnumValuesStandardPeriodVariant_Factory =
    "f626406d-5e73-4764-8a46-b9060a8b9749"_guid;
inline constexpr _GUID CLSID_EnumValuesStandardPeriodVariant_FactoryType =
    "5478983a-f602-4308-8096-0289de1fc703"_guid;
inline constexpr _GUID CLSID_EnumValuesStandardPeriodVariant_Type =
    "3d92f3ed-5e12-4959-8016-13c449300991"_guid;

} // namespace core

ORBCORE_ENUMERATION(ValueDateFractions, DateFractions, kPropEnumTermDateFractions);
ORBCORE_ENUMERATION(EnumValuesStandardBeginningDateVariant, EnumValuesStandardBeginningDateVariant,
                    kPropEnumTermStandardBeginningDateVariant);
ORBCORE_ENUMERATION(EnumValuesStandardPeriodVariant, EnumValuesStandardPeriodVariant,
                    kPropEnumTermStandardPeriodVariant);
