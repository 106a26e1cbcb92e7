#include "FileStat.h"

#include <core/files/FileException.h>
#include <core/files/FileSystemFunctions.h>
#include <core/text/Characters.h>

#include "files/FileMask.h"
#include "files/SystemPath.h"

#include <cerrno>
#include <chrono>
#include <climits>

#include <fcntl.h>
#include <unistd.h>

namespace core {
namespace {

// The name of an entry in the directory that `url` names.
URL entry_url(const URL& url, const stdx::ustring& name) {
    // The slash between the two is ours.
    std::u16string_view path = url.partView(URL::kVolume, URL::kPathEnd - URL::kVolume);
    while (path.ends_with(u'/')) path.remove_suffix(1);
    stdx::ustring text = url.part(URL::kScheme, URL::kVolume - URL::kScheme);
    text += path;
    text += u'/';
    text += URL::escape(name, url.partView(URL::kScheme, 1), true);
    return URL(text, false);
}

bool is_missing(int err) noexcept {
    return err == ENOENT || err == ENOTDIR;
}

} // namespace

InterfacePtr<IFileStat> FileStat::find(const URL& url) {
    const auto stat = make_object<FileStat>();
    stat->url_ = url;
    stat->path_ = system_path(url);
    if (::stat(stat->path_.c_str(), &stat->info_) == 0) return stat;
    if (!is_missing(errno)) throw_file_exception(ORB_FILE_HERE, url, errno);
    return {};
}

InterfacePtr<IFileStat> FileStat::find(const URL& directory, const stdx::ustring& mask) {
    const auto stat = make_object<FileStat>();
    stat->url_ = directory;
    stat->mask_ = mask;
    stat->directoryPath_ = system_path(directory);
    stat->dir_.reset(::opendir(stat->directoryPath_.c_str()));
    if (!stat->dir_) {
        struct stat info;
        if (errno == ENOTDIR && ::stat(stat->directoryPath_.c_str(), &info) == 0)
            throw_not_a_directory(ORB_FILE_HERE, stat->directoryPath_.view());
        if (!is_missing(errno)) throw_file_exception(ORB_FILE_HERE, directory, errno);
        return {};
    }
    if (!stat->directoryPath_.view().ends_with('/')) stat->directoryPath_ += '/';
    return stat->next() ? stat : InterfacePtr<IFileStat>();
}

URL FileStat::url() {
    return mask_.empty() ? url_ : entry_url(url_, name_);
}

// An entry may go while the directory is read. A link that leads nowhere tells of itself.
bool FileStat::look(const char* name, struct stat& info) const {
    const int fd = ::dirfd(dir_.get());
    if (::fstatat(fd, name, &info, 0) == 0 || ::fstatat(fd, name, &info, AT_SYMLINK_NOFOLLOW) == 0)
        return true;
    if (!is_missing(errno)) throw_file_exception(ORB_FILE_HERE, url_, errno);
    return false;
}

bool FileStat::next() {
    while (dir_) {
        errno = 0;
        const dirent* const entry = ::readdir(dir_.get());
        if (!entry && errno != 0) throw_file_exception(ORB_FILE_HERE, url_, errno);
        if (!entry) {
            dir_.reset();
            break;
        }
        const std::string_view bytes = entry->d_name;
        if (bytes == "." || bytes == "..") continue;
        stdx::ustring name = from_system_path(bytes);
        struct stat info;
        if (!matches_file_mask(name, mask_) || !look(entry->d_name, info)) continue;
        name_ = std::move(name);
        path_ = directoryPath_ + bytes;
        info_ = info;
        return true;
    }
    return false;
}

void FileStat::setModificationDate(const Date& date) {
    const std::chrono::sys_time<DateTicks> time(date);
    const auto seconds = std::chrono::floor<std::chrono::seconds>(time);
    const auto rest = std::chrono::nanoseconds(time - seconds).count();
    const timespec times[2] = {{0, UTIME_OMIT}, {seconds.time_since_epoch().count(), rest}};
    if (::utimensat(AT_FDCWD, path_.c_str(), times, 0) != 0)
        throw_file_exception(ORB_FILE_HERE, url(), errno);
    info_.st_mtim = times[1];
}

void FileStat::setAttributes(std::uint32_t attributes) {
    struct stat info;
    if (::stat(path_.c_str(), &info) != 0) throw_file_exception(ORB_FILE_HERE, url(), errno);
    const mode_t former = info.st_mode & 07777;
    const mode_t permissions = permissions_with(former, attributes);
    if (permissions != former && ::chmod(path_.c_str(), permissions) != 0)
        throw_file_exception(ORB_FILE_HERE, url(), errno);
    info_.st_mode = (info_.st_mode & S_IFMT) | permissions;
}

bool FileStat::symbolicLink() {
    struct stat info;
    return ::lstat(path_.c_str(), &info) == 0 && S_ISLNK(info.st_mode);
}

stdx::ustring FileStat::linkTarget() {
    char target[PATH_MAX];
    const ssize_t size = ::readlink(path_.c_str(), target, sizeof target);
    if (size < 0) return {};
    return from_system_path({target, static_cast<std::size_t>(size)});
}

} // namespace core
