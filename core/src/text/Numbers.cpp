#include <core/text/Numbers.h>

#include <core/component/IllegalArgumentException.h>
#include <core/text/Characters.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

namespace core {

namespace {

// --- from text ---

template <class T> const T* skip_space(const T* s) noexcept {
    while (is_space(*s)) ++s;
    return s;
}

template <class T> bool is_sign(T c) noexcept {
    return c == T('+') || c == T('-');
}

template <class T> void set_end(const T** end, const T* at) noexcept {
    if (end) *end = at;
}

enum class Sign { Allowed, Refused };

// The digits' value modulo 2^64, of which the caller takes the bits that it needs.
template <class T> std::uint64_t read_integer(const T* s, const T** end, Sign sign) noexcept {
    set_end(end, s);
    const T* at = skip_space(s);
    const bool negative = sign == Sign::Allowed && *at == T('-');
    if (sign == Sign::Allowed && is_sign(*at)) ++at;
    if (digit(*at) < 0) return 0;
    std::uint64_t value = 0;
    for (int d; (d = digit(*at)) >= 0; ++at) value = value * 10 + static_cast<unsigned>(d);
    set_end(end, at);
    return negative ? std::uint64_t{0} - value : value;
}

// A number taken out of a text, in ASCII as std::from_chars takes it: no "+" in front.
class CollectedNumber {
public:
    // Reads on from `at`; leaves it behind the number, or where it was if there is none.
    template <class T> bool collect(const T*& at) {
        const T* next = at;
        if (is_sign(*next)) take_sign(*next++);
        unsigned digits = take_digits(next);
        wholeDigits_ = digits;
        if (*next == T('.')) {
            text_.push_back('.');
            digits += take_digits(++next);
        }
        if (digits == 0) return false;
        take_exponent(next);
        at = next;
        return true;
    }

    double value() const {
        double value = 0;
        const auto result = std::from_chars(text_.c_str(), text_.c_str() + text_.size(), value);
        if (result.ec == std::errc::result_out_of_range) value = is_large() ? HUGE_VAL : 0;
        return negative_ ? -value : value;
    }

private:
    template <class T> void take_sign(T sign) { negative_ = sign == T('-'); }

    template <class T> unsigned take_digits(const T*& at) {
        const T* const start = at;
        for (int d; (d = digit(*at)) >= 0; ++at) text_.push_back(static_cast<char>('0' + d));
        return static_cast<unsigned>(at - start);
    }

    // An exponent counts only with a digit: "1e" is 1 with an "e" behind it.
    template <class T> void take_exponent(const T*& at) {
        if (*at != T('e') && *at != T('E')) return;
        const T* const sign = at + 1;
        const T* first = is_sign(*sign) ? sign + 1 : sign;
        if (digit(*first) < 0) return;
        text_.push_back('e');
        if (*sign == T('-')) text_.push_back('-');
        take_digits(first);
        at = first;
    }

    // Of a number that no double comes near: whether it is too large, not too small. The power of
    // ten of its leading digit is far from 0 and tells.
    bool is_large() const {
        const std::string_view text = text_.view();
        const auto leading = static_cast<std::int64_t>(text.find_first_of("123456789"));
        std::int64_t exponent = 0;
        if (const std::size_t e = text.find('e'); e != text.npos) {
            const char* const digits = text.data() + e + 1;
            std::int32_t written = 0;
            const auto read = std::from_chars(digits, text.data() + text.size(), written);
            if (read.ec == std::errc::result_out_of_range) return *digits != '-';
            exponent = written;
        }
        return exponent + std::int64_t{wholeDigits_} > leading;
    }

    stdx::string text_;
    unsigned wholeDigits_ = 0;
    bool negative_ = false;
};

template <class T> double read_double(const T* s, const T** end) {
    set_end(end, s);
    const T* at = skip_space(s);
    CollectedNumber number;
    if (!number.collect(at)) return 0;
    set_end(end, at);
    return number.value();
}

// --- to text ---

// The digits of a number, with a sign if it is shown.
class NumberText {
public:
    template <class Value> NumberText(Value value, int radix) {
        ORB_ASSERT(radix >= 2 && radix <= 36);
        char* const last = std::end(units_);
        if (radix == 10)
            end_ = std::to_chars(units_, last, value).ptr;
        else
            end_ = std::to_chars(units_, last, std::make_unsigned_t<Value>(value), radix).ptr;
    }
    NumberText(const NumberText&) = delete; // end_ points into the object
    NumberText& operator=(const NumberText&) = delete;

