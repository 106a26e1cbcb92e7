#include <core/text/Characters.h>

#include "CaseBlock.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <bit>

namespace core {

namespace detail {

bool is_of_kind(char16_t c, CharKind kind) noexcept {
    // In the order of the bits.
    static constexpr UBool (*kProperties[])(UChar32) = {
        u_isspace, u_iscntrl, u_isupper, u_islower, u_ispunct, u_isalpha,
        u_isalnum, u_isprint, u_isgraph, u_istitle, u_isdigit,
    };
    return kProperties[std::countr_zero(static_cast<unsigned>(kind))](c);
}

char16_t icu_to_upper(char16_t c) noexcept {
    return static_cast<char16_t>(u_toupper(c));
}
char16_t icu_to_lower(char16_t c) noexcept {
    return static_cast<char16_t>(u_tolower(c));
}
int icu_digit(char16_t c) noexcept {
    return u_charDigitValue(c);
}

} // namespace detail

namespace {

// A byte by a function of ICU on its code; as it stands where the result is no byte.
char by_code(char c, UChar32 (*change)(UChar32)) noexcept {
    const UChar32 changed = change(widen(c));
    return changed <= 0xFF ? static_cast<char>(changed) : c;
}

UChar32 folded(UChar32 c) {
    return u_foldCase(c, U_FOLD_CASE_DEFAULT);
}

template <Case C, class T> void change_case(const T* from, const T* end, T* to) noexcept {
    for (; end - from >= kLanes<T>; from += kLanes<T>, to += kLanes<T>) {
        const CaseBlock block = in_case<C, T>(load_block(from));
        store_block(to, block.units);
        for (unsigned others = block.others; others != 0;) {
            T& unit = to[take_lane<T>(others)];
            unit = in_case<C>(unit);
        }
    }
    std::transform(from, end, to, [](T c) { return in_case<C>(c); });
}

template <class T> using String = elm::BasicString<T, 0u, 0u, std::allocator>;

// A string of the range's length whose units `write` sets.
template <class T, class Write> String<T> written(const T* begin, const T* end, Write write) {
    String<T> text;
    text._resize_nofill(elm::checked_size(static_cast<std::size_t>(end - begin)));
    write(text.data());
    return text;
}

template <Case C, class T> String<T> in_case(const T* begin, const T* end) {
    return written(begin, end, [&](T* to) { change_case<C>(begin, end, to); });
}

template <class T> String<T> mapped(const T* begin, const T* end, T (*change)(T) noexcept) {
    return written(begin, end, [&](T* to) { std::transform(begin, end, to, change); });
}

} // namespace

stdx::string narrow(const char16_t* begin, const char16_t* end) {
    stdx::string text;
    text._resize_nofill(elm::checked_size(static_cast<std::size_t>(end - begin)));
    std::transform(begin, end, text.begin(), [](char16_t c) { return narrow(c); });
    return text;
}

char16_t to_title(char16_t c) noexcept {
    return static_cast<char16_t>(u_totitle(c));
}
char16_t fold_case(char16_t c) noexcept {
    return static_cast<char16_t>(folded(c));
}

char to_upper(char c) noexcept {
    if (static_cast<unsigned char>(c) >= 0x80) return by_code(c, u_toupper);
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

char to_lower(char c) noexcept {
    if (static_cast<unsigned char>(c) >= 0x80) return by_code(c, u_tolower);
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

char to_title(char c) noexcept {
    return by_code(c, u_totitle);
}
char fold_case(char c) noexcept {
    return by_code(c, folded);
}

stdx::ustring to_upper(const char16_t* begin, const char16_t* end) {
    return in_case<Case::Upper>(begin, end);
}
stdx::ustring to_lower(const char16_t* begin, const char16_t* end) {
    return in_case<Case::Lower>(begin, end);
}
stdx::ustring to_title(const char16_t* begin, const char16_t* end) {
    return mapped<char16_t>(begin, end, to_title);
}
stdx::ustring fold_case(const char16_t* begin, const char16_t* end) {
    return mapped<char16_t>(begin, end, fold_case);
}
stdx::string to_upper(const char* begin, const char* end) {
    return in_case<Case::Upper>(begin, end);
}
stdx::string to_lower(const char* begin, const char* end) {
    return in_case<Case::Lower>(begin, end);
}
stdx::string to_title(const char* begin, const char* end) {
    return mapped<char>(begin, end, to_title);
}
stdx::string fold_case(const char* begin, const char* end) {
    return mapped<char>(begin, end, fold_case);
}

void to_upper(const char16_t* begin, const char16_t* end, char16_t* to) noexcept {
    change_case<Case::Upper>(begin, end, to);
}
void to_lower(const char16_t* begin, const char16_t* end, char16_t* to) noexcept {
    change_case<Case::Lower>(begin, end, to);
}
void to_upper(const char* begin, const char* end, char* to) noexcept {
    change_case<Case::Upper>(begin, end, to);
}
void to_lower(const char* begin, const char* end, char* to) noexcept {
    change_case<Case::Lower>(begin, end, to);
}

const stdx::ustring& empty_string() noexcept {
    static constinit stdx::ustring empty;
    return empty;
}

} // namespace core
