// A read-only window on a part of another file, as a file that begins at 0.
//
//   const auto segment = core::create_object<core::IFileSegmentFile>(core::CLSID_FileSegmentFile);
//   segment->attach(file.get(), 4096, 100);      // bytes 4096 to 4195 of `file`
//
// Each window has a position of its own and puts the file where it reads; windows on one file are
// for one thread together. What fails throws `FileException`: writing, and a read before `attach`.
#pragma once

#include <core/streams/IFile.h>

namespace core {

inline constexpr _GUID CLSID_FileSegmentFile = "1e7aae19-0b34-41bd-b69e-d1251ebeb68a"_guid;
inline constexpr _GUID IID_IFileSegmentFile = "a9c9b1f7-84a2-4ee7-a7f5-c6870e38b9bf"_guid;

// The object is an `IFileEx` as well.
class IFileSegmentFile : public IUnknown {
public:
    ORB_INTERFACE(IFileSegmentFile, IID_IFileSegmentFile)

    // Keeps the file; it may be shorter than the window.
    virtual void attach(IFileEx* file, unsigned long long start, unsigned long long length) = 0;
};

} // namespace core
