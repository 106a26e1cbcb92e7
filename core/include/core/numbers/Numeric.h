// The number of scripts and data: an exact decimal of any size.
//
//   using namespace core::literals;
//   core::Numeric price = 19.99_num;                       // exactly, no double on the way
//   core::Numeric sum = price * 3 + 0.03_num;              // 60
//   core::Numeric tax = (sum * 7 / 107).round(2, core::NumericRoundMode::HalfUp);
//   stdx::ustring text = tax.toString();                   // u"3.93"
//
// Sums, differences and products never lose a digit. A quotient keeps 27 decimal places or more and
// rounds the last nine of them as one; powers with a fraction go through `double`. docs/numbers.md
// tells what rounds and how.
//
// Up to 36 digits lie in the object, which is 40 bytes; longer numbers take one block of memory.
// The only limits are memory and 32-bit positions: a number of more than 0x3FFFFFFF limbs of nine
// digits, or of an exponent that leaves 32 bits, is refused with std::bad_alloc before any memory is
// taken. Every function that makes a number may throw std::bad_alloc; the numbers involved keep
// their values then.
//
// A number is a plain value: one object is for one thread at a time.
#pragma once

#include <core/platform/api.h>
#include <elm/string>

#include <compare>
#include <concepts>
#include <cstdint>
#include <cstring>
#include <functional>
#include <iosfwd>
#include <limits>
#include <optional>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <utility>

namespace core {

class IListInStream;
class IListOutStream;
class IReader;
class IWriter;

// Where an exact half goes when a number is rounded. What lies above or below the half does not
// care.
enum class NumericRoundMode : std::int32_t {
    HalfDown = 0, // toward zero
    HalfUp = 1,   // away from zero
};

// Types that are integers to the language but not to people: taking them for numbers is a mistake.
template <class T>
concept NotANumber = std::same_as<T, bool> || std::same_as<T, char> || std::same_as<T, wchar_t> ||
    std::same_as<T, char8_t> || std::same_as<T, char16_t> || std::same_as<T, char32_t>;

class ORBCORE_API Numeric {
public:
    // --- construction ---

    constexpr Numeric(int value = 0) noexcept : Numeric(static_cast<long long>(value)) {}
    constexpr Numeric(short value) noexcept : Numeric(static_cast<long long>(value)) {}
    constexpr Numeric(unsigned short value) noexcept : Numeric(static_cast<long long>(value)) {}
    constexpr Numeric(unsigned int value) noexcept : Numeric(static_cast<long long>(value)) {}
    constexpr Numeric(long value) noexcept : Numeric(static_cast<long long>(value)) {}
    constexpr Numeric(unsigned long value) noexcept
        : Numeric(static_cast<unsigned long long>(value)) {}
    constexpr Numeric(long long value) noexcept
        : Numeric(value < 0 ? 0 - static_cast<unsigned long long>(value)
                            : static_cast<unsigned long long>(value)) {
        if (value < 0) sign_ = -1;
    }
    constexpr Numeric(unsigned long long value) noexcept;

    // Integers below 10^15 exactly, all else by its 15 significant decimal digits, so that 0.1 gives
    // 0.1. Throws NumericException (Overflow) for what is no number, infinities included.
    Numeric(double value);

    template <NotANumber T> Numeric(T) = delete;

    Numeric(const Numeric& other) : size_(other.size_), exponent_(other.exponent_) {
        sign_ = other.sign_;
        if (size_ <= kInlineLimbs)
            std::memcpy(inline_, other.limbs_, sizeof inline_);
        else
            copy_long(other);
    }
    // The source is zero afterwards.
    Numeric(Numeric&& other) noexcept { take(other); }
    Numeric& operator=(const Numeric& other) {
        if (other.size_ <= kInlineLimbs) {
            std::memmove(limbs_, other.limbs_, sizeof inline_);
            size_ = other.size_;
            exponent_ = other.exponent_;
            sign_ = other.sign_;
        } else if (this != &other) {
            assign_long(other);
        }
        return *this;
    }
    Numeric& operator=(Numeric&& other) noexcept {
        if (this != &other) {
            if (capacity_ != kInlineLimbs) release();
            take(other);
        }
        return *this;
    }
    ~Numeric() {
        if (capacity_ != kInlineLimbs) release();
    }

    // --- arithmetic ---

    // Exact.
    Numeric& operator+=(const Numeric& other);
    Numeric& operator-=(const Numeric& other);
    Numeric& operator*=(const Numeric& other) {
        set_product(*this, other);
        return *this;
    }

