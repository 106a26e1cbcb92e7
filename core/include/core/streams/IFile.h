// Files. A file is an object, not a descriptor: whatever holds bytes and has a URL is read and
// written through these interfaces, be it a file of the system, a piece of memory, a window on
// another file or an element of a storage.
//
//   core::InterfacePtr<core::IFile> file = …;
//   file->write("abc", 3);
//   if (core::InterfacePtr<core::IFileEx> random(file); random)
//       random->seek(0, core::kSeekFromStart);
//
// A file has no lock of its own: one thread at a time uses it. What fails throws
// `core::FileException` (core/files/FileException.h) with the URL of the file.
#pragma once

#include <core/component/InterfacePtr.h>

#include <cstdint>

namespace core {

class URL;

inline constexpr _GUID IID_IFile = "2bb53f17-dde8-44df-a71c-2259476c6ab1"_guid;
inline constexpr _GUID IID_IFileEx = "00d3f3f4-7648-4f9b-bad9-973a9deefbf7"_guid;
inline constexpr _GUID IID_IByteWindow = "b1f0c6a4-93de-4a57-8e2b-7d40c95f3b18"_guid;

// What an offset given to `seek` counts from.
enum SeekOrigin : int {
    kSeekFromStart = 1,
    kSeekFromCurrent = 2,
    kSeekFromEnd = 4,
};

class IFile : public IUnknown {
public:
    ORB_INTERFACE(IFile, IID_IFile)

    virtual URL url() = 0;
    // At most `n` bytes; the number read, 0 at the end. Fewer bytes do not mean the end.
    virtual unsigned read(void* dst, unsigned n) = 0;
    // All `n` bytes, or an exception.
    virtual void write(const void* src, unsigned n) = 0;
    // Hands on what the object itself keeps back. It does not force anything to the disk.
    virtual void flush() = 0;
};

class IFileEx : public IFile {
public:
    ORB_INTERFACE(IFileEx, IID_IFileEx)

    // Moves, and gives the new position: `seek(0, kSeekFromCurrent)` asks for the position,
    // `seek(0, kSeekFromEnd)` for the size. `origin` is a `SeekOrigin`.
    virtual long long seek(long long offset, int origin) = 0;
    // Makes the position the end of the file, and gives the new size.
    virtual long long setEOF() = 0;
};

// A second interface of the files that hold bytes in memory: parsers take them there instead of
// calling for each.
class IByteWindow : public IUnknown {
public:
    ORB_INTERFACE(IByteWindow, IID_IByteWindow)

    // The bytes that come next, as many as lie in memory; none only at the end. `size` gets their
    // number. Valid until the file is used.
    virtual const std::uint8_t* window(unsigned& size) = 0;
    // Passes `n` bytes of the window.
    virtual void advance(unsigned n) = 0;
};

} // namespace core
