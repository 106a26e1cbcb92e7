// A record is the symbols, which format numbers without ICU, and an ICU format for the texts that
// need it to be read. The record of a locale is shared and does not change; one that was changed
// makes its ICU format when it is first asked for.

#include <core/locale/NumericFormat.h>

#include <core/concurrency/Mutex.h>
#include <core/numbers/Numeric.h>
#include <core/text/Characters.h>
#include <core/text/Numbers.h>

#include "LocaleRecord.h"
#include "NumberSymbols.h"
#include "PerLocale.h"

#include <unicode/unum.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <mutex>
#include <stdexcept>

namespace core {
namespace {

// What texts and digits go through; longer ones are the exception.
constexpr std::size_t kBuffer = 1'024;
// ICU's own limit of digits that are filled up.
constexpr unsigned kMostFilled = 999;
constexpr std::size_t kMostParsed = 4'096;
constexpr int kMostExponent = 999;

struct Close {
    void operator()(UNumberFormat* format) const noexcept { unum_close(format); }
};
using OpenFormat = std::unique_ptr<UNumberFormat, Close>;

OpenFormat open(const char* locale) {
    UErrorCode status = U_ZERO_ERROR;
    OpenFormat format(unum_open(UNUM_DECIMAL, nullptr, 0, locale, nullptr, &status));
    if (U_FAILURE(status)) throw std::runtime_error("ICU has no data to write numbers by");
    return format;
}

// A text of ICU's: `read` takes a buffer, its size and a status and gives the length.
template <class Read> stdx::ustring text_from(Read&& read) {
    char16_t text[64];
    UErrorCode status = U_ZERO_ERROR;
    const int length = read(text, static_cast<std::int32_t>(std::size(text)), &status);
    return U_SUCCESS(status) ? stdx::ustring(text, static_cast<unsigned>(length)) : stdx::ustring();
}

struct AffixRow {
    UNumberFormatTextAttribute attribute;
    stdx::ustring NumberSymbols::*text;
};
constexpr AffixRow kAffixes[] = {
    {UNUM_POSITIVE_PREFIX, &NumberSymbols::positivePrefix},
    {UNUM_POSITIVE_SUFFIX, &NumberSymbols::positiveSuffix},
    {UNUM_NEGATIVE_PREFIX, &NumberSymbols::negativePrefix},
    {UNUM_NEGATIVE_SUFFIX, &NumberSymbols::negativeSuffix},
};

struct SeparatorRow {
    UNumberFormatSymbol symbol;
    char16_t NumberSymbols::*unit;
};
constexpr SeparatorRow kSeparators[] = {
    {UNUM_DECIMAL_SEPARATOR_SYMBOL, &NumberSymbols::decimalSeparator},
    {UNUM_GROUPING_SEPARATOR_SYMBOL, &NumberSymbols::groupingSeparator},
};

struct SizeRow {
    UNumberFormatAttribute attribute;
    unsigned NumberSymbols::*size;
};
constexpr SizeRow kSizes[] = {
    {UNUM_GROUPING_SIZE, &NumberSymbols::groupingSize},
    {UNUM_SECONDARY_GROUPING_SIZE, &NumberSymbols::secondaryGroupingSize},
};

char16_t symbol_of(const OpenFormat& format, UNumberFormatSymbol which, char16_t otherwise) {
    const stdx::ustring text = text_from([&](char16_t* to, std::int32_t size, UErrorCode* status) {
        return unum_getSymbol(format.get(), which, to, size, status);
    });
    return text.size() == 1 ? text.front() : otherwise;
}

NumberSymbols symbols_of(const OpenFormat& format) {
    NumberSymbols symbols{};
    for (int digit = 0; digit != 10; ++digit) {
        const int which = digit == 0 ? UNUM_ZERO_DIGIT_SYMBOL : UNUM_ONE_DIGIT_SYMBOL + digit - 1;
        symbols.digits[digit] = symbol_of(format, static_cast<UNumberFormatSymbol>(which),
                                          static_cast<char16_t>(u'0' + digit));
    }
    symbols.decimalSeparator = symbol_of(format, UNUM_DECIMAL_SEPARATOR_SYMBOL, u'.');
    symbols.groupingSeparator = symbol_of(format, UNUM_GROUPING_SEPARATOR_SYMBOL, u',');
    if (unum_getAttribute(format.get(), UNUM_GROUPING_USED))
        for (const auto& [attribute, size] : kSizes)
            symbols.*size =
                static_cast<unsigned>(std::max(unum_getAttribute(format.get(), attribute), 0));
    symbols.minimumGroupingDigits = static_cast<unsigned>(
        std::max(unum_getAttribute(format.get(), UNUM_MINIMUM_GROUPING_DIGITS), 1));
    for (const AffixRow& row : kAffixes)
        symbols.*row.text = text_from([&](char16_t* to, std::int32_t size, UErrorCode* status) {
            return unum_getTextAttribute(format.get(), row.attribute, to, size, status);
        });
    return symbols;
}

// What differs from what the format was opened with.
void change(const OpenFormat& format, const NumberSymbols& from, const NumberSymbols& to) {
    UErrorCode status = U_ZERO_ERROR;
    for (const auto& [symbol, unit] : kSeparators)
        if (to.*unit != from.*unit) unum_setSymbol(format.get(), symbol, &(to.*unit), 1, &status);
    for (const auto& [attribute, size] : kSizes)
        if (to.*size != from.*size) // in 16 bits
            unum_setAttribute(format.get(), attribute,
                              static_cast<std::int32_t>(std::min(to.*size, 0x7FFFu)));
    for (const auto& [attribute, text] : kAffixes)
        if (to.*text != from.*text)
            unum_setTextAttribute(format.get(), attribute, (to.*text).c_str(),
                                  static_cast<std::int32_t>((to.*text).size()), &status);
    if (U_FAILURE(status)) throw std::bad_alloc();
}

// The digits of a number in a buffer, or in memory where there are more.
class Decimal {
public:
    explicit Decimal(const Numeric& value) {
        const auto [end, error] = to_chars(buffer_, std::end(buffer_), value);
        if (error == std::errc()) {
            text_ = {buffer_, end};
        } else {
            value.toString(long_);
            text_ = long_.view();
        }
    }
    Decimal(const Decimal&) = delete;
    Decimal& operator=(const Decimal&) = delete;