    const char* begin() const { return units_; }
    const char* end() const { return end_; }

private:
    char units_[64]; // as many bits as a value can have
    const char* end_;
};

template <class T> T* write(const NumberText& text, T* to) {
    T* const end = std::copy(text.begin(), text.end(), to);
    *end = T();
    return end;
}

template <class String> void replace(const NumberText& text, String& to) {
    String replaced(static_cast<unsigned>(text.end() - text.begin()), 0);
    std::copy(text.begin(), text.end(), replaced.data());
    to = std::move(replaced);
}

// ---- Sixteen digits of a double.

// A number of sixteen digits, and the decimal exponent of the first.
struct SixteenDigits {
    std::uint64_t number;
    int exponent;
};

constexpr std::uint64_t kLeastOfSixteen = 1'000'000'000'000'000;

SixteenDigits sixteen_digits_slowly(double value) {
    char text[32]; // "d.ddddddddddddddde[+-]x"
    const auto end = std::to_chars(text, std::end(text), value, std::chars_format::scientific, 15);
    SixteenDigits digits = {0, 0};
    text[1] = text[0];
    std::from_chars(text + 1, text + 17, digits.number);
    std::from_chars(text[18] == '+' ? text + 19 : text + 18, end.ptr, digits.exponent);
    return digits;
}

// For what is not far from 1 the digits are the whole part of mantissa * 5^p * 2^q, which fits into
// 128 bits: exact, half to even.
SixteenDigits sixteen_digits(double value) {
    __extension__ typedef unsigned __int128 Word;
    constexpr int kMostPower = 27; // 5^27 has 63 bits
    const auto bits = std::bit_cast<std::uint64_t>(value);
    const int binary = static_cast<int>(bits >> 52) - 1075;
    const std::uint64_t mantissa = (bits & ((std::uint64_t{1} << 52) - 1)) | std::uint64_t{1} << 52;
    // The exponent of the first digit, or one less: log10(2) is a bit more than 1233/4096.
    for (int exponent = (binary + 52) * 1233 >> 12;; ++exponent) {
        const int power = 15 - exponent;
        if (power < 0 || power > kMostPower || binary < -1074) return sixteen_digits_slowly(value);
        std::uint64_t five = 1;
        for (int i = 0; i != power; ++i) five *= 5;
        const Word product = Word{mantissa} * five;
        const int shift = -(binary + power);
        if (shift <= 0 || shift > 127) return sixteen_digits_slowly(value);
        const Word rest = product & ((Word{1} << shift) - 1), half = Word{1} << (shift - 1);
        auto number = static_cast<std::uint64_t>(product >> shift);
        if (rest > half || (rest == half && number % 2 != 0)) ++number;
        if (number < kLeastOfSixteen * 10) return {number, exponent};
    }
}

} // namespace

std::int32_t string_tol(const char16_t* s, const char16_t** end) noexcept {
    return static_cast<std::int32_t>(read_integer(s, end, Sign::Allowed));
}
std::int32_t string_tol(const char* s, const char** end) noexcept {
    return static_cast<std::int32_t>(read_integer(s, end, Sign::Allowed));
}
std::uint32_t string_toul(const char16_t* s, const char16_t** end) noexcept {
    return static_cast<std::uint32_t>(read_integer(s, end, Sign::Refused));
}
std::uint32_t string_toul(const char* s, const char** end) noexcept {
    return static_cast<std::uint32_t>(read_integer(s, end, Sign::Refused));
}
std::int64_t string_toi64(const char16_t* s, const char16_t** end) noexcept {
    return static_cast<std::int64_t>(read_integer(s, end, Sign::Allowed));
}
std::int64_t string_toi64(const char* s, const char** end) noexcept {
    return static_cast<std::int64_t>(read_integer(s, end, Sign::Allowed));
}
std::uint64_t string_toui64(const char16_t* s, const char16_t** end) noexcept {
    return read_integer(s, end, Sign::Refused);
}
std::uint64_t string_toui64(const char* s, const char** end) noexcept {
    return read_integer(s, end, Sign::Refused);
}

double string_tod(const char16_t* s, const char16_t** end) {
    return read_double(s, end);
}
double string_tod(const char* s, const char** end) {
    return read_double(s, end);
}

#define ORB_NUMBER_TO_TEXT(NAME, VALUE)                                                            \
    stdx::ustring NAME(VALUE value, int radix) {                                                   \
        stdx::ustring text;                                                                        \
        replace(NumberText(value, radix), text);                                                   \
        return text;                                                                               \
    }                                                                                              \
    void NAME(VALUE value, stdx::ustring& to, int radix) {                                         \
        replace(NumberText(value, radix), to);                                                     \
    }                                                                                              \
    void NAME(VALUE value, stdx::string& to, int radix) {                                          \
        replace(NumberText(value, radix), to);                                                     \
    }                                                                                              \
    char16_t* NAME(VALUE value, char16_t* to, int radix) {                                         \
        return write(NumberText(value, radix), to);                                                \
    }                                                                                              \
    char* NAME(VALUE value, char* to, int radix) {                                                 \
        return write(NumberText(value, radix), to);                                                \
    }

ORB_NUMBER_TO_TEXT(string_lto, std::int32_t)
ORB_NUMBER_TO_TEXT(string_ulto, std::uint32_t)
ORB_NUMBER_TO_TEXT(string_i64to, std::int64_t)
ORB_NUMBER_TO_TEXT(string_ui64to, std::uint64_t)

stdx::ustring string_dto(double value) {
    char16_t text[24];
    return stdx::ustring(text, string_dto(value, text));
}

char16_t* string_dto(double value, char16_t* to) noexcept {
    const auto word = [to](std::u16string_view text) {
        return std::copy(text.begin(), text.end(), to);
    };
    if (value == 0) return word(u"0");
    if (std::isnan(value)) return word(u"nan");
    if (std::isinf(value)) return word(value < 0 ? u"-inf" : u"inf");

    const auto [number, exponent] = sixteen_digits(std::fabs(value));
    char digits[17];
    std::to_chars(digits, std::end(digits), number);
    const auto n = static_cast<int>(std::string_view(digits, 16).find_last_not_of('0')) + 1;

    if (value < 0) *to++ = u'-';
    const bool isPlain = exponent >= 0 && exponent < n;
    const int whole = isPlain ? exponent + 1 : 1;
    to = std::copy(digits, digits + whole, to);
    if (whole < n) *to++ = u'.';
    to = std::copy(digits + whole, digits + n, to);
    if (!isPlain) {
        char power[8];
        *to++ = u'e';
        to = std::copy(power, std::to_chars(power, std::end(power), exponent).ptr, to);
    }
    return to;
}

void string_dto(double value, stdx::ustring& to) {
    to = string_dto(value);
}

} // namespace core
