#include "BinaryListOutStream.h"

#include "ListUnits.h"

#include <core/component/Exception.h>
#include <core/component/IllegalArgumentException.h>
#include <core/numbers/Numeric.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <exception>
#include <limits>
#include <utility>
#include <vector>

namespace core {

using namespace list_tag;

namespace {

static_assert(std::endian::native == std::endian::little, "numbers are stored as they lie");

// Whether the number is an integer of 64 bits, and which.
bool fits(const Numeric& value, std::int64_t& integer) {
    long long small;
    if (value.toInteger(small)) {
        integer = small;
        return true;
    }
    constexpr unsigned kDigits = std::numeric_limits<std::int64_t>::digits10 + 1;
    unsigned length, precision;
    value.lengthAndPrecision(length, precision);
    if (precision != 0 || length != kDigits) return false;
    static const Numeric kLeast(std::numeric_limits<std::int64_t>::min());
    static const Numeric kMost(std::numeric_limits<std::int64_t>::max());
    if (value < kLeast || value > kMost) return false;
    integer = value.safeAsInt64();
    return true;
}

} // namespace

const InterfaceEntry* BinaryListOutStream::_GetEntries() {
    return interface_map<BinaryListOutStream, IListOutStream>();
}

BinaryListOutStream::~BinaryListOutStream() {
    try {
        close();
    } catch (const Exception&) {
    } catch (const std::exception&) {}
}

// ---- Bytes.

// Rare, and apart, so that the operations need not save registers for it.
[[gnu::noinline]] void BinaryListOutStream::write_collected() {
    const unsigned n = std::exchange(size_, 0);
    ORB_ASSERT(file_);
    if (n != 0) file_->write(bytes_, n);
}

// What comes after every operation.
inline void BinaryListOutStream::write_if_full() {
    if (size_ > limit_) [[unlikely]]
        write_collected();
}

void BinaryListOutStream::put_bytes(const void* data, unsigned n) {
    if (n > sizeof bytes_ - size_) write_collected();
    if (n > sizeof bytes_) {
        file_->write(data, n);
    } else if (n != 0) {
        std::memcpy(bytes_ + size_, data, n);
        size_ += n;
    }
}

// ---- Tag bytes.

inline void BinaryListOutStream::put_pending() {
    if (pending_ != 0) bytes_[size_++] = std::exchange(pending_, std::uint8_t{0});
}

// The marks in front of an item, which merge with its type.
inline std::uint8_t BinaryListOutStream::take_marks() {
    const auto marks = static_cast<std::uint8_t>(pending_ | comma_);
    pending_ = 0;
    comma_ = commas_;
    return marks;
}

void BinaryListOutStream::beginList() {
    ORB_ASSERT(file_);
    if ((pending_ & ~(kEnd | kComma)) != 0) put_pending();
    pending_ = static_cast<std::uint8_t>(take_marks() | kBegin);
    comma_ = 0;
    ++depth_;
    limit_ = kCapacity;
    write_if_full();
}

void BinaryListOutStream::endList() {
    ORB_ASSERT(file_);
    put_pending();
    pending_ = kEnd;
    comma_ = commas_;
    if (depth_ <= 1)
        depth_ = limit_ = 0;
    else
        --depth_;
    write_if_full();
}

// A tag and the low bytes of a number.
inline void BinaryListOutStream::put_tag(std::uint8_t type, std::uint64_t number, unsigned width) {
    std::uint8_t* const to = bytes_ + size_;
    size_ += 1 + width;
    *to = take_marks() | type;
    std::memcpy(to + 1, &number, sizeof number);
}

// ---- Numbers.

void BinaryListOutStream::put_unsigned(std::uint64_t value) {
    put_integer(value, false);
}

void BinaryListOutStream::put_signed(std::int64_t value) {
    const auto word = static_cast<std::uint64_t>(value);
    put_integer(value < 0 ? 0 - word : word, value < 0);
}

// The types of 1, 2, 4 and 8 bytes follow each other, two of each.
inline void BinaryListOutStream::put_integer(std::uint64_t magnitude, bool negative) {
    if (magnitude <= 9 && !negative) {
        put_tag(static_cast<std::uint8_t>(kZero + magnitude));
    } else {
        const auto highestBit = static_cast<unsigned>(std::bit_width(magnitude | 1)) - 1;
        const auto power = static_cast<unsigned>(std::bit_width(highestBit | 7)) - 3;
        put_tag(static_cast<std::uint8_t>(kUInt8 + 2 * power + negative), magnitude, 1u << power);
    }
    write_if_full();
}

void BinaryListOutStream::putFloat(float value) {
    put_tag(kFloat, std::bit_cast<std::uint32_t>(value), sizeof value);
    write_if_full();
}
void BinaryListOutStream::putDouble(double value) {
    put_tag(kDouble, std::bit_cast<std::uint64_t>(value), sizeof value);
    write_if_full();
}

void BinaryListOutStream::putGuid(const _GUID& value) {
    if (value == kUUIDNull) {
        put_tag(kZero);
    } else {
        put_tag(kGuid);
        put_bytes(&value, sizeof value);
    }
    write_if_full();
}

void BinaryListOutStream::putNumeric(const Numeric& value) {
    std::int64_t integer;
    if (fits(value, integer)) {
        put_signed(integer);
        return;
    }
    put_tag(kNumeric);
    comma_ = 0; // the text belongs to the tag
    char text[64];
    const auto written = to_chars(text, std::end(text), value);
    if (written.ec == std::errc()) {
        putBinary(text, static_cast<unsigned>(written.ptr - text));
    } else {
        stdx::string longText;
        value.toString(longText);
        putBytes(longText);
    }
}

// ---- Strings and blobs.

// The types of 8, 16 and 64 bits of count follow each other.
void BinaryListOutStream::put_counted(std::uint8_t firstType, std::uint64_t count) {
    if (count <= 0xFF)
        put_tag(firstType, count, 1);
    else if (count <= 0xFFFF)
        put_tag(static_cast<std::uint8_t>(firstType + 1), count, 2);
    else
        put_tag(static_cast<std::uint8_t>(firstType + 2), count, 8);
}

void BinaryListOutStream::putBinary(const void* data, unsigned n) {
    if (n == 0)
        put_tag(kZero);
    else if (n == 1)
        put_tag(kUInt8);
    else
        put_counted(kBytes8, n);
    put_bytes(data, n);
    write_if_full();
}

// With a count of a byte.
inline void BinaryListOutStream::put_short_units(const char16_t* units, std::size_t n) {
    std::uint8_t* const to = bytes_ + size_;
    const std::size_t size = copy_narrowest(to + 2, units, n);
    const auto wide = static_cast<unsigned>(size != n);
    to[0] = static_cast<std::uint8_t>(take_marks() | (kBytes8 - (kBytes8 - kUnits8) * wide));
    to[1] = static_cast<std::uint8_t>(n);
    size_ += static_cast<unsigned>(2 + size);
}

void BinaryListOutStream::put_long_units(std::u16string_view units) {
    if (!is_narrow(units.data(), units.size())) {
        constexpr std::size_t kMost = 1 << 30; // a write counts bytes in 32 bits
        put_counted(kUnits8, units.size());
        for (; !units.empty(); units.remove_prefix(std::min(units.size(), kMost)))
            put_bytes(units.data(),
                      static_cast<unsigned>(std::min(units.size(), kMost) * sizeof(char16_t)));
        return;
    }
    put_counted(kBytes8, units.size());
    while (!units.empty()) {
        const auto n = std::min<std::size_t>(units.size(), sizeof bytes_ - size_);
        narrow_units(bytes_ + size_, units.data(), n);
        size_ += static_cast<unsigned>(n);
        units.remove_prefix(n);
        write_if_full();
    }
}

void BinaryListOutStream::put_units(std::u16string_view units) {
    if (units.empty())
        put_tag(kZero);
    else if (units.size() == 1 && units.front() < 256)
        put_tag(kUInt8, units.front(), 1);
    else if (units.size() <= kShortRun)
        put_short_units(units.data(), units.size());
    else
        put_long_units(units);
    write_if_full();
}

void BinaryListOutStream::putString(const stdx::ustring& value) {
    put_units(value);
}
void BinaryListOutStream::putCString(const char16_t* value) {
    put_units(value);
}
void BinaryListOutStream::putChars(const char16_t* value, unsigned n) {
    put_units({value, n});
}

// ---- Files and objects.

void BinaryListOutStream::putFile(IFile* file) {
    std::vector<char> chunk(kFileChunk);
    beginList();
    unsigned size;
    do {
        size = 0;
        while (size != kFileChunk) {
            const unsigned n = file->read(chunk.data() + size, kFileChunk - size);
            if (n == 0) break;
            size += n;
        }
        putBinary(chunk.data(), size);
    } while (size == kFileChunk);
    endList();
}

void BinaryListOutStream::putObject(IListStreamObject& object) {
    pending_ = take_marks();
    comma_ = 0;
    {
        struct Commas {
            std::uint8_t& commas;
            const std::uint8_t before = std::exchange(commas, std::uint8_t{0});
            ~Commas() { commas = before; }
        } const off{commas_};
        object.toBinary(this);
    }
    if ((pending_ & ~kEnd) != 0) put_pending(); // an object of no items
    comma_ = commas_;
    write_if_full();
}

// ---- Life.

void BinaryListOutStream::flush() {
    put_pending();
    write_collected();
    file_->flush();
}

// The file is flushed and let go of whatever happens; the first fault is told.
void BinaryListOutStream::close() {
    if (!file_) return;
    std::exception_ptr fault;
    const auto attempt = [&fault](auto step) {
        try {
            step();
        } catch (...) {
            if (!fault) fault = std::current_exception();
        }
    };
    attempt([this] {
        put_pending();
        write_collected();
    });
    attempt([this] { file_->flush(); });
    file_.reset();
    depth_ = limit_ = 0;
    if (fault) std::rethrow_exception(fault);
}

} // namespace core
