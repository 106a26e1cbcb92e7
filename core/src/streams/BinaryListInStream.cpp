#include "BinaryListInStream.h"

#include "ListUnits.h"

#include <core/component/Guid.h>
#include <core/numbers/Numeric.h>
#include <core/streams/ListStreamException.h>
#include <core/streams/ListTags.h>
#include <core/text/Numbers.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace core {

using namespace list_tag;

namespace {

// What is read of a string or blob at a time where it is not known to be there: memory is taken as the
// data arrive, whatever length the stream claims. Larger blocks of strings are not kept, either.
constexpr unsigned kPiece = 0x10000;
// More units than any string holds.
constexpr std::uint64_t kMostUnits = 0x7FFFFFFF;

[[noreturn, gnu::cold, gnu::noinline]] void refuse() {
    throw ListStreamException();
}

inline void check(bool good) {
    if (!good) [[unlikely]]
        refuse();
}

constexpr bool is_integer(std::uint8_t type) noexcept {
    return type >= kZero && type <= kNegative64;
}

} // namespace

const InterfaceEntry* BinaryListInStream::_GetEntries() {
    return interface_map<BinaryListInStream, IListInStream>();
}

// ---- Bytes.

template <class T> T BinaryListInStream::read_as() {
    T value;
    check(in_.read(&value, sizeof value));
    return value;
}

inline std::uint64_t BinaryListInStream::read_number(unsigned width) {
    std::uint64_t number;
    check(in_.read_number(width, number));
    return number;
}

void BinaryListInStream::pass(std::uint64_t n) {
    check(in_.take(n, [](const std::uint8_t*, std::size_t) {}));
}

// Has `fill(units, n)` make up the string, `count` units in all of `width` bytes each: at once if the
// bytes are there, else piece by piece. A block that the string has for itself is used again.
template <class String, class Fill>
void BinaryListInStream::fill_string(String& to, std::uint64_t count, unsigned width, Fill fill) {
    check(count <= kMostUnits);
    if (to._get_refs() != 1 || to.capacity() < count || to.capacity() > kPiece) to.clear();
    auto n = static_cast<unsigned>(
        count > kPiece && !in_.holds(count * width) ? std::uint64_t{kPiece} : count);
    to._resize_nofill(n);
    fill(to.data(), n);
    while ((count -= n) != 0) {
        n = static_cast<unsigned>(std::min<std::uint64_t>(count, kPiece));
        fill(to._append(n), n);
    }
}

// `count` units, stored in the width of the string's.
template <class String> void BinaryListInStream::read_units(String& to, std::uint64_t count) {
    fill_string(to, count, sizeof(typename String::value_type),
                [this](auto* units, unsigned n) { check(in_.read(units, n * sizeof *units)); });
}

// `n` units below 256, stored in a byte each.
void BinaryListInStream::widen_bytes(char16_t* to, unsigned n) {
    check(in_.take(n, [&to](const std::uint8_t* bytes, std::size_t size) {
        widen_units(to, bytes, size);
        to += size;
    }));
}

// ---- Tags.

// Makes the next tag byte the pending one; false at the end of the file. No byte is 0.
inline bool BinaryListInStream::load() {
    if (pending_ != 0) return true;
    if (!in_.take(pending_)) return false;
    check(pending_ != 0);
    return true;
}

// Takes the first mark of the tag byte or, behind the marks, its type.
inline std::uint8_t BinaryListInStream::next() {
    check(load());
    const std::uint8_t taken = pending_ <= kTypeMask ? pending_ : first_of(pending_);
    pending_ = static_cast<std::uint8_t>(pending_ & ~taken);
    return taken;
}

inline void BinaryListInStream::take_comma() {
    check(load() && (pending_ & (kEnd | kComma)) == kComma); // it applies before all but an end
    pending_ ^= kComma;
}

// What next() would take; 0 at the end of the file.
inline std::uint8_t BinaryListInStream::peek() {
    return load() ? first_of(pending_) : std::uint8_t{0};
}

// Passes the comma in front of an item, and gives its type.
inline std::uint8_t BinaryListInStream::begin_item() {
    if (needComma_ && commasOn_) take_comma();
    needComma_ = true;
    return next();
}

// Outside of lists others may use the file.
inline void BinaryListInStream::end_item() {
    if (depth_ == 0) in_.sync();
}

bool BinaryListInStream::nextInList() {
    return peek() == kComma;
}

