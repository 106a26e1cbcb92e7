#include "NumberSymbols.h"

#include "numbers/LimbDigits.h"
#include "numbers/NumericAccess.h"

#include <core/numbers/Numeric.h>
#include <core/text/Characters.h>

#include <algorithm>
#include <cstdint>
#include <new>

namespace core {
namespace {

// The parts of a decimal text that are written.
struct Parts {
    bool negative;
    std::string_view integer; // without zeros in front
    std::string_view fraction;
};

Parts parts_of(std::string_view decimal, unsigned maxInteger) noexcept {
    Parts parts{decimal.starts_with('-'), {}, {}};
    if (parts.negative) decimal.remove_prefix(1);
    // No memchr, which would wait for the digits that were just stored one by one.
    const auto point =
        static_cast<std::size_t>(std::find(decimal.begin(), decimal.end(), '.') - decimal.begin());
    parts.integer = decimal.substr(0, point);
    if (point != decimal.size()) parts.fraction = decimal.substr(point + 1);
    if (parts.integer.size() > maxInteger)
        parts.integer.remove_prefix(parts.integer.size() - maxInteger);
    parts.integer.remove_prefix(std::min(parts.integer.find_first_not_of('0'), //
                                         parts.integer.size()));
    return parts;
}

// How many separators stand among so many integer digits.
std::size_t separators_in(const NumberSymbols& symbols, std::size_t digits) noexcept {
    const std::size_t lowest = symbols.groupingSize;
    if (lowest == 0 || digits < lowest + symbols.minimumGroupingDigits) return 0;
    return 1 + (digits - lowest - 1) / symbols.upper_group();
}

class NumberWriter {
public:
    NumberWriter(const NumberSymbols& symbols, char16_t* out) noexcept
        : symbols_(symbols), out_(out) {}

    void put(std::u16string_view text) noexcept {
        out_ = std::copy(text.begin(), text.end(), out_);
    }

    void put_zeros(std::size_t count) noexcept {
        out_ = std::fill_n(out_, count, symbols_.digits[0]);
    }

    void put_digits(std::string_view digits) noexcept {
        for (const char digit : digits) *out_++ = symbols_.digits[digit - '0'];
    }

    // Filled up with zeros in front to `count` digits.
    void put_integer(std::string_view digits, std::size_t count, std::size_t separators) noexcept {
        std::size_t zeros = count - digits.size();
        while (count != 0) {
            // The digits behind the separator that is next.
            const std::size_t behind =
                separators != 0 ? symbols_.groupingSize + (separators - 1) * symbols_.upper_group()
                                : 0;
            const std::size_t group = count - behind;
            const std::size_t filled = std::min(zeros, group);
            put_zeros(filled);
            put_digits(digits.substr(0, group - filled));
            digits.remove_prefix(group - filled);
            zeros -= filled;
            count = behind;
            if (separators == 0) break;
            *out_++ = symbols_.groupingSeparator;
            --separators;
        }
    }

    void put_fraction(std::string_view digits, std::size_t count) noexcept {
        if (count == 0) return;
        *out_++ = symbols_.decimalSeparator;
        put_digits(digits);
        put_zeros(count - digits.size());
    }

private:
    const NumberSymbols& symbols_;
    char16_t* out_;
};

// Reads from the front of a text.
class NumberReader {
public:
    NumberReader(const NumberSymbols& symbols, std::u16string_view text) noexcept
        : symbols_(symbols), text_(text) {}

    bool take(std::u16string_view word) noexcept {
        if (!text_.starts_with(word)) return false;
        text_.remove_prefix(word.size());
        return true;
    }

    // The digits here, appended to `to`; returns how many.
    unsigned take_digits(char*& to) noexcept {
        const char* const begin = to;
        for (; !text_.empty(); text_.remove_prefix(1)) {
            const int digit = digit_of(text_.front());
            if (digit < 0) break;
            *to++ = static_cast<char>('0' + digit);
            all_ = all_ * 10 + static_cast<unsigned>(digit);
        }
        const auto count = static_cast<unsigned>(to - begin);
        count_ += count;
        return count;
    }

    // Integer digits in whole groups or in none at all.
    bool take_integer(char*& to) noexcept {
        unsigned size = take_digits(to);
        if (size == 0) return false;
        bool grouped = false;
        while (symbols_.groupingSize != 0 && at_separator_and_digit(symbols_.groupingSeparator)) {
            if (grouped ? size != symbols_.upper_group() : size > symbols_.upper_group())
                return false;
            grouped = true;
            text_.remove_prefix(1);
            size = take_digits(to);
        }
        return !grouped || size == symbols_.groupingSize;
    }

