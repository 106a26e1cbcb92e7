// A file in memory: pages of 8 KiB from the buffer pools, up to 4 GiB.
//
//   core::InterfacePtr<core::IMemoryFile> file = core::create_memory_file(0);
//
// Its position may stand behind its end; bytes that a later write leaves out read as zeros.
#pragma once

#include <core/files/IFile.h>

#include <cstdint>

namespace core {

inline constexpr _GUID IID_IMemoryFile = "c8753972-4076-4938-a3ab-132ff3fed6c0"_guid;
inline constexpr _GUID CLSID_MemoryFile = "8b136e3d-797f-4a9b-a39c-f5ca8f3cdab6"_guid;
// Gives `IFileExFactory`.
inline constexpr _GUID CLSID_MemoryFileFactory = "8179b23b-910f-47e2-8314-2cee779f683b"_guid;

class IMemoryFile : public IFileEx {
public:
    ORB_INTERFACE(IMemoryFile, IID_IMemoryFile)

    virtual std::uint64_t memoryUsage() = 0; // bytes
    virtual void setURL(const URL& url) = 0; // what `url()` gives from now on; at first empty
};

// Memory for `size` bytes is taken at once when `size` is not 0; the file is empty all the same.
// Throws std::bad_alloc.
ORBCORE_API InterfacePtr<IMemoryFile> create_memory_file(unsigned size);

} // namespace core
