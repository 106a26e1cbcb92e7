#include "TempDirectory.h"

#include <core/component/IllegalArgumentException.h>
#include <core/component/SCOM_Process.h>
#include <core/concurrency/LockGuards.h>
#include <core/files/FileException.h>
#include <core/files/FileSystemFunctions.h>
#include <core/files/IFileIOManager.h>

#include "CleanDirThread.h"
#include "SystemPath.h"
#include "platform/UniqueFd.h"

#include <algorithm>
#include <chrono>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace core {
namespace {

constexpr char16_t kNameTemplate[] = u"orblXXXXXX";
constexpr char16_t kNameMask[] = u"orbl*";

// Between its making and its opening a file of another process looks as if it were left: only what
// nobody has touched for so long is taken for rubbish.
constexpr time_t kLeftAfterSeconds = 3600;
// How often a file is tried that was released while somebody had it open.
constexpr std::chrono::milliseconds kRetry(1000);

std::uint32_t milliseconds_now() {
    using namespace std::chrono;
    const auto now = duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
    return std::max(static_cast<std::uint32_t>(now), 1u);
}

// True when the file is gone: removed here, or by somebody else. A file that anybody has open
// through the I/O manager, of any process, stays.
bool remove_unused(const stdx::ustring& path) {
    stdx::string bytes;
    struct stat info;
    if (!to_system_path(path, bytes) || ::lstat(bytes.c_str(), &info) != 0) return true;
    if (!S_ISREG(info.st_mode) || info.st_uid != ::geteuid()) return true; // none of ours
    IFileIOManager& manager = file_io_manager();
    try {
        const int handle = manager.open(path, kFileRead | kFileWrite);
        ::unlink(bytes.c_str());
        manager.close(handle);
        return true;
    } catch (const FileException& exception) {
        return exception.error() != FileException::Error::Sharing;
    }
}

bool is_old(const stdx::ustring& path) {
    stdx::string bytes;
    struct stat info;
    return to_system_path(path, bytes) && ::lstat(bytes.c_str(), &info) == 0 &&
           ::time(nullptr) - info.st_mtime > kLeftAfterSeconds;
}

} // namespace

// ---- Files.

stdx::ustring TempDirectory::make_file(const stdx::ustring& directory,
                                       const stdx::ustring& extension) {
    ORB_ASSERT(extension.find(u'/') == extension.npos);
    stdx::ustring name = directory;
    if (name.empty() || name.back() != u'/') name += u'/';
    name += kNameTemplate;
    name += extension;

    stdx::string bytes, suffix;
    const bool valid = to_system_path(extension, suffix) && to_system_path(name, bytes);
    const UniqueFd fd(valid ? ::mkostemps(bytes.data(), static_cast<int>(suffix.size()), O_CLOEXEC)
                            : -1);
    if (!fd ||
        ::fchmod(fd.get(), static_cast<mode_t>(file_io_manager().defaultPermissions())) != 0) {
        const int err = valid ? errno : ENOENT;
        const URL url = file_url(directory);
        throw FileException(ORB_FILE_HERE, FileException::Error::GetTmpFileName, url,
                            create_file_exception(ORB_FILE_HERE, url, err).extra());
    }
    return from_system_path(bytes);
}

stdx::ustring TempDirectory::create(const stdx::ustring& extension) {
    const WriterLock lock(mutex_);
    stdx::ustring name = make_file(path_, extension);
    files_[name].push_back(0);
    return name;
}

stdx::ustring TempDirectory::path() const {
    const ReaderLock lock(mutex_);
    return path_;
}

void TempDirectory::release(const stdx::ustring& name) {
    {
        const WriterLock lock(mutex_);
        const auto found = files_.find(name);
        if (found == files_.end()) return;
        for (std::uint32_t& time : found->second)
            if (time == 0) time = milliseconds_now();
        if (remove_unused(name)) {
            files_.erase(found);
            return;
        }
    }
    start_thread();
}

void TempDirectory::clear() {
    const WriterLock lock(mutex_);
    for (const auto& [name, times] : files_)
        if (stdx::string bytes; to_system_path(name, bytes)) ::unlink(bytes.c_str());
    files_.clear();
}

// True when nothing is left that was released.
bool TempDirectory::remove_released() {
    const WriterLock lock(mutex_);
    bool left = false;
    for (auto file = files_.begin(); file != files_.end();) {
        const bool released = std::ranges::find(file->second, 0u) == file->second.end();
        const bool gone = released && remove_unused(file->first);
        left |= released && !gone;
        file = gone ? files_.erase(file) : std::next(file);
    }
    return !left;
}

// ---- The thread.

void TempDirectory::start_cleaning() {
    {
        const std::lock_guard lock(cleaning_);
        leftovers_ = true;
    }
    start_thread();
}

void TempDirectory::start_thread() {
    const std::lock_guard lock(cleaning_);
    if (running_ || stopped_) return;
    thread_ = start_clean_dir_thread([self = shared_from_this()] { self->clean(); });
    running_ = static_cast<bool>(thread_);
}

void TempDirectory::stop_cleaning() {
    InterfacePtr<Thread> thread;
    {
        const std::lock_guard lock(cleaning_);
        stopped_ = true;
        thread.swap(thread_);
    }
    wake_.notify_all();
    if (thread) thread->join();
}

// Ends when there is nothing to wait for; `release` starts it again.
void TempDirectory::clean() {
    std::unique_lock lock(cleaning_);
    while (!stopped_) {
        const bool look = std::exchange(leftovers_, false);
        lock.unlock();
        if (look) remove_leftovers();
        const bool done = remove_released();
        lock.lock();
        if (done && !leftovers_) break;
        if (!done) wake_.wait_for(lock, kRetry, [&] { return stopped_; });
    }
    running_ = false;
}

void TempDirectory::remove_leftovers() {
    IFileSystem* const files = get_service<IFileSystem>();
    if (!files) return;
    try {
        auto found = files->find(file_url(path()), kNameMask);
        for (bool more = static_cast<bool>(found); more; more = found->next()) {
            const stdx::ustring name = file_path(found->url());
            {
                const ReaderLock lock(mutex_);
                if (files_.contains(name)) continue;
            }
            if (is_old(name)) remove_unused(name);
        }
    } catch (const FileException&) {
        // A directory that cannot be read keeps what is in it.
    }
}

} // namespace core
