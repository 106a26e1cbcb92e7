#include <core/files/TempFile.h>

#include <core/component/ClassDescriptor.h>
#include <core/component/Object.h>
#include <core/component/SCOM_Process.h>
#include <core/files/BufferedFile.h>
#include <core/files/FileFunctions.h>
#include <core/files/FileObject.h>
#include <core/files/FileSystemFunctions.h>
#include <core/files/MemoryFile.h>
#include <core/files/TempFileHost.h>

#include "SystemPath.h"

#include <algorithm>
#include <limits>

#include <unistd.h>

namespace core {
namespace {

// How much a temporary file keeps in memory where the caller does not say.
constexpr unsigned kDefaultThreshold = 0x100000;

// The host that works for the calling thread; null without a service.
InterfacePtr<ITempFileHost> current_host() {
    ITempFileService* const service = get_service<ITempFileService>();
    if (!service) return {};
    if (auto own = service->threadHost()) return own;
    const InterfacePtr<ITempFileServiceTable> table(service);
    return table ? table->defaultHost() : InterfacePtr<ITempFileHost>(service, true);
}

// An open file under a name that goes with it.
struct RealFile {
    InterfacePtr<ITempFileHost> host;
    stdx::ustring path; // empty: there is no file
    InterfacePtr<IFileEx> file;

    static RealFile make() {
        RealFile made;
        made.host = current_host();
        made.path = made.host ? made.host->create() : create_temp_file_name();
        made.file = make_object<FileObject>(file_url(made.path), made.path,
                                            FileObject::getModeByExMode(kFileExReadWrite, true));
        return made;
    }

    RealFile() = default;
    RealFile(RealFile&& other) noexcept { swap(other); }
    RealFile& operator=(RealFile&& other) noexcept {
        swap(other);
        return *this;
    }
    ~RealFile() {
        file.reset();
        if (path.empty()) return;
        try {
            if (host)
                host->release(path);
            else if (stdx::string bytes; to_system_path(path, bytes))
                ::unlink(bytes.c_str());
        } catch (...) {
            // The file stays until the next process cleans the directory.
        }
    }

    void swap(RealFile& other) noexcept {
        host.swap(other.host);
        path.swap(other.path);
        file.swap(other.file);
    }
};

} // namespace

class TempFile
    : public ObjectRoot
    , public SCOM_Class<TempFile, &CLSID_TempFile>
    , public IFileEx
    , public ITempFile {
public:
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<TempFile, IFileEx, IFile, ITempFile>();
    }

    URL url() override { return current() ? current()->url() : URL(); }
    unsigned read(void* dst, unsigned n) override;
    void write(const void* src, unsigned n) override;
    void flush() override {
        if (current()) current()->flush();
    }
    long long seek(long long offset, int origin) override;
    long long setEOF() override;

    void setThreshold(unsigned threshold) override { threshold_ = threshold; }
    URL realize() override;

private:
    // Null before first use.
    IFileEx* current() const noexcept { return real_.file ? real_.file.get() : memory_.get(); }
    IFileEx& ready_for(std::uint64_t end);
    void spill();

    InterfacePtr<IMemoryFile> memory_; // null before first use, and once there is a real file
    RealFile real_;
    unsigned threshold_ = 0;
    std::uint64_t position_ = 0; // of the current file
};

// The file for contents that reach up to `end`.
IFileEx& TempFile::ready_for(std::uint64_t end) {
    if (!real_.file && end > threshold_) spill();
    if (!current()) memory_ = create_memory_file(0);
    return *current();
}

// An exception leaves all as it was.
void TempFile::spill() {
    RealFile real = RealFile::make();
    if (memory_) {
        try {
            memory_->seek(0, kSeekFromStart);
            copy_file(real.file.get(), memory_.get(), std::numeric_limits<std::uint64_t>::max());
            real.file->seek(static_cast<long long>(position_), kSeekFromStart);
        } catch (...) {
            memory_->seek(static_cast<long long>(position_), kSeekFromStart);
            throw;
        }
        memory_.reset();
    }
    real_ = std::move(real);
}

unsigned TempFile::read(void* dst, unsigned n) {
    if (!current()) return 0;
    const unsigned got = current()->read(dst, n);
    position_ += got;
    return got;
}

void TempFile::write(const void* src, unsigned n) {
    ready_for(position_ + n).write(src, n);
    position_ += n;
}

// What would lie before the start is the start; an origin that is none moves nothing.
long long TempFile::seek(long long offset, int origin) {
    long long base = 0;
    if (origin == kSeekFromCurrent || origin == kSeekFromEnd)
        base = current() ? current()->seek(0, origin) : 0;
    else if (origin != kSeekFromStart)
        return static_cast<long long>(position_);

    long long target = 0;
    if (__builtin_add_overflow(base, offset, &target)) target = offset < 0 ? 0 : offset;
    target = std::max(target, 0LL);
    // A file in memory has no such position.
    const bool far = target > std::numeric_limits<std::uint32_t>::max();
    IFileEx& file = far ? ready_for(static_cast<std::uint64_t>(target)) : ready_for(0);
    position_ = static_cast<std::uint64_t>(file.seek(target, kSeekFromStart));
    return static_cast<long long>(position_);
}

long long TempFile::setEOF() {
    return ready_for(position_).setEOF();
}

URL TempFile::realize() {
    if (!real_.file) spill();
    const URL url = real_.file->url();
    real_.path.clear();
    real_ = RealFile();
    position_ = 0;
    return url;
}

class TempFileFactory
    : public ObjectRoot
    , public SCOM_Class<TempFileFactory, &CLSID_TempFileFactory>
    , public ITempFileFactory {
public:
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<TempFileFactory, ITempFileFactory, IFileExFactory>();
    }

    InterfacePtr<IFileEx> createFile() override { return create_temp_file(kDefaultThreshold); }
    InterfacePtr<IFileEx> createTempFile(unsigned threshold) override {
        return create_temp_file(threshold);
    }
};

InterfacePtr<IFileEx> create_temp_file(unsigned threshold) {
    const auto file = make_object<TempFile>();
    file->setThreshold(threshold);
    return file;
}

InterfacePtr<IFileEx> create_buffered_temp_file(unsigned threshold, unsigned bufferSize) {
    return create_buffered_file(create_temp_file(threshold).get(), bufferSize);
}

} // namespace core

ORBCORE_REGISTER(core::TempFile);
ORBCORE_REGISTER(core::TempFileFactory);
