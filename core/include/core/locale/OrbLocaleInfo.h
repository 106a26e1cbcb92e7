// A stored description of a locale: its name, and what differs from what ICU says of it.
//
//   core::OrbLocaleInfo info(u"ru_RU", u'.', u' ', u"3;0", core::NegativeOrder::Locale, u"нет",
//                            u"да", u"", u"", 0, core::WeekDay::Monday);
//   core::NumericFormat format = info.createNumericFormat();
#pragma once

#include <core/locale/BoolFormat.h>
#include <core/locale/DateFormat.h>
#include <core/locale/NumericFormat.h>
#include <core/numbers/WeekDay.h>

#include <cstdint>

namespace core {

class ListInStream;
class ListOutStream;

// How a negative number is written.
enum class NegativeOrder : std::int32_t {
    Locale = -1,     // as the locale does
    Parentheses = 0, // (1)
    SignBefore,      // -1
    SignBlankBefore, // - 1
    SignBehind,      // 1-
    BlankSignBehind, // 1 -
};

class ORBCORE_API OrbLocaleInfo {
public:
    // A separator of 0, an empty text, `NegativeOrder::Locale` and a day of 0 mean: as the locale
    // has it. Patterns are in the platform's letters, `grouping` as `3;0`. Nothing is checked here.
    OrbLocaleInfo(const stdx::ustring& name, char16_t decimalSeparator, char16_t groupingSeparator,
                  const stdx::ustring& grouping, NegativeOrder negativeOrder,
                  const stdx::ustring& falseName, const stdx::ustring& trueName,
                  const stdx::ustring& shortDatePattern, const stdx::ustring& timePattern,
                  std::int32_t reserved = 0, WeekDay firstDayOfWeek = WeekDay())
        : name_(name),
          decimalSeparator_(decimalSeparator),
          groupingSeparator_(groupingSeparator),
          grouping_(grouping),
          negativeOrder_(negativeOrder),
          falseName_(falseName),
          trueName_(trueName),
          shortDatePattern_(shortDatePattern),
          timePattern_(timePattern),
          reserved_(reserved),
          firstDayOfWeek_(firstDayOfWeek) {}

    const stdx::ustring& name() const noexcept { return name_; }
    char16_t decimalSeparator() const noexcept { return decimalSeparator_; }
    char16_t groupingSeparator() const noexcept { return groupingSeparator_; }
    const stdx::ustring& grouping() const noexcept { return grouping_; }
    NegativeOrder negativeOrder() const noexcept { return negativeOrder_; }
    const stdx::ustring& falseName() const noexcept { return falseName_; }
    const stdx::ustring& trueName() const noexcept { return trueName_; }
    const stdx::ustring& shortDatePattern() const noexcept { return shortDatePattern_; }
    const stdx::ustring& timePattern() const noexcept { return timePattern_; }
    std::int32_t reserved() const noexcept { return reserved_; } // stored, and read by nobody here

    // What follows throws `LocaleException` where the name names no locale.

    NumericFormat createNumericFormat() const;
    DateFormat createDateFormat() const;
    BoolFormat createBoolFormat() const;
    // On another locale than that of the name.
    BoolFormat createBoolFormat(const Locale& locale) const;
    // The stored day, or that of the locale.
    WeekDay getFirstDayOfWeek() const;

    // As a list of the fields in the order of the constructor. The last two may be missing when it
    // is read. Numbers that name no order and no day throw `ListStreamException`.
    void serialize(ListOutStream& stream) const;
    static OrbLocaleInfo deserialize(ListInStream& stream);

private:
    stdx::ustring name_;
    char16_t decimalSeparator_;
    char16_t groupingSeparator_;
    stdx::ustring grouping_;
    NegativeOrder negativeOrder_;
    stdx::ustring falseName_;
    stdx::ustring trueName_;
    stdx::ustring shortDatePattern_;
    stdx::ustring timePattern_;
    std::int32_t reserved_;
    WeekDay firstDayOfWeek_;
};

} // namespace core
