// A read-only window on a part of another file, as a file that begins at 0.
//
//   const auto window = core::create_object<core::IPartFile>(core::CLSID_PartFile);
//   window->attach(file.get(), 100);      // the next 100 bytes of `file`
//
// The window keeps the file and, where that can seek, moves its position with every read.
#pragma once

#include <core/files/IFile.h>

namespace core {

inline constexpr _GUID IID_IPartFile = "82c84b8a-d65d-4695-b189-2aab63630ab2"_guid;
inline constexpr _GUID CLSID_PartFile = "8a222fdc-1876-45af-8431-c134a742a7b3"_guid;

// The object is an `IFileEx` as well.
class IPartFile : public IUnknown {
public:
    ORB_INTERFACE(IPartFile, IID_IPartFile)

    // `length` bytes from the present position of `file` on.
    virtual void attach(IFile* file, unsigned long long length) = 0;
    // All of `file`, which is rewound.
    virtual void attach(IFileEx* file) = 0;
};

} // namespace core
