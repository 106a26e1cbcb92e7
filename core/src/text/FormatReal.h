// The text of a real number for the directives e, f and g, without sign and padding.
#pragma once

#include "FormatArguments.h"

#include <core/text/Characters.h>

#include <algorithm>
#include <charconv>
#include <clocale>
#include <cmath>
#include <iterator>
#include <limits>
#include <string_view>
#include <system_error>
#include <type_traits>

namespace core {

// While it lives, the thread is in the locale "C". libstdc++ prints a long double by the C library
// and leaves some forms with the decimal point of the locale.
class PlainLocale {
public:
    PlainLocale() : before_(uselocale(plain())) {}
    ~PlainLocale() { uselocale(before_); }
    PlainLocale(const PlainLocale&) = delete;
    PlainLocale& operator=(const PlainLocale&) = delete;

private:
    static locale_t plain() {
        static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
        return locale;
    }

    locale_t before_;
};

struct AnyLocale {};

template <class Number> class RealText {
public:
    RealText(const Directive& d, Number value) : value_(value) {
        [[maybe_unused]] const std::conditional_t<std::is_same_v<Number, long double>, PlainLocale,
                                                  AnyLocale>
            locale{};
        const int precision = d.precision < 0 ? 6 : std::min(d.precision, kMaxField);
        switch (d.conversion | 0x20) {
        case 'e':
            write(std::chars_format::scientific, precision);
            break;
        case 'f':
            write(std::chars_format::fixed, precision);
            break;
        default:
            d.alternate ? write_whole_general(std::max(precision, 1))
                        : write(std::chars_format::general, precision);
        }
        if (d.alternate && std::isfinite(value)) write_point();
        if (d.conversion < 'a') to_upper(text_, text_ + size_, text_);
    }
    RealText(const RealText&) = delete; // text_ may point into the object
    RealText& operator=(const RealText&) = delete;

    std::string_view view() const { return {text_, size_}; }

private:
    void write(std::chars_format form, int precision) {
        // Room for a point is kept back.
        auto result = std::to_chars(text_, std::end(short_) - 1, value_, form, precision);
        if (result.ec != std::errc()) {
            constexpr int kDigits = std::numeric_limits<Number>::max_exponent10 + 16;
            long_.resize(static_cast<unsigned>(kDigits + precision));
            text_ = long_.data();
            result = std::to_chars(text_, text_ + long_.size() - 1, value_, form, precision);
        }
        size_ = static_cast<std::size_t>(result.ptr - text_);
    }

    // "%#g": the general form that keeps its trailing zeros. The exponent after rounding chooses.
    void write_whole_general(int digits) {
        write(std::chars_format::scientific, digits - 1);
        const std::size_t mark = view().rfind('e');
        if (mark == std::string_view::npos) return; // no finite number
        int exponent = 0;
        std::from_chars(text_ + mark + (text_[mark + 1] == '+' ? 2 : 1), text_ + size_, exponent);
        if (exponent < -4 || exponent >= digits) return;
        text_ = short_;
        write(std::chars_format::fixed, digits - 1 - exponent);
    }

    void write_point() {
        if (view().find('.') != std::string_view::npos) return;
        const std::size_t place = std::min(view().find('e'), size_);
        std::copy_backward(text_ + place, text_ + size_, text_ + size_ + 1);
        text_[place] = '.';
        ++size_;
    }

    Number value_;
    char short_[128];
    stdx::string long_;
    char* text_ = short_;
    std::size_t size_ = 0;
};

} // namespace core