    // To three limbs of nine digits more than this number has, its last limb rounded half up: 1/3 is
    // 27 threes. `other` zero throws NumericException (DivideByZero), and so does the remainder,
    // which is what is left of this number when the quotient is cut to an integer.
    Numeric& operator/=(const Numeric& other) {
        set_quotient(*this, other);
        return *this;
    }
    Numeric& operator%=(const Numeric& other);

    Numeric operator-() const {
        Numeric result = *this;
        if (size_ != 0) result.sign_ = static_cast<std::int8_t>(-sign_);
        return result;
    }
    const Numeric& operator+() const noexcept { return *this; }
    Numeric abs() const { return sign_ < 0 ? -*this : *this; }
    Numeric minus(const Numeric& other) const { return *this - other; }

    Numeric floor() const; // the greatest integer not above this number

    // To `places` digits behind the decimal point, or to tens, hundreds and so on for -1, -2 …; on
    // the magnitude, so that signs do not matter. The first form takes the mode of the current
    // process, HalfUp where there is none.
    Numeric round(int places) const;
    Numeric round(int places, NumericRoundMode mode) const;

    // Exact for integer exponents of at most nine digits, a negative one by one division at the
    // end; everything to the power 0 is 1. Any other exponent goes through `double`. Throws
    // NumericException: DivideByZero for zero to a negative power, NegativePow for a negative base
    // on the way through `double`, Overflow beyond `double` and beyond the NumericLimits of the
    // thread. Time and memory grow with the digits of the result.
    Numeric pow(const Numeric& exponent) const;

    // --- for those who work on the digits ---

    // Adds 10^pos, at most 10^8, to the lowest limb of the magnitude; a `pos` below 1 adds 1. The
    // lowest limb may be zero then: delUnsigned() is to follow before any other use. A `pos` above 8
    // throws IllegalArgumentException.
    void add1(int pos);
    // Establishes the form that all other functions expect and leave: neither the lowest nor the
    // highest limb is zero, and zero is one form alone.
    void delUnsigned() noexcept;

    // --- inspection ---

    bool zero() const noexcept { return size_ == 0; }
    int sign() const noexcept { return size_ == 0 ? 0 : sign_; } // -1, 0, 1
    int compare(const Numeric& other) const noexcept;            // -1, 0, 1
    int compareMod(const Numeric& other) const noexcept;         // the same of the magnitudes

    // `precision`: the digits behind the decimal point; `length`: those and the digits in front,
    // without leading zeros; 0xFFFFFFFF stands for more. Zero has length 1 and precision 0, a number
    // below 1 a length equal to its precision.
    void lengthAndPrecision(unsigned int& length, unsigned int& precision) const noexcept;

    // Whether the number is an integer of at most 18 digits; only then is `value` set.
    bool toInteger(long long& value) const noexcept;

    // get_crc_32 from `seed` on over exponent, sign and limbs as they lie in memory.
    std::uint32_t calculateChecksum(unsigned long seed) const noexcept;

    // --- conversion ---

    // The top three limbs count; beyond the range of double an infinity.
    explicit operator double() const noexcept;
    // The integer part modulo 2^64 and, for `long`, modulo 2^32 (with sign): equal numbers give equal
    // codes, but nothing is checked. For checked conversions take the functions below.
    explicit operator long long() const noexcept;
    explicit operator long() const noexcept;

    // Throw NumericException (Overflow) for a fraction and outside of the range.
    std::uint8_t safeAsByte() const;
    std::uint16_t safeAsUInt16() const;
    std::uint32_t safeAsUInt32() const;
    std::uint64_t safeAsUInt64() const;
    std::int64_t safeAsInt64() const;

    // --- text ---
    //
    // "-" for a negative number, the integer digits, "0" if there are none, and "." with the
    // fraction if there is one. No zeros that mean nothing, never an exponent.

    stdx::ustring toString() const;
    void toString(stdx::string& text) const; // replaces the string

    // The room that digits(char*) needs, its terminator included.
    std::size_t digitsSize() const noexcept;
    // Writes the text with a terminator; returns the length. In at most `limit` bytes, terminator
    // included, or nothing at all: then the result is 0.
    std::size_t digits(char* out) const noexcept;
    std::size_t digits(char* out, unsigned int limit) const noexcept;

    // The shape of data formats: "+" or "-" by the sign before rounding, `width - places` integer
    // digits, and if `places` is not 0 "." and so many digits; with a terminator, `width + 3` bytes at
    // most. False, and nines everywhere, if the rounded number has more integer digits. Throws
    // IllegalArgumentException for `places` above `width`. The mode as in round().
    bool digits(char* out, unsigned int width, unsigned int places) const;
    bool digits(char* out, unsigned int width, unsigned int places, NumericRoundMode mode) const;

