// Dates to text and from text. To text they go by eight digits in one word: a date is two such
// groups, "YYYYMMDD" and "hhmmss".

#include <core/numbers/Date.h>
#include <core/numbers/TimeZone.h>

#include <core/text/Characters.h>

#include <emmintrin.h>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace core {
namespace {

// --- to text ---

// Four numbers below 100, 16 bits each, as eight decimal digits; the first number is the lowest.
std::uint64_t digits_of(std::uint64_t pairs) noexcept {
    constexpr std::uint64_t kLow = 0x000F'000F'000F'000F;
    // 103/1024 gives the tens of a number below 179.
    const std::uint64_t tens = (pairs * 103 >> 10) & kLow;
    const std::uint64_t units = pairs - tens * 10;
    return (tens | units << 8) | 0x3030'3030'3030'3030;
}

struct Digits {
    std::uint64_t date; // YYYYMMDD
    std::uint64_t time; // hhmmss, then two zeros
};

Digits digits_of(const Date& date) noexcept {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    date.split(year, month, day, hour, minute, second);
    const auto pairs = [](int a, int b, int c, int d) {
        return static_cast<std::uint64_t>(static_cast<std::uint32_t>(a | b << 16)) |
               static_cast<std::uint64_t>(static_cast<std::uint32_t>(c | d << 16)) << 32;
    };
    return {digits_of(pairs(year / 100, year % 100, month, day)),
            digits_of(pairs(hour, minute, second, 0))};
}

char* put(char* to, std::uint64_t digits, std::size_t count) noexcept {
    std::memcpy(to, &digits, count);
    return to + count;
}

char16_t* put(char16_t* to, std::uint64_t digits, std::size_t count) noexcept {
    const __m128i bytes = _mm_cvtsi64_si128(static_cast<long long>(digits));
    const __m128i units = _mm_unpacklo_epi8(bytes, _mm_setzero_si128());
    std::memcpy(to, &units, count * sizeof(char16_t));
    return to + count;
}

template <class T> T* put_date(T* to, const Date& date) noexcept {
    const Digits digits = digits_of(date);
    return put(put(to, digits.date, 8), digits.time, 6);
}

template <class T> T* put_xml_date(T* to, const Date& date) noexcept {
    const Digits digits = digits_of(date);
    const auto part = [&](std::uint64_t of, int skipped, std::size_t count, char behind) {
        to = put(to, of >> 8 * skipped, count);
        *to++ = static_cast<T>(behind);
    };
    part(digits.date, 0, 4, '-');
    part(digits.date, 4, 2, '-');
    part(digits.date, 6, 2, 'T');
    part(digits.time, 0, 2, ':');
    part(digits.time, 2, 2, ':');
    return put(to, digits.time >> 32, 2);
}

// --- from text ---

constexpr bool is_decimal(char16_t c) noexcept {
    return c >= u'0' && c <= u'9';
}

constexpr int digit_of(char16_t c) noexcept {
    return c - u'0';
}

template <class T> const T* skip_space(const T* text) noexcept {
    while (is_space(*text)) ++text;
    return text;
}

struct Components {
    int year = 0, month = 1, day = 1, hour = 0, minute = 0, second = 0;

    bool make(Date& date) const noexcept {
        return Date::compose(year, month, day, hour, minute, second, date);
    }
};

// Two digits, or something above 99. The second unit is looked at only behind a first digit.
template <class T> unsigned pair_at(const T* text) noexcept {
    const unsigned tens = static_cast<unsigned>(text[0]) - unsigned{'0'};
    if (tens > 9) return 100;
    const unsigned units = static_cast<unsigned>(text[1]) - unsigned{'0'};
    return units > 9 ? 100 : tens * 10 + units;
}

// The plain form, by pairs of digits: 4, 6 or 7 of them are taken. `end` goes where
// `Date::fromString` tells.
template <class T> bool parse_digits(const T* text, const T*& end, Date& date) noexcept {
    const T* const first = skip_space(text);
    int pairs[7] = {};
    int count = 0;
    for (; count != 7; ++count) {
        const unsigned pair = pair_at(first + 2 * count);
        if (pair > 99) break;
        pairs[count] = static_cast<int>(pair);
    }
    date = Date();
    end = text;
    if (count < 4) return false;
    if (count == 5) pairs[4] = 0;
    end = first + (count == 5 ? 8 : 2 * count);
    const int year = pairs[0] * 100 + pairs[1];
    if (Date::compose(year, pairs[2], pairs[3], pairs[4], pairs[5], pairs[6], date)) return true;
    const auto isZero = [](int pair) { return pair == 0; };
    if (std::all_of(std::begin(pairs), std::end(pairs), isZero)) return true;
    end = first;
    return false;
}

// A place in a terminated text, which nothing reads past.
class Cursor {
public:
    explicit Cursor(const char16_t* at) noexcept : at_(at) {}

    const char16_t* at() const noexcept { return at_; }
    bool at_end() const noexcept { return *at_ == 0; }
    bool at_digit() const noexcept { return is_decimal(*at_); }

