#include <core/files/SharedMemoryBlock.h>

#include <core/component/ClassDescriptor.h>
#include <core/component/Object.h>
#include <core/files/FileException.h>

#include "FileBlocks.h"
#include "MemorySeek.h"

#include <limits>
#include <memory>
#include <vector>

namespace core {
namespace {

using SharedBytes = std::shared_ptr<const std::vector<std::byte>>;

class SharedMemoryConnect
    : public ObjectRoot
    , public SCOM_InternalClass<SharedMemoryConnect>
    , public IFileEx {
public:
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<SharedMemoryConnect, IFileEx, IFile>();
    }

    SharedMemoryConnect(const URL& url, SharedBytes bytes) : url_(url), bytes_(std::move(bytes)) {}

    URL url() override { return url_; }
    unsigned read(void* dst, unsigned n) override;
    void write(const void*, unsigned) override {
        throw_unexpected_call(ORB_FILE_HERE, url_, u"SharedMemoryConnect::write");
    }
    void flush() override {}
    long long seek(long long offset, int origin) override;
    long long setEOF() override {
        throw_unexpected_call(ORB_FILE_HERE, url_, u"SharedMemoryConnect::setEOF");
    }

private:
    URL url_;
    SharedBytes bytes_;
    std::uint32_t position_ = 0; // may lie behind the end
};

unsigned SharedMemoryConnect::read(void* dst, unsigned n) {
    if (position_ >= bytes_->size()) return 0;
    const auto count = static_cast<unsigned>(std::min<std::size_t>(n, bytes_->size() - position_));
    if (count) std::memcpy(dst, bytes_->data() + position_, count);
    position_ += count;
    return count;
}

long long SharedMemoryConnect::seek(long long offset, int origin) {
    return position_ =
               memory_seek(position_, static_cast<std::uint32_t>(bytes_->size()), offset, origin);
}

} // namespace

class SharedMemoryBlock
    : public ObjectRoot
    , public SCOM_Class<SharedMemoryBlock, &CLSID_SharedMemoryBlock>
    , public ISharedMemoryBlock {
public:
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<SharedMemoryBlock, ISharedMemoryBlock>();
    }

    void assign(IFileEx* file) override;
    void assign(const void* data, unsigned size) override;
    InterfacePtr<IFileEx> connect(const URL& url) override {
        return make_object<SharedMemoryConnect>(url, bytes_);
    }

private:
    SharedBytes bytes_ = std::make_shared<const std::vector<std::byte>>();
};

void SharedMemoryBlock::assign(IFileEx* file) {
    const long long size = file->seek(0, kSeekFromEnd);
    if (size > std::numeric_limits<std::uint32_t>::max())
        throw_file_toolong(ORB_FILE_HERE, file->url());
    file->seek(0, kSeekFromStart);
    std::vector<std::byte> bytes(static_cast<std::size_t>(size));
    bytes.resize(read_fully(*file, bytes.data(), static_cast<unsigned>(size)));
    bytes_ = std::make_shared<const std::vector<std::byte>>(std::move(bytes));
}

void SharedMemoryBlock::assign(const void* data, unsigned size) {
    const auto* const begin = static_cast<const std::byte*>(data);
    bytes_ = std::make_shared<const std::vector<std::byte>>(begin, begin + size);
}

} // namespace core

ORBCORE_REGISTER(core::SharedMemoryBlock);
