#include <core/locale/OrbLocaleInfo.h>

#include <core/locale/WeekInfo.h>

namespace core {

NumericFormat OrbLocaleInfo::createNumericFormat() const {
    NumericFormat format{Locale(name_)};
    if (!grouping_.empty()) format.setWin32Grouping(grouping_);
    if (decimalSeparator_ != 0) format.setDecimalSeparator(decimalSeparator_);
    if (groupingSeparator_ != 0) format.setGroupingSeparator(groupingSeparator_);
    if (negativeOrder_ != NegativeOrder::Locale)
        format.setWin32NegativeOrder(static_cast<unsigned>(negativeOrder_));
    return format;
}

DateFormat OrbLocaleInfo::createDateFormat() const {
    DateFormat format{Locale(name_)};
    if (!shortDatePattern_.empty())
        format.setShortDatePattern(DateFormat::parseOrbPattern(shortDatePattern_));
    if (!timePattern_.empty()) format.setTimePattern(DateFormat::parseOrbPattern(timePattern_));
    return format;
}

BoolFormat OrbLocaleInfo::createBoolFormat() const {
    return createBoolFormat(Locale(name_));
}

BoolFormat OrbLocaleInfo::createBoolFormat(const Locale& locale) const {
    BoolFormat format(locale);
    if (!falseName_.empty()) format.setFalseName(falseName_);
    if (!trueName_.empty()) format.setTrueName(trueName_);
    return format;
}

WeekDay OrbLocaleInfo::getFirstDayOfWeek() const {
    if (firstDayOfWeek_ != WeekDay()) return firstDayOfWeek_;
    return WeekInfo::of(Locale(name_)).firstDayOfWeek();
}

} // namespace core
