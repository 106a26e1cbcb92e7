// Overwrites the contents of files that are to vanish, so that they cannot be read from the disk.
#pragma once

#include <core/files/IFile.h>

#include <cstdint>

namespace core {

inline constexpr _GUID IID_IFileContentFiller = "1c997e68-308f-42ae-828f-3a1d59c73612"_guid;
inline constexpr _GUID CLSID_FileContentZeroFiller = "d0f5141d-2ec0-4dc4-87c3-a8b9620355ce"_guid;

class IFileContentFiller : public IUnknown {
public:
    ORB_INTERFACE(IFileContentFiller, IID_IFileContentFiller)

    virtual void fill(const URL& url) = 0; // a missing file is left alone
    virtual void fill(IFile* file) = 0;
    // The bytes `from` up to `to`, or to the end for -1; the position stays. Nothing happens for
    // null, for a negative `from` and for an empty range. The file is an `IFileEx`.
    virtual void fill(IFile* file, long long from, long long to) = 0;
};

// What overwrites the bytes that `setEOF` of a real file cuts off; null: they are left as they are.
ORBCORE_API InterfacePtr<IFileContentFiller> default_file_content_filler();

// What the filling with zeros did in this process.
struct FileContentFillerInfo {
    std::int32_t state = 0;       // -1 begun, -2 writing, -3 flushing, 0 done
    std::uint64_t lastBytes = 0;  // of the last run
    std::uint64_t totalBytes = 0; // of all runs
    std::uint64_t runs = 0;
};
ORBCORE_API FileContentFillerInfo default_file_content_filler_last_operation_info() noexcept;
ORBCORE_API void default_file_content_filler_last_operation_info_reset() noexcept;

} // namespace core
