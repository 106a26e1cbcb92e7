// Bytes with a position and a limit, read and written as numbers in either byte order.
//
//   auto buffer = core::allocate_byte_buffer(64, core::ByteOrder::Little);
//   buffer->putInt(42);
//   buffer->flip();                                      // from writing to reading
//   buffer->getInt();
//
//   0 <= mark <= position <= limit <= capacity
//
// What lies between position and limit is to be read or to be written. Places, limits and counts
// outside throw BufferException OutOfBounds; reading past the limit Underflow, writing past it
// Overflow, writing to a buffer that is read only ReadOnly. A failed call changes nothing. A buffer
// is for one thread at a time; buffers that share an array may be on different threads.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/component/Refcountable.h>
#include <core/platform/api.h>

#include <cstdint>
#include <memory>

namespace core {

inline constexpr _GUID IID_IBuffer = "fe01bca8-b938-408d-adab-60a5258d444e"_guid;
inline constexpr _GUID IID_IByteBuffer = "9413391a-11a0-4008-a9f2-e4470e5c37ef"_guid;

enum class ByteOrder : std::int32_t { Big = 0, Little = 1 };

class IBuffer : public IUnknown {
public:
    ORB_INTERFACE(IBuffer, IID_IBuffer)

    virtual int capacity() = 0;
    virtual int position() = 0;
    // Drops a mark above it.
    virtual void position(int n) = 0;
    virtual int limit() = 0;
    // Pulls back the position, and drops a mark above it.
    virtual void limit(int n) = 0;
    // Remembers the position.
    virtual void mark() = 0;
    // Back to the mark. Throws BufferException IllegalMark.
    virtual void reset() = 0;
    // For new writing: position 0, the limit at the capacity, no mark. The bytes stay.
    virtual void clear() = 0;
    // From writing to reading: the limit at the position, position 0, no mark.
    virtual void flip() = 0;
    // To the start again: position 0, no mark.
    virtual void rewind() = 0;
    virtual int remaining() = 0;
    virtual bool hasRemaining() = 0;
    virtual bool isReadOnly() = 0;
};

// Memory that several buffers share.
class ByteArray : public Refcountable<ByteArray, AtomicCounter> {
public:
    // Zeroed. Throws std::bad_alloc.
    explicit ByteArray(unsigned size) : data_(new unsigned char[size]()), size_(size) {}

    unsigned char* data() noexcept { return data_.get(); }
    const unsigned char* data() const noexcept { return data_.get(); }
    unsigned size() const noexcept { return size_; }

private:
    std::unique_ptr<unsigned char[]> data_;
    unsigned size_;
};

class IByteBuffer : public IBuffer {
public:
    ORB_INTERFACE(IByteBuffer, IID_IByteBuffer)

    // Whether the memory is a ByteArray, not wrapped memory of somebody else.
    virtual bool hasArray() = 0;
    virtual ByteArray* array() = 0; // lent, or null
    virtual int arrayOffset() = 0;  // where the buffer begins in its memory

    // Buffers over the same memory: of the bytes from position to limit; of all, with position,
    // limit and mark; the same, read only. They keep an array alive, but not wrapped memory.
    virtual InterfacePtr<IByteBuffer> slice() = 0;
    virtual InterfacePtr<IByteBuffer> duplicate() = 0;
    virtual InterfacePtr<IByteBuffer> asReadOnlyBuffer() = 0;

    virtual ByteOrder order() = 0;
    virtual void order(ByteOrder order) = 0;

    // Without an index at the position, which moves on. The index of a byte counts from the
    // position; that of a number from the start of the buffer, and it is bounded by the capacity,
    // not by the limit.
    virtual unsigned char get() = 0;
    virtual unsigned char get(int i) = 0;
    virtual void put(unsigned char byte) = 0;
    virtual void put(int i, unsigned char byte) = 0;
    virtual std::int16_t getShort() = 0;
    virtual std::int16_t getShort(int i) = 0;
    virtual void putShort(std::int16_t value) = 0;
    virtual void putShort(int i, std::int16_t value) = 0;
    virtual std::int32_t getInt() = 0;
    virtual std::int32_t getInt(int i) = 0;
    virtual void putInt(std::int32_t value) = 0;
    virtual void putInt(int i, std::int32_t value) = 0;
    virtual std::int64_t getLong() = 0;
    virtual std::int64_t getLong(int i) = 0;
    virtual void putLong(std::int64_t value) = 0;
    virtual void putLong(int i, std::int64_t value) = 0;

    // `n` bytes from and to memory, which may lie inside the buffer.
    virtual void get(void* to, int n) = 0;
    virtual void put(const void* from, int n) = 0;
    // All that remains in `source`; both positions move on.
    virtual void put(IByteBuffer* source) = 0;

    // The index 0 could be a null pointer otherwise.
    void put(int i, int byte) { put(i, static_cast<unsigned char>(byte)); }
};

// A new array of `n` zero bytes.
ORBCORE_API InterfacePtr<IByteBuffer> allocate_byte_buffer(unsigned n,
                                                           ByteOrder order = ByteOrder::Big);
// Over memory of the caller, which must outlive the buffer and all that are made of it.
ORBCORE_API InterfacePtr<IByteBuffer> create_byte_buffer(unsigned char* data, unsigned n,
                                                         ByteOrder order = ByteOrder::Big);
// The same, read only.
ORBCORE_API InterfacePtr<IByteBuffer> wrap_byte_buffer(const unsigned char* data, unsigned n,
                                                       ByteOrder order = ByteOrder::Big);
// Of all its fields, unchecked. `array` is null or the owner of the memory, a reference is taken;
// of `data` and `readOnlyData` one is null. `offset` is where the buffer begins there.
ORBCORE_API InterfacePtr<IByteBuffer>
create_byte_buffer_unsafe(ByteArray* array, unsigned char* data, const unsigned char* readOnlyData,
                          unsigned offset, int capacity, int limit, int position, int mark,
                          ByteOrder order);

} // namespace core
