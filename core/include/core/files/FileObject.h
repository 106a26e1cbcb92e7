// A file of the operating system.
//
//   auto file = core::make_object<core::FileObject>(url, path, core::kFileOpenForRead);
//
// Opening, closing and locking go through the I/O manager (core/files/IFileIOManager.h); data is
// read and written by one system call on the descriptor, without a buffer: put a buffered file
// (core/files/BufferedFile.h) around it where pieces are small. A write that the system cuts short
// is an error that says how much was written; a call that a signal broke off before it moved a byte
// is made again.
//
// Region locks may be taken and released from any thread; for the rest one thread at a time uses
// the object.
#pragma once

#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/files/FileMode.h>
#include <core/files/IFile.h>
#include <core/files/IFileMapping.h>
#include <core/files/URL.h>

#include <cstdint>

namespace core {

class ORBCORE_API FileObject
    : public ObjectRoot
    , public SCOM_InternalClass<FileObject>
    , public IFileSharedEx
    , public IFileHandle
    , public IMemoryMappedFileFactory {
public:
    static const InterfaceEntry* _GetEntries() noexcept;

    // Opens `path` with flags of `FileMode`; `url` is what the file shows as its own.
    FileObject(const URL& url, const stdx::ustring& path, int mode);
    ~FileObject();

    // The flags for an extended mode (`FileExMode`), with `truncate` for one that writes those that
    // empty the file. Throws `FileException` for a number that is no extended mode.
    static int getModeByExMode(int exMode, bool truncate);

    URL url() override;
    unsigned read(void* dst, unsigned n) override;
    void write(const void* src, unsigned n) override;
    void flush() override;
    long long seek(long long offset, int origin) override;
    long long setEOF() override;

    void lock(unsigned long long offset, unsigned length) override;
    void unlock(unsigned long long offset, unsigned length) override;
    bool tryLock(unsigned long long offset, unsigned length) override;
    bool tryLockTimed(unsigned long long offset, unsigned length, int type, unsigned timeoutMs,
                      unsigned* elapsedMs) override;
    bool tryUnlock(unsigned long long offset, unsigned length) override;

    void reopen() override;
    void close() override;
    Date modificationDate() override;
    void setModificationDate(Date date) override;
    void flushFileBuffers() override;

    InterfacePtr<IMemoryMappedROFile> createMemoryMappedFile() override;

    const stdx::ustring& path() const noexcept { return path_; }
    int mode() const noexcept { return mode_; }
    int descriptor() const noexcept { return descriptor_; } // lent; -1 when closed

private:
    bool try_lock(unsigned long long offset, unsigned length, int type);
    [[noreturn]] void fail(int err, unsigned line);

    int descriptor_ = -1;
    int handle_ = -1; // of the I/O manager
    URL url_;
    stdx::ustring path_;
    int mode_;
};

// Bytes that the calling thread read and wrote through files of the system.
struct ThreadFileCounters {
    std::uint64_t bytesRead = 0;
    std::uint64_t bytesWritten = 0;
};
ORBCORE_API const ThreadFileCounters& thread_file_counters() noexcept;
// For whoever reads or writes such files by other ways.
ORBCORE_API void on_read(std::uint64_t bytes) noexcept;
ORBCORE_API void on_write(std::uint64_t bytes) noexcept;

} // namespace core
