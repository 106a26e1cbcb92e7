#include "ByteBuffer.h"

#include <core/component/IllegalArgumentException.h>
#include <core/component/Object.h>
#include <core/text/Numbers.h>

#include <limits>

namespace core {

namespace {

int checked_capacity(unsigned n) {
    if (n > static_cast<unsigned>(std::numeric_limits<int>::max()))
        throw BufferException(BufferException::Error::OutOfBounds, string_ulto(n));
    return static_cast<int>(n);
}

} // namespace

void ByteBuffer::fail(Error error) {
    throw BufferException(error);
}

void ByteBuffer::fail(Error error, std::int64_t n, std::int64_t bound) {
    throw BufferException(error, n < 0 ? string_i64to(n) + u" < 0"
                                       : string_i64to(n) + u" > " + string_i64to(bound));
}

// ---- Position and limit.

void ByteBuffer::position(int n) {
    if (n < 0 || n > f_.limit) fail(Error::OutOfBounds, n, f_.limit);
    f_.position = n;
    if (f_.mark > n) f_.mark = -1;
}

void ByteBuffer::limit(int n) {
    if (n < 0 || n > f_.capacity) fail(Error::OutOfBounds, n, f_.capacity);
    f_.limit = n;
    if (f_.position > n) f_.position = n;
    if (f_.mark > n) f_.mark = -1;
}

void ByteBuffer::reset() {
    if (f_.mark < 0) fail(Error::IllegalMark);
    f_.position = f_.mark;
}

void ByteBuffer::clear() {
    f_.limit = f_.capacity;
    rewind();
}

void ByteBuffer::flip() {
    f_.limit = f_.position;
    rewind();
}

void ByteBuffer::rewind() {
    f_.position = 0;
    f_.mark = -1;
}

// ---- Buffers over the same memory.

InterfacePtr<IByteBuffer> ByteBuffer::slice() {
    Fields fields = f_;
    fields.offset += static_cast<unsigned>(f_.position);
    fields.capacity = fields.limit = remaining();
    fields.position = 0;
    fields.mark = -1;
    return make_object<ByteBuffer>(std::move(fields));
}

InterfacePtr<IByteBuffer> ByteBuffer::duplicate() {
    return make_object<ByteBuffer>(f_);
}

InterfacePtr<IByteBuffer> ByteBuffer::asReadOnlyBuffer() {
    Fields fields = f_;
    if (fields.data) fields.readOnlyData = std::exchange(fields.data, nullptr);
    return make_object<ByteBuffer>(std::move(fields));
}

// ---- Many bytes.

void ByteBuffer::get(void* to, int n) {
    if (n < 0) fail(Error::OutOfBounds, n, 0);
    const unsigned char* const from = to_read(n);
    if (n != 0) std::memmove(to, from, static_cast<std::size_t>(n));
}

void ByteBuffer::put(const void* from, int n) {
    if (n < 0) fail(Error::OutOfBounds, n, 0);
    unsigned char* const to = to_write(n);
    if (n != 0) std::memmove(to, from, static_cast<std::size_t>(n));
}

void ByteBuffer::put(IByteBuffer* source) {
    ORB_ASSERT(source != 0);
    const int n = source->remaining();
    unsigned char* const to = to_write(n);
    // The buffer itself has its bytes where they belong.
    if (source != this) source->get(to, n);
}

// ---- New buffers.

InterfacePtr<IByteBuffer> create_byte_buffer_unsafe(ByteArray* array, unsigned char* data,
                                                    const unsigned char* readOnlyData,
                                                    unsigned offset, int capacity, int limit,
                                                    int position, int mark, ByteOrder order) {
    return make_object<ByteBuffer>(ByteBuffer::Fields{
        {array, true}, readOnlyData, data, offset, capacity, limit, position, mark, order});
}

InterfacePtr<IByteBuffer> allocate_byte_buffer(unsigned n, ByteOrder order) {
    const int capacity = checked_capacity(n);
    const InterfacePtr<ByteArray> array(new ByteArray(n), true);
    return create_byte_buffer_unsafe(array.get(), array->data(), nullptr, 0, capacity, capacity, 0,
                                     -1, order);
}

InterfacePtr<IByteBuffer> create_byte_buffer(unsigned char* data, unsigned n, ByteOrder order) {
    ORB_ASSERT(data != 0);
    const int capacity = checked_capacity(n);
    return create_byte_buffer_unsafe(nullptr, data, nullptr, 0, capacity, capacity, 0, -1, order);
}

InterfacePtr<IByteBuffer> wrap_byte_buffer(const unsigned char* data, unsigned n, ByteOrder order) {
    ORB_ASSERT(data != 0);
    const int capacity = checked_capacity(n);
    return create_byte_buffer_unsafe(nullptr, nullptr, data, 0, capacity, capacity, 0, -1, order);
}

} // namespace core
