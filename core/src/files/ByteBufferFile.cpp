#include <core/files/ByteBufferFile.h>

#include <core/component/IllegalArgumentException.h>
#include <core/component/InterfaceMap.h>
#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/files/FileException.h>
#include <core/streams/BufferException.h>

#include <algorithm>
#include <limits>

namespace core {

namespace {

// The code of a file for what a buffer refuses when it is written to; None for anything else.
FileException::Error error_of(BufferException::Error error) noexcept {
    switch (error) {
    case BufferException::Error::ReadOnly:
        return FileException::Error::Access;
    case BufferException::Error::Overflow:
        return FileException::Error::DeviceFull;
    default:
        return FileException::Error::None;
    }
}

// The operations of both files.
template <class Interface> class OverByteBuffer : public Interface {
public:
    URL url() final { return URL(); }

    unsigned read(void* dst, unsigned n) final {
        const auto left = static_cast<unsigned>(buffer_->remaining());
        const unsigned size = std::min(left, n);
        buffer_->get(dst, static_cast<int>(size));
        return size;
    }

    void write(const void* src, unsigned n) final {
        if (n > static_cast<unsigned>(std::numeric_limits<int>::max()))
            throw FileException(ORB_FILE_HERE, FileException::Error::DeviceFull, url());
        try {
            buffer_->put(src, static_cast<int>(n));
        } catch (const BufferException& exception) {
            const FileException::Error error = error_of(exception.error());
            if (error == FileException::Error::None) throw;
            throw FileException(ORB_FILE_HERE, error, url(), {}, exception.object().get());
        }
    }

    void flush() final {}

protected:
    explicit OverByteBuffer(IByteBuffer* buffer) : buffer_(buffer, true) {}
    ~OverByteBuffer() = default;

    const InterfacePtr<IByteBuffer> buffer_;
};

} // namespace

class ByteBufferFile
    : public ObjectRoot
    , public SCOM_InternalClass<ByteBufferFile>
    , public OverByteBuffer<IFile> {
public:
    explicit ByteBufferFile(IByteBuffer* buffer) : OverByteBuffer(buffer) {}

    static const InterfaceEntry* _GetEntries() { return interface_map<ByteBufferFile, IFile>(); }
};

class ByteBufferFileEx
    : public ObjectRoot
    , public SCOM_InternalClass<ByteBufferFileEx>
    , public OverByteBuffer<IFileEx> {
public:
    explicit ByteBufferFileEx(IByteBuffer* buffer) : OverByteBuffer(buffer) {}

    static const InterfaceEntry* _GetEntries() {
        return interface_map<ByteBufferFileEx, IFileEx, Via<IFile, IFileEx>>();
    }

    long long seek(long long offset, int origin) final {
        long long base = 0;
        if (origin == kSeekFromCurrent)
            base = buffer_->position();
        else if (origin == kSeekFromEnd)
            base = buffer_->limit();
        else if (origin != kSeekFromStart)
            throw_wrong_parameter(ORB_FILE_HERE, url(), u"seek", u"origin");
        // The base is small: it cannot overflow where the offset is within the limit.
        if (offset > buffer_->limit() - base)
            throw_wrong_parameter(ORB_FILE_HERE, url(), u"seek", u"offset");
        buffer_->position(static_cast<int>(std::max(base + std::max(offset, -base), 0LL)));
        return buffer_->position();
    }

    long long setEOF() final {
        buffer_->limit(buffer_->position());
        return buffer_->limit();
    }
};

InterfacePtr<IFile> create_byte_buffer_file(IByteBuffer* buffer) {
    ORB_ASSERT(buffer != 0);
    return make_object<ByteBufferFile>(buffer);
}

InterfacePtr<IFileEx> create_byte_buffer_file_ex(IByteBuffer* buffer) {
    ORB_ASSERT(buffer != 0);
    return make_object<ByteBufferFileEx>(buffer);
}

} // namespace core
