// The engine of the printf family. It goes once through the format; each directive takes its
// argument from a source and puts its field, block by block, into an output.
#include <core/text/Format.h>

#include "FormatArguments.h"
#include "FormatReal.h"

#include <core/text/Characters.h>
#include <core/text/Compare.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace core {

namespace {

template <class T> using String = elm::BasicString<T, 0u, 0u, std::allocator>;
template <class T> using View = std::basic_string_view<T>;

// Takes the text in blocks.
template <class T> class Output {
public:
    void put(View<T> text) {
        if (text.size() > kBlock - used_) {
            flush();
            if (text.size() > kBlock) return deliver(text);
        }
        used_ =
            static_cast<std::size_t>(std::copy(text.begin(), text.end(), block_ + used_) - block_);
    }

    void fill(T unit, std::size_t n) {
        while (n != 0) {
            if (used_ == kBlock) flush();
            const std::size_t some = std::min(n, kBlock - used_);
            std::fill_n(block_ + used_, some, unit);
            used_ += some;
            n -= some;
        }
    }

    // ASCII.
    void put_ascii(std::string_view text) requires(sizeof(T) != 1) {
        for (const char c : text) fill(widen(c), 1);
    }
    void put_ascii(std::string_view text) requires(sizeof(T) == 1) { put(text); }

    void flush() {
        deliver({block_, used_});
        used_ = 0;
    }

    std::size_t written() const noexcept { return delivered_ + used_; }

protected:
    ~Output() = default;

private:
    virtual void write(View<T> text) = 0;

    void deliver(View<T> text) {
        write(text);
        delivered_ += text.size();
    }

    static constexpr std::size_t kBlock = 256;
    T block_[kBlock];
    std::size_t used_ = 0;
    std::size_t delivered_ = 0;
};

template <class T> class StringOutput final : public Output<T> {
public:
    String<T>& text() noexcept { return text_; }

private:
    void write(View<T> text) override { text_.append(text); }

    String<T> text_;
};

// Memory of the caller; what does not fit is counted only.
template <class T> class MemoryOutput final : public Output<T> {
public:
    MemoryOutput(T* to, std::size_t size) : to_(to), room_(size) {}

    void terminate() {
        if (room_ != 0) *to_ = T();
    }

private:
    void write(View<T> text) override {
        if (room_ == 0) return;
        const std::size_t n = std::min(text.size(), room_ - 1);
        to_ = std::copy_n(text.data(), n, to_);
        room_ -= n;
    }

    T* to_;
    std::size_t room_; // with the terminator
};

// What a number's field consists of: a sign or "0x", zeros, and the rest.
struct NumberField {
    std::string_view prefix;
    std::size_t zeros = 0;
    std::string_view body;
    bool mayPadWithZeros = true;
};

std::string_view sign_of(const Directive& d, bool negative) {
    return negative ? "-" : d.plus ? "+" : d.blank ? " " : "";
}

template <class T> class Formatter {
public:
    Formatter(View<T> format, FormatSource& source, Output<T>& output)
        : format_(format), source_(source), out_(output) {}

    void run() {
        for (;;) {
            const std::size_t percent = std::min(format_.find(T('%'), at_), format_.size());
            out_.put(format_.substr(at_, percent - at_));
            at_ = percent;
            if (at_ == format_.size()) break;
            const Directive d = parse();
            if (!put(d)) {
                source_.unknown(d);
                out_.put(format_.substr(d.position, at_ - d.position));
            }
        }
        source_.finish(format_.size());
        out_.flush();
    }

private:
    // --- the directive ---

    T peek() const { return at_ < format_.size() ? format_[at_] : T(); }

    bool skip(std::string_view letters) {
        if (format_.size() - at_ < letters.size() ||
            !std::equal(letters.begin(), letters.end(), format_.begin() + static_cast<long>(at_),
                        [](char letter, T c) { return T(letter) == c; }))
            return false;
        at_ += letters.size();
        return true;
    }

    Directive parse() {
        Directive d;
        d.position = at_++;
        while (bool* const flag = flag_of(d, peek())) {
            *flag = true;
            ++at_;
        }
        d.width = parse_number(d);
        if (d.width < 0) {
            d.left = true;
            d.width = d.width < -kMaxField ? kMaxField : -d.width;
        }
        d.width = std::min(d.width, kMaxField);
        if (skip(".")) d.precision = std::max(parse_number(d), -1);
        d.length = parse_length();
        if (at_ < format_.size()) {
            const T c = format_[at_++];
            d.conversion = narrow_conversion(c);
        }
        return d;
    }

    static bool* flag_of(Directive& d, T c) {
        switch (c) {
        case T('-'):
            return &d.left;
        case T('+'):
            return &d.plus;
        case T(' '):
            return &d.blank;
        case T('#'):
            return &d.alternate;
        case T('0'):
            return &d.zero;
        default:
            return nullptr;
        }
    }

    static char narrow_conversion(T c) { return c > 0 && c < 0x7F ? static_cast<char>(c) : '\0'; }

    // A number or "*"; 0 for none.
    int parse_number(const Directive& d) {
        if (skip("*")) return source_.star(d);
        std::int64_t number = 0;
        for (; peek() >= T('0') && peek() <= T('9'); ++at_)
            number = std::min<std::int64_t>(number * 10 + (peek() - T('0')),
                                            std::numeric_limits<int>::max());
        return static_cast<int>(number);
    }

    Length parse_length() {
        static constexpr struct {
            std::string_view letters;
            Length length;
        } kLengths[] = {
            {"h", Length::Short},    {"l", Length::Long},     {"L", Length::Large},
            {"I64", Length::Bits64}, {"I32", Length::Bits32},
        };
        for (const auto& row : kLengths)
            if (skip(row.letters)) return row.length;
        return Length::None;
    }

    // --- the field ---

    // False if there is no such conversion.
    bool put(const Directive& d) {
        switch (d.conversion) {
        case '%':
            out_.fill(T('%'), 1);
            return true;
        case 'd':
        case 'i':
            put_signed(d);
            return true;
        case 'u':
            put_unsigned(d, 10, "");
            return true;
        case 'o':
            put_unsigned(d, 8, "");
            return true;
        case 'x':
            put_unsigned(d, 16, "0x");
            return true;
        case 'X':
            put_unsigned(d, 16, "0X");
            return true;
        case 'e':
        case 'E':
        case 'f':
        case 'g':
        case 'G':
            std::visit([&](auto value) { put_real(d, value); }, source_.real(d));
            return true;
        case 'c':
            std::visit([&](auto unit) { put_unit(d, unit); }, source_.unit(d));
            return true;
        case 's':
            std::visit([&](auto text) { put_text(d, text); }, source_.text(d));
            return true;
        case 'p':
            put_integer(d, source_.pointer(d), 16, "0x");
            return true;
        case 'n':
            source_.store_count(d, out_.written());
            return true;
        default:
            return false;
        }
    }

    void put_signed(const Directive& d) {
        const Integer value = source_.signed_integer(d);
        put_integer(d, value.magnitude, 10, sign_of(d, value.negative));
    }

    void put_unsigned(const Directive& d, int radix, std::string_view prefix) {
        const std::uint64_t value = source_.unsigned_integer(d);
        put_integer(d, value, radix, d.alternate && value != 0 ? prefix : "");
    }

    void put_integer(const Directive& d, std::uint64_t value, int radix, std::string_view prefix) {
        char digits[22] = {}; // 64 bits in radix 8
        char* end = std::to_chars(digits, std::end(digits), value, radix).ptr;
        if (d.conversion == 'X') to_upper(digits, end, digits);
        if (value == 0 && d.precision == 0) end = digits;
        const auto size = static_cast<int>(end - digits);
        int zeros = std::max(std::min(d.precision, kMaxField) - size, 0);
        const bool beginsWithZero = zeros != 0 || (value == 0 && size != 0);
        if (d.conversion == 'o' && d.alternate && !beginsWithZero) zeros = 1;
        put_number(d, {prefix, static_cast<std::size_t>(zeros), {digits, end}, d.precision < 0});
    }

    template <class Number> void put_real(const Directive& d, Number value) {
        const RealText text(d, std::fabs(value));
        const bool negative = std::signbit(value);
        put_number(d, {sign_of(d, negative), 0, text.view(), std::isfinite(value)});
    }

    void put_number(const Directive& d, const NumberField& field) {
        const std::size_t size = field.prefix.size() + field.zeros + field.body.size();
        const std::size_t padding = padding_of(d, size);
        const bool byZeros = d.zero && !d.left && field.mayPadWithZeros;
        if (!d.left && !byZeros) out_.fill(T(' '), padding);
        out_.put_ascii(field.prefix);
        out_.fill(T('0'), field.zeros + (byZeros ? padding : 0));
        out_.put_ascii(field.body);
        if (d.left) out_.fill(T(' '), padding);
    }

    static std::size_t padding_of(const Directive& d, std::size_t size) {
        const auto width = static_cast<std::size_t>(d.width);
        return width > size ? width - size : 0;
    }

    void put_field(const Directive& d, View<T> text) {
        const std::size_t padding = padding_of(d, text.size());
        if (!d.left) out_.fill(T(' '), padding);
        out_.put(text);
        if (d.left) out_.fill(T(' '), padding);
    }

    void put_unit(const Directive& d, T unit) { put_field(d, {&unit, 1}); }

    template <class U> void put_unit(const Directive& d, U unit) {
        if constexpr (sizeof(U) == 1)
            put_unit(d, widen(unit));
        else
            put_field(d, to_utf8({&unit, 1}).view());
    }

    // Text of the other kind is converted; the precision counts units of the argument.
    template <class U> void put_text(const Directive& d, View<U> text) {
        if (d.precision >= 0) text = text.substr(0, static_cast<std::size_t>(d.precision));
        if constexpr (sizeof(U) == sizeof(T))
            put_field(d, text);
        else if constexpr (sizeof(U) == 1)
            put_field(d, from_utf8(text).view());
        else
            put_field(d, to_utf8(text).view());
    }

    View<T> format_;
    FormatSource& source_;
    Output<T>& out_;
    std::size_t at_ = 0; // the next unit of the format
};

// A length as C tells it.
int count_of(std::size_t n) {
    return static_cast<int>(std::min<std::size_t>(n, std::numeric_limits<int>::max()));
}

template <class T> String<T> formatted(View<T> format, FormatSource& source) {
    StringOutput<T> output;
    Formatter<T>(format, source, output).run();
    return std::move(output.text());
}

template <class T> int print(String<T>& to, const T* format, std::va_list list) {
    ListSource<T> source(list);
    to = formatted<T>(format, source);
    return count_of(to.size());
}

template <class T> int print(T* to, std::size_t size, const T* format, std::va_list list) {
    ListSource<T> source(list);
    MemoryOutput<T> output(to, size);
    Formatter<T>(format, source, output).run();
    output.terminate();
    return count_of(output.written());
}

} // namespace

