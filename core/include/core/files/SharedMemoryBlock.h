// A block of bytes of this process that any number of files show, each with its own position and
// URL. The bytes do not change while files show them: a new `assign` leaves them theirs.
#pragma once

#include <core/files/IFile.h>

namespace core {

inline constexpr _GUID IID_ISharedMemoryBlock = "49e1f7b2-1a98-4636-b4c5-cda3a457b670"_guid;
inline constexpr _GUID CLSID_SharedMemoryBlock = "ad8f90dc-997e-4972-9bcb-0291211337e2"_guid;

class ISharedMemoryBlock : public IUnknown {
public:
    ORB_INTERFACE(ISharedMemoryBlock, IID_ISharedMemoryBlock)

    // All of `file`, from its start. Throws `FileException` for a file of 4 GiB or more.
    virtual void assign(IFileEx* file) = 0;
    virtual void assign(const void* data, unsigned size) = 0;
    // A read-only file over the bytes.
    virtual InterfacePtr<IFileEx> connect(const URL& url) = 0;
};

} // namespace core
