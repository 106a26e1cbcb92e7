#include "FileSegmentFile.h"

#include <core/component/ClassDescriptor.h>
#include <core/component/IllegalArgumentException.h>
#include <core/component/Object.h>
#include <core/files/FileException.h>

#include <algorithm>
#include <limits>

namespace core {

class FileSegmentFile
    : public ObjectRoot
    , public SCOM_Class<FileSegmentFile, &CLSID_FileSegmentFile>
    , public IFileEx
    , public IFileSegmentFile {
public:
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<FileSegmentFile, IFileEx, IFile, IFileSegmentFile>();
    }

    URL url() override { return {}; }
    unsigned read(void* dst, unsigned n) override;
    void write(const void*, unsigned) override { refuse(u"FileSegmentFile::write", __LINE__); }
    void flush() override {}
    long long seek(long long offset, int origin) override;
    long long setEOF() override { refuse(u"FileSegmentFile::setEOF", __LINE__); }

    void attach(IFileEx* file, unsigned long long start, unsigned long long length) override;

private:
    [[noreturn]] void refuse(const char16_t* operation, unsigned line) {
        throw_unexpected_call(u"" __FILE__, line, url(), operation);
    }

    InterfacePtr<IFileEx> file_;
    std::uint64_t start_ = 0; // in the file
    std::uint64_t length_ = 0;
    std::uint64_t position_ = 0; // at most length_
};

void FileSegmentFile::attach(IFileEx* file, unsigned long long start, unsigned long long length) {
    constexpr std::uint64_t kMost = std::numeric_limits<long long>::max();
    ORB_ASSERT(start <= kMost && length <= kMost - start);
    file_ = {file, true};
    start_ = start;
    length_ = length;
    position_ = 0;
}

unsigned FileSegmentFile::read(void* dst, unsigned n) {
    if (!file_) refuse(u"FileSegmentFile::read", __LINE__);
    const auto count = static_cast<unsigned>(std::min<std::uint64_t>(n, length_ - position_));
    if (count == 0) return 0;
    file_->seek(static_cast<long long>(start_ + position_), kSeekFromStart);
    const unsigned got = file_->read(dst, count);
    position_ += got;
    return got;
}

// A target outside of the window is its near end; an origin that is none moves nothing.
long long FileSegmentFile::seek(long long offset, int origin) {
    const auto length = static_cast<long long>(length_);
    auto position = static_cast<long long>(position_);
    long long base = 0;
    switch (origin) {
    case kSeekFromStart:
        break;
    case kSeekFromCurrent:
        base = position;
        break;
    case kSeekFromEnd:
        base = length;
        break;
    default:
        return position;
    }
    // No sum overflows: both parts are within the window's length.
    position = base + std::clamp(offset, -base, length - base);
    position_ = static_cast<std::uint64_t>(position);
    return position;
}

InterfacePtr<IFileEx> make_file_segment(IFileEx* file, std::uint64_t start, std::uint64_t length) {
    const auto segment = make_object<FileSegmentFile>();
    segment->attach(file, start, length);
    return segment;
}

} // namespace core

ORBCORE_REGISTER(core::FileSegmentFile);