void BinaryListInStream::beginList() {
    check(begin_item() == kBegin);
    check(++depth_ <= kMaxListDepth);
    needComma_ = false;
}

void BinaryListInStream::endList() {
    check(next() == kEnd);
    if (depth_ != 0) --depth_;
    needComma_ = true;
    end_item();
}

// ---- Numbers.

inline BinaryListInStream::Integer BinaryListInStream::integer_of(std::uint8_t type) {
    check(is_integer(type));
    if (type < kUInt8) return {type - std::uint64_t{kZero}, false};
    return {read_number(width_of_integer(type)), is_negative_integer(type)};
}

template <class T> void BinaryListInStream::get_signed(T& value) {
    const Integer integer = integer_of(begin_item());
    constexpr auto kMost = static_cast<std::uint64_t>(std::numeric_limits<T>::max());
    check(integer.magnitude <= kMost + (integer.negative ? 1 : 0));
    const std::uint64_t word = integer.negative ? 0 - integer.magnitude : integer.magnitude;
    value = static_cast<T>(word);
    end_item();
}

template <class T> void BinaryListInStream::get_unsigned(T& value) {
    const Integer integer = integer_of(begin_item());
    check(!integer.negative && integer.magnitude <= std::numeric_limits<T>::max());
    value = static_cast<T>(integer.magnitude);
    end_item();
}

void BinaryListInStream::getInt8(std::int8_t& value) {
    get_signed(value);
}
void BinaryListInStream::getInt16(std::int16_t& value) {
    get_signed(value);
}
void BinaryListInStream::getInt32(std::int32_t& value) {
    get_signed(value);
}
void BinaryListInStream::getInt64(std::int64_t& value) {
    get_signed(value);
}
void BinaryListInStream::getLong(std::int32_t& value) {
    get_signed(value);
}
void BinaryListInStream::getUInt8(std::uint8_t& value) {
    get_unsigned(value);
}
void BinaryListInStream::getUInt16(std::uint16_t& value) {
    get_unsigned(value);
}
void BinaryListInStream::getUInt32(std::uint32_t& value) {
    get_unsigned(value);
}
void BinaryListInStream::getUInt64(std::uint64_t& value) {
    get_unsigned(value);
}
void BinaryListInStream::getULong(std::uint32_t& value) {
    get_unsigned(value);
}
void BinaryListInStream::getChar(char16_t& value) {
    get_unsigned(value);
}

void BinaryListInStream::getBool(bool& value) {
    const std::uint8_t type = begin_item();
    check(type == kZero || type == kTrue);
    value = type == kTrue;
    end_item();
}
void BinaryListInStream::getFloat(float& value) {
    check(begin_item() == kFloat);
    value = read_as<float>();
    end_item();
}
void BinaryListInStream::getDouble(double& value) {
    check(begin_item() == kDouble);
    value = read_as<double>();
    end_item();
}
void BinaryListInStream::getGuid(_GUID& value) {
    const std::uint8_t type = begin_item();
    check(type == kZero || type == kGuid);
    value = type == kGuid ? read_as<_GUID>() : kUUIDNull;
    end_item();
}

void BinaryListInStream::numeric_of(std::uint8_t type, Numeric& value) {
    if (type != kNumeric) {
        const Integer integer = integer_of(type);
        value = Numeric(static_cast<unsigned long long>(integer.magnitude));
        if (integer.negative) value = -value;
        return;
    }
    stdx::string text;
    blob_of(next(), text);
    std::optional<Numeric> number = Numeric::parse(text);
    check(number.has_value());
    value = std::move(*number);
}

void BinaryListInStream::getNumeric(Numeric& value) {
    numeric_of(begin_item(), value);
    end_item();
}

// ---- Strings and blobs.

// The count behind a type of 8, 16 or 64 bits of count, which follow each other from `firstType`.
inline std::uint64_t BinaryListInStream::count_of(std::uint8_t type, std::uint8_t firstType) {
    static constexpr unsigned kWidths[] = {1, 2, 8};
    check(type >= firstType && type < firstType + std::size(kWidths));
    return read_number(kWidths[type - firstType]);
}

inline std::uint64_t BinaryListInStream::blob_size(std::uint8_t type) {
    if (type == kZero) return 0;
    return type == kUInt8 ? 1 : count_of(type, kBytes8);
}

void BinaryListInStream::blob_of(std::uint8_t type, stdx::string& data) {
    read_units(data, blob_size(type));
}

