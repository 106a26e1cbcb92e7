#include <core/files/FileObject.h>

#include <core/component/IllegalArgumentException.h>
#include <core/component/IllegalStateException.h>
#include <core/component/Messages.h>
#include <core/component/Utf8.h>
#include <core/concurrency/Thread.h>
#include <core/files/FileContentFiller.h>
#include <core/files/FileException.h>
#include <core/files/IFileIOManager.h>
#include <core/numbers/Date.h>

#include "FileCalls.h"
#include "MemoryMappedROFile.h"
#include "SystemPath.h"
#include "component/MessageFormat.h"

#include <algorithm>
#include <chrono>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace core {
namespace detail {

FileCalls file_calls = {&::read, &::write};

} // namespace detail

namespace {

using detail::file_calls;
using detail::uninterrupted;

// The system moves no more than this in one call.
constexpr unsigned kLargestTransfer = 0x7ffff000;
constexpr unsigned kLongestPauseMs = 10;

thread_local constinit ThreadFileCounters counters;

bool is_held_by_other(int err) noexcept {
    return err == EAGAIN || err == EACCES;
}

// Why a write came to an end before its data: a full device, as far as that can be seen.
int reason_of_short_write(int fd) noexcept {
    struct statvfs info;
    return ::fstatvfs(fd, &info) == 0 && info.f_bavail == 0 ? ENOSPC : EIO;
}

stdx::ustring text_of_short_write(std::size_t written, std::size_t wanted) {
    return format_message(load_core_wstring("IDS_FERR_SHORTWRITE"),
                          from_utf8(std::to_string(written)), from_utf8(std::to_string(wanted)));
}

} // namespace

const ThreadFileCounters& thread_file_counters() noexcept {
    return counters;
}
void on_read(std::uint64_t bytes) noexcept {
    counters.bytesRead += bytes;
}
void on_write(std::uint64_t bytes) noexcept {
    counters.bytesWritten += bytes;
}

const InterfaceEntry* FileObject::_GetEntries() noexcept {
    return interface_map<FileObject, IFileSharedEx, IFileShared, IFileEx, IFile, IFileHandle,
                         IMemoryMappedFileFactory>();
}

FileObject::FileObject(const URL& url, const stdx::ustring& path, int mode)
    : url_(url), path_(path), mode_(mode) {
    reopen();
}

FileObject::~FileObject() {
    close();
}

int FileObject::getModeByExMode(int exMode, bool truncate) {
    switch (exMode) {
    case kFileExRead:
        return kFileRead;
    case kFileExWrite:
        return kFileWrite | (truncate ? kFileTruncate : kFileKeep);
    case kFileExReadWrite:
        return kFileRead | kFileWrite | (truncate ? kFileTruncate : 0);
    case kFileExReadShared:
        return kFileRead | kFileShareRead;
    case kFileExReadWriteShared:
        return kFileRead | kFileWrite | kFileShare | (truncate ? kFileTruncate : 0);
    default:
        throw_wrong_parameter(ORB_FILE_HERE, URL(), u"FileObject::getModeByExMode",
                              from_utf8(std::to_string(exMode)));
    }
}

// ---- Data.

void FileObject::fail(int err, unsigned line) {
    throw_file_exception(u"" __FILE__, line, url_, err);
}

URL FileObject::url() {
    return url_;
}

unsigned FileObject::read(void* dst, unsigned n) {
    if (!(mode_ & kFileRead)) throw_unexpected_call(ORB_FILE_HERE, url_, u"FileObject::read");
    const ssize_t got = uninterrupted([&] { return file_calls.read(descriptor_, dst, n); });
    if (got < 0) fail(errno, __LINE__);
    on_read(static_cast<std::uint64_t>(got));
    return static_cast<unsigned>(got);
}

void FileObject::write(const void* src, unsigned n) {
    if (!(mode_ & kFileWrite)) throw_unexpected_call(ORB_FILE_HERE, url_, u"FileObject::write");
    const auto* const data = static_cast<const std::byte*>(src);
    unsigned done = 0;
    do {
        const unsigned part = std::min(n - done, kLargestTransfer);
        const ssize_t put =
            uninterrupted([&] { return file_calls.write(descriptor_, data + done, part); });
        if (put < 0) fail(errno, __LINE__);
        done += static_cast<unsigned>(put);
        on_write(static_cast<std::uint64_t>(put));
        if (static_cast<unsigned>(put) != part)
            throw_file_exception(ORB_FILE_HERE, url_, reason_of_short_write(descriptor_),
                                 text_of_short_write(done, n));
    } while (done != n);
}

void FileObject::flush() {}