    void take_fraction(char*& to) noexcept {
        if (!at_separator_and_digit(symbols_.decimalSeparator)) return;
        text_.remove_prefix(1);
        *to++ = '.';
        places_ = take_digits(to);
    }

    // What was taken: all digits, and those behind the point.
    unsigned digit_count() const noexcept { return count_; }
    unsigned places() const noexcept { return places_; }
    // Modulo 2^64.
    std::uint64_t digits_as_integer() const noexcept { return all_; }

    bool at_end() const noexcept {
        return std::all_of(text_.begin(), text_.end(), [](char16_t c) { return is_space(c); });
    }

private:
    int digit_of(char16_t c) const noexcept {
        const int digit = c - symbols_.digits[0];
        return digit >= 0 && digit < 10 && symbols_.digits[digit] == c ? digit : -1;
    }

    bool at_separator_and_digit(char16_t separator) const noexcept {
        return text_.size() > 1 && text_[0] == separator && digit_of(text_[1]) >= 0;
    }

    const NumberSymbols& symbols_;
    std::u16string_view text_;
    unsigned count_ = 0;
    unsigned places_ = 0;
    std::uint64_t all_ = 0;
};

} // namespace

stdx::ustring write_number(const NumberSymbols& symbols, std::string_view decimal,
                           const NumberLimits& limits) {
    const Parts parts = parts_of(decimal, limits.maxInteger);
    std::size_t integer = std::max<std::size_t>(parts.integer.size(), limits.minInteger);
    std::size_t fraction = std::max<std::size_t>(parts.fraction.size(), limits.minFraction);
    if (integer == 0 && fraction == 0) ++(limits.maxInteger != 0 ? integer : fraction);
    const std::size_t separators = separators_in(symbols, integer);
    const auto& prefix = parts.negative ? symbols.negativePrefix : symbols.positivePrefix;
    const auto& suffix = parts.negative ? symbols.negativeSuffix : symbols.positiveSuffix;

    const std::size_t size =
        prefix.size() + integer + separators + (fraction != 0 ? fraction + 1 : 0) + suffix.size();
    if (size > 0x7FFFFFFF) throw std::bad_alloc();
    stdx::ustring text;
    text._resize_nofill(static_cast<unsigned>(size));
    NumberWriter writer(symbols, text.data());
    writer.put(prefix);
    writer.put_integer(parts.integer, integer, separators);
    writer.put_fraction(parts.fraction, fraction);
    writer.put(suffix);
    return text;
}

bool read_number(const NumberSymbols& symbols, std::u16string_view text, Numeric& value) {
    constexpr std::size_t kMostText = 128;
    char decimal[kMostText + 1]; // with the terminator
    // A separator that could be taken for something else is left to ICU.
    if (text.size() > kMostText || symbols.decimalSeparator == symbols.groupingSeparator)
        return false;

    NumberReader reader(symbols, text);
    char* end = decimal;
    const bool negative = !symbols.negativePrefix.empty() && reader.take(symbols.negativePrefix);
    if (negative)
        *end++ = '-';
    else if (!symbols.positivePrefix.empty())
        return false;
    if (!reader.take_integer(end)) return false;
    reader.take_fraction(end);
    if (!reader.take(negative ? symbols.negativeSuffix : symbols.positiveSuffix)) return false;
    if (!reader.at_end()) return false;
    // Nearly all numbers are short: an integer of two limbs at most and a fraction of one.
    if (reader.digit_count() <= 2 * kLimbDigits && reader.places() <= kLimbDigits) {
        const unsigned places = reader.places();
        const std::uint64_t all = reader.digits_as_integer(), scale = kPowersOfTen[places];
        const std::uint64_t integer = places == 0 ? all : all / scale;
        const Limb limbs[] = {
            static_cast<Limb>((all - integer * scale) * kPowersOfTen[kLimbDigits - places]),
            static_cast<Limb>(integer % kLimbBase), static_cast<Limb>(integer / kLimbBase)};
        NumericAccess::assign(value, limbs, 3, 1, negative);
        return true;
    }
    return from_chars(decimal, end, value).ec == std::errc();
}

} // namespace core
