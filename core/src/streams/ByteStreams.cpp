#include <core/streams/ByteStreams.h>

#include <core/component/IllegalArgumentException.h>
#include <core/component/InterfaceMap.h>
#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/streams/BufferException.h>
#include <core/text/Numbers.h>

#include <algorithm>

namespace core {

namespace {

// A count from outside.
int checked_count(int n, int bound) {
    if (n < 0 || n > bound)
        throw BufferException(BufferException::Error::OutOfBounds,
                              string_lto(n) + u" > " + string_lto(bound));
    return n;
}

} // namespace

class ByteBufferInputStream
    : public ObjectRoot
    , public SCOM_InternalClass<ByteBufferInputStream>
    , public IInputStream {
public:
    ByteBufferInputStream(IByteBuffer* buffer, int end) : buffer_(buffer, true), end_(end) {}

    static const InterfaceEntry* _GetEntries() {
        return interface_map<ByteBufferInputStream, IInputStream>();
    }

    int read() final { return left() > 0 ? buffer_->get() : -1; }

    int read(void* to, int n) final {
        const int count = count_of(n);
        if (left() <= 0) return -1;
        buffer_->get(to, count);
        return count;
    }

    int skip(int n) final {
        const int count = count_of(n);
        buffer_->position(buffer_->position() + count);
        return count;
    }

private:
    // The buffer may have been moved and cut since.
    int left() const { return std::max(std::min(end_, buffer_->limit()) - buffer_->position(), 0); }
    int count_of(int n) const { return std::min(checked_count(n, n), left()); }

    const InterfacePtr<IByteBuffer> buffer_;
    const int end_;
};

class ByteBufferOutputStream
    : public ObjectRoot
    , public SCOM_InternalClass<ByteBufferOutputStream>
    , public IOutputStream {
public:
    explicit ByteBufferOutputStream(IByteBuffer* buffer) : buffer_(buffer, true) {}

    static const InterfaceEntry* _GetEntries() {
        return interface_map<ByteBufferOutputStream, IOutputStream>();
    }

    void write(unsigned char byte) final { buffer_->put(byte); }
    void write(const void* from, int n) final { buffer_->put(from, n); }
    void flush() final {}
    void close() final {}

private:
    const InterfacePtr<IByteBuffer> buffer_;
};

InterfacePtr<IInputStream> create_byte_input_stream(IByteBuffer* buffer) {
    ORB_ASSERT(buffer != 0);
    return make_object<ByteBufferInputStream>(buffer, buffer->limit());
}

InterfacePtr<IInputStream> create_byte_input_stream(IByteBuffer* buffer, int n) {
    ORB_ASSERT(buffer != 0);
    const int count = checked_count(n, buffer->remaining());
    return make_object<ByteBufferInputStream>(buffer, buffer->position() + count);
}

InterfacePtr<IOutputStream> create_byte_output_stream(IByteBuffer* buffer) {
    ORB_ASSERT(buffer != 0);
    return make_object<ByteBufferOutputStream>(buffer);
}

} // namespace core
