// The stream forms of types of lower floors, and dates as items of lists.
#include "ListTokens.h"

#include <core/locale/OrbLocaleInfo.h>
#include <core/numbers/Date.h>
#include <core/numbers/Numeric.h>
#include <core/numbers/TimeZone.h>
#include <core/streams/ListStream.h>
#include <core/streams/ListStreamException.h>

#include "numbers/TimeZoneImpl.h"

#include <type_traits>

namespace core {
namespace {

template <class Enum> Enum get_enum(ListInStream& stream, Enum least, Enum most) {
    std::int32_t number = 0;
    stream->getInt32(number);
    if (number < static_cast<std::int32_t>(least) || number > static_cast<std::int32_t>(most))
        throw ListStreamException();
    return static_cast<Enum>(number);
}

constexpr bool is_decimal(char16_t unit) noexcept {
    return unit >= u'0' && unit <= u'9';
}

} // namespace

// ---- Numbers.

void Numeric::toStream(IWriter* writer) const {
    write_token(writer, [this](TextChunk& out) { put_numeric(out, *this); });
}

bool Numeric::fromStream(IReader* reader) {
    return read_token(reader, [this](TextCursor& in) { return read_numeric(in, *this); });
}

void Numeric::toBinary(IListOutStream* stream) const {
    stdx::string text;
    toString(text);
    stream->putBytes(text);
}

void Numeric::fromBinary(IListInStream* stream) {
    stdx::string text;
    stream->getBytes(text);
    std::optional<Numeric> number = parse(text);
    if (!number) throw ListStreamException();
    *this = std::move(*number);
}

// ---- Dates.

void Date::toStream(IWriter* writer) const {
    char16_t text[kTextSize];
    toChars(text);
    writer->write(text, kTextSize);
}

bool Date::fromStream(IReader* reader) {
    constexpr std::size_t kMostDigits = 15;
    char16_t text[kMostDigits + 1];
    std::size_t size = 0;
    read_token(reader, [&](TextCursor& in) {
        skip_spaces(in);
        for (; size != kMostDigits && in.more() && is_decimal(in.unit()); in.pass())
            text[size++] = in.unit();
        return true;
    });
    text[size] = 0;
    return fromString(text);
}

void Date::toBinary(IListOutStream* stream) const {
    stream->putUInt64(ticks());
}

void Date::fromBinary(IListInStream* stream) {
    std::uint64_t ticks = 0;
    stream->getUInt64(ticks);
    *this = fromTicks(ticks);
}

void DateSerializer::toStream(IWriter* writer) {
    date_->toStream(writer);
}
bool DateSerializer::fromStream(IReader* reader) {
    return date_->fromStream(reader);
}
void DateSerializer::toBinary(IListOutStream* stream) {
    date_->toBinary(stream);
}
void DateSerializer::fromBinary(IListInStream* stream) {
    date_->fromBinary(stream);
}

// ---- Time zones.

void TimeZone::serialize(ListOutStream& stream) const {
    stream->beginList();
    stream->putBool(simple());
    stream->putString(id());
    if (simple()) stream->putInt64(getRawOffset().ticks());
    stream->endList();
}

TimeZone TimeZone::deserialize(ListInStream& stream) {
    bool isSimple = false;
    stdx::ustring id;
    std::int64_t offset = 0;
    stream->beginList();
    stream->getBool(isSimple);
    stream->getString(id);
    if (isSimple) stream->getInt64(offset);
    stream->skipList();
    stream->endList();
    if (!isSimple) return TimeZone(id);
    const InterfacePtr<TimeZoneImpl> impl = stored_time_zone(id, DateSpan(offset));
    return TimeZone(impl.get());
}

// ---- Descriptions of locales.

void OrbLocaleInfo::serialize(ListOutStream& stream) const {
    stream->beginList();
    stream->putString(name_);
    stream->putChar(decimalSeparator_);
    stream->putChar(groupingSeparator_);
    stream->putString(grouping_);
    stream->putInt32(static_cast<std::int32_t>(negativeOrder_));
    stream->putString(falseName_);
    stream->putString(trueName_);
    stream->putString(shortDatePattern_);
    stream->putString(timePattern_);
    stream->putInt32(reserved_);
    stream->putInt32(static_cast<std::int32_t>(firstDayOfWeek_));
    stream->endList();
}

OrbLocaleInfo OrbLocaleInfo::deserialize(ListInStream& stream) {
    OrbLocaleInfo info({}, 0, 0, {}, NegativeOrder::Locale, {}, {}, {}, {});
    stream->beginList();
    stream->getString(info.name_);
    stream->getChar(info.decimalSeparator_);
    stream->getChar(info.groupingSeparator_);
    stream->getString(info.grouping_);
    info.negativeOrder_ = get_enum(stream, NegativeOrder::Locale, NegativeOrder::BlankSignBehind);
    stream->getString(info.falseName_);
    stream->getString(info.trueName_);
    stream->getString(info.shortDatePattern_);
    stream->getString(info.timePattern_);
    if (stream->nextInList()) stream->getInt32(info.reserved_);
    if (stream->nextInList()) info.firstDayOfWeek_ = get_enum(stream, WeekDay(), WeekDay::Sunday);
    stream->skipList();
    stream->endList();
    return info;
}

} // namespace core