    operator std::string_view() const noexcept { return text_; }

private:
    char buffer_[kBuffer];
    stdx::string long_;
    std::string_view text_;
};

// The largest number that fits; nothing if no digit does.
stdx::ustring write_nines(const NumberSymbols& symbols, bool negative, unsigned maxInteger,
                          unsigned maxFraction, const NumberLimits& limits) {
    char digits[kBuffer];
    char* end = digits;
    if (negative) *end++ = '-';
    const auto put_nines = [&](unsigned count) {
        const auto room = static_cast<unsigned>(std::end(digits) - end);
        end = std::fill_n(end, std::min(count, room), '9');
    };
    put_nines(maxInteger);
    if (maxFraction != 0 && end + 1 < std::end(digits)) {
        *end++ = '.';
        put_nines(maxFraction);
    }
    if (maxInteger == 0 && maxFraction == 0) return {};
    return write_number(symbols, {digits, end}, limits);
}

// What ICU reads as "-1.5E+3"; false for its words for infinity and for no number.
bool read_decimal(const char* text, Numeric& value) {
    Numeric number;
    number.fromString(text, &text);
    if (*text == 'E' || *text == 'e') {
        const int exponent = string_tol(text + 1, &text);
        if (exponent > kMostExponent || exponent < -kMostExponent) return false;
        number *= Numeric(10).pow(Numeric(exponent));
    }
    if (*text != 0) return false;
    value = std::move(number);
    return true;
}

// Whether the text is a number with a point in the form of `Numeric`, and the point is no mark of the
// format. ICU takes it for one between groups, and 0.125 would be 125 where 0.25 is no number.
bool has_foreign_point(const NumberSymbols& symbols, std::u16string_view text) {
    if (symbols.decimalSeparator == u'.' || symbols.groupingSeparator == u'.') return false;
    if (text.find(u'.') == text.npos) return false;
    while (is_space(text.back())) text.remove_suffix(1);
    return Numeric::parse(text).has_value();
}

} // namespace

class NumericFormat::Record final : public LocaleRecord<Record> {
public:
    static Record& of(const Locale& locale) {
        static constinit PerLocale<Record> records;
        return records.of(locale, [&] { return new Record(locale.key()); });
    }

