#include "StringBufferBase.h"

#include "UnitScan.h"

#include <core/component/IllegalArgumentException.h>
#include <core/streams/IOException.h>
#include <core/text/Numbers.h>
#include <core/text/StreamConverter.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <type_traits>

namespace core {

namespace {

constexpr unsigned kBlock = 8192; // units that pass through the stack at a time

// The default text of a value.
class ValueText {
public:
    explicit ValueText(bool value) { assign(std::u16string_view(value ? u"true" : u"false")); }
    template <std::integral Integer> explicit ValueText(Integer value) {
        char digits[20] = {};
        assign(std::string_view(digits, std::to_chars(digits, std::end(digits), value).ptr));
    }
    explicit ValueText(double value) { assign(string_dto(value).view()); }

    const char16_t* data() const noexcept { return units_; }
    unsigned size() const noexcept { return size_; }

private:
    template <class View> void assign(View text) {
        size_ = static_cast<unsigned>(std::copy(text.begin(), text.end(), units_) - units_);
    }

    char16_t units_[32]; // string_dto gives at most 23, an integer has at most 20
    unsigned size_;
};

// The part of a text; throws for a place behind its end.
std::u16string_view part(const stdx::ustring& text, unsigned pos, unsigned n) {
    if (pos > text.size()) throw_out_of_bounds(pos, text.size());
    return text.view().substr(pos, n);
}

unsigned size_of(std::u16string_view text) noexcept {
    return static_cast<unsigned>(text.size());
}

// The part of a buffer as a string of its own, so that the buffer may then change.
stdx::ustring part(IStringBuffer* source, unsigned pos, unsigned n) {
    ORB_ASSERT(source != 0);
    const unsigned size = source->length();
    if (pos > size) throw_out_of_bounds(pos, size);
    stdx::ustring text;
    text._resize_nofill(std::min(n, size - pos));
    text._resize_nofill(source->copy(pos, text.data(), text.size()));
    return text;
}

struct Whole {
    std::size_t operator()(std::u16string_view run) const noexcept { return run.size(); }
};
struct Before {
    char16_t stop;
    std::size_t operator()(std::u16string_view run) const noexcept { return find_unit(run, stop); }
};

} // namespace

void throw_out_of_bounds(unsigned pos, unsigned length) {
    throw IOException(IOException::Error::OutOfBounds,
                      string_ulto(pos) + u" > " + string_ulto(length));
}

// ---- Append.

unsigned StringBufferBase::appendUntil(char16_t stop, const char16_t* text, unsigned n) {
    const std::u16string_view units = units_of(text, n);
    const auto size = static_cast<unsigned>(find_unit(units, stop));
    append(text, size);
    return size;
}

void StringBufferBase::append(const stdx::ustring& text, unsigned pos, unsigned n) {
    const std::u16string_view units = part(text, pos, n);
    append(units.data(), size_of(units));
}

unsigned StringBufferBase::appendUntil(char16_t stop, const stdx::ustring& text, unsigned pos,
                                       unsigned n) {
    const std::u16string_view units = part(text, pos, n);
    return appendUntil(stop, units.data(), size_of(units));
}

void StringBufferBase::append(IStringBuffer* source, unsigned pos, unsigned n) {
    ORB_ASSERT(source != 0);
    const unsigned size = source->length();
    if (pos > size) throw_out_of_bounds(pos, size);
    char16_t block[kBlock];
    for (n = std::min(n, size - pos); n != 0;) {
        const unsigned copied = source->copy(pos, block, std::min(n, kBlock));
        if (copied == 0) break;
        append(block, copied);
        pos += copied;
        n -= copied;
    }
}

unsigned StringBufferBase::appendUntil(char16_t stop, IStringBuffer* source, unsigned pos,
                                       unsigned n) {
    ORB_ASSERT(source != 0);
    const unsigned size = source->length();
    if (pos > size) throw_out_of_bounds(pos, size);
    char16_t block[kBlock];
    unsigned appended = 0;
    for (n = std::min(n, size - pos); appended != n;) {
        const unsigned wanted = std::min(n - appended, kBlock);
        const unsigned copied = source->copyUntil(pos + appended, stop, block, wanted);
        append(block, copied);
        appended += copied;
        if (copied != wanted) break;
    }
    return appended;
}

// ---- Insert and replace. A source is taken out first: it may be this buffer.

void StringBufferBase::insert(unsigned pos, char16_t unit) {
    insert(pos, &unit, 1);
}

void StringBufferBase::insert(unsigned pos, const stdx::ustring& text, unsigned from, unsigned n) {
    const std::u16string_view units = part(text, from, n);
    insert(pos, units.data(), size_of(units));
}

void StringBufferBase::insert(unsigned pos, IStringBuffer* source, unsigned from, unsigned n) {
    insert(pos, part(source, from, n), 0, kAllUnits);
}

void StringBufferBase::replace(unsigned pos, unsigned n, const stdx::ustring& text, unsigned from,
                               unsigned size) {
    const std::u16string_view units = part(text, from, size);
    replace(pos, n, units.data(), size_of(units));
}

void StringBufferBase::replace(unsigned pos, unsigned n, IStringBuffer* source, unsigned from,
                               unsigned size) {
    replace(pos, n, part(source, from, size), 0, kAllUnits);
}

// ---- Values.

template <class Value> void StringBufferBase::append_value(Value value) {
    if (formatter_) return append(formatter_->format(value), 0, kAllUnits);
    const ValueText text(value);
    append(text.data(), text.size());
}

template <class Value> void StringBufferBase::insert_value(unsigned pos, Value value) {
    if (formatter_) return insert(pos, formatter_->format(value), 0, kAllUnits);
    const ValueText text(value);
    insert(pos, text.data(), text.size());
}

#define ORB_VALUE(Type)                                                                            \
    void StringBufferBase::append(Type value) {                                                    \
        append_value(value);                                                                       \
    }                                                                                              \
    void StringBufferBase::insert(unsigned pos, Type value) {                                      \
        insert_value(pos, value);                                                                  \
    }

ORB_VALUE(bool)
ORB_VALUE(std::int8_t)
ORB_VALUE(std::uint8_t)
ORB_VALUE(std::int16_t)
ORB_VALUE(std::uint16_t)
ORB_VALUE(std::int32_t)
ORB_VALUE(std::uint32_t)
ORB_VALUE(std::int64_t)
ORB_VALUE(std::uint64_t)
ORB_VALUE(float)
ORB_VALUE(double)
#undef ORB_VALUE

// ---- Take out.

template <class Extent, class Sink>
unsigned StringBufferBase::for_runs(unsigned pos, unsigned n, Extent extent, Sink sink) {
    n = checked_count(pos, n);
    unsigned taken = 0;
    while (taken < n) {
        const std::u16string_view units = run(pos + taken).substr(0, n - taken);
        const std::size_t size = extent(units);
        if (size != 0) sink(units.data(), static_cast<unsigned>(size));
        taken += static_cast<unsigned>(size);
        if (size < units.size()) break;
    }
    return taken;
}

InterfacePtr<IStringBuffer> StringBufferBase::subBuffer(unsigned pos, unsigned n) {
    auto buffer = create_like(formatter_.get());
    copyTo(pos, buffer.get(), n);
    return buffer;
}

InterfacePtr<IStringBuffer> StringBufferBase::subBufferUntil(unsigned pos, char16_t stop,
                                                             unsigned n) {
    auto buffer = create_like(formatter_.get());
    copyToUntil(pos, stop, buffer.get(), n);
    return buffer;
}

unsigned StringBufferBase::copy(unsigned pos, char16_t* to, unsigned n) {
    return for_runs(pos, n, Whole(), [&](const char16_t* units, unsigned size) {
        std::memcpy(to, units, size * sizeof *units);
        to += size;
    });
}

unsigned StringBufferBase::copyUntil(unsigned pos, char16_t stop, char16_t* to, unsigned n) {
    return for_runs(pos, n, Before{stop}, [&](const char16_t* units, unsigned size) {
        std::memcpy(to, units, size * sizeof *units);
        to += size;
    });
}

unsigned StringBufferBase::copyTo(unsigned pos, IStringBuffer* to, unsigned n) {
    ORB_ASSERT(to != 0);
    return for_runs(pos, n, Whole(),
                    [&](const char16_t* units, unsigned size) { to->append(units, size); });
}

unsigned StringBufferBase::copyToUntil(unsigned pos, char16_t stop, IStringBuffer* to, unsigned n) {
    ORB_ASSERT(to != 0);
    return for_runs(pos, n, Before{stop},
                    [&](const char16_t* units, unsigned size) { to->append(units, size); });
}

char16_t StringBufferBase::charAt(unsigned pos) {
    if (pos >= length()) throw_out_of_bounds(pos, length());
    return run(pos).front();
}

unsigned StringBufferBase::encode(StreamConverterFromUnicode& converter, unsigned& pos, char* to,
                                  unsigned size, unsigned n) {
    char* out = to;
    n = checked_count(pos, n);
    // At least once: the converter may keep bytes that did not fit the last time.
    do {
        const std::u16string_view units = n == 0 ? u"" : run(pos).substr(0, n);
        const char16_t* in = units.data();
        const bool isFull =
            converter.narrow(&in, size_of(units), &out, static_cast<unsigned>(to + size - out));
        const auto taken = static_cast<unsigned>(in - units.data());
        pos += taken;
        n -= taken;
        if (isFull) break;
    } while (n != 0);
    return static_cast<unsigned>(out - to);
}

} // namespace core
