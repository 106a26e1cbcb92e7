#include <core/files/FileContentFiller.h>

#include <core/component/ClassDescriptor.h>
#include <core/component/Object.h>
#include <core/files/FileMode.h>
#include <core/files/URL.h>

#include "ProcessFileSystem.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>

namespace core {
namespace {

constexpr long long kBlock = 8096;

enum State : std::int32_t { Done = 0, Begun = -1, Writing = -2, Flushing = -3 };

struct {
    std::atomic<std::int32_t> state = Done;
    std::atomic<std::uint64_t> lastBytes = 0;
    std::atomic<std::uint64_t> totalBytes = 0;
    std::atomic<std::uint64_t> runs = 0;
} statistics;

void write_zeros(IFileEx& file, long long n) {
    static constexpr std::array<std::byte, kBlock> kZeros = {};
    for (long long left = n; left > 0; left -= kBlock)
        file.write(kZeros.data(), static_cast<unsigned>(std::min(left, kBlock)));
}

// Contents are overwritten from version 5 of a platform on that this library is no part of.
constexpr bool isItPspVersion(int) noexcept {
    return false;
}

} // namespace

class FileContentZeroFiller
    : public ObjectRoot
    , public SCOM_Class<FileContentZeroFiller, &CLSID_FileContentZeroFiller>
    , public IFileContentFiller {
public:
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<FileContentZeroFiller, IFileContentFiller>();
    }

    void fill(const URL& url) override {
        IFileSystem& files = process_file_system();
        if (files.exists(url)) fill(files.open(url, kFileWrite | kFileKeep).get());
    }
    void fill(IFile* file) override { fill(file, 0, -1); }
    void fill(IFile* file, long long from, long long to) override;
};

void FileContentZeroFiller::fill(IFile* file, long long from, long long to) {
    const InterfacePtr<IFileEx> random(file);
    if (!random || from < 0 || (to >= 0 && from >= to)) return;

    ++statistics.runs;
    statistics.state = Begun;
    statistics.lastBytes = 0;
    const long long position = random->seek(0, kSeekFromCurrent);
    const long long size = random->seek(0, kSeekFromEnd);
    random->seek(from, kSeekFromStart);
    const long long end = to < 0 ? size : std::min(to, size);
    if (from < end) {
        statistics.state = Writing;
        write_zeros(*random, end - from);
        statistics.state = Flushing;
        random->flush();
        if (const InterfacePtr<IFileHandle> handle(file); handle) handle->flushFileBuffers();
        const auto bytes = static_cast<std::uint64_t>(end - from);
        statistics.lastBytes = bytes;
        statistics.totalBytes += bytes;
    }
    random->seek(position, kSeekFromStart);
    statistics.state = Done;
}

InterfacePtr<IFileContentFiller> default_file_content_filler() {
    if (!isItPspVersion(5)) return {};
    return make_object<FileContentZeroFiller>();
}

FileContentFillerInfo default_file_content_filler_last_operation_info() noexcept {
    return {statistics.state, statistics.lastBytes, statistics.totalBytes, statistics.runs};
}

void default_file_content_filler_last_operation_info_reset() noexcept {
    statistics.state = Done;
    statistics.lastBytes = 0;
    statistics.totalBytes = 0;
    statistics.runs = 0;
}

} // namespace core

ORBCORE_REGISTER(core::FileContentZeroFiller);
