#include "MemoryMappedROFile.h"

#include <core/files/FileException.h>

#include <cerrno>

#include <sys/mman.h>
#include <sys/stat.h>

namespace core {

MemoryMappedROFile::MemoryMappedROFile(FileObject& file) noexcept
    : keep_(static_cast<IFileSharedEx*>(&file), true), file_(file) {}

MemoryMappedROFile::~MemoryMappedROFile() {
    unmap();
}

FileView MemoryMappedROFile::view() {
    if (!mapped_) remap();
    return {address_, length_};
}

void MemoryMappedROFile::remap() {
    unmap();
    struct stat info;
    if (::fstat(file_.descriptor(), &info) != 0)
        throw_file_exception(ORB_FILE_HERE, file_.url(), errno);
    if (info.st_size != 0) {
        const auto size = static_cast<std::size_t>(info.st_size);
        void* const address = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file_.descriptor(), 0);
        if (address == MAP_FAILED) throw_file_exception(ORB_FILE_HERE, file_.url(), errno);
        address_ = static_cast<std::byte*>(address);
        length_ = size;
    }
    mapped_ = true;
}

void MemoryMappedROFile::unmap() noexcept {
    if (address_) ::munmap(address_, length_);
    address_ = nullptr;
    length_ = 0;
    mapped_ = false;
}

} // namespace core