    explicit Record(const char* key) : parser_(open(key)), symbols(symbols_of(parser_)) {}
    Record(const Record& other) : LocaleRecord(other), symbols(other.symbols) {}

    // The symbols were changed, by the only owner.
    void forget_parser() noexcept { parser_.reset(); }

    // The length of the number in front of the text, which is put into `decimal`; 0 for none.
    std::int32_t parse(const Locale& locale, std::u16string_view text, char (&decimal)[kBuffer]) {
        const std::lock_guard guard(lock_);
        if (!parser_) {
            OpenFormat made = open(locale.key());
            change(made, of(locale).symbols, symbols);
            parser_ = std::move(made);
        }
        UErrorCode status = U_ZERO_ERROR;
        std::int32_t end = 0;
        const int length =
            unum_parseDecimal(parser_.get(), text.data(), static_cast<std::int32_t>(text.size()),
                              &end, decimal, kBuffer, &status);
        return U_SUCCESS(status) && length > 0 && length < static_cast<int>(kBuffer) ? end : 0;
    }

private:
    Mutex lock_;
    OpenFormat parser_; // guarded by lock_; null after a change

public:
    NumberSymbols symbols;
};

NumericFormat::NumericFormat(const Locale& locale)
    : locale_(locale), record_(&Record::of(locale), true) {}

NumericFormat::NumericFormat(const NumericFormat& other) noexcept = default;
NumericFormat& NumericFormat::operator=(const NumericFormat& other) noexcept = default;
NumericFormat::~NumericFormat() = default;

NumberSymbols& NumericFormat::own() {
    if (record_->shared())
        record_ = {new Record(*record_), true};
    else
        record_->forget_parser();
    return record_->symbols;
}

stdx::ustring NumericFormat::format(const Numeric& value) const {
    return write_number(record_->symbols, Decimal(value), {~0u, 1, 0});
}

stdx::ustring NumericFormat::format(const Numeric& value, unsigned maxInteger, unsigned minInteger,
                                    unsigned maxFraction, unsigned minFraction) const {
    NumberLimits limits = {maxInteger, std::min(minInteger, kMostFilled),
                           std::min(minFraction, kMostFilled)};
    if ((maxFraction | minFraction) == 0) limits.minInteger = std::max(limits.minInteger, 1u);
    limits.maxInteger = std::max(limits.maxInteger, limits.minInteger);

    unsigned length = 0, precision = 0;
    value.lengthAndPrecision(length, precision);
    if (length - precision > maxInteger)
        return write_nines(record_->symbols, value.sign() < 0, maxInteger, maxFraction, limits);
    if (precision <= maxFraction) return write_number(record_->symbols, Decimal(value), limits);
    return write_number(record_->symbols, Decimal(value.round(static_cast<int>(maxFraction))),
                        limits);
}

bool NumericFormat::parse(std::u16string_view text, Numeric& value) const {
    const auto isBlank = [](char16_t c) { return is_space(c); };
    const auto begin = std::find_if_not(text.begin(), text.end(), isBlank);
    text.remove_prefix(static_cast<std::size_t>(begin - text.begin()));
    if (read_number(record_->symbols, text, value)) return true;
    if (text.empty() || text.size() > kMostParsed) return false;
    if (has_foreign_point(record_->symbols, text)) return false;

    char decimal[kBuffer];
    const std::int32_t end = record_->parse(locale_, text, decimal);
    return end != 0 && std::all_of(text.begin() + end, text.end(), isBlank) &&
           read_decimal(decimal, value);
}

char16_t NumericFormat::getDecimalSeparator() const noexcept {
    return record_->symbols.decimalSeparator;
}

char16_t NumericFormat::getGroupingSeparator() const noexcept {
    return record_->symbols.groupingSeparator;
}

unsigned NumericFormat::getGroupingSize() const noexcept {
    return record_->symbols.groupingSize;
}

unsigned NumericFormat::getSecondaryGroupingSize() const noexcept {
    return record_->symbols.secondaryGroupingSize;
}

const stdx::ustring& NumericFormat::getPositivePrefix() const noexcept {
    return record_->symbols.positivePrefix;
}

const stdx::ustring& NumericFormat::getPositiveSuffix() const noexcept {
    return record_->symbols.positiveSuffix;
}

const stdx::ustring& NumericFormat::getNegativePrefix() const noexcept {
    return record_->symbols.negativePrefix;
}

const stdx::ustring& NumericFormat::getNegativeSuffix() const noexcept {
    return record_->symbols.negativeSuffix;
}

stdx::ustring NumericFormat::getDigitSymbols() const {
    return {record_->symbols.digits, 10};
}

void NumericFormat::setDecimalSeparator(char16_t separator) {
    own().decimalSeparator = separator;
}

void NumericFormat::setGroupingSeparator(char16_t separator) {
    own().groupingSeparator = separator;
}

void NumericFormat::setGroupingSize(unsigned size) {
    own().groupingSize = size;
}

void NumericFormat::setSecondaryGroupingSize(unsigned size) {
    own().secondaryGroupingSize = size;
}

void NumericFormat::setPositivePrefix(const stdx::ustring& prefix) {
    own().positivePrefix = prefix;
}

void NumericFormat::setPositiveSuffix(const stdx::ustring& suffix) {
    own().positiveSuffix = suffix;
}

void NumericFormat::setNegativePrefix(const stdx::ustring& prefix) {
    own().negativePrefix = prefix;
}

void NumericFormat::setNegativeSuffix(const stdx::ustring& suffix) {
    own().negativeSuffix = suffix;
}

void NumericFormat::setWin32Grouping(std::u16string_view sizes) {
    unsigned found[2] = {};
    int count = 0;
    for (std::size_t at = 0; at != sizes.size() && count != 2;) {
        const auto isDigit = [](char16_t c) { return c >= u'0' && c <= u'9'; };
        if (!isDigit(sizes[at])) {
            ++at;
            continue;
        }
        std::uint64_t size = 0;
        for (; at != sizes.size() && isDigit(sizes[at]); ++at)
            size = std::min<std::uint64_t>(size * 10 + sizes[at] - u'0', kEndlessGroup);
        found[count++] = static_cast<unsigned>(size);
    }
    NumberSymbols& symbols = own();
    symbols.groupingSize = found[0];
    if (count != 0) symbols.secondaryGroupingSize = count == 1 ? kEndlessGroup : found[1];
}

void NumericFormat::setWin32NegativeOrder(unsigned order) {
    static constexpr const char16_t* kAround[][2] = {
        {u"(", u")"}, {u"-", u""}, {u"- ", u""}, {u"", u"-"}, {u"", u" -"}};
    if (order >= std::size(kAround)) return;
    NumberSymbols& symbols = own();
    symbols.negativePrefix = kAround[order][0];
    symbols.negativeSuffix = kAround[order][1];
}

} // namespace core
