#include "FormatArguments.h"

#include <core/component/IllegalArgumentException.h>
#include <core/text/Numbers.h>

#include <limits>

namespace core {

namespace {

// By FormatArgument::Kind.
constexpr std::u16string_view kKindNames[] = {
    u"a signed integer", u"an unsigned integer", u"a character", u"a character",
    u"a real number",    u"a long real number",  u"text",        u"text",
    u"a pointer",
};

[[noreturn, gnu::cold]] void refuse(std::size_t position, const stdx::ustring& reason) {
    throw IllegalArgumentException(ORB_HERE,
                                   u"Format, position " + string_ui64to(position) + u": " + reason);
}

stdx::ustring name_of(const Directive& d) {
    return u"%" + stdx::ustring(1, static_cast<char16_t>(d.conversion));
}

// A value of the argument's own width.
std::uint64_t own_bits(const FormatArgument& argument) noexcept {
    if (argument.kind() != FormatArgument::Kind::Signed || argument.size() == 8)
        return argument.bits();
    return argument.bits() & ((std::uint64_t{1} << (8 * argument.size())) - 1);
}

} // namespace

const FormatArgument& TypedSource::next(const Directive& d) {
    if (next_ == arguments_.size())
        refuse(d.position, u"there is no argument " + string_ui64to(next_ + 1));
    return arguments_[next_++];
}

void TypedSource::refuse_argument(const Directive& d) const {
    const auto kind = static_cast<std::size_t>(arguments_[next_ - 1].kind());
    refuse(d.position, u"argument " + string_ui64to(next_) + u" is " + kKindNames[kind] +
                           u", which does not fit " + name_of(d));
}

const FormatArgument& TypedSource::next_integer(const Directive& d) {
    const FormatArgument& argument = next(d);
    if (argument.kind() > Kind::WideChar) refuse_argument(d);
    return argument;
}

int TypedSource::star(const Directive& d) {
    const FormatArgument& argument = next(d);
    const auto value = static_cast<std::int64_t>(argument.bits());
    if (argument.kind() > Kind::Unsigned || value < std::numeric_limits<int>::min() ||
        value > std::numeric_limits<int>::max())
        refuse(d.position, u"argument " + string_ui64to(next_) + u" is no width or precision");
    return static_cast<int>(value);
}

Integer TypedSource::signed_integer(const Directive& d) {
    const FormatArgument& argument = next_integer(d);
    if (argument.kind() == Kind::Signed)
        return Integer::of(static_cast<std::int64_t>(argument.bits()));
    return {argument.bits(), false};
}

std::uint64_t TypedSource::unsigned_integer(const Directive& d) {
    return own_bits(next_integer(d));
}

Real TypedSource::real(const Directive& d) {
    const FormatArgument& argument = next(d);
    if (argument.kind() == Kind::Real) return argument.real();
    if (argument.kind() != Kind::LongReal) refuse_argument(d);
    return argument.long_real();
}

AnyText TypedSource::text(const Directive& d) {
    const FormatArgument& argument = next(d);
    if (argument.kind() == Kind::Text) return argument.text();
    if (argument.kind() != Kind::WideText) refuse_argument(d);
    return argument.wide_text();
}

AnyUnit TypedSource::unit(const Directive& d) {
    const FormatArgument& argument = next(d);
    if (argument.kind() == Kind::Char) return static_cast<char>(argument.bits());
    if (argument.kind() != Kind::WideChar) refuse_argument(d);
    return static_cast<char16_t>(argument.bits());
}

std::uintptr_t TypedSource::pointer(const Directive& d) {
    const FormatArgument& argument = next(d);
    if (argument.kind() != Kind::Pointer) refuse_argument(d);
    return argument.bits();
}

void TypedSource::store_count(const Directive& d, std::size_t) {
    refuse(d.position, u"%n is not for typed arguments");
}

void TypedSource::unknown(const Directive& d) {
    refuse(d.position, u"there is no such directive");
}

void TypedSource::finish(std::size_t formatLength) {
    if (next_ != arguments_.size())
        refuse(formatLength, u"no directive takes argument " + string_ui64to(next_ + 1));
}

} // namespace core
