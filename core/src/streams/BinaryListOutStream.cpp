#include "BinaryListOutStream.h"

#include <core/component/Exception.h>
#include <core/component/IllegalArgumentException.h>
#include <core/numbers/Numeric.h>
#include <core/streams/ListTags.h>

#include "text/Lanes.h"

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

// Whether all units are below 256.
bool is_narrow(std::u16string_view units) noexcept {
    std::size_t i = 0;
    for (; i + 8 <= units.size(); i += 8) {
        const __m128i high = _mm_srli_epi16(load_block(units.data() + i), 8);
        if (_mm_movemask_epi8(_mm_cmpeq_epi8(high, _mm_setzero_si128())) != 0xFFFF) return false;
    }
    return std::all_of(units.begin() + static_cast<std::ptrdiff_t>(i), units.end(),
                       [](char16_t c) { return c < 256; });
}

// Units below 256 as bytes.
void narrow(const char16_t* from, std::size_t n, std::uint8_t* to) noexcept {
    std::size_t i = 0;
    for (; i + 8 <= n; i += 8) {
        const __m128i block = load_block(from + i);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(to + i), _mm_packus_epi16(block, block));
    }
    for (; i != n; ++i) to[i] = static_cast<std::uint8_t>(from[i]);
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

void BinaryListOutStream::write_collected() {
    ORB_ASSERT(file_);
    if (size_ != 0) file_->write(bytes_, std::exchange(size_, 0));
}

// Makes room for a few bytes.
inline void BinaryListOutStream::reserve(unsigned n) {
    if (n > kCapacity - size_) write_collected();
}

void BinaryListOutStream::put_bytes(const void* data, unsigned n) {
    reserve(n);
    if (n > kCapacity) {
        file_->write(data, n);
    } else if (n != 0) {
        std::memcpy(bytes_ + size_, data, n);
        size_ += n;
    }
}

// Outside of lists others may use the file.
inline void BinaryListOutStream::end_item() {
    needComma_ = true;
    if (depth_ == 0) write_collected();
}

// ---- Tag bytes.

inline void BinaryListOutStream::put_pending() {
    if (pending_ == 0) return;
    reserve(1);
    bytes_[size_++] = std::exchange(pending_, std::uint8_t{0});
}

inline void BinaryListOutStream::put_comma() {
    if (!needComma_ || !commasOn_) return;
    if ((pending_ & ~kEnd) != 0) put_pending();
    pending_ |= kComma;
    needComma_ = false;
}

void BinaryListOutStream::beginList() {
    ORB_ASSERT(file_);
    if ((pending_ & ~(kEnd | kComma)) != 0) put_pending();
    put_comma();
    pending_ |= kBegin;
    ++depth_;
}

void BinaryListOutStream::endList() {
    put_pending();
    pending_ = kEnd;
    if (depth_ != 0) --depth_;
    end_item();
}

void BinaryListOutStream::put_item(std::uint8_t type, const void* payload, unsigned n) {
    put_comma();
    reserve(1);
    bytes_[size_++] = static_cast<std::uint8_t>(std::exchange(pending_, std::uint8_t{0}) | type);
    put_bytes(payload, n);
    end_item();
}

// The tag and the low bytes of a number.
inline void BinaryListOutStream::put_number(std::uint8_t type, std::uint64_t number,
                                            unsigned width) {
    put_comma();
    reserve(1 + sizeof number);
    bytes_[size_] = static_cast<std::uint8_t>(std::exchange(pending_, std::uint8_t{0}) | type);
    std::memcpy(bytes_ + size_ + 1, &number, sizeof number);
    size_ += 1 + width;
    end_item();
}

// ---- Numbers.

void BinaryListOutStream::put_unsigned(std::uint64_t value) {
    put_integer(value, false);
}

void BinaryListOutStream::put_signed(std::int64_t value) {
    const auto word = static_cast<std::uint64_t>(value);
    put_integer(value < 0 ? 0 - word : word, value < 0);
}

inline void BinaryListOutStream::put_integer(std::uint64_t magnitude, bool negative) {
    if (magnitude <= 9 && !negative)
        put_number(static_cast<std::uint8_t>(kZero + magnitude), 0, 0);
    else if (magnitude <= 0xFF)
        put_number(negative ? kNegative8 : kUInt8, magnitude, 1);
    else if (magnitude <= 0xFFFF)
        put_number(negative ? kNegative16 : kUInt16, magnitude, 2);
    else if (magnitude <= 0xFFFFFFFF)
        put_number(negative ? kNegative32 : kUInt32, magnitude, 4);
    else
        put_number(negative ? kNegative64 : kUInt64, magnitude, 8);
}

void BinaryListOutStream::putFloat(float value) {
    put_item(kFloat, &value, sizeof value);
}
void BinaryListOutStream::putDouble(double value) {
    put_item(kDouble, &value, sizeof value);
}

void BinaryListOutStream::putGuid(const _GUID& value) {
    if (value == kUUIDNull)
        put_tag(kZero);
    else
        put_item(kGuid, &value, sizeof value);
}

void BinaryListOutStream::putNumeric(const Numeric& value) {
    std::int64_t integer;
    if (fits(value, integer)) {
        put_signed(integer);
        return;
    }
    put_tag(kNumeric);
    needComma_ = false; // the text belongs to the tag
    char text[64];
    const auto written = to_chars(text, std::end(text), value);
    if (written.ec == std::errc()) {
        put_blob(text, static_cast<unsigned>(written.ptr - text));
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
        put_number(firstType, count, 1);
    else if (count <= 0xFFFF)
        put_number(static_cast<std::uint8_t>(firstType + 1), count, 2);
    else
        put_number(static_cast<std::uint8_t>(firstType + 2), count, 8);
}

void BinaryListOutStream::put_blob(const void* data, unsigned n) {
    if (n == 0) {
        put_tag(kZero);
    } else if (n == 1) {
        put_item(kUInt8, data, 1);
    } else {
        put_counted(kBytes8, n);
        put_bytes(data, n);
        end_item();
    }
}

void BinaryListOutStream::putBinary(const void* data, unsigned n) {
    put_blob(data, n);
}

void BinaryListOutStream::put_units(std::u16string_view units) {
    if (!is_narrow(units)) {
        constexpr std::size_t kMost = 1 << 30; // a write counts bytes in 32 bits
        put_counted(kUnits8, units.size());
        for (; !units.empty(); units.remove_prefix(std::min(units.size(), kMost)))
            put_bytes(units.data(),
                      static_cast<unsigned>(std::min(units.size(), kMost) * sizeof(char16_t)));
    } else if (units.empty()) {
        put_tag(kZero);
    } else if (units.size() == 1) {
        put_number(kUInt8, units.front(), 1);
    } else {
        put_counted(kBytes8, units.size());
        while (!units.empty()) {
            reserve(1);
            const auto n = std::min<std::size_t>(units.size(), kCapacity - size_);
            narrow(units.data(), n, bytes_ + size_);
            size_ += static_cast<unsigned>(n);
            units.remove_prefix(n);
        }
    }
    end_item();
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
    put_comma();
    struct Commas {
        bool& on;
        const bool before = std::exchange(on, false);
        ~Commas() { on = before; }
    } const off{commasOn_};
    object.toBinary(this);
    end_item();
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
    depth_ = 0;
    if (fault) std::rethrow_exception(fault);
}

} // namespace core
