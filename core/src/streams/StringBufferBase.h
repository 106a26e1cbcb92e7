// What both string buffers have in common: the many forms of an operation, made of the few that
// depend on the store.
#pragma once

#include <core/component/InterfaceMap.h>
#include <core/component/ObjectRoot.h>
#include <core/component/Registration.h>
#include <core/streams/IStringBuffer.h>

#include <string_view>

namespace core {

// Throws IOException OutOfBounds with both numbers.
[[noreturn, gnu::cold]] void throw_out_of_bounds(unsigned pos, unsigned length);

// The text of a pointer and a count; kAllUnits: up to the terminator.
inline std::u16string_view units_of(const char16_t* text, unsigned n) noexcept {
    if (!text) return {};
    return n == kAllUnits ? std::u16string_view(text) : std::u16string_view(text, n);
}

class StringBufferBase : public IStringBuffer {
public:
    bool isEmpty() final { return length() == 0; }

    using IStringBuffer::append;
    unsigned appendUntil(char16_t stop, const char16_t* text, unsigned n) final;
    void append(const stdx::ustring& text, unsigned pos, unsigned n) final;
    unsigned appendUntil(char16_t stop, const stdx::ustring& text, unsigned pos, unsigned n) final;
    void append(IStringBuffer* source, unsigned pos, unsigned n) final;
    unsigned appendUntil(char16_t stop, IStringBuffer* source, unsigned pos, unsigned n) final;
    void append(bool value) final;
    void append(std::int8_t value) final;
    void append(std::uint8_t value) final;
    void append(std::int16_t value) final;
    void append(std::uint16_t value) final;
    void append(std::int32_t value) final;
    void append(std::uint32_t value) final;
    void append(std::int64_t value) final;
    void append(std::uint64_t value) final;
    void append(float value) final;
    void append(double value) final;

    using IStringBuffer::insert;
    void insert(unsigned pos, char16_t unit) final;
    void insert(unsigned pos, const stdx::ustring& text, unsigned from, unsigned n) final;
    void insert(unsigned pos, IStringBuffer* source, unsigned from, unsigned n) final;
    void insert(unsigned pos, bool value) final;
    void insert(unsigned pos, std::int8_t value) final;
    void insert(unsigned pos, std::uint8_t value) final;
    void insert(unsigned pos, std::int16_t value) final;
    void insert(unsigned pos, std::uint16_t value) final;
    void insert(unsigned pos, std::int32_t value) final;
    void insert(unsigned pos, std::uint32_t value) final;
    void insert(unsigned pos, std::int64_t value) final;
    void insert(unsigned pos, std::uint64_t value) final;
    void insert(unsigned pos, float value) final;
    void insert(unsigned pos, double value) final;

    InterfacePtr<IStringBuffer> subBuffer(unsigned pos, unsigned n) final;
    InterfacePtr<IStringBuffer> subBufferUntil(unsigned pos, char16_t stop, unsigned n) final;
    unsigned copy(unsigned pos, char16_t* to, unsigned n) final;
    unsigned copyUntil(unsigned pos, char16_t stop, char16_t* to, unsigned n) final;
    unsigned copyTo(unsigned pos, IStringBuffer* to, unsigned n) final;
    unsigned copyToUntil(unsigned pos, char16_t stop, IStringBuffer* to, unsigned n) final;

    char16_t charAt(unsigned pos) final;

    using IStringBuffer::replace;
    void replace(unsigned pos, unsigned n, const stdx::ustring& text, unsigned from,
                 unsigned size) final;
    void replace(unsigned pos, unsigned n, IStringBuffer* source, unsigned from,
                 unsigned size) final;

    unsigned encode(StreamConverterFromUnicode& converter, unsigned& pos, char* to, unsigned size,
                    unsigned n) final;

protected:
    explicit StringBufferBase(IStringFormatter* formatter) : formatter_(formatter, true) {}
    ~StringBufferBase() = default;

    // `n` cut to what there is behind `pos`; throws for a place behind the end.
    unsigned checked_count(unsigned pos, unsigned n) {
        const unsigned size = length();
        if (pos > size) throw_out_of_bounds(pos, size);
        return n < size - pos ? n : size - pos;
    }

private:
    // The units from `pos` on that lie together: at least one, for a place in the text.
    virtual std::u16string_view run(unsigned pos) = 0;
    virtual InterfacePtr<IStringBuffer> create_like(IStringFormatter* formatter) = 0;

    template <class Value> void append_value(Value value);
    template <class Value> void insert_value(unsigned pos, Value value);
    template <class Extent, class Sink>
    unsigned for_runs(unsigned pos, unsigned n, Extent extent, Sink sink);

    const InterfacePtr<IStringFormatter> formatter_;
};

} // namespace core
