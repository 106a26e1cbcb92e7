#include "SystemDirectory.h"

#include <core/files/FileException.h>
#include <core/files/FileSystemFunctions.h>
#include <core/numbers/Date.h>

#include "files/SystemPath.h"
#include "platform/UniqueFd.h"

#include <cerrno>
#include <chrono>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace core {
namespace {

constexpr int kOpenDirectory = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

bool is_dot_or_dots(const char* name) noexcept {
    return name[0] == '.' && (name[1] == 0 || (name[1] == '.' && name[2] == 0));
}

// Walks through a tree with one directory open at a time, and removes it from the leaves up. The way
// back goes through ".."; who is met there must be who was left.
class TreeRemover {
public:
    TreeRemover(const URL& url, const stdx::string& path) : url_(url), path_(path) {}

    void run() {
        enter(::open(path_.c_str(), kOpenDirectory), path_);
        while (!levels_.empty()) {
            if (!empty_directory()) continue; // went down
            const stdx::string name = std::move(levels_.back().name);
            levels_.pop_back();
            if (levels_.empty()) break;
            go_up();
            if (::unlinkat(::dirfd(dir_.get()), name.c_str(), AT_REMOVEDIR) != 0 && errno != ENOENT)
                fail();
        }
        dir_.reset();
        if (::rmdir(path_.c_str()) != 0) fail();
    }

private:
    struct Level {
        stdx::string name;
        dev_t device;
        ino_t inode;
    };

    [[noreturn]] void fail() const { throw_file_exception(ORB_FILE_HERE, url_, errno); }

    void take(int fd) {
        UniqueFd owner(fd);
        if (!owner) fail();
        dir_.reset(::fdopendir(owner.get()));
        if (!dir_) fail();
        static_cast<void>(owner.detach());
    }

    void enter(int fd, const stdx::string& name) {
        take(fd);
        struct stat info;
        if (::fstat(::dirfd(dir_.get()), &info) != 0) fail();
        levels_.push_back({name, info.st_dev, info.st_ino});
    }

    void go_up() {
        take(::openat(::dirfd(dir_.get()), "..", kOpenDirectory));
        struct stat info;
        if (::fstat(::dirfd(dir_.get()), &info) != 0) fail();
        if (info.st_dev != levels_.back().device || info.st_ino != levels_.back().inode)
            throw_file_exception(ORB_FILE_HERE, url_, EBUSY);
    }

    // True when nothing is left in it; false when it went down into a directory.
    bool empty_directory() {
        for (;;) {
            errno = 0;
            const dirent* const entry = ::readdir(dir_.get());
            if (!entry && errno != 0) fail();
            if (!entry) return true;
            if (is_dot_or_dots(entry->d_name)) continue;
            const int fd = ::dirfd(dir_.get());
            if (::unlinkat(fd, entry->d_name, 0) == 0 || errno == ENOENT) continue;
            if (errno != EISDIR && errno != EPERM) fail();
            const int reason = errno;
            const int below = ::openat(fd, entry->d_name, kOpenDirectory);
            if (below < 0 && errno == ENOTDIR) errno = reason;
            enter(below, entry->d_name);
            return false;
        }
    }

    const URL& url_;
    const stdx::string& path_;
    std::vector<Level> levels_; // from the top to where `dir_` is
    UniqueDir dir_;
};

} // namespace

stdx::ustring path_of(const URL& url) {
    if (url.broken()) throw FileException(ORB_FILE_HERE, FileException::Error::BadPath, url);
    return file_path(url);
}

stdx::string system_path(const URL& url) {
    stdx::string path;
    if (!to_system_path(path_of(url), path))
        throw FileException(ORB_FILE_HERE, FileException::Error::BadPath, url);
    return path;
}

Date date_of(const timespec& time) {
    return Date(std::chrono::sys_seconds(std::chrono::seconds(time.tv_sec)));
}

std::uint32_t attributes_of(const struct stat& info) noexcept {
    return ((info.st_mode & S_IWUSR) ? 0u : kFileReadOnly) |
           (S_ISDIR(info.st_mode) ? kFileDirectory : 0u) |
           ((info.st_mode & S_IROTH) ? kFileOthersMayRead : 0u) |
           static_cast<std::uint32_t>(info.st_mode & S_IFMT) << 16;
}

mode_t permissions_with(mode_t permissions, std::uint32_t attributes) noexcept {
    const auto with = [&](mode_t bit, bool set) {
        permissions = set ? permissions | bit : permissions & ~bit;
    };
    with(S_IWUSR, (attributes & kFileReadOnly) == 0);
    with(S_IROTH, (attributes & kFileOthersMayRead) != 0);
    return permissions & 07777;
}

void remove_entry(const URL& url, const stdx::string& path) {
    if (::unlink(path.c_str()) == 0) return;
    if (errno != EISDIR && errno != EPERM) throw_file_exception(ORB_FILE_HERE, url, errno);
    const int reason = errno;
    struct stat info;
    if (::lstat(path.c_str(), &info) != 0 || !S_ISDIR(info.st_mode))
        throw_file_exception(ORB_FILE_HERE, url, reason);
    TreeRemover(url, path).run();
}

} // namespace core
