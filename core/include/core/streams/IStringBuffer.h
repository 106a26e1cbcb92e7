// Text that grows: what writers fill and readers read.
//
//   auto buffer = core::create_string_buffer();
//   buffer->append(u"total: ");
//   buffer->append(42);                                // "42"
//   stdx::ustring text = buffer->toString();
//
// create_string_buffer() gives a store in chunks: appending never moves what is there, which is for
// long texts. create_std_string_buffer() gives one over a single string: it starts with a string
// and gives its text back without a copy.
//
// Places count from 0; one behind the end throws IOException OutOfBounds, and so does a place
// behind the end of a text that is taken from. Counts are cut to what there is. A source may be the
// buffer itself. A buffer is for one thread at a time; whatever allocates throws std::bad_alloc.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/platform/api.h>
#include <core/streams/IReader.h>
#include <elm/string>

#include <concepts>
#include <cstdint>

namespace core {

class StreamConverterToUnicode;
class StreamConverterFromUnicode;
class IStringBufferIterator;

inline constexpr _GUID IID_IStringBuffer = "356f70d9-d157-4a5f-b81b-5e4b49941d38"_guid;
inline constexpr _GUID IID_IStringFormatter = "c58ee772-36b4-431e-a28d-4d9dd5710bd8"_guid;
inline constexpr _GUID IID_IStringBufferIterator = "c832d2ad-3d4d-44b4-934e-97461a6b1eae"_guid;

// Makes the text of values for the buffers that were given it.
class IStringFormatter : public IUnknown {
public:
    ORB_INTERFACE(IStringFormatter, IID_IStringFormatter)

    virtual stdx::ustring format(bool value) = 0;
    virtual stdx::ustring format(std::int8_t value) = 0;
    virtual stdx::ustring format(std::uint8_t value) = 0;
    virtual stdx::ustring format(std::int16_t value) = 0;
    virtual stdx::ustring format(std::uint16_t value) = 0;
    virtual stdx::ustring format(std::int32_t value) = 0;
    virtual stdx::ustring format(std::uint32_t value) = 0;
    virtual stdx::ustring format(std::int64_t value) = 0;
    virtual stdx::ustring format(std::uint64_t value) = 0;
    virtual stdx::ustring format(float value) = 0;
    virtual stdx::ustring format(double value) = 0;
};

class IStringBuffer : public IUnknown {
public:
    ORB_INTERFACE(IStringBuffer, IID_IStringBuffer)

    // --- state ---

    virtual bool isEmpty() = 0;
    virtual unsigned length() = 0;
    // Cuts the text, or makes it longer by units with any contents, which the caller sets.
    virtual void setLength(unsigned n) = 0;
    virtual unsigned capacity() = 0;
    virtual void reserve(unsigned n) = 0;
    // Gives back memory that the text does not need.
    virtual void compact() = 0;

    // --- append ---
    //
    // With kAllUnits a pointer is read up to its terminator. The forms with `stop` end in front of
    // that unit and return the number of units appended.

    virtual void append(char16_t unit) = 0;
    virtual void append(const char16_t* text, unsigned n = kAllUnits) = 0;
    virtual unsigned appendUntil(char16_t stop, const char16_t* text, unsigned n = kAllUnits) = 0;
    virtual void append(const stdx::ustring& text, unsigned pos = 0, unsigned n = kAllUnits) = 0;
    virtual unsigned appendUntil(char16_t stop, const stdx::ustring& text, unsigned pos = 0,
                                 unsigned n = kAllUnits) = 0;
    virtual void append(IStringBuffer* source, unsigned pos = 0, unsigned n = kAllUnits) = 0;
    virtual unsigned appendUntil(char16_t stop, IStringBuffer* source, unsigned pos = 0,
                                 unsigned n = kAllUnits) = 0;
    // Decodes `n` bytes; null ends the converter's stream. Returns the bytes that the converter
    // took; those of a character cut at the end wait in it. Throws ConverterException; what was
    // decoded before stays.
    virtual unsigned append(StreamConverterToUnicode& converter, const char* bytes, unsigned n) = 0;

    // Values: by the formatter if there is one; otherwise "true" and "false", decimal digits, and
    // for reals the text of string_dto.
    virtual void append(bool value) = 0;
    virtual void append(std::int8_t value) = 0;
    virtual void append(std::uint8_t value) = 0;
    virtual void append(std::int16_t value) = 0;
    virtual void append(std::uint16_t value) = 0;
    virtual void append(std::int32_t value) = 0;
    virtual void append(std::uint32_t value) = 0;
    virtual void append(std::int64_t value) = 0;
    virtual void append(std::uint64_t value) = 0;
    virtual void append(float value) = 0;
    virtual void append(double value) = 0;

    // --- insert in front of `pos` ---

