#include "FileIOManagerImpl.h"

#include <core/component/Utf8.h>
#include <core/concurrency/LockGuards.h>
#include <core/files/FileException.h>
#include <core/files/FileMode.h>
#include <core/files/FileSystemFunctions.h>
#include <core/files/IFile.h>

#include "FileCalls.h"
#include "SystemPath.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <span>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace core {
namespace {

constexpr mode_t kPermissions = 0660;
constexpr std::uint64_t kSharingByte = 0x7FFFFFFFFFFFFFFE;
constexpr std::uint64_t kLastOffset = 0x7FFFFFFFFFFFFFFF;
// How often a file may be replaced under our hands while we open it.
constexpr int kOpenTries = 16;

using detail::uninterrupted;

[[noreturn]] void fail_logical(FileException::Error error, const char* file = __builtin_FILE(),
                               int line = __builtin_LINE()) {
    throw fio_manager_exception(fio_manager_exception::Logical, static_cast<int>(error), file,
                                line);
}

[[noreturn]] void fail_system(int err, const char* file = __builtin_FILE(),
                              int line = __builtin_LINE()) {
    throw fio_manager_exception(fio_manager_exception::System, err, file, line);
}

template <class T> void make_room(std::vector<T>& vector, std::size_t size) {
    if (vector.capacity() < size) vector.reserve(std::max(size, vector.capacity() * 2));
}

int open_flags(int flags) {
    int result = O_CLOEXEC | O_NOCTTY;
    switch (flags & kFileAccess) {
    case kFileRead:
        result |= O_RDONLY;
        break;
    case kFileWrite:
        result |= O_WRONLY | O_CREAT | (flags & kFileKeep ? 0 : O_TRUNC);
        break;
    default:
        result |= O_RDWR;
    }
    return flags & kFileTruncate ? result | O_CREAT | O_TRUNC : result;
}

// What is opened for writing is emptied by hand, once it is known that nobody else forbids it.
bool truncates_later(int oflags) {
    return (oflags & O_TRUNC) && (oflags & O_ACCMODE) != O_RDONLY;
}

// A program that root runs for a user by `sudo` leaves that user the files that it makes.
void give_to_sudo_user(int fd) noexcept {
    const char* const user = std::getenv("SUDO_UID");
    const char* const group = std::getenv("SUDO_GID");
    if (!user || !group || ::getuid() != 0) return;
    [[maybe_unused]] const int ignored =
        ::fchown(fd, static_cast<uid_t>(std::strtoul(user, nullptr, 10)),
                 static_cast<gid_t>(std::strtoul(group, nullptr, 10)));
}

struct flock region(short type, std::uint64_t offset, std::uint64_t length) noexcept {
    struct flock lock = {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = static_cast<off_t>(offset);
    lock.l_len = static_cast<off_t>(length);
    return lock;
}

bool is_same_file(int fd, const struct stat& expected) noexcept {
    struct stat info;
    return ::fstat(fd, &info) == 0 && info.st_dev == expected.st_dev &&
           info.st_ino == expected.st_ino;
}

} // namespace

stdx::ustring fio_manager_exception::text() const {
    char text[256];
    std::snprintf(text, sizeof text, "fio_manager_exception type: %i, at %s:%i\n", type_, file_,
                  line_);
    return from_utf8(text);
}

// ---- Opening.

// A descriptor that no handle owns yet; lives while the manager's mutex is held. Closing any
// descriptor of a file drops the region locks that this process has there: where there are some, it
// is parked instead.
class FileIOManagerImpl::NewDescriptor {
public:
    NewDescriptor(FileIOManagerImpl& manager, UniqueFd fd) noexcept
        : manager_(manager), fd_(std::move(fd)) {}
    ~NewDescriptor() {
        struct stat info;
        if (!fd_ || ::fstat(fd_.get(), &info) != 0) return;
        const auto found = manager_.entryOf_.find(FileKey(info));
        if (found == manager_.entryOf_.end()) return;
        Entry& entry = manager_.entries_[found->second];
        if (!entry.locks.empty()) park(entry);
    }
    NewDescriptor(const NewDescriptor&) = delete;
    NewDescriptor& operator=(const NewDescriptor&) = delete;

