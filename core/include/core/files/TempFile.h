// Intermediate data: in memory while it is small, in a real file once it outgrows a threshold.
//
//   core::InterfacePtr<core::IFileEx> file = core::create_temp_file(0x100000);
//
// The real file comes from the temporary file service (core/files/TempFileHost.h) and goes with the
// object. A temporary file is for one thread at a time.
#pragma once

#include <core/files/IFile.h>

namespace core {

inline constexpr _GUID IID_ITempFile = "4fa2e108-c4eb-40bf-b80c-d306396b8f29"_guid;
inline constexpr _GUID IID_ITempFileFactory = "03f95c59-0a66-4837-8bd7-06196cccf093"_guid;
inline constexpr _GUID CLSID_TempFile = "3b0d3e49-e149-4fa7-95bd-97bb5704b0ca"_guid;
inline constexpr _GUID CLSID_TempFileFactory = "ee0affc9-7199-4f20-a511-00fe4d309969"_guid;

// The object is an `IFileEx` as well.
class ITempFile : public IUnknown {
public:
    ORB_INTERFACE(ITempFile, IID_ITempFile)

    // How many bytes stay in memory, at first 0. What is in memory already stays until the next
    // write.
    virtual void setThreshold(unsigned threshold) = 0;
    // Brings the contents to a real file, closes it and gives its URL: from now on the file is the
    // caller's, and this object is empty. Its name is released by `ITempFileHost::release`, or the
    // file is removed.
    virtual URL realize() = 0;
};

class ITempFileFactory : public IFileExFactory {
public:
    ORB_INTERFACE(ITempFileFactory, IID_ITempFileFactory)

    virtual InterfacePtr<IFileEx> createTempFile(unsigned threshold) = 0;
};

ORBCORE_API InterfacePtr<IFileEx> create_temp_file(unsigned threshold);
ORBCORE_API InterfacePtr<IFileEx> create_buffered_temp_file(unsigned threshold,
                                                            unsigned bufferSize);

} // namespace core