    // Reads "-12.50": white space (tab, line feed, carriage return, space), one sign, digits with at
    // most one ".". `end`, if given, is set to the unit that stopped the reading; to `text` if there
    // was white space and no digit. No exponent, no grouping. Without a digit the number is zero.
    void fromString(const char16_t* text, const char16_t** end = nullptr);
    void fromString(const char* text, const char** end = nullptr);

    // The number that the whole text is: a sign or none, digits with at most one "." and at least one
    // digit. Empty for anything else.
    static std::optional<Numeric> parse(std::string_view text);
    static std::optional<Numeric> parse(std::u16string_view text);

    // --- streams ---

    // The text of toString(); and what fromString() reads, false if there was no digit.
    void toStream(IWriter* writer) const;
    bool fromStream(IReader* reader);
    // The text as a blob of a list. Throws ListStreamException for a blob that is none.
    void toBinary(IListOutStream* stream) const;
    void fromBinary(IListInStream* stream);

    // --- operators ---

    friend Numeric operator+(const Numeric& a, const Numeric& b) {
        Numeric sum = a;
        sum += b;
        return sum;
    }
    friend Numeric operator+(Numeric&& a, const Numeric& b) { return std::move(a += b); }
    friend Numeric operator-(const Numeric& a, const Numeric& b) {
        Numeric difference = a;
        difference -= b;
        return difference;
    }
    friend Numeric operator-(Numeric&& a, const Numeric& b) { return std::move(a -= b); }
    friend Numeric operator*(const Numeric& a, const Numeric& b) {
        Numeric product;
        product.set_product(a, b);
        return product;
    }
    friend Numeric operator/(const Numeric& a, const Numeric& b) {
        Numeric quotient;
        quotient.set_quotient(a, b);
        return quotient;
    }
    friend Numeric operator%(Numeric a, const Numeric& b) {
        a %= b;
        return a;
    }
    friend bool operator==(const Numeric& a, const Numeric& b) noexcept {
        return a.size_ == b.size_ && a.exponent_ == b.exponent_ && a.sign_ == b.sign_ &&
               std::memcmp(a.limbs_, b.limbs_, sizeof(Limb) * static_cast<std::size_t>(a.size_)) ==
                   0;
    }
    friend std::strong_ordering operator<=>(const Numeric& a, const Numeric& b) noexcept {
        return a.compare(b) <=> 0;
    }
    ORBCORE_API friend std::ostream& operator<<(std::ostream& out, const Numeric& number);

    // Of all limbs, for hash tables; not the same in every version.
    std::size_t hash() const noexcept;

private:
    using Limb = std::uint32_t;
    static constexpr std::int32_t kInlineLimbs = 4;
    friend struct NumericAccess;

    void take(Numeric& other) noexcept;
    void release() noexcept;
    void copy_long(const Numeric& other);
    void assign_long(const Numeric& other);
    void reserve(std::int64_t limbs);
    void assign(const Limb* limbs, std::int64_t size, std::int64_t exponent, int sign);
    void add_magnitude(const Numeric& other);
    void subtract_magnitude(const Numeric& other);
    void set_product(const Numeric& a, const Numeric& b); // either may be this number
    void set_quotient(const Numeric& a, const Numeric& b);
    std::uint64_t integer_part() const noexcept;
    std::uint64_t checked_integer(std::uint64_t most) const;