int string_printf(stdx::ustring& to, const char16_t* format, ...) {
    std::va_list list;
    va_start(list, format);
    const int count = print(to, format, list);
    va_end(list);
    return count;
}

int string_printf(stdx::string& to, const char* format, ...) {
    std::va_list list;
    va_start(list, format);
    const int count = print(to, format, list);
    va_end(list);
    return count;
}

int string_nprintf(char16_t* to, std::size_t size, const char16_t* format, ...) {
    std::va_list list;
    va_start(list, format);
    const int count = print(to, size, format, list);
    va_end(list);
    return count;
}

int string_nprintf(char* to, std::size_t size, const char* format, ...) {
    std::va_list list;
    va_start(list, format);
    const int count = print(to, size, format, list);
    va_end(list);
    return count;
}

int string_vprintf(stdx::ustring& to, const char16_t* format, std::va_list arguments) {
    return print(to, format, arguments);
}

int string_vprintf(stdx::string& to, const char* format, std::va_list arguments) {
    return print(to, format, arguments);
}

stdx::ustring format_arguments(std::u16string_view format,
                               std::span<const FormatArgument> arguments) {
    TypedSource source(arguments);
    return formatted(format, source);
}

stdx::string format_arguments(std::string_view format, std::span<const FormatArgument> arguments) {
    TypedSource source(arguments);
    return formatted(format, source);
}

} // namespace core
