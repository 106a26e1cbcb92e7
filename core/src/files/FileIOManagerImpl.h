// The I/O manager of the process. How the pieces work together:
//
//  - Each handle has a descriptor of its own, on which data is read and written, and which holds the
//    sharing lock against other processes: a lock on one byte far behind every end of file. It is a
//    lock of the open file description, so that it goes with its own descriptor alone. To the record
//    locks of other programs it is one of their kind.
//  - Region locks are record locks of the process, all held through one further descriptor, the
//    master. The system drops every record lock of a process on a file when any descriptor of that
//    file is closed. So while there are locks, descriptors of closed handles are parked.
//  - Between the handles of this process the tables decide, without the system.
#pragma once

#include <core/concurrency/RWMutex.h>
#include <core/files/IFileIOManager.h>

#include "platform/UniqueFd.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include <sys/stat.h>

namespace core {

// A failure inside the manager; `FileIOManagerImpl::open` turns it into a `FileException`.
class fio_manager_exception {
public:
    enum Type : int {
        Logical = 0, // the code is a `FileException::Error`
        System = 1,  // the code is an `errno`
    };

    fio_manager_exception(Type type, int code, const char* file = __builtin_FILE(),
                          int line = __builtin_LINE()) noexcept
        : type_(type), code_(code), file_(file), line_(line) {}

    Type type() const noexcept { return type_; }
    int code() const noexcept { return code_; }
    stdx::ustring text() const;

private:
    Type type_;
    int code_;
    const char* file_;
    int line_;
};

// Rows known by an index. A freed index is the next one taken.
template <class Row> class SlotTable {
public:
    // The next `take` takes no memory.
    void make_room() {
        if (free_.empty())
            rows_.reserve(rows_.size() < rows_.capacity() ? 0 : 2 * rows_.size() + 8);
        free_.reserve(rows_.capacity());
    }
    unsigned take() {
        if (free_.empty()) {
            rows_.emplace_back();
            return static_cast<unsigned>(rows_.size() - 1);
        }
        const unsigned index = free_.back();
        free_.pop_back();
        return index;
    }
    void give(unsigned index) noexcept {
        rows_[index] = Row();
        free_.push_back(index);
    }

    std::size_t size() const noexcept { return rows_.size(); }
    Row& operator[](std::size_t index) noexcept { return rows_[index]; }

private:
    std::vector<Row> rows_;
    std::vector<unsigned> free_; // has room for all of `rows_`
};

class FileIOManagerImpl final : public IFileIOManager {
public:
    int open(const stdx::ustring& path, int flags) override;
    void close(int handle) override;
    int descriptor(int handle) override;
    bool lockingAvailable() override { return true; }
    bool lock(int handle, unsigned long long offset, unsigned length) override;
    void unlock(int handle, unsigned long long offset, unsigned length) override;
    bool lockTyped(int handle, unsigned long long offset, unsigned length, int type) override;
    bool tryUnlock(int handle, unsigned long long offset, unsigned length) override;
    bool isOpen(const stdx::ustring& path) override;
    int defaultPermissions() override;

private:
    struct FileKey {
        std::uint64_t device = 0;
        std::uint64_t inode = 0;

        explicit FileKey(const struct stat& info) noexcept
            : device(info.st_dev), inode(info.st_ino) {}
        FileKey() noexcept = default;
        friend bool operator==(const FileKey&, const FileKey&) noexcept = default;
        friend std::size_t hash_value(const FileKey& key) noexcept {
            return static_cast<std::size_t>(key.inode * 0x9e3779b97f4a7c15u ^ key.device);
        }
    };
    struct Sharing {
        int access; // kFileRead, kFileWrite or both
        int share;  // of kFileShareRead and kFileShareWrite
    };
    struct OpenFile {
        Sharing sharing;
        int fd;
    };
    struct RegionLock {
        std::uint64_t offset;
        std::uint32_t length;
        int owner; // the descriptor of the handle
        bool exclusive;
    };
    // A physical file that is open in this process.
    struct Entry {
        UniqueFd masterFd;
        int masterFlags = -1; // O_RDONLY, O_WRONLY or O_RDWR; -1 without a master
        FileKey key;
        std::vector<int> parkedFds; // has room for the descriptors of all `handles`
        std::vector<OpenFile> handles;
        std::vector<RegionLock> locks;
    };
    struct Handle {
        int fd = -1; // -1: free
        unsigned entry = 0;
    };
    class NewDescriptor;

    static Sharing normalized(int flags);
    static void check_sharing(const Entry& entry, Sharing wanted);
    static bool lock_sharing_byte(int fd, int share) noexcept;
    static bool open_master(Entry& entry, const char* path, int flags, const struct stat& info);

    std::optional<int> try_open(const char* path, int flags);
    int add_handle(unsigned entry, Sharing sharing, int fd) noexcept;

    Handle* find_handle(int handle) noexcept;
    static void release_region(Entry& entry, std::size_t lock) noexcept;

    RWMutex mutex_; // all below
    SlotTable<Entry> entries_;
    SlotTable<Handle> handles_;
    boost::unordered_flat_map<FileKey, unsigned> entryOf_;
};

} // namespace core
