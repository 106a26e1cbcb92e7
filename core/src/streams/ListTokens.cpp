#include "ListTokens.h"

#include "text/UtfRuns.h"

#include <core/numbers/Numeric.h>
#include <core/text/Numbers.h>

#include <array>
#include <charconv>

namespace core {
namespace {

// ---- Floating point, by the states that a text runs through.

enum class CharClass : std::uint8_t { Digit, Minus, Point, Exponent, Space, Other };

constexpr CharClass class_of(char16_t c) noexcept {
    if (c >= u'0' && c <= u'9') return CharClass::Digit;
    switch (c) {
    case u'-':
        return CharClass::Minus;
    case u'.':
        return CharClass::Point;
    case u'e':
    case u'E':
        return CharClass::Exponent;
    case u'\t':
    case u'\n':
    case u'\r':
    case u' ':
        return CharClass::Space;
    default:
        return CharClass::Other;
    }
}

// The states Start to ExpDigits are the rows of the table.
enum State : std::uint8_t { Start, Sign, Int, Frac, Exp, ExpSign, ExpDigits, Skip, Accept, Fail };

constexpr std::array<std::array<State, 6>, 7> kFloatStates = {{
    //  digit      -        .       e        space   other
    {Int, Sign, Frac, Fail, Skip, Fail},                 // Start
    {Int, Fail, Frac, Fail, Fail, Fail},                 // Sign
    {Int, Accept, Frac, Exp, Accept, Accept},            // Int
    {Frac, Accept, Accept, Exp, Accept, Accept},         // Frac
    {ExpDigits, ExpSign, Fail, Fail, Fail, Fail},        // Exp
    {ExpDigits, Fail, Fail, Fail, Fail, Fail},           // ExpSign
    {ExpDigits, Accept, Accept, Accept, Accept, Accept}, // ExpDigits
}};

constexpr std::size_t kMaxFloatText = 31;

// What most numbers are: at most fifteen digits, with a point or without, whole in the window. Then
// the digits and the power of ten are exact, and one division rounds once. False for all else, with
// nothing passed.
bool read_plain_double(TextCursor& in, double& value) {
    constexpr int kMostDigits = 15;
    static constexpr double kPowers[kMostDigits + 1] = {
        1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    if (!in.more()) return false;
    const bool negative = in.unit() == u'-';
    const char16_t* at = in.at() + negative;
    std::uint64_t digits = 0;
    int count = 0, behindPoint = 0;
    bool point = false;
    for (;; ++at) {
        if (at == in.end()) return false;
        const CharClass kind = class_of(*at);
        if (kind == CharClass::Digit) {
            digits = digits * 10 + (*at - std::uint64_t{u'0'});
            if (++count > kMostDigits) return false;
            behindPoint += point;
        } else if (kind == CharClass::Point && !point) {
            point = true;
        } else if (kind == CharClass::Exponent || count == 0) {
            return false;
        } else {
            break;
        }
    }
    const double magnitude = static_cast<double>(digits) / kPowers[behindPoint];
    value = negative ? -magnitude : magnitude;
    in.move_to(at);
    return true;
}

// ---- Numbers of any size.

// Where the units of one decimal end; kept between the windows that it lies in.
struct DecimalExtent {
    bool signAllowed = true;
    bool pointAllowed = true;
    bool anyDigit = false;

    const char16_t* operator()(const char16_t* at, const char16_t* end) noexcept {
        for (; at != end; ++at) {
            if (*at >= u'0' && *at <= u'9')
                anyDigit = true;
            else if (*at == u'.' && pointAllowed)
                pointAllowed = false;
            else if (!((*at == u'-' || *at == u'+') && signAllowed))
                break;
            signAllowed = false;
        }
        return at;
    }
};

void assign_decimal(std::u16string_view text, Numeric& value) {
    if (text.front() == u'+') text.remove_prefix(1);
    from_chars(text.data(), text.data() + text.size(), value);
}

// ---- Strings.

// How many units stand in front of the first that a string token cannot hold as it is.
std::size_t plain_units(std::u16string_view text) noexcept {
    std::size_t i = 0;
    for (; i + 8 <= text.size(); i += 8) {
        const __m128i block = load_block(text.data() + i);
        const __m128i special = _mm_or_si128(_mm_cmpeq_epi16(block, _mm_set1_epi16(u'"')),
                                             lanes_in<char16_t>(block, 0xD800, 0x800));
        if (const auto bits = static_cast<unsigned>(_mm_movemask_epi8(special)))
            return i + static_cast<std::size_t>(std::countr_zero(bits)) / 2;
    }
    while (i < text.size() && text[i] != u'"' && !is_surrogate(text[i])) ++i;
    return i;
}

void put_escape(TextChunk& out, char16_t unit) {
    constexpr std::u16string_view kDigits = u"0123456789abcdef";
    out.put(u"\"\\");
    for (int shift = 12; shift >= 0; shift -= 4)
        out.put(kDigits[static_cast<unsigned>(unit >> shift) & 15]);
}

template <class Integer> void put_decimal(TextChunk& out, Integer value) {
    if (value >= 0 && value <= 9) {
        out.put(static_cast<char16_t>(u'0' + static_cast<char16_t>(value)));
        return;
    }
    char digits[20];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    out.put_ascii({digits, static_cast<std::size_t>(end - digits)});
}

} // namespace

bool read_bool(TextCursor& in, bool& value) {
    skip_spaces(in);
    if (!in.more() || (in.unit() != u'0' && in.unit() != u'1')) return false;
    value = in.unit() == u'1';
    in.pass();
    return true;
}

bool read_double(TextCursor& in, double& value) {
    if (read_plain_double(in, value)) return true;
    char text[kMaxFloatText + 1];
    std::size_t size = 0;
    State state = Start;
    for (;;) {
        const CharClass kind = in.more() ? class_of(in.unit()) : CharClass::Other;
        const State next = kFloatStates[state][static_cast<std::size_t>(kind)];
        if (next == Fail) return false;
        if (next == Accept) break;
        if (next != Skip) {
            if (size == kMaxFloatText) return false;
            text[size++] = static_cast<char>(in.unit());
            state = next;
        }
        in.pass();
    }
    text[size] = 0;
    value = string_tod(text);
    return true;
}

bool read_guid(TextCursor& in, _GUID& value) {
    char16_t text[kGuidTextLength];
    skip_spaces(in);
    for (char16_t& unit : text) {
        if (!in.more()) return false;
        unit = in.unit();
        in.pass();
    }
    return from_string(text, value);
}

bool read_numeric(TextCursor& in, Numeric& value) {
    while (in.more() && class_of(in.unit()) == CharClass::Space) in.pass();
    DecimalExtent extent;
    stdx::ustring earlier; // what of the number lay in windows before this one
    while (in.more()) {
        const char16_t* const begin = in.at();
        const char16_t* const end = extent(begin, in.end());
        in.move_to(end);
        const std::u16string_view here(begin, end);
        if (end == in.end()) {
            earlier.append(here);
            continue;
        }
        if (!extent.anyDigit) return false;
        if (earlier.empty()) {
            assign_decimal(here, value);
            return true;
        }
        earlier.append(here);
        break;
    }
    if (!extent.anyDigit) return false;
    assign_decimal(earlier, value);
    return true;
}

bool read_string(TextCursor& in, stdx::ustring& value) {
    value.clear();
    skip_spaces(in);
    const auto append = [&value](std::u16string_view piece) {
        value.append(piece);
        return true;
    };
    if (in.take(u'"') && read_quoted(in, append)) return true;
    value.clear();
    return false;
}

bool read_chars(TextCursor& in, char16_t* value, unsigned capacity) {
    if (capacity == 0) return false;
    skip_spaces(in);
    std::size_t size = 0;
    const auto copy = [&](std::u16string_view piece) {
        if (piece.size() >= capacity - size) return false;
        std::memcpy(value + size, piece.data(), piece.size() * sizeof(char16_t));
        size += piece.size();
        return true;
    };
    const bool read = in.take(u'"') && read_quoted(in, copy);
    value[read ? size : 0] = 0;
    return read;
}

void put_integer(TextChunk& out, std::int64_t value) {
    put_decimal(out, value);
}
void put_integer(TextChunk& out, std::uint64_t value) {
    put_decimal(out, value);
}

void put_double(TextChunk& out, double value) {
    char16_t text[24];
    const char16_t* const end = string_dto(value, text);
    out.put({text, static_cast<std::size_t>(end - text)});
}

void put_guid(TextChunk& out, const _GUID& value) {
    char16_t text[kGuidTextLength + 1];
    out.put({to_string(value, text), kGuidTextLength});
}

void put_numeric(TextChunk& out, const Numeric& value) {
    char16_t text[64];
    const auto written = to_chars(text, std::end(text), value);
    if (written.ec == std::errc())
        out.put({text, static_cast<std::size_t>(written.ptr - text)});
    else
        out.put(value.toString());
}

void put_string(TextChunk& out, std::u16string_view value) {
    out.put(u'"');
    for (;;) {
        const std::size_t plain = plain_units(value);
        if (plain != 0) out.put(value.substr(0, plain));
        if (plain == value.size()) break;
        if (value[plain] == u'"')
            out.put(u"\"\"");
        else
            put_escape(out, value[plain]);
        value.remove_prefix(plain + 1);
    }
    out.put(u'"');
}

} // namespace core