void BinaryListInStream::string_of(std::uint8_t type, stdx::ustring& value) {
    if (type >= kUnits8 && type <= kUnits64)
        read_units(value, count_of(type, kUnits8));
    else
        fill_string(value, blob_size(type), 1,
                    [this](char16_t* units, unsigned n) { widen_bytes(units, n); });
}

void BinaryListInStream::getString(stdx::ustring& value) {
    string_of(begin_item(), value);
    end_item();
}

void BinaryListInStream::getChars(char16_t* value, unsigned capacity) {
    const std::uint8_t type = begin_item();
    const bool wide = type >= kUnits8 && type <= kUnits64;
    const std::uint64_t count = wide ? count_of(type, kUnits8) : blob_size(type);
    check(count < capacity);
    const auto n = static_cast<unsigned>(count);
    if (wide)
        check(in_.read(value, n * sizeof *value));
    else
        widen_bytes(value, n);
    value[n] = 0;
    end_item();
}

void BinaryListInStream::getBinary(void* data, unsigned n) {
    check(blob_size(begin_item()) == n);
    check(in_.read(data, n));
    end_item();
}

void BinaryListInStream::getBytes(stdx::string& data) {
    blob_of(begin_item(), data);
    end_item();
}

void BinaryListInStream::getFile(IFile* file) {
    beginList();
    std::uint64_t size;
    do {
        size = blob_size(begin_item());
        check(size <= kFileChunk);
        check(in_.take(size, [file](const std::uint8_t* bytes, std::size_t n) {
            file->write(bytes, static_cast<unsigned>(n));
        }));
    } while (size == kFileChunk);
    endList();
}

void BinaryListInStream::getObject(IListStreamObject& object) {
    if (needComma_ && commasOn_) take_comma();
    struct Commas {
        bool& on;
        const bool before = std::exchange(on, false);
        ~Commas() { on = before; }
    } const off{commasOn_};
    object.fromBinary(this);
    needComma_ = true;
}

// ---- What is passed over.

void BinaryListInStream::skip_item(std::uint8_t type) {
    if (is_integer(type))
        pass(type < kUInt8 ? 0u : width_of_integer(type));
    else if (type == kFloat)
        pass(sizeof(float));
    else if (type == kDouble)
        pass(sizeof(double));
    else if (type == kGuid)
        pass(sizeof(_GUID));
    else if (type == kNumeric) {
        Numeric number;
        numeric_of(type, number);
    } else if (type >= kUnits8 && type <= kUnits64) {
        const std::uint64_t count = count_of(type, kUnits8);
        check(count <= kMostUnits);
        pass(count * sizeof(char16_t));
    } else {
        pass(blob_size(type));
    }
}

void BinaryListInStream::append_item(std::uint8_t type, stdx::ustring& text) {
    if (is_integer(type)) {
        const Integer integer = integer_of(type);
        if (integer.negative) text.push_back(u'-');
        text.append(string_ui64to(integer.magnitude));
    } else if (type == kFloat) {
        text.append(string_dto(static_cast<double>(read_as<float>())));
    } else if (type == kDouble) {
        text.append(string_dto(read_as<double>()));
    } else if (type == kGuid) {
        text.append(to_string(read_as<_GUID>()));
    } else if (type == kNumeric) {
        Numeric number;
        numeric_of(type, number);
        text.append(number.toString());
    } else {
        stdx::ustring string;
        string_of(type, string);
        text.append(string);
    }
}

// Lists within the list are passed in one loop: `open` counts those that the loop is in.
template <class Item, class Mark> void BinaryListInStream::pass_items(Item item, Mark mark) {
    for (unsigned open = 0;;) {
        const std::uint8_t seen = peek();
        if (seen == 0 || seen == kEnd) {
            if (open == 0) return;
            check(next() == kEnd);
            needComma_ = true;
            mark(u'}');
            --open;
            continue;
        }
        next();
        if (seen == kBegin) {
            check(depth_ + ++open <= kMaxListDepth);
            mark(u'{');
        } else if (seen == kComma) {
            needComma_ = false;
            mark(u',');
        } else {
            item(seen);
        }
    }
}

void BinaryListInStream::skipList() {
    pass_items([this](std::uint8_t type) { skip_item(type); }, [](char16_t) {});
    end_item();
}

void BinaryListInStream::readListText(stdx::ustring& text) {
    pass_items([&](std::uint8_t type) { append_item(type, text); },
               [&](char16_t mark) { text.push_back(mark); });
    end_item();
}

} // namespace core
