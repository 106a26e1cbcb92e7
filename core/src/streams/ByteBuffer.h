// The byte buffer.
#pragma once

#include <core/component/InterfaceMap.h>
#include <core/component/ObjectRoot.h>
#include <core/component/Registration.h>
#include <core/streams/BufferException.h>
#include <core/streams/IByteBuffer.h>

#include <cstring>

namespace core {

class ByteBuffer
    : public ObjectRoot
    , public SCOM_InternalClass<ByteBuffer>
    , public IByteBuffer {
public:
    using Error = BufferException::Error;

    // The fields of a buffer, in their order.
    struct Fields {
        InterfacePtr<ByteArray> array;     // null over wrapped memory
        const unsigned char* readOnlyData; // one of the two is null: if not this one, the buffer
        unsigned char* data;               // is read only
        unsigned offset;                   // of the buffer in the data
        int capacity;
        int limit;
        int position;
        int mark; // -1: none
        ByteOrder order;
    };

    explicit ByteBuffer(Fields fields) : f_(std::move(fields)) {}

    static const InterfaceEntry* _GetEntries() {
        return interface_map<ByteBuffer, IByteBuffer, Via<IBuffer, IByteBuffer>>();
    }

    int capacity() final { return f_.capacity; }
    int position() final { return f_.position; }
    void position(int n) final;
    int limit() final { return f_.limit; }
    void limit(int n) final;
    void mark() final { f_.mark = f_.position; }
    void reset() final;
    void clear() final;
    void flip() final;
    void rewind() final;
    int remaining() final { return f_.limit - f_.position; }
    bool hasRemaining() final { return f_.position < f_.limit; }
    bool isReadOnly() final { return f_.readOnlyData != nullptr; }

    bool hasArray() final { return static_cast<bool>(f_.array); }
    ByteArray* array() final { return f_.array.get(); }
    int arrayOffset() final { return static_cast<int>(f_.offset); }

    InterfacePtr<IByteBuffer> slice() final;
    InterfacePtr<IByteBuffer> duplicate() final;
    InterfacePtr<IByteBuffer> asReadOnlyBuffer() final;

    ByteOrder order() final { return f_.order; }
    void order(ByteOrder order) final { f_.order = order; }

    unsigned char get() final { return *to_read(1); }
    unsigned char get(int i) final { return readable()[near(i)]; }
    void put(unsigned char byte) final { *to_write(1) = byte; }
    void put(int i, unsigned char byte) final { writable()[near(i)] = byte; }

    std::int16_t getShort() final { return load<std::int16_t>(to_read(2)); }
    std::int16_t getShort(int i) final { return load_at<std::int16_t>(i); }
    void putShort(std::int16_t value) final { store(to_write(2), value); }
    void putShort(int i, std::int16_t value) final { store_at(i, value); }
    std::int32_t getInt() final { return load<std::int32_t>(to_read(4)); }
    std::int32_t getInt(int i) final { return load_at<std::int32_t>(i); }
    void putInt(std::int32_t value) final { store(to_write(4), value); }
    void putInt(int i, std::int32_t value) final { store_at(i, value); }
    std::int64_t getLong() final { return load<std::int64_t>(to_read(8)); }
    std::int64_t getLong(int i) final { return load_at<std::int64_t>(i); }
    void putLong(std::int64_t value) final { store(to_write(8), value); }
    void putLong(int i, std::int64_t value) final { store_at(i, value); }

    void get(void* to, int n) final;
    void put(const void* from, int n) final;
    void put(IByteBuffer* source) final;

private:
    [[noreturn, gnu::cold]] static void fail(Error error);
    // With the numbers: a place or count, and the bound that it passes.
    [[noreturn, gnu::cold]] static void fail(Error error, std::int64_t n, std::int64_t bound);

    const unsigned char* readable() const noexcept {
        return (f_.readOnlyData ? f_.readOnlyData : f_.data) + f_.offset;
    }
    unsigned char* writable() const {
        if (f_.readOnlyData) fail(Error::ReadOnly);
        return f_.data + f_.offset;
    }

    // `n` bytes at the position, which moves behind them.
    const unsigned char* to_read(int n) {
        if (n > remaining()) fail(Error::Underflow, n, remaining());
        const unsigned char* const at = readable() + f_.position;
        f_.position += n;
        return at;
    }
    unsigned char* to_write(int n) {
        unsigned char* const data = writable();
        if (n > remaining()) fail(Error::Overflow, n, remaining());
        unsigned char* const at = data + f_.position;
        f_.position += n;
        return at;
    }

    // The places of an indexed byte and of an indexed number.
    int near(int i) const {
        if (i < 0 || std::int64_t{i} + f_.position >= f_.limit)
            fail(Error::OutOfBounds, i, f_.limit - f_.position);
        return i + f_.position;
    }
    int far(int i, int width) const {
        if (i < 0 || std::int64_t{i} + width - 1 >= f_.capacity)
            fail(Error::OutOfBounds, std::int64_t{i} + width, f_.capacity);
        return i;
    }

    template <class Value> Value load(const unsigned char* at) const noexcept {
        std::make_unsigned_t<Value> bits;
        std::memcpy(&bits, at, sizeof bits);
        return static_cast<Value>(ordered(bits));
    }
    template <class Value> void store(unsigned char* at, Value value) const noexcept {
        const auto bits = ordered(static_cast<std::make_unsigned_t<Value>>(value));
        std::memcpy(at, &bits, sizeof bits);
    }
    template <class Value> Value load_at(int i) const {
        return load<Value>(readable() + far(i, sizeof(Value)));
    }
    template <class Value> void store_at(int i, Value value) const {
        unsigned char* const data = writable();
        store(data + far(i, sizeof(Value)), value);
    }

    // Between the machine's order, which is little, and the buffer's.
    template <class Bits> Bits ordered(Bits bits) const noexcept {
        if (f_.order == ByteOrder::Little) return bits;
        if constexpr (sizeof(Bits) == 2) return __builtin_bswap16(bits);
        if constexpr (sizeof(Bits) == 4) return __builtin_bswap32(bits);
        if constexpr (sizeof(Bits) == 8) return __builtin_bswap64(bits);
    }

    // 0 <= mark <= position <= limit <= capacity, but for a mark of -1.
    Fields f_;
};

} // namespace core
