// What files of the operating system can do beside reading and writing.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/platform/api.h>
#include <core/streams/IFile.h>

namespace core {

class Date;

inline constexpr _GUID IID_IFileShared = "2f2785c5-c5f6-47f7-862b-6fb15ea2193b"_guid;
inline constexpr _GUID IID_IFileSharedEx = "7e3468c5-f625-4d40-8048-e161127fc829"_guid;
inline constexpr _GUID IID_IFileHandle = "dc7bb45a-776d-4a64-9501-14b854b1e6b1"_guid;
inline constexpr _GUID IID_IFileExFactory = "89d5514b-6ce5-47f1-9ccf-5fc6188087b1"_guid;

// Locks on regions of a file that other threads and processes share. They bind only those who ask.
class IFileShared : public IFileEx {
public:
    ORB_INTERFACE(IFileShared, IID_IFileShared)

    // An exclusive lock, at once or not at all: throws code `Lock` when somebody else has it. A
    // length of 0 locks nothing and succeeds.
    virtual void lock(unsigned long long offset, unsigned length) = 0;
    // Releases a lock of exactly this range; nothing happens when there is none.
    virtual void unlock(unsigned long long offset, unsigned length) = 0;
    // As `lock`, but false where that throws code `Lock`.
    virtual bool tryLock(unsigned long long offset, unsigned length) = 0;
};

// A lock is exclusive, or shared with other shared ones.
enum FileLockType : int {
    kSharedFileLock = 0,
    kExclusiveFileLock = 1,
};

class IFileSharedEx : public IFileShared {
public:
    ORB_INTERFACE(IFileSharedEx, IID_IFileSharedEx)

    // Tries until it has the lock or `timeoutMs` milliseconds are over; a `type` other than
    // `kExclusiveFileLock` means shared. `elapsedMs`, which may be null, gets the time it took.
    virtual bool tryLockTimed(unsigned long long offset, unsigned length, int type,
                              unsigned timeoutMs, unsigned* elapsedMs) = 0;
    // As `unlock`; true if there was a lock of exactly this range.
    virtual bool tryUnlock(unsigned long long offset, unsigned length) = 0;
};

// A file of the operating system.
class IFileHandle : public IUnknown {
public:
    ORB_INTERFACE(IFileHandle, IID_IFileHandle)

    // Opens a closed file again as before. Throws `IllegalStateException` for an open one.
    virtual void reopen() = 0;
    // A closed file fails in every operation on its data; closing it again does nothing.
    virtual void close() = 0;
    virtual Date modificationDate() = 0; // in UTC; empty when it is not known
    virtual void setModificationDate(Date date) = 0;
    // Returns when all that was written is on the disk. A closed file returns at once.
    virtual void flushFileBuffers() = 0;
};

class IFileExFactory : public IUnknown {
public:
    ORB_INTERFACE(IFileExFactory, IID_IFileExFactory)

    virtual InterfacePtr<IFileEx> createFile() = 0;
};

} // namespace core
