#include "LockFiles.h"

#include <core/concurrency/Thread.h>
#include <core/files/FileException.h>
#include <core/files/FileObject.h>

#include <algorithm>
#include <optional>

namespace core {
namespace {

constexpr unsigned kMaster = 0;
constexpr unsigned kState = 1;
constexpr unsigned kSlots = 6;
constexpr unsigned kSlotSize = 5;
constexpr unsigned kSlotCount = 1024;
constexpr unsigned kRetryMs = 1000;

// The flags behind the first byte of a slot, in their order.
constexpr int kSlotFlags[kSlotSize - 1] = {kFileRead, kFileWrite, kFileShareRead, kFileShareWrite};

// Read and write, shared with all; made where it is missing.
constexpr int kLockFileMode = kFileAccess | kFileShare | kFileTruncate;

constexpr unsigned slot_offset(unsigned slot) noexcept {
    return kSlots + slot * kSlotSize;
}

// Whether one who does `flags` and lets others do `flags` may join holders of the state `held`.
bool may_join(int flags, int held) noexcept {
    const auto allows = [](int sharing, int access) {
        return (!(access & kFileRead) || (sharing & kFileShareRead)) &&
               (!(access & kFileWrite) || (sharing & kFileShareWrite));
    };
    return allows(held, flags) && allows(flags, held);
}

} // namespace

// A lock file that this process has open, once however many use it.
class LockFiles::LockFile {
public:
    LockFile(IFileSystem& files, const URL& url) : file_(files.open(url, kLockFileMode)) {
        if (!file_) throw_unexpected_call(ORB_FILE_HERE, url, u"FileSystem::openWithLockFile");
    }

    // Holds the master lock, against threads of this process and against others.
    class Step {
    public:
        explicit Step(LockFile& file) : file_(file), lock_(file.mutex_) {
            while (!file_.file_->tryLock(kMaster, 1)) Thread::sleep(kRetryMs);
        }
        ~Step() { file_.file_->unlock(kMaster, 1); }
        Step(const Step&) = delete;
        Step& operator=(const Step&) = delete;

    private:
        LockFile& file_;
        std::lock_guard<std::mutex> lock_;
    };

    // The rest is done within a step.

    // What this process has open through the file. With the last of it the state goes, which others
    // work out anew from the slots.
    void beginUse() noexcept { ++uses_; }
    void endUse() {
        if (--uses_ == 0) clear(kState);
    }

    bool isFree(unsigned offset, unsigned length) {
        if (!file_->tryLock(offset, length)) return false;
        file_->unlock(offset, length);
        return true;
    }
    bool allSlotsFree() { return isFree(kSlots, kSlotSize * kSlotCount); }

    // The flags in a slot or in the state; none while it is not in use.
    std::optional<int> read(unsigned offset) {
        if (isFree(offset, 1)) return {};
        int flags = 0;
        for (unsigned i = 1; i != kSlotSize; ++i)
            if (!isFree(offset + i, 1)) flags |= kSlotFlags[i - 1];
        return flags;
    }

    void write(unsigned offset, int flags) {
        file_->lock(offset, 1);
        for (unsigned i = 1; i != kSlotSize; ++i)
            if (flags & kSlotFlags[i - 1]) file_->lock(offset + i, 1);
    }
    void clear(unsigned offset) {
        for (unsigned i = 0; i != kSlotSize; ++i) file_->unlock(offset + i, 1);
    }

    // What all slots together do, and what each of them lets others do.
    int combined() {
        int access = 0, share = kFileShare;
        for (unsigned slot = 0; slot != kSlotCount; ++slot) {
            const std::optional<int> flags = read(slot_offset(slot));
            if (!flags) continue;
            access |= *flags & kFileAccess;
            share &= *flags;
        }
        return access | share;
    }

    std::optional<unsigned> freeSlot() {
        for (unsigned slot = 0; slot != kSlotCount; ++slot)
            if (isFree(slot_offset(slot), 1)) return slot;
        return {};
    }

private:
    InterfacePtr<IFileShared> file_;
    std::mutex mutex_; // one step at a time in this process
    unsigned uses_ = 0;
};

// A reference to a lock file. The last one closes it before anybody can open it anew.
class LockFiles::Use {
public:
    Use(LockFiles& owner, std::shared_ptr<LockFile> file) noexcept
        : owner_(owner), file_(std::move(file)) {}
    ~Use() {
        const std::lock_guard lock(owner_.mutex_);
        file_.reset();
    }
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;

    LockFile* operator->() const noexcept { return file_.get(); }
    LockFile& operator*() const noexcept { return *file_; }
    const std::shared_ptr<LockFile>& shared() const noexcept { return file_; }

private:
    LockFiles& owner_;
    std::shared_ptr<LockFile> file_;
};

// Of several URLs of one file, the normalised text is the key.
LockFiles::Use LockFiles::use_of(const URL& given) {
    const URL url = given.normalize();
    const std::u16string_view path =
        url.text().view().substr(0, url.marks().empty() ? 0 : url.marks()[URL::kPathEnd]);
    const stdx::ustring name = files_.lockFileName(stdx::ustring(path));

    const std::lock_guard lock(mutex_);
    std::erase_if(lockFiles_, [](const auto& known) { return known.second.expired(); });
    std::weak_ptr<LockFile>& known = lockFiles_[name];
    std::shared_ptr<LockFile> file = known.lock();
    if (!file) known = file = std::make_shared<LockFile>(files_, URL(name, false));
    return {*this, std::move(file)};
}

InterfacePtr<IFile> LockFiles::open(const URL& url, int exMode) {
    const int wanted =
        FileObject::getModeByExMode(exMode & ~kFileExTruncate, (exMode & kFileExTruncate) != 0);
    const Use lockFile = use_of(url);
    const auto refuse = [&] {
        throw FileException(ORB_FILE_HERE, FileException::Error::Sharing, url);
    };
    LockFile::Step step(*lockFile);
    std::optional<int> state = lockFile->read(kState);
    const bool first = !state && lockFile->allSlotsFree();
    if (!state && !first) {
        state = lockFile->combined();
        lockFile->write(kState, *state);
    }
    if (state && !may_join(wanted, *state)) refuse();
    const std::optional<unsigned> slot = lockFile->freeSlot();
    if (!slot) refuse();

    InterfacePtr<IFile> file = files_.open(url, wanted);
    try {
        if (first) lockFile->write(kState, wanted);
        lockFile->write(slot_offset(*slot), wanted);
        const std::lock_guard lock(mutex_);
        openFiles_.push_back({file, lockFile.shared(), *slot});
    } catch (...) {
        if (first) lockFile->clear(kState);
        lockFile->clear(slot_offset(*slot));
        throw;
    }
    lockFile->beginUse();
    return file;
}

void LockFiles::close(IFile* file) {
    std::optional<OpenFile> closed;
    {
        const std::lock_guard lock(mutex_);
        const auto found =
            std::find_if(openFiles_.begin(), openFiles_.end(),
                         [&](const OpenFile& open) { return open.file.get() == file; });
        if (found == openFiles_.end()) return;
        closed = std::move(*found);
        openFiles_.erase(found);
    }
    const Use lockFile(*this, std::move(closed->lockFile));
    LockFile::Step step(*lockFile);
    lockFile->clear(slot_offset(closed->slot));
    lockFile->endUse();
}

bool LockFiles::remove(const URL& url) {
    const Use lockFile = use_of(url);
    LockFile::Step step(*lockFile);
    if (!lockFile->allSlotsFree()) return false;
    files_.remove(url, nullptr);
    return true;
}

} // namespace core
