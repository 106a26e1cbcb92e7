// The manager through which every file of the system is opened, closed and locked. It adds what
// POSIX lacks: sharing modes, and region locks that conflict between the threads of a process as
// between processes and outlive the closing of other handles of the same file.
//
//   core::IFileIOManager& manager = core::file_io_manager();
//   const int handle = manager.open(u"/tmp/a", core::kFileRead | core::kFileShareRead);
//   ::read(manager.descriptor(handle), …);
//   manager.close(handle);
//
// Every operation is safe on any thread and answers at once: nobody waits for a lock or a sharing
// conflict. Files are told apart by device and inode, so a file that was replaced on disk is another
// file. `FileObject` (core/files/FileObject.h) is the file that stands on it.
#pragma once

#include <core/platform/api.h>

#include <elm/string>

namespace core {

class IFileIOManager {
public:
    virtual ~IFileIOManager() = default;

    // Opens with the flags of `FileMode`, and gives a handle. New files get `defaultPermissions`.
    // Throws `FileException`: `Sharing` when the file is open, here or in another process, in a way
    // that does not go with `flags`; else by the system's error. A file is emptied only once it is
    // known that it may be opened.
    virtual int open(const stdx::ustring& path, int flags) = 0;
    // An invalid handle is ignored. Locks of the handle go at once.
    virtual void close(int handle) = 0;
    // Lent: it is valid until the handle is closed; it must not be closed itself. -1 for an invalid
    // handle.
    virtual int descriptor(int handle) = 0;
    virtual bool lockingAvailable() = 0; // true

    // An exclusive lock on a region; see `lockTyped`.
    virtual bool lock(int handle, unsigned long long offset, unsigned length) = 0;
    virtual void unlock(int handle, unsigned long long offset, unsigned length) = 0;
    // `type` is a `FileLockType`. False, with `errno` set, when the handle is invalid (EBADF), the
    // region is locked otherwise (EACCES, EAGAIN), or the range is none (EINVAL). The top bit of the
    // offset does not count, and the range ends below 0x7FFFFFFFFFFFFFFE.
    virtual bool lockTyped(int handle, unsigned long long offset, unsigned length, int type) = 0;
    // Releases the lock that the handle holds on exactly this range; true if there was one.
    virtual bool tryUnlock(int handle, unsigned long long offset, unsigned length) = 0;

    // True if this process has the file open.
    virtual bool isOpen(const stdx::ustring& path) = 0;
    virtual int defaultPermissions() = 0; // 0660, before the process's umask
};

// The manager of the process: made at the first call, never destroyed.
ORBCORE_API IFileIOManager& file_io_manager();

} // namespace core
