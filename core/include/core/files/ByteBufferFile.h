// A byte buffer as a file. It reads and writes at the position of the buffer, up to its limit, and
// has an empty URL.
//
// Failures are FileException: Access for writing to a buffer that is read only, DeviceFull for
// writing past the limit, Failure for a seek past it.
#pragma once

#include <core/files/IFile.h>
#include <core/streams/IByteBuffer.h>

namespace core {

// A reference to the buffer is held.
ORBCORE_API InterfacePtr<IFile> create_byte_buffer_file(IByteBuffer* buffer);
// `setEOF` makes the position the limit.
ORBCORE_API InterfacePtr<IFileEx> create_byte_buffer_file_ex(IByteBuffer* buffer);

} // namespace core