    bool take(char16_t c) noexcept { return *at_ == c && (++at_, true); }
    // A number of so many digits; without them nothing is taken.
    bool take_number(int count, int& to) noexcept {
        int value = 0;
        for (int i = 0; i != count; ++i) {
            if (!is_decimal(at_[i])) return false;
            value = value * 10 + digit_of(at_[i]);
        }
        at_ += count;
        to = value;
        return true;
    }
    int take_digit() noexcept { return digit_of(*at_++); }

private:
    const char16_t* at_;
};

bool parse_xml(Cursor& cursor, Date& date) noexcept {
    Components parts;
    return cursor.take_number(4, parts.year) && cursor.take(u'-') &&
           cursor.take_number(2, parts.month) && cursor.take(u'-') &&
           cursor.take_number(2, parts.day) && cursor.take(u'T') &&
           cursor.take_number(2, parts.hour) && cursor.take(u':') &&
           cursor.take_number(2, parts.minute) && cursor.take(u':') &&
           cursor.take_number(2, parts.second) && parts.make(date);
}

// What may stand behind the seconds: a fraction and a zone.
struct IsoTail {
    bool roundUp = false;
    bool hasZone = false;
    DateSpan offset;
};

bool parse_fraction(Cursor& cursor, IsoTail& tail) noexcept {
    if (!cursor.take(u'.')) return true;
    if (!cursor.at_digit()) return false;
    tail.roundUp = cursor.take_digit() > 4;
    while (cursor.at_digit()) cursor.take_digit();
    return true;
}

bool parse_zone(Cursor& cursor, IsoTail& tail) noexcept {
    tail.hasZone = true;
    if (cursor.take(u'Z') || cursor.take(u'z')) return true;
    const bool east = cursor.take(u'+');
    if (!east && !cursor.take(u'-')) {
        tail.hasZone = false;
        return true;
    }
    int hours = 0, minutes = 0;
    if (!cursor.take_number(2, hours)) return false;
    cursor.take(u':');
    if (!cursor.take_number(2, minutes)) return false;
    if (minutes > 59) minutes = 0;
    const DateSpan size = DateSpan::fromMinutes(hours * 60 + minutes);
    tail.offset = east ? size : -size;
    return true;
}

// The parts in their order; after each of them the text may end.
bool parse_iso_parts(Cursor& cursor, Components& parts, IsoTail& tail) noexcept {
    const auto next = [&](char16_t separator, int& part) {
        cursor.take(separator);
        return cursor.take_number(2, part);
    };
    if (!cursor.take_number(4, parts.year)) return false;
    if (cursor.at_end()) return true;
    if (!next(u'-', parts.month)) return false;
    if (cursor.at_end()) return true;
    if (!next(u'-', parts.day)) return false;
    if (cursor.at_end()) return true;
    if (!cursor.take(u'T')) return false;
    if (!cursor.take_number(2, parts.hour) && !cursor.take_number(1, parts.hour)) return false;
    if (cursor.at_end()) return true;
    if (!next(u':', parts.minute)) return false;
    if (cursor.at_end()) return true;
    return next(u':', parts.second) && parse_fraction(cursor, tail) && parse_zone(cursor, tail) &&
           (cursor.at_end() || is_space(*cursor.at()));
}

bool parse_iso(Cursor& cursor, bool keepUniversal, Date& date) {
    Components parts;
    IsoTail tail;
    if (!parse_iso_parts(cursor, parts, tail) || !parts.make(date)) return false;
    if (tail.roundUp) date += DateSpan::fromSeconds(1);
    date -= tail.offset;
    if (tail.hasZone && !keepUniversal) date = TimeZone::system().toLocalTime(date);
    return true;
}

// Calls `parse` behind the white space and settles what the two callers promise of their results.
template <class Parse>
bool parse_text(const char16_t* text, char16_t** end, Date& date, Parse parse) {
    Cursor cursor(skip_space(text));
    const bool good = parse(cursor);
    if (!good) date = Date();
    if (end) *end = const_cast<char16_t*>(good ? cursor.at() : text);
    return good;
}

} // namespace

char* Date::toChars(char* to) const noexcept {
    return put_date(to, *this);
}

char16_t* Date::toChars(char16_t* to) const noexcept {
    return put_date(to, *this);
}

char* Date::toXMLChars(char* to) const noexcept {
    return put_xml_date(to, *this);
}

char16_t* Date::toXMLChars(char16_t* to) const noexcept {
    return put_xml_date(to, *this);
}

stdx::ustring Date::toString() const {
    char16_t text[kTextSize];
    return stdx::ustring(text, toChars(text));
}

stdx::ustring Date::toXMLString() const {
    char16_t text[kXMLTextSize];
    return stdx::ustring(text, toXMLChars(text));
}

bool Date::fromString(const char16_t* text, const char16_t** end) noexcept {
    const char16_t* stop = text;
    const bool good = parse_digits(text, stop, *this);
    if (end) *end = stop;
    return good;
}

bool Date::fromString(const char* text, const char** end) noexcept {
    const char* stop = text;
    const bool good = parse_digits(text, stop, *this);
    if (end) *end = stop;
    return good;
}

bool Date::fromXMLString(const char16_t* text, char16_t** end) noexcept {
    return parse_text(text, end, *this, [&](Cursor& cursor) { return parse_xml(cursor, *this); });
}

bool Date::fromISOString(const char16_t* text, char16_t** end, bool keepUniversal) {
    return parse_text(text, end, *this,
                      [&](Cursor& cursor) { return parse_iso(cursor, keepUniversal, *this); });
}

} // namespace core
