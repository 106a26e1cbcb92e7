#include "DateSymbols.h"

#include <core/numbers/Date.h>
#include <core/text/Characters.h>

#include "DatePattern.h"

#include <cstring>

namespace core {
namespace {

// Text that grows in a buffer, and in memory beyond that.
class TextBuffer {
public:
    void put(std::u16string_view text) {
        if (text.size() > std::size(buffer_) - size_) {
            long_.append(buffer_, static_cast<unsigned>(std::exchange(size_, 0)));
            if (text.size() > std::size(buffer_)) {
                long_.append(text);
                return;
            }
        }
        std::memcpy(buffer_ + size_, text.data(), text.size() * sizeof *buffer_);
        size_ += text.size();
    }

    stdx::ustring take() {
        if (long_.empty()) return {buffer_, static_cast<unsigned>(size_)};
        long_.append(buffer_, static_cast<unsigned>(size_));
        return std::move(long_);
    }

private:
    char16_t buffer_[1'024];
    std::size_t size_ = 0;
    stdx::ustring long_;
};

// As ICU has them where nothing is set.
struct Fields {
    int year = 1970, month = 1, day = 1, hour = 0, minute = 0, second = 0;
};

class DateWriter {
public:
    DateWriter(const DateSymbols& symbols, const Date& date) : symbols_(symbols), date_(date) {
        date.split(at_.year, at_.month, at_.day, at_.hour, at_.minute, at_.second);
    }

    // False for what only ICU writes.
    bool put_field(char16_t letter, std::size_t run) {
        switch (letter) {
        case u'y':
            return put_year(run);
        case u'M':
            return put_month(symbols_.months, symbols_.shortMonths, run);
        case u'L':
            return put_month(symbols_.aloneMonths, symbols_.aloneShortMonths, run);
        case u'd':
            return put_number(at_.day, run);
        case u'H':
            return put_number(at_.hour, run);
        case u'h':
            return put_number(at_.hour % 12 == 0 ? 12 : at_.hour % 12, run);
        case u'm':
            return put_number(at_.minute, run);
        case u's':
            return put_number(at_.second, run);
        case u'E':
            return put_week_day(run);
        case u'a':
            return put_name(symbols_.dayHalves[at_.hour / 12], run <= 4);
        default:
            return false;
        }
    }

    void put_text(std::u16string_view text) { text_.put(text); }

    stdx::ustring take() { return text_.take(); }

private:
    bool put_year(std::size_t run) {
        if (run > 4) return false;
        if (run == 1) return put_number(at_.year % 100, 1);
        if (run == 2) return put_number(at_.year % 100, 2);
        put_digits(at_.year, run);
        return true;
    }

    bool put_month(const stdx::ustring (&names)[12], const stdx::ustring (&shortNames)[12],
                   std::size_t run) {
        const auto index = static_cast<std::size_t>(at_.month - 1);
        if (run > 2) return put_name((run == 3 ? shortNames : names)[index], run <= 4);
        return put_number(at_.month, run);
    }

    bool put_week_day(std::size_t run) {
        const auto index = static_cast<std::size_t>(date_.getWeekDay()) % 7;
        return put_name((run == 4 ? symbols_.weekDays : symbols_.shortWeekDays)[index], run <= 4);
    }

    bool put_name(const stdx::ustring& name, bool known) {
        if (known) text_.put(name);
        return known;
    }

    bool put_number(int value, std::size_t run) {
        if (run > 2) return false;
        put_digits(value, run);
        return true;
    }

    // Filled up with zeros to `least` digits, 4 at most.
    void put_digits(int value, std::size_t least) {
        char16_t digits[4];
        char16_t* begin = std::end(digits);
        for (; value != 0 || static_cast<std::size_t>(std::end(digits) - begin) < least;
             value /= 10)
            *--begin = symbols_.digits[value % 10];
        text_.put({begin, std::end(digits)});
    }

    const DateSymbols& symbols_;
    const Date& date_;
    Fields at_;
    TextBuffer text_;
};

class DateReader {
public:
    DateReader(const DateSymbols& symbols, std::u16string_view text) noexcept
        : symbols_(symbols), text_(text) {}

