// A file of the system as memory.
//
//   core::InterfacePtr<core::IMemoryMappedFileFactory> maps(file);
//   const auto mapping = maps->createMemoryMappedFile();
//   const core::FileView view = mapping->view();
//
// The mapping is read-only and private. It shows the file as long as the file was when it was
// mapped; the operating system kills a process that reads behind the end of a file that somebody
// made shorter since.
#pragma once

#include <core/component/InterfacePtr.h>

#include <cstddef>

namespace core {

inline constexpr _GUID IID_IMemoryMappedFileFactory = "ea3909c5-54ff-4085-9dc9-97988d3b967b"_guid;
inline constexpr _GUID IID_IMemoryMappedROFile = "19b8d8f9-2a8a-46d2-b49b-611461875bd1"_guid;

struct FileView {
    const std::byte* data; // null for an empty file
    std::size_t size;
};

class IMemoryMappedROFile : public IUnknown {
public:
    ORB_INTERFACE(IMemoryMappedROFile, IID_IMemoryMappedROFile)

    // Maps on first use. Lent: valid until `remap` or the end of the object.
    virtual FileView view() = 0;
    // Maps the file anew, at the size that it has now.
    virtual void remap() = 0;
};

class IMemoryMappedFileFactory : public IUnknown {
public:
    ORB_INTERFACE(IMemoryMappedFileFactory, IID_IMemoryMappedFileFactory)

    virtual InterfacePtr<IMemoryMappedROFile> createMemoryMappedFile() = 0;
};

} // namespace core