    virtual void insert(unsigned pos, char16_t unit) = 0;
    virtual void insert(unsigned pos, const char16_t* text, unsigned n = kAllUnits) = 0;
    virtual void insert(unsigned pos, const stdx::ustring& text, unsigned from = 0,
                        unsigned n = kAllUnits) = 0;
    virtual void insert(unsigned pos, IStringBuffer* source, unsigned from = 0,
                        unsigned n = kAllUnits) = 0;
    virtual void insert(unsigned pos, bool value) = 0;
    virtual void insert(unsigned pos, std::int8_t value) = 0;
    virtual void insert(unsigned pos, std::uint8_t value) = 0;
    virtual void insert(unsigned pos, std::int16_t value) = 0;
    virtual void insert(unsigned pos, std::uint16_t value) = 0;
    virtual void insert(unsigned pos, std::int32_t value) = 0;
    virtual void insert(unsigned pos, std::uint32_t value) = 0;
    virtual void insert(unsigned pos, std::int64_t value) = 0;
    virtual void insert(unsigned pos, std::uint64_t value) = 0;
    virtual void insert(unsigned pos, float value) = 0;
    virtual void insert(unsigned pos, double value) = 0;

    // --- remove ---

    // Keeps the memory.
    virtual void clear() = 0;
    virtual void erase(unsigned pos, unsigned n = kAllUnits) = 0;

    // --- take out ---

    // A new buffer of the same kind, with the formatter of this one.
    virtual InterfacePtr<IStringBuffer> subBuffer(unsigned pos, unsigned n = kAllUnits) = 0;
    virtual InterfacePtr<IStringBuffer> subBufferUntil(unsigned pos, char16_t stop,
                                                       unsigned n = kAllUnits) = 0;
    // These return the number of units copied.
    virtual unsigned copy(unsigned pos, char16_t* to, unsigned n = kAllUnits) = 0;
    virtual unsigned copyUntil(unsigned pos, char16_t stop, char16_t* to,
                               unsigned n = kAllUnits) = 0;
    virtual unsigned copyTo(unsigned pos, IStringBuffer* to, unsigned n = kAllUnits) = 0;
    virtual unsigned copyToUntil(unsigned pos, char16_t stop, IStringBuffer* to,
                                 unsigned n = kAllUnits) = 0;
    virtual stdx::ustring toString() = 0;

    virtual char16_t charAt(unsigned pos) = 0;
    virtual void setCharAt(unsigned pos, char16_t unit) = 0;

    // --- replace the `n` units at `pos` ---

    virtual void replace(unsigned pos, unsigned n, const char16_t* text,
                         unsigned size = kAllUnits) = 0;
    virtual void replace(unsigned pos, unsigned n, const stdx::ustring& text, unsigned from = 0,
                         unsigned size = kAllUnits) = 0;
    virtual void replace(unsigned pos, unsigned n, IStringBuffer* source, unsigned from = 0,
                         unsigned size = kAllUnits) = 0;

    // Encodes at most `n` units from `pos` on into memory of `size` bytes, as many as fit; moves
    // `pos` behind the last unit taken and returns the bytes written. What the converter took but
    // had no room for comes with the next call: all is written when one at the end gives 0.
    virtual unsigned encode(StreamConverterFromUnicode& converter, unsigned& pos, char* to,
                            unsigned size, unsigned n = kAllUnits) = 0;

    // A reader that starts at `pos`. The store in chunks has none behind its last unit.
    virtual InterfacePtr<IStringBufferIterator> createIterator(unsigned pos) = 0;

    // --- what would convert to another type unseen ---

    void append(long long value) { append(static_cast<std::int64_t>(value)); }
    void append(unsigned long long value) { append(static_cast<std::uint64_t>(value)); }
    void insert(unsigned pos, long long value) { insert(pos, static_cast<std::int64_t>(value)); }
    void insert(unsigned pos, unsigned long long value) {
        insert(pos, static_cast<std::uint64_t>(value));
    }
    template <class Unit>
    requires(std::same_as<Unit, char> || std::same_as<Unit, wchar_t> ||
             std::same_as<Unit, char32_t>) void append(Unit) = delete;
    template <class Unit>
    requires(std::same_as<Unit, char> || std::same_as<Unit, wchar_t> ||
             std::same_as<Unit, char32_t>) void insert(unsigned, Unit) = delete;
    void append(const void*) = delete;
    void insert(unsigned, const void*) = delete;
};

// A reader over a buffer, which can also step back. It stays valid while the buffer changes: it
// keeps its place, or goes to the end if there is no such place any more. Holds a reference to the
// buffer.
class IStringBufferIterator : public IReader {
public:
    ORB_INTERFACE(IStringBufferIterator, IID_IStringBufferIterator)

    virtual IStringBuffer* buffer() = 0; // lent
    virtual unsigned position() = 0;
    // A step forwards, but not at the end. Over a store in chunks: whether it led to a unit; over a
    // string: whether there was a step.
    virtual bool next() = 0;
    // A step back; false at the start.
    virtual bool prev() = 0;
    // The unit here; 0 at the end.
    virtual char16_t current() = 0;
};

// A reference to the formatter is held; null for none.
ORBCORE_API InterfacePtr<IStringBuffer> create_string_buffer(IStringFormatter* formatter = nullptr);
ORBCORE_API InterfacePtr<IStringBuffer>
create_std_string_buffer(IStringFormatter* formatter = nullptr);
// Starts with the text, which is shared until the first change.
ORBCORE_API InterfacePtr<IStringBuffer>
create_std_string_buffer(const stdx::ustring& text, IStringFormatter* formatter = nullptr);

} // namespace core