    // The value is sign * sum of limbs[i] * 10^(9 * (i - exponent)), limbs below 10^9.
    std::int32_t capacity_ = kInlineLimbs; // of limbs_; more than kInlineLimbs: a block
    std::int32_t size_ = 0;                // limbs in use
    std::int32_t exponent_ = 0;            // limbs behind the point; negative: zero limbs left out
    std::int8_t sign_ = 1;                 // 1 or -1
    Limb* limbs_ = inline_;                // the least significant first
    Limb inline_[kInlineLimbs] = {};
};

static_assert(sizeof(Numeric) == 40);

// --- text without allocation ---

// Where writing or reading stopped, as std::to_chars and std::from_chars tell it.
template <class T> struct NumericCharsResult {
    T* ptr;
    std::errc ec;
    friend bool operator==(const NumericCharsResult&, const NumericCharsResult&) = default;
};

// Writes the text of toString() without a terminator. Without room nothing is written: `ec` is
// value_too_large and `ptr` is `last`. Takes no memory.
ORBCORE_API NumericCharsResult<char> to_chars(char* first, char* last,
                                              const Numeric& value) noexcept;
ORBCORE_API NumericCharsResult<char16_t> to_chars(char16_t* first, char16_t* last,
                                                  const Numeric& value) noexcept;

// Reads "-" or none and digits with at most one ".", as far as they go; nothing in front is skipped.
// Without a digit `value` stays, `ec` is invalid_argument and `ptr` is `first`. Takes memory for more
// than 36 digits only.
ORBCORE_API NumericCharsResult<const char> from_chars(const char* first, const char* last,
                                                      Numeric& value);
ORBCORE_API NumericCharsResult<const char16_t> from_chars(const char16_t* first,
                                                          const char16_t* last, Numeric& value);

// The value of "0xFF" and "0b101": small "x" and "b", digits of both cases, any length. Throw
// IllegalArgumentException. Time grows with the square of the length.
ORBCORE_API Numeric create_numeric_from_hex_literal_string(const stdx::ustring& text);
ORBCORE_API Numeric create_numeric_from_binary_literal_string(const stdx::ustring& text);

namespace detail {
constexpr bool is_decimal_literal(std::string_view text) noexcept {
    bool seenPoint = false;
    for (const char c : text) {
        if (c == '.' && seenPoint) return false;
        seenPoint = seenPoint || c == '.';
        if (c != '.' && c != '\'' && (c < '0' || c > '9')) return false;
    }
    return true;
}
ORBCORE_API Numeric numeric_of_literal(std::string_view text);
} // namespace detail

inline namespace literals {

// 12.50_num, 1'000_num: what stands there, exactly; 010_num is ten.
template <char... kText> Numeric operator""_num() {
    static constexpr char kAll[] = {kText...};
    static_assert(detail::is_decimal_literal({kAll, sizeof kAll}),
                  "a number is digits with at most one point");
    return detail::numeric_of_literal({kAll, sizeof kAll});
}

} // namespace literals

// --- inline bodies ---

constexpr Numeric::Numeric(unsigned long long value) noexcept {
    constexpr unsigned long long kBase = 1'000'000'000;
    if (value == 0) return;
    while (value % kBase == 0) { // no low limb is zero
        value /= kBase;
        --exponent_;
    }
    do {
        inline_[size_++] = static_cast<Limb>(value % kBase);
        value /= kBase;
    } while (value != 0);
}

inline void Numeric::take(Numeric& other) noexcept {
    size_ = other.size_;
    exponent_ = other.exponent_;
    sign_ = other.sign_;
    capacity_ = other.capacity_;
    if (other.capacity_ == kInlineLimbs) {
        limbs_ = inline_;
        std::memcpy(inline_, other.inline_, sizeof inline_);
    } else {
        limbs_ = other.limbs_;
        other.limbs_ = other.inline_;
        other.capacity_ = kInlineLimbs;
    }
    other.size_ = 0;
    other.exponent_ = 0;
    other.sign_ = 1;
}

} // namespace core

template <> struct std::hash<core::Numeric> {
    std::size_t operator()(const core::Numeric& number) const noexcept { return number.hash(); }
};

// Unbounded and exact: the members that tell limits are zero, as for every type without any.
template <> class std::numeric_limits<core::Numeric> {
public:
    static constexpr bool is_specialized = true;
    static constexpr bool is_signed = true;
    static constexpr bool is_integer = false;
    static constexpr bool is_exact = true;
    static constexpr bool has_infinity = false;
    static constexpr bool has_quiet_NaN = false;
    static constexpr bool has_signaling_NaN = false;
    static constexpr std::float_denorm_style has_denorm = std::denorm_absent;
    static constexpr bool has_denorm_loss = false;
    static constexpr std::float_round_style round_style = std::round_indeterminate;
    static constexpr bool is_iec559 = false;
    static constexpr bool is_bounded = false;
    static constexpr bool is_modulo = false;
    static constexpr int digits = 0;
    static constexpr int digits10 = 0;
    static constexpr int max_digits10 = 0;
    static constexpr int radix = 10;
    static constexpr int min_exponent = 0;
    static constexpr int min_exponent10 = 0;
    static constexpr int max_exponent = 0;
    static constexpr int max_exponent10 = 0;
    static constexpr bool traps = true; // division by zero
    static constexpr bool tinyness_before = false;
    static core::Numeric min() noexcept { return 0; }
    static core::Numeric lowest() noexcept { return 0; }
    static core::Numeric max() noexcept { return 0; }
    static core::Numeric epsilon() noexcept { return 0; }
    static core::Numeric round_error() noexcept { return 0; }
    static core::Numeric infinity() noexcept { return 0; }
    static core::Numeric quiet_NaN() noexcept { return 0; }
    static core::Numeric signaling_NaN() noexcept { return 0; }
    static core::Numeric denorm_min() noexcept { return 0; }
};