long long FileObject::seek(long long offset, int origin) {
    const int whence = origin == kSeekFromCurrent ? SEEK_CUR
                       : origin == kSeekFromEnd   ? SEEK_END
                                                  : SEEK_SET;
    const off_t position = ::lseek(descriptor_, offset, whence);
    if (position < 0) fail(errno, __LINE__);
    return position;
}

long long FileObject::setEOF() {
    if (!(mode_ & kFileWrite)) throw_unexpected_call(ORB_FILE_HERE, url_, u"FileObject::setEOF");
    const long long position = seek(0, kSeekFromCurrent);
    if (const auto filler = default_file_content_filler())
        filler->fill(static_cast<IFileSharedEx*>(this), position, -1);
    if (uninterrupted([&] { return ::ftruncate(descriptor_, position); }) != 0)
        fail(errno, __LINE__);
    return position;
}

// ---- Region locks.

// False, with `errno`, where the manager refuses.
bool FileObject::try_lock(unsigned long long offset, unsigned length, int type) {
    return file_io_manager().lockTyped(handle_, offset, length, type);
}

void FileObject::lock(unsigned long long offset, unsigned length) {
    if (length == 0 || try_lock(offset, length, kExclusiveFileLock)) return;
    const int err = errno;
    if (!is_held_by_other(err)) fail(err, __LINE__);
    throw FileException(ORB_FILE_HERE, FileException::Error::Lock, url_,
                        create_file_exception(ORB_FILE_HERE, url_, err).extra());
}

void FileObject::unlock(unsigned long long offset, unsigned length) {
    tryUnlock(offset, length);
}

bool FileObject::tryLock(unsigned long long offset, unsigned length) {
    return tryLockTimed(offset, length, kExclusiveFileLock, 0, nullptr);
}

bool FileObject::tryLockTimed(unsigned long long offset, unsigned length, int type,
                              unsigned timeoutMs, unsigned* elapsedMs) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    unsigned elapsed = 0;
    bool locked = length == 0;
    for (unsigned pause = 0; !locked; pause = std::min(pause + 1, kLongestPauseMs)) {
        locked = try_lock(offset, length, type);
        const int err = errno;
        if (!locked && !is_held_by_other(err) && err != ENOLCK && err != EINPROGRESS)
            fail(err, __LINE__);
        const auto passed =
            std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start);
        elapsed = static_cast<unsigned>(passed.count());
        if (locked || elapsed >= timeoutMs) break;
        Thread::sleep(std::min(pause, timeoutMs - elapsed));
    }
    if (elapsedMs) *elapsedMs = elapsed;
    return locked;
}

bool FileObject::tryUnlock(unsigned long long offset, unsigned length) {
    return file_io_manager().tryUnlock(handle_, offset, length);
}

// ---- The file of the system.

void FileObject::reopen() {
    if (descriptor_ >= 0) throw IllegalStateException(ORB_HERE);
    try {
        handle_ = file_io_manager().open(path_, mode_);
    } catch (const FileException& exception) { // the path is not for everybody to see
        rethrow_file_exception(ORB_FILE_HERE, exception, url_);
    }
    descriptor_ = file_io_manager().descriptor(handle_);
}

void FileObject::close() {
    if (descriptor_ < 0) return;
    file_io_manager().close(handle_);
    descriptor_ = handle_ = -1;
}

Date FileObject::modificationDate() {
    struct stat info;
    if (::fstat(descriptor_, &info) != 0) return {};
    return Date(std::chrono::sys_seconds(std::chrono::seconds(info.st_mtime)));
}

void FileObject::setModificationDate(Date date) {
    ORB_ASSERT(!date.empty());
    constexpr auto kEpoch = static_cast<time_t>(Date(1970, 1, 1).ticks() / kTicksPerSecond);
    const timespec modified = {static_cast<time_t>(date.ticks() / kTicksPerSecond) - kEpoch, 0};
    const timespec times[] = {{0, UTIME_OMIT}, modified};
    stdx::string path;
    to_system_path(path_, path); // it was opened by this path
    if (::utimensat(AT_FDCWD, path.c_str(), times, 0) != 0) fail(errno, __LINE__);
}

void FileObject::flushFileBuffers() {
    if (descriptor_ < 0) return;
    if (!(mode_ & kFileWrite))
        throw_unexpected_call(ORB_FILE_HERE, url_, u"FileObject::flushFileBuffers");
    if (uninterrupted([&] { return ::fsync(descriptor_); }) != 0) fail(errno, __LINE__);
}

InterfacePtr<IMemoryMappedROFile> FileObject::createMemoryMappedFile() {
    return make_object<MemoryMappedROFile>(*this);
}

} // namespace core
