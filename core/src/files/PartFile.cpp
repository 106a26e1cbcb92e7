#include <core/files/PartFile.h>

#include <core/component/ClassDescriptor.h>
#include <core/component/Object.h>
#include <core/files/FileException.h>

#include <algorithm>

namespace core {

class PartFile
    : public ObjectRoot
    , public SCOM_Class<PartFile, &CLSID_PartFile>
    , public IFileEx
    , public IPartFile {
public:
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<PartFile, IFileEx, IFile, IPartFile>();
    }

    URL url() override { return {}; }
    unsigned read(void* dst, unsigned n) override;
    void write(const void*, unsigned) override { refuse(u"PartFile::write", __LINE__); }
    void flush() override {}
    long long seek(long long offset, int origin) override;
    long long setEOF() override { refuse(u"PartFile::setEOF", __LINE__); }
    void attach(IFile* file, unsigned long long length) override;
    void attach(IFileEx* file) override;

private:
    [[noreturn]] void refuse(const char16_t* operation, unsigned line) {
        throw_unexpected_call(u"" __FILE__, line, url(), operation);
    }

    InterfacePtr<IFile> inner_;
    InterfacePtr<IFileEx> innerEx_; // the same file, or null
    std::uint64_t start_ = 0;       // of the window in the inner file
    std::uint64_t length_ = 0;
    std::uint64_t position_ = 0; // at most length_
};

void PartFile::attach(IFile* file, unsigned long long length) {
    InterfacePtr<IFileEx> random(file);
    start_ = random ? static_cast<std::uint64_t>(random->seek(0, kSeekFromCurrent)) : 0;
    inner_ = {file, true};
    innerEx_ = std::move(random);
    length_ = length;
    position_ = 0;
}

void PartFile::attach(IFileEx* file) {
    const auto size = file ? static_cast<std::uint64_t>(file->seek(0, kSeekFromEnd)) : 0;
    if (file) file->seek(0, kSeekFromStart);
    attach(file, size);
}

unsigned PartFile::read(void* dst, unsigned n) {
    if (!inner_) refuse(u"PartFile::read", __LINE__);
    if (position_ >= length_) return 0;
    const auto count = static_cast<unsigned>(std::min<std::uint64_t>(n, length_ - position_));
    if (innerEx_) innerEx_->seek(static_cast<long long>(start_ + position_), kSeekFromStart);
    const unsigned got = inner_->read(dst, count);
    position_ += got;
    return got;
}

// A target outside of the window, and an origin that is none, leave the position as it is.
long long PartFile::seek(long long offset, int origin) {
    if (!innerEx_) refuse(u"PartFile::seek", __LINE__);
    std::uint64_t base = 0;
    switch (origin) {
    case kSeekFromStart:
        break;
    case kSeekFromCurrent:
        base = position_;
        break;
    case kSeekFromEnd:
        base = length_;
        break;
    default:
        return static_cast<long long>(position_);
    }
    const std::uint64_t distance =
        offset < 0 ? 0 - static_cast<std::uint64_t>(offset) : static_cast<std::uint64_t>(offset);
    if (offset < 0 ? distance <= base : distance <= length_ - base)
        position_ = offset < 0 ? base - distance : base + distance;
    return static_cast<long long>(position_);
}

} // namespace core

ORBCORE_REGISTER(core::PartFile);