    UniqueFd& operator*() noexcept { return fd_; }
    UniqueFd* operator->() noexcept { return &fd_; }

private:
    void park(Entry& entry) noexcept {
        const int fd = fd_.detach();
        try {
            make_room(entry.parkedFds, entry.parkedFds.size() + entry.handles.size() + 1);
            entry.parkedFds.push_back(fd);
        } catch (const std::bad_alloc&) {
            // Stays open for good: a lost descriptor costs less than a lost lock.
        }
    }

    FileIOManagerImpl& manager_;
    UniqueFd fd_;
};

FileIOManagerImpl::Sharing FileIOManagerImpl::normalized(int flags) {
    const Sharing sharing = {flags & kFileAccess, flags & kFileShare};
    if (sharing.access == 0) fail_logical(FileException::Error::Failure);
    return sharing;
}

// Each side's share must allow the other's access.
void FileIOManagerImpl::check_sharing(const Entry& entry, Sharing wanted) {
    const auto allows = [](int share, int access) {
        return (!(access & kFileRead) || (share & kFileShareRead)) &&
               (!(access & kFileWrite) || (share & kFileShareWrite));
    };
    for (const OpenFile& open : entry.handles)
        if (!allows(open.sharing.share, wanted.access) ||
            !allows(wanted.share, open.sharing.access))
            fail_logical(FileException::Error::Sharing);
}

bool FileIOManagerImpl::lock_sharing_byte(int fd, int share) noexcept {
    struct flock lock = region(share ? F_RDLCK : F_WRLCK, kSharingByte, 1);
    if (::fcntl(fd, F_OFD_SETLK, &lock) == 0) return true;
    // A system without locks of this kind has record locks. One without any still works, though
    // without the protection.
    if (errno == EINVAL && ::fcntl(fd, F_SETLK, &lock) == 0) return true;
    return errno != EAGAIN && errno != EACCES;
}

// False when the path names another file by now. Files that cannot be locked get no master.
bool FileIOManagerImpl::open_master(Entry& entry, const char* path, int flags,
                                    const struct stat& info) {
    if (entry.masterFd || S_ISFIFO(info.st_mode) || S_ISCHR(info.st_mode)) return true;
    static constexpr int kAnyAccess[] = {O_RDWR, O_RDONLY, O_WRONLY};
    static constexpr int kReadAccess[] = {O_RDONLY};
    const std::span<const int> accesses =
        flags == kFileOpenForRead ? std::span<const int>(kReadAccess) : kAnyAccess;
    for (const int access : accesses) {
        UniqueFd fd(uninterrupted([&] { return ::open(path, access | O_CLOEXEC | O_NOCTTY); }));
        if (!fd) continue;
        if (!is_same_file(fd.get(), info)) return false;
        entry.masterFd = std::move(fd);
        entry.masterFlags = access;
        return true;
    }
    fail_system(errno);
}

int FileIOManagerImpl::open(const stdx::ustring& path, int flags) {
    try {
        stdx::string bytes;
        if (!to_system_path(path, bytes)) fail_logical(FileException::Error::BadPath);
        for (int i = 0; i < kOpenTries; ++i)
            if (const auto handle = try_open(bytes.c_str(), flags)) return *handle;
        fail_system(EAGAIN);
    } catch (const fio_manager_exception& exception) {
        const URL url = file_url(path);
        if (exception.type() == fio_manager_exception::System)
            throw_file_exception(ORB_FILE_HERE, url, exception.code(), exception.text());
        throw FileException(ORB_FILE_HERE, static_cast<FileException::Error>(exception.code()), url,
                            exception.text());
    }
}

// Empty when the path changed its file meanwhile: to be tried again.
std::optional<int> FileIOManagerImpl::try_open(const char* path, int flags) {
    const int wanted = open_flags(flags);
    const bool truncate = truncates_later(wanted);
    const auto open_file = [&](int more) {
        const int oflags = (truncate ? wanted & ~O_TRUNC : wanted) | more;
        UniqueFd fd(uninterrupted([&] { return ::open(path, oflags, kPermissions); }));
        if (!fd) fail_system(errno);
        return fd;
    };

    struct stat info;
    UniqueFd created;
    if (::stat(path, &info) != 0) {
        if (errno != ENOENT || !(flags & kFileWrite)) fail_system(errno);
        created = open_file(0);
        if (::fstat(created.get(), &info) != 0) fail_system(errno);
        give_to_sudo_user(created.get());
    }

    const Sharing sharing = normalized(flags);
    const WriterLock lock(mutex_);
    NewDescriptor fd(*this, std::move(created));
    const auto found = entryOf_.find(FileKey(info));
    const bool isNew = found == entryOf_.end();
    if (!isNew) check_sharing(entries_[found->second], sharing);
    if (!*fd) {
        // A pipe would keep everybody waiting for its other end.
        const bool isPipe = S_ISFIFO(info.st_mode);
        *fd = open_file(isPipe ? O_NONBLOCK : 0);
        if (isPipe) ::fcntl(fd->get(), F_SETFL, ::fcntl(fd->get(), F_GETFL) & ~O_NONBLOCK);
        if (!is_same_file(fd->get(), info)) return std::nullopt;
    }
    if (!lock_sharing_byte(fd->get(), sharing.share)) fail_logical(FileException::Error::Sharing);

    Entry fresh;
    Entry& entry = isNew ? fresh : entries_[found->second];
    if (!open_master(entry, path, flags, info)) return std::nullopt;
    make_room(entry.handles, entry.handles.size() + 1);
    make_room(entry.parkedFds, entry.parkedFds.size() + entry.handles.size() + 1);
    handles_.make_room();
    if (isNew) {
        entries_.make_room();
        entryOf_.reserve(entryOf_.size() + 1);
    }
    if (truncate && S_ISREG(info.st_mode) &&
        uninterrupted([&] { return ::ftruncate(fd->get(), 0); }) != 0)
        fail_system(errno);

    // From here on nothing fails.
    unsigned index = 0;
    if (isNew) {
        fresh.key = FileKey(info);
        index = entries_.take();
        entries_[index] = std::move(fresh);
        entryOf_.emplace(FileKey(info), index);
    } else {
        index = found->second;
    }
    return add_handle(index, sharing, fd->detach());
}

int FileIOManagerImpl::add_handle(unsigned entry, Sharing sharing, int fd) noexcept {
    entries_[entry].handles.push_back({sharing, fd});
    const unsigned handle = handles_.take();
    handles_[handle] = {fd, entry};
    return static_cast<int>(handle);
}

// ---- Handles.

FileIOManagerImpl::Handle* FileIOManagerImpl::find_handle(int handle) noexcept {
    if (handle < 0 || static_cast<std::size_t>(handle) >= handles_.size()) return nullptr;
    Handle& found = handles_[static_cast<std::size_t>(handle)];
    return found.fd < 0 ? nullptr : &found;
}

void FileIOManagerImpl::close(int handle) {
    const WriterLock lock(mutex_);
    Handle* const closing = find_handle(handle);
    if (!closing) return;
    const int fd = closing->fd;
    const unsigned index = closing->entry;
    Entry& entry = entries_[index];

    std::erase_if(entry.handles, [&](const OpenFile& open) { return open.fd == fd; });
    entry.parkedFds.push_back(fd);
    for (std::size_t i = entry.locks.size(); i-- > 0;)
        if (entry.locks[i].owner == fd) release_region(entry, i);
    if (entry.locks.empty() || entry.handles.empty()) {
        for (const int parked : entry.parkedFds) {
            ::flock(parked, LOCK_UN | LOCK_NB);
            ::close(parked);
        }
        entry.parkedFds.clear();
    }
    if (entry.handles.empty()) {
        entryOf_.erase(entry.key);
        entries_.give(index);
    }
    handles_.give(static_cast<unsigned>(handle));
}

int FileIOManagerImpl::descriptor(int handle) {
    const ReaderLock lock(mutex_);
    const Handle* const found = find_handle(handle);
    return found ? found->fd : -1;
}

bool FileIOManagerImpl::isOpen(const stdx::ustring& path) {
    stdx::string bytes;
    struct stat info;
    if (!to_system_path(path, bytes) || ::stat(bytes.c_str(), &info) != 0) return false;
    const ReaderLock lock(mutex_);
    return entryOf_.contains(FileKey(info));
}

int FileIOManagerImpl::defaultPermissions() {
    return kPermissions;
}

// ---- Region locks.

bool FileIOManagerImpl::lock(int handle, unsigned long long offset, unsigned length) {
    return lockTyped(handle, offset, length, kExclusiveFileLock);
}

bool FileIOManagerImpl::lockTyped(int handle, unsigned long long offset, unsigned length,
                                  int type) {
    const auto refuse = [](int err) {
        errno = err;
        return false;
    };
    const WriterLock lock(mutex_);
    const Handle* const holder = find_handle(handle);
    if (!holder) return refuse(EBADF);
    Entry& entry = entries_[holder->entry];
    const std::uint64_t start = offset & kLastOffset;
    const bool exclusive = type == kExclusiveFileLock;

    for (const RegionLock& held : entry.locks) {
        if (held.offset >= start + length || start >= held.offset + held.length) continue;
        const bool conflict = held.owner == holder->fd ? exclusive : exclusive || held.exclusive;
        if (conflict) return refuse(EACCES);
    }

    short lockType = 0;
    switch (entry.masterFlags) {
    case O_RDONLY:
        lockType = F_RDLCK;
        break;
    case O_WRONLY:
        lockType = F_WRLCK;
        break;
    case O_RDWR:
        lockType = exclusive ? F_WRLCK : F_RDLCK;
        break;
    default:
        return refuse(EINVAL);
    }
    const bool valid = length ? start + length < kSharingByte : start == kLastOffset;
    if (!valid) return refuse(EINVAL);

    make_room(entry.locks, entry.locks.size() + 1);
    struct flock wanted = region(lockType, start, length);
    if (::fcntl(entry.masterFd.get(), F_SETLK, &wanted) != 0) return false;
    entry.locks.push_back({start, length, holder->fd, exclusive});
    return true;
}

void FileIOManagerImpl::unlock(int handle, unsigned long long offset, unsigned length) {
    tryUnlock(handle, offset, length);
}

bool FileIOManagerImpl::tryUnlock(int handle, unsigned long long offset, unsigned length) {
    const WriterLock lock(mutex_);
    const Handle* const holder = find_handle(handle);
    if (!holder) return false;
    Entry& entry = entries_[holder->entry];
    const auto found = std::ranges::find_if(entry.locks, [&](const RegionLock& held) {
        return held.offset == (offset & kLastOffset) && held.length == length &&
               held.owner == holder->fd;
    });
    if (found == entry.locks.end()) return false;
    release_region(entry, static_cast<std::size_t>(found - entry.locks.begin()));
    return true;
}

// To the system all locks of the process are one: what another record still covers stays locked.
void FileIOManagerImpl::release_region(Entry& entry, std::size_t index) noexcept {
    const RegionLock released = entry.locks[index];
    entry.locks.erase(entry.locks.begin() + static_cast<std::ptrdiff_t>(index));

    const std::uint64_t end = released.length ? released.offset + released.length : kLastOffset + 1;
    for (std::uint64_t at = released.offset; at < end;) {
        std::uint64_t covered = at; // up to where other records reach from here
        std::uint64_t next = end;   // where the next one begins
        for (const RegionLock& held : entry.locks) {
            const std::uint64_t heldEnd = held.offset + std::max(held.length, 1u);
            if (held.offset <= at && heldEnd > at) covered = std::max(covered, heldEnd);
            if (held.offset > at) next = std::min(next, held.offset);
        }
        if (covered == at) {
            struct flock unlocked = region(F_UNLCK, at, released.length ? next - at : 0);
            ::fcntl(entry.masterFd.get(), F_SETLK, &unlocked);
            covered = next;
        }
        at = covered;
    }
}

// ---- The manager of the process.

IFileIOManager& file_io_manager() {
    // Never destroyed: files may be closed by the last destructors of the program.
    static FileIOManagerImpl* const manager = new FileIOManagerImpl;
    return *manager;
}

} // namespace core
