// Streams of bytes over a byte buffer.
#pragma once

#include <core/streams/IByteBuffer.h>

namespace core {

inline constexpr _GUID IID_IInputStream = "09bebddf-2168-4867-bdba-db68ce83a4ff"_guid;
inline constexpr _GUID IID_IOutputStream = "92d36f5e-2884-44e4-8ac0-3626d83512dc"_guid;

class IInputStream : public IUnknown {
public:
    ORB_INTERFACE(IInputStream, IID_IInputStream)

    // The next byte, or -1.
    virtual int read() = 0;
    // At most `n` bytes; returns their number, or -1 when nothing remains.
    virtual int read(void* to, int n) = 0;
    // Passes at most `n` bytes; returns their number.
    virtual int skip(int n) = 0;
};

class IOutputStream : public IUnknown {
public:
    ORB_INTERFACE(IOutputStream, IID_IOutputStream)

    virtual void write(unsigned char byte) = 0;
    virtual void write(const void* from, int n) = 0;
    virtual void flush() = 0;
    virtual void close() = 0;
};

// They hold a reference to the buffer and move its position. The first ends at the limit that the
// buffer has now, the second after the next `n` bytes; a count that is negative or passes the limit
// throws BufferException OutOfBounds. Failures are the buffer's.
ORBCORE_API InterfacePtr<IInputStream> create_byte_input_stream(IByteBuffer* buffer);
ORBCORE_API InterfacePtr<IInputStream> create_byte_input_stream(IByteBuffer* buffer, int n);
ORBCORE_API InterfacePtr<IOutputStream> create_byte_output_stream(IByteBuffer* buffer);

} // namespace core
