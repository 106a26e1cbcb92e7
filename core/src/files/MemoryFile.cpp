#include "MemoryFile.h"

#include <core/component/ClassDescriptor.h>
#include <core/component/SCOM_Process.h>
#include <core/files/FileException.h>

#include "MemorySeek.h"

#include <algorithm>
#include <cstring>

namespace core {
namespace {

constexpr std::uint64_t kLargestSize = 0xFFFFFFFF;
// What a file takes beside its pages and their table.
constexpr std::uint64_t kOwnSize = 64;

} // namespace

MemoryFile::MemoryFile(unsigned size) {
    make_pages(0, size);
}

MemoryFile::~MemoryFile() {
    for (std::byte* const page : pages_) pool_.put(page);
}

unsigned MemoryFile::read(void* dst, unsigned n) {
    if (position_ >= size_) return 0;
    const unsigned count = std::min(n, size_ - position_);
    const std::size_t start = position_ % kPage;
    if (const std::byte* const page = pages_[position_ / kPage]; page && start + count <= kPage) {
        std::memcpy(dst, page + start, count);
        position_ += count;
        return count;
    }
    auto* to = static_cast<std::byte*>(dst);
    for (unsigned left = count; left != 0;) {
        const std::size_t offset = position_ % kPage;
        const auto part = static_cast<unsigned>(std::min<std::size_t>(left, kPage - offset));
        if (const std::byte* const page = pages_[position_ / kPage])
            std::memcpy(to, page + offset, part);
        else
            std::memset(to, 0, part);
        to += part;
        position_ += part;
        left -= part;
    }
    return count;
}

void MemoryFile::write(const void* src, unsigned n) {
    const std::size_t index = position_ / kPage, start = position_ % kPage;
    if (start + n < kPage && position_ <= size_ && index < pages_.size() && pages_[index] && n) {
        std::memcpy(pages_[index] + start, src, n);
        position_ += n;
        size_ = std::max(size_, position_);
        return;
    }
    const std::uint64_t end = std::uint64_t{position_} + n;
    if (end > kLargestSize) throw_file_toolong(ORB_FILE_HERE, url_);
    make_pages(position_, end);
    if (position_ > size_) clear(size_, position_);

    const auto* from = static_cast<const std::byte*>(src);
    while (position_ != end) {
        const std::size_t offset = position_ % kPage;
        const auto part = std::min<std::size_t>(end - position_, kPage - offset);
        std::memcpy(pages_[position_ / kPage] + offset, from, part);
        from += part;
        position_ += static_cast<std::uint32_t>(part);
    }
    size_ = std::max(size_, position_);
}

long long MemoryFile::seek(long long offset, int origin) {
    return position_ = memory_seek(position_, size_, offset, origin);
}

long long MemoryFile::setEOF() {
    if (position_ > size_) {
        const std::size_t pages = position_ / kPage + 1;
        if (pages > pages_.size()) pages_.resize(pages);
        clear(size_, position_);
    }
    size_ = position_;
    return size_;
}

// What lies in the page of the position.
const std::uint8_t* MemoryFile::window(unsigned& size) {
    static constexpr std::uint8_t kZeros[kPage] = {};
    size = 0;
    if (position_ >= size_) return kZeros;
    const std::size_t offset = position_ % kPage;
    size = static_cast<unsigned>(std::min<std::size_t>(size_ - position_, kPage - offset));
    const std::byte* const page = pages_[position_ / kPage];
    return page ? reinterpret_cast<const std::uint8_t*>(page + offset) : kZeros;
}

std::uint64_t MemoryFile::memoryUsage() {
    const auto pages =
        pages_.size() - static_cast<std::size_t>(std::ranges::count(pages_, nullptr));
    return pages_.capacity() * sizeof(std::byte*) + kOwnSize + pages * kPage;
}

// Makes sure of the pages that hold the bytes from `begin` to `end`, `end` included.
void MemoryFile::make_pages(std::uint64_t begin, std::uint64_t end) {
    const std::size_t last = end / kPage;
    if (last >= pages_.size()) pages_.resize(last + 1);
    for (std::size_t i = begin / kPage; i <= last; ++i) {
        if (pages_[i]) continue;
        pages_[i] = pool_.get();
        if (i * kPage < size_) std::memset(pages_[i], 0, kPage);
    }
}

void MemoryFile::clear(std::uint64_t begin, std::uint64_t end) noexcept {
    for (std::uint64_t at = begin; at < end;) {
        const std::size_t offset = at % kPage;
        const auto part = std::min<std::uint64_t>(end - at, kPage - offset);
        if (std::byte* const page = pages_[at / kPage]) std::memset(page + offset, 0, part);
        at += part;
    }
}

InterfacePtr<IMemoryFile> create_memory_file(unsigned size) {
    return size ? make_object<MemoryFile>(size) : make_object<MemoryFile>();
}

class MemoryFileFactory
    : public ObjectRoot
    , public SCOM_Class<MemoryFileFactory, &CLSID_MemoryFileFactory>
    , public IFileExFactory {
public:
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<MemoryFileFactory, IFileExFactory>();
    }

    InterfacePtr<IFileEx> createFile() override { return create_object<IFileEx>(CLSID_MemoryFile); }
};

} // namespace core

ORBCORE_REGISTER(core::MemoryFile);
ORBCORE_REGISTER(core::MemoryFileFactory);
