// The mapping behind `IMemoryMappedROFile`.
#pragma once

#include <core/files/FileObject.h>

namespace core {

class MemoryMappedROFile
    : public ObjectRoot
    , public SCOM_InternalClass<MemoryMappedROFile>
    , public IMemoryMappedROFile {
public:
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<MemoryMappedROFile, IMemoryMappedROFile>();
    }

    explicit MemoryMappedROFile(FileObject& file) noexcept;
    ~MemoryMappedROFile();

    FileView view() override;
    void remap() override;

private:
    void unmap() noexcept;

    InterfacePtr<IFileSharedEx> keep_; // holds `file_`
    FileObject& file_;
    bool mapped_ = false; // true for an empty file too
    std::byte* address_ = nullptr;
    std::size_t length_ = 0;
};

} // namespace core
