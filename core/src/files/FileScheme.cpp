#include "FileScheme.h"

#include <core/component/Messages.h>
#include <core/files/FileException.h>
#include <core/files/FileFunctions.h>
#include <core/files/FileMode.h>
#include <core/files/FileObject.h>
#include <core/files/FileSystemFunctions.h>
#include <core/files/IFileIOManager.h>

#include "files/FileStat.h"

#include <cerrno>
#include <exception>
#include <limits>

#include <fcntl.h>
#include <unistd.h>

namespace core {
namespace {

using Error = FileException::Error;
using Transfer = FileException::Transfer;

// Of new directories, before the umask: as those of new files, with the right to enter.
constexpr mode_t kDirectoryPermissions = 0770;

[[noreturn]] void throw_directory(const URL& url) {
    throw FileException(ORB_FILE_HERE, Error::Access, url, load_core_wstring("IDS_FERR_ISADIR"));
}

bool is_directory(const FileObject& file) {
    struct stat info;
    return ::fstat(file.descriptor(), &info) == 0 && S_ISDIR(info.st_mode);
}

// A file that somebody has open, here or in another process, may not go. Whoever may not write it
// learns no more than that this process does not have it open.
void refuse_open_file(const URL& url, const stdx::string& path) {
    struct stat info;
    if (::lstat(path.c_str(), &info) != 0 || !S_ISREG(info.st_mode)) return;
    IFileIOManager& manager = file_io_manager();
    const stdx::ustring name = file_path(url);
    if (manager.isOpen(name)) throw FileException(ORB_FILE_HERE, Error::Sharing, url);
    try {
        manager.close(manager.open(name, kFileAccess)); // shares with nobody, and makes no file
    } catch (const FileException& exception) {
        if (exception.error() == Error::Sharing)
            throw FileException(ORB_FILE_HERE, Error::Sharing, url);
    }
}

// The whole disk is never meant, whoever forgot to fill in a path.
void refuse_root(const URL& url) {
    if (file_path(url) == u"/") throw_file_exception(ORB_FILE_HERE, url, EPERM);
}

void remove_one(const URL& url, const stdx::string& path) {
    refuse_open_file(url, path);
    remove_entry(url, path);
}

// Tries all that fit, and throws the first failure at the end.
void remove_matching(const URL& url, const char16_t* mask) {
    std::exception_ptr failure;
    const InterfacePtr<IFileStat> found = FileStat::find(url, mask);
    if (!found) return;
    const auto& stat = static_cast<const FileStat&>(*found);
    do {
        try {
            remove_one(found->url(), stat.path());
        } catch (const FileException&) {
            if (!failure) failure = std::current_exception();
        }
    } while (found->next());
    if (failure) std::rethrow_exception(failure);
}

// The kernel's own copying, from the positions of both. It ends where the kernel finds no more, or
// does not do it for these two files; the rest is for copy_file().
void copy_in_kernel(const FileObject& to, const FileObject& from) {
    constexpr std::size_t kAtOnce = std::size_t{1} << 30;
    for (;;) {
        const ssize_t copied =
            ::copy_file_range(from.descriptor(), nullptr, to.descriptor(), nullptr, kAtOnce, 0);
        if (copied <= 0) return;
        on_read(static_cast<std::uint64_t>(copied));
        on_write(static_cast<std::uint64_t>(copied));
    }
}

// Contents, attributes and the date of modification.
void copy_file_object(FileObject& to, FileObject& from) {
    struct stat info, target;
    if (::fstat(from.descriptor(), &info) != 0 || ::fstat(to.descriptor(), &target) != 0)
        throw_file_exception(ORB_FILE_HERE, from.url(), errno);
    copy_in_kernel(to, from);
    copy_file(&to, &from, std::numeric_limits<unsigned long long>::max());
    const mode_t former = target.st_mode & 07777;
    const mode_t permissions = permissions_with(former, attributes_of(info));
    const timespec times[2] = {{0, UTIME_OMIT}, info.st_mtim};
    if ((permissions != former && ::fchmod(to.descriptor(), permissions) != 0) ||
        ::futimens(to.descriptor(), times) != 0)
        throw_file_exception(ORB_FILE_HERE, to.url(), errno);
}

void copy_path(const URL& from, const URL& to) {
    const auto source = make_object<FileObject>(from, path_of(from), kFileOpenForRead);
    if (is_directory(*source)) throw_directory(from);
    copy_file_object(*make_object<FileObject>(to, path_of(to), kFileOpenForWrite), *source);
}

void rename_path(const URL& from, const URL& to) {
    const stdx::string source = system_path(from), target = system_path(to);
    refuse_open_file(from, source);
    refuse_open_file(to, target);
    if (::rename(source.c_str(), target.c_str()) == 0) return;
    struct stat info;
    const int reason = errno;
    if (reason != EXDEV || ::lstat(source.c_str(), &info) != 0 || !S_ISREG(info.st_mode))
        throw_file_exception(ORB_FILE_HERE, from, reason);
    copy_path(from, to);
    remove_entry(from, source);
}

// Runs a transfer; its failure tells both names.
template <class Body>
void transfer(Transfer kind, const URL& from, const URL& to, const Body& body) {
    try {
        body();
    } catch (const FileException& exception) {
        rethrow_file_exception(ORB_FILE_HERE, exception, kind, from, to);
    }
}

bool same_entry(IFileStat* a, IFileStat* b) {
    const InterfacePtr<IFileStat2> first(a), second(b);
    return first && second && first->device() == second->device() &&
           first->inode() == second->inode();
}

} // namespace

InterfacePtr<IFile> FileScheme::open_as(const URL& shown, const URL& url, int mode) {
    try {
        auto file = make_object<FileObject>(shown, path_of(url), mode);
        if (is_directory(*file)) throw_directory(shown);
        return file;
    } catch (const FileException& exception) {
        struct stat info;
        if (exception.error() == Error::Access && ::stat(system_path(url).c_str(), &info) == 0 &&
            S_ISDIR(info.st_mode))
            throw_directory(shown);
        throw;
    }
}

InterfacePtr<IFile> FileScheme::IScheme_openURL(const URL& url, int mode) {
    return open_as(url, url, mode);
}

InterfacePtr<IFileStat> FileScheme::IScheme_findFile(const URL& url, const char16_t* mask) {
    return mask && *mask ? FileStat::find(url, mask) : FileStat::find(url);
}

void FileScheme::IScheme_createDirectory(const URL& url) {
    const stdx::string path = system_path(url);
    if (::mkdir(path.c_str(), kDirectoryPermissions) == 0) return;
    const int reason = errno;
    struct stat info;
    if (reason == EEXIST && ::stat(path.c_str(), &info) == 0 && !S_ISDIR(info.st_mode))
        throw_not_a_directory(ORB_FILE_HERE, path.view());
    throw_file_exception(ORB_FILE_HERE, url, reason);
}

void FileScheme::IScheme_remove(const URL& url, const char16_t* mask) {
    refuse_root(url);
    if (mask && *mask)
        remove_matching(url, mask);
    else
        remove_one(url, system_path(url));
}

void FileScheme::copy(const URL& from, const URL& to) {
    transfer(Transfer::Copy, from, to, [&] { copy_path(from, to); });
}

void FileScheme::move(const URL& from, const URL& to) {
    transfer(Transfer::Move, from, to, [&] { rename_path(from, to); });
}

void FileScheme::moveDirectory(const URL& from, const URL& to) {
    const InterfacePtr<IFileStat> source = FileStat::find(from);
    if (!source) throw FileException(ORB_FILE_HERE, Error::DirNotFound, from);
    refuse_root(from);
    refuse_root(to);
    transfer(Transfer::Move, from, to, [&] {
        const InterfacePtr<IFileStat> target = FileStat::find(to);
        if (target && !same_entry(source.get(), target.get())) remove_entry(to, system_path(to));
        if (::rename(system_path(from).c_str(), system_path(to).c_str()) != 0)
            throw_file_exception(ORB_FILE_HERE, from, errno);
    });
}

} // namespace core
