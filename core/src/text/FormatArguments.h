// What a directive of a format says, and where its argument comes from: a list of C, or a list of
// typed arguments.
#pragma once

#include <core/component/Utf8.h>
#include <core/text/Format.h>

#include <algorithm>
#include <cstdarg>
#include <cstdint>
#include <variant>

namespace core {

// The widest field and the greatest precision: keeps what a hostile format can ask for in bounds.
inline constexpr int kMaxField = 65'535;

// The length of an argument, by the letters in front of the conversion.
enum class Length { None, Short, Long, Large, Bits32, Bits64 };

struct Directive {
    bool left = false;
    bool plus = false;
    bool blank = false;
    bool alternate = false;
    bool zero = false;
    int width = 0;
    int precision = -1; // -1: not given
    Length length = Length::None;
    char conversion = 0;
    std::size_t position = 0; // of "%" in the format
};

struct Integer {
    std::uint64_t magnitude;
    bool negative;

    static Integer of(std::int64_t value) noexcept {
        const auto bits = static_cast<std::uint64_t>(value);
        return {value < 0 ? std::uint64_t{0} - bits : bits, value < 0};
    }
};

using Real = std::variant<double, long double>;
using AnyText = std::variant<std::string_view, std::u16string_view>;
using AnyUnit = std::variant<char, char16_t>;

// The arguments in their order.
class FormatSource {
public:
    virtual int star(const Directive&) = 0; // a width or precision "*"
    virtual Integer signed_integer(const Directive&) = 0;
    virtual std::uint64_t unsigned_integer(const Directive&) = 0;
    virtual Real real(const Directive&) = 0;
    virtual AnyText text(const Directive&) = 0; // not cut to the precision
    virtual AnyUnit unit(const Directive&) = 0;
    virtual std::uintptr_t pointer(const Directive&) = 0;
    virtual void store_count(const Directive&, std::size_t count) = 0; // %n
    // A directive that does not exist: returns if it is to be copied as it stands.
    virtual void unknown(const Directive&) = 0;
    virtual void finish(std::size_t formatLength) = 0;

protected:
    ~FormatSource() = default;
};

// Arguments of C, for a format in units `T`: without a length, texts and units are of that type.
template <class T> class ListSource final : public FormatSource {
public:
    explicit ListSource(std::va_list list) { va_copy(list_, list); }
    ~ListSource() { va_end(list_); }
    ListSource(const ListSource&) = delete;
    ListSource& operator=(const ListSource&) = delete;

    int star(const Directive&) override { return va_arg(list_, int); }

    Integer signed_integer(const Directive& d) override {
        switch (d.length) {
        case Length::None:
            return Integer::of(va_arg(list_, int));
        case Length::Short:
            return Integer::of(static_cast<short>(va_arg(list_, int)));
        case Length::Long:
            return Integer::of(va_arg(list_, long));
        case Length::Bits32:
            return Integer::of(va_arg(list_, std::int32_t));
        case Length::Large:
        case Length::Bits64:
            break;
        }
        return Integer::of(va_arg(list_, std::int64_t));
    }

    std::uint64_t unsigned_integer(const Directive& d) override {
        switch (d.length) {
        case Length::None:
            return va_arg(list_, unsigned);
        case Length::Short:
            return static_cast<unsigned short>(va_arg(list_, unsigned));
        case Length::Long:
            return va_arg(list_, unsigned long);
        case Length::Bits32:
            return va_arg(list_, std::uint32_t);
        case Length::Large:
        case Length::Bits64:
            break;
        }
        return va_arg(list_, std::uint64_t);
    }

    Real real(const Directive& d) override {
        if (d.length == Length::Large) return va_arg(list_, long double);
        return va_arg(list_, double);
    }

    AnyText text(const Directive& d) override {
        if (is_wide(d)) return bounded(va_arg(list_, const char16_t*), u"(null)", d.precision);
        return bounded(va_arg(list_, const char*), "(null)", d.precision);
    }

    AnyUnit unit(const Directive& d) override {
        const int code = va_arg(list_, int);
        if (is_wide(d)) return static_cast<char16_t>(code);
        return static_cast<char>(code);
    }

    std::uintptr_t pointer(const Directive&) override {
        return reinterpret_cast<std::uintptr_t>(va_arg(list_, void*));
    }

    void store_count(const Directive& d, std::size_t count) override {
        switch (d.length) {
        case Length::None:
            *va_arg(list_, int*) = static_cast<int>(count);
            break;
        case Length::Short:
            *va_arg(list_, short*) = static_cast<short>(count);
            break;
        case Length::Long:
            *va_arg(list_, long*) = static_cast<long>(count);
            break;
        case Length::Bits32:
            *va_arg(list_, std::int32_t*) = static_cast<std::int32_t>(count);
            break;
        case Length::Large:
        case Length::Bits64:
            *va_arg(list_, std::int64_t*) = static_cast<std::int64_t>(count);
            break;
        }
    }

    void unknown(const Directive&) override {}
    void finish(std::size_t) override {}

private:
    static bool is_wide(const Directive& d) noexcept {
        if (d.length == Length::Short) return false;
        return d.length == Length::Long || sizeof(T) == sizeof(char16_t);
    }

    // With a precision a text needs no terminator: not a unit more is read.
    template <class U>
    static std::basic_string_view<U> bounded(const U* s, const U* null, int precision) {
        if (!s) return null;
        if (precision < 0) return s;
        std::size_t n = 0;
        while (n < static_cast<std::size_t>(precision) && s[n]) ++n;
        return {s, n};
    }

    std::va_list list_;
};

// Typed arguments. What does not fit is refused with the directive's place.
class TypedSource final : public FormatSource {
public:
    explicit TypedSource(std::span<const FormatArgument> arguments) : arguments_(arguments) {}

    int star(const Directive& d) override;
    Integer signed_integer(const Directive& d) override;
    std::uint64_t unsigned_integer(const Directive& d) override;
    Real real(const Directive& d) override;
    AnyText text(const Directive& d) override;
    AnyUnit unit(const Directive& d) override;
    std::uintptr_t pointer(const Directive& d) override;
    void store_count(const Directive& d, std::size_t count) override;
    void unknown(const Directive& d) override;
    void finish(std::size_t formatLength) override;

private:
    using Kind = FormatArgument::Kind;

    const FormatArgument& next(const Directive& d);
    const FormatArgument& next_integer(const Directive& d);
    [[noreturn]] void refuse_argument(const Directive& d) const;

    std::span<const FormatArgument> arguments_;
    std::size_t next_ = 0;
};

} // namespace core