    bool take_field(char16_t letter, std::size_t run) noexcept {
        switch (letter) {
        case u'y':
            return run == 4 && take_number(at_.year, 4, 4);
        case u'M':
        case u'L':
            return take_short(at_.month, run);
        case u'd':
            return take_short(at_.day, run);
        case u'H':
            return take_short(at_.hour, run);
        case u'm':
            return take_short(at_.minute, run);
        case u's':
            return take_short(at_.second, run);
        default:
            return false;
        }
    }

    void take_text(std::u16string_view text) noexcept {
        good_ = good_ && text_.starts_with(text);
        if (good_) text_.remove_prefix(text.size());
    }

    bool finish(Date& date) const noexcept {
        Date found;
        if (!good_ ||
            !std::all_of(text_.begin(), text_.end(), [](char16_t c) { return is_space(c); }))
            return false;
        if (!Date::compose(at_.year, at_.month, at_.day, at_.hour, at_.minute, at_.second, found))
            return false;
        date = found;
        return true;
    }

private:
    bool take_short(int& field, std::size_t run) noexcept {
        return run <= 2 && take_number(field, run, 2);
    }

    // So many digits and no more behind them.
    bool take_number(int& field, std::size_t least, std::size_t most) noexcept {
        std::size_t count = 0;
        int value = 0;
        for (; count != text_.size() && is_digit(text_[count]); ++count) {
            const int digit = text_[count] - symbols_.digits[0];
            if (count == most || digit < 0 || digit > 9 || symbols_.digits[digit] != text_[count])
                return false;
            value = value * 10 + digit;
        }
        text_.remove_prefix(count);
        field = value;
        return good_ && count >= least;
    }

    const DateSymbols& symbols_;
    std::u16string_view text_;
    Fields at_;
    bool good_ = true;
};

// The pattern with each run of `y` replaced by what `replacement` makes of its length.
template <class Replace>
stdx::ustring with_years(std::u16string_view pattern, Replace&& replacement) {
    stdx::ustring replaced;
    bool quoted = false;
    for (std::size_t at = 0; at != pattern.size();) {
        const char16_t c = pattern[at];
        quoted = quoted != (c == u'\'');
        if (quoted || c != u'y') {
            replaced.push_back(c);
            ++at;
            continue;
        }
        const std::size_t run = std::min(pattern.find_first_not_of(c, at), pattern.size()) - at;
        replaced.append(replacement(static_cast<unsigned>(run)));
        at += run;
    }
    return replaced;
}

} // namespace

std::optional<stdx::ustring> write_date(const DateSymbols& symbols, const Date& date,
                                        std::u16string_view pattern) {
    if (date.getMonth() == 0) return {}; // no date
    DateWriter writer(symbols, date);
    const bool whole = walk_date_pattern(
        pattern, [&](char16_t letter, std::size_t run) { return writer.put_field(letter, run); },
        [&](std::u16string_view text) { writer.put_text(text); });
    if (!whole) return {};
    return writer.take();
}

bool read_date(const DateSymbols& symbols, std::u16string_view text, std::u16string_view pattern,
               Date& date) {
    DateReader reader(symbols, text);
    return walk_date_pattern(
               pattern,
               [&](char16_t letter, std::size_t run) { return reader.take_field(letter, run); },
               [&](std::u16string_view literal) { reader.take_text(literal); }) &&
           reader.finish(date);
}

stdx::ustring with_short_year(const DateSymbols& symbols, int year, std::u16string_view pattern) {
    stdx::ustring digits;
    if (year / 10 % 10 != 0) digits.push_back(symbols.digits[year / 10 % 10]);
    digits.push_back(symbols.digits[year % 10]);
    return with_years(pattern,
                      [&](unsigned run) { return run == 1 ? digits : stdx::ustring(run, u'y'); });
}

stdx::ustring with_full_years(std::u16string_view pattern) {
    constexpr unsigned kMostPattern = 512;
    stdx::ustring full =
        with_years(pattern, [](unsigned run) { return stdx::ustring(std::max(run, 4u), u'y'); });
    if (full.size() > kMostPattern) full.resize(kMostPattern);
    return full;
}

} // namespace core
