// Numbers as the people of a locale write them, and back.
//
//   core::NumericFormat format(core::Locale(u"ru"));
//   format.format(1234567.5_num);                     // "1 234 567,5" with no-break spaces
//   format.format(2.345_num, 10, 2);                  // "2,35"
//   format.setWin32NegativeOrder(0);                  // this object alone
//   core::Numeric value;
//   if (format.parse(u"1 234,5 ", value)) ...
//
// A handle on symbols that all formats of the locale share until one of them is changed: copied for
// nothing. The first format of a locale opens ICU's, some 100 microseconds; the others find it.
// Writing takes no lock and no memory but the result. Parsing takes a lock where the text is written
// otherwise than this format would. An object is for one thread at a time, its copies for others.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/locale/Locale.h>

namespace core {

class Numeric;
struct NumberSymbols;

class ORBCORE_API NumericFormat {
public:
    // Throws `std::runtime_error` where ICU has no data at all.
    explicit NumericFormat(const Locale& locale);
    NumericFormat(const NumericFormat& other) noexcept;
    NumericFormat& operator=(const NumericFormat& other) noexcept;
    ~NumericFormat();

    const Locale& locale() const noexcept { return locale_; }

    // --- numbers to text ---

    // All digits, at least one in front of the decimal separator.
    stdx::ustring format(const Numeric& value) const;
    // The same with at least one integer digit and no fraction digit that must stand.
    stdx::ustring format(const Numeric& value, unsigned maxInteger, unsigned maxFraction) const {
        return format(value, maxInteger, 1, maxFraction, 0);
    }
    // Rounded to `maxFraction` places by the rule of the process, then filled with zeros up to the
    // minima, of which 999 count at most. A minimum above its maximum wins.
    //
    // A number of more than `maxInteger` integer digits is written in nines: the largest that fits,
    // in 1,023 nines at most. Zero has one integer digit. A number that fits before it is rounded and
    // has a digit more afterwards loses its first digit. With a `minInteger` of 0 a number below 1 has
    // no integer digit if it has a fraction.
    stdx::ustring format(const Numeric& value, unsigned maxInteger, unsigned minInteger,
                         unsigned maxFraction, unsigned minFraction) const;

    // --- text to numbers ---

    // Whether the whole text is a number, with blanks before and behind it; `value` is set only then.
    // Groups are whole, or there are none; marks of other languages may stand between them, but
    // "0.125" is refused where the point is no mark of this format. Besides what ICU does not take
    // for a number, texts of more than 4,096 units, numbers of more than 1,023 characters and
    // exponents beyond 999 are refused.
    bool parse(std::u16string_view text, Numeric& value) const;

    // --- symbols ---

    char16_t getDecimalSeparator() const noexcept;
    char16_t getGroupingSeparator() const noexcept;
    unsigned getGroupingSize() const noexcept;          // 0: no groups
    unsigned getSecondaryGroupingSize() const noexcept; // of all groups but the lowest; 0: the same
    const stdx::ustring& getPositivePrefix() const noexcept;
    const stdx::ustring& getPositiveSuffix() const noexcept;
    const stdx::ustring& getNegativePrefix() const noexcept;
    const stdx::ustring& getNegativeSuffix() const noexcept;
    stdx::ustring getDigitSymbols() const; // from zero to nine

    void setDecimalSeparator(char16_t separator);
    void setGroupingSeparator(char16_t separator);
    void setGroupingSize(unsigned size);
    void setSecondaryGroupingSize(unsigned size);
    void setPositivePrefix(const stdx::ustring& prefix);
    void setPositiveSuffix(const stdx::ustring& suffix);
    void setNegativePrefix(const stdx::ustring& prefix);
    void setNegativeSuffix(const stdx::ustring& suffix);

    // What a group that never comes is as large as.
    static constexpr unsigned kEndlessGroup = 0x7FFFFFFF;

    // The numbers in the text, with whatever between them: "3;0" for groups of three, "3;2;0" for
    // three and then two, "3" for one group of three. Without a number, or with a 0 in front, there
    // are no groups.
    void setWin32Grouping(std::u16string_view sizes);
    // 0: (1), 1: -1, 2: - 1, 3: 1-, 4: 1 -. Anything else does nothing.
    void setWin32NegativeOrder(unsigned order);

private:
    class Record;

    // To change: of a record that is this object's alone.
    NumberSymbols& own();

    Locale locale_;
    InterfacePtr<Record> record_;
};

} // namespace core
