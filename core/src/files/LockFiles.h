// Files that programs share by a lock file beside them. The file has no contents: what counts is
// which of its bytes are locked.
//
//   offset  length
//   0       1       the master lock, held during a step of opening or closing
//   1       5       the sharing in force, as a slot
//   6       5120    1024 slots of 5 bytes, one for each that has the file open
//
// A slot: in use; reads; writes; others may read; others may write.
#pragma once

#include <core/files/IFileSystem.h>

#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

namespace core {

class LockFiles {
public:
    explicit LockFiles(IFileSystem& files) noexcept : files_(files) {}

    InterfacePtr<IFile> open(const URL& url, int exMode);
    void close(IFile* file);
    bool remove(const URL& url);

private:
    class LockFile;
    class Use;
    struct OpenFile {
        InterfacePtr<IFile> file;
        std::shared_ptr<LockFile> lockFile;
        unsigned slot;
    };

    Use use_of(const URL& url);

    IFileSystem& files_;
    std::mutex mutex_; // all below; never held while a master lock is waited for
    std::unordered_map<stdx::ustring, std::weak_ptr<LockFile>> lockFiles_; // by the URL's text
    std::vector<OpenFile> openFiles_;
};

} // namespace core
