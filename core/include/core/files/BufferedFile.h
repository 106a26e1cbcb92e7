// A buffer in front of another file, so that small reads and writes need no system call each.
//
//   auto out = core::create_buffered_file(file.get(), 32768);
//   out->write(record, sizeof record);
//   out->flush();      // an error in the last bytes is reported here; the destructor cannot report
//
// One buffer serves for reading or for writing, whatever came last. Seeks within what was read move
// a pointer and nothing else. Buffers of 8, 16, 32 and 256 KiB come from the pools of the memory
// layer. A file without `IFileEx` behind the buffer can be read or written in sequence, not both.
#pragma once

#include <core/files/FileMode.h>
#include <core/files/IFile.h>

namespace core {

inline constexpr _GUID IID_IBufferedFile = "ca191e39-113c-437d-a9a2-a927e34de427"_guid;
inline constexpr _GUID CLSID_BufferedFile = "81821037-18b2-4085-a2dd-cc8b6e8c0d1e"_guid;

class IBufferedFile : public IUnknown {
public:
    ORB_INTERFACE(IBufferedFile, IID_IBufferedFile)

    // Puts the object in front of `file`, which it keeps, with a buffer of `bufferSize` bytes. What
    // was pending for a former file is written first. Throws `IllegalArgumentException` for null
    // and for a size of 0.
    virtual void attach(IFile* file, unsigned bufferSize) = 0;
};

// A file that is buffered already comes back as it is.
ORBCORE_API InterfacePtr<IFileEx> create_buffered_file(IFile* file, unsigned bufferSize);
// For reading in sequence alone: `write` and `flush` throw `UnsupportedOperationException`. Null and
// a size of 0 stop the process.
ORBCORE_API InterfacePtr<IFile> create_buffered_file_ro(IFile* file, unsigned bufferSize);

// Opens through the file system of the process; a `bufferSize` of 0 gives the file without a
// buffer. `mode` holds flags of `FileMode`.
ORBCORE_API InterfacePtr<IFile> create_buffered_file_for(const URL& url, unsigned bufferSize,
                                                         int mode);
ORBCORE_API InterfacePtr<IFile> create_buffered_file_for_read(const URL& url, unsigned bufferSize);
// Creates the file or empties it.
ORBCORE_API InterfacePtr<IFile> create_buffered_file_for_write(const URL& url, unsigned bufferSize);

} // namespace core
