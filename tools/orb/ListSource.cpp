#include "ListSource.h"

#include "Command.h"

#include <core/files/TempFile.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orb {
namespace {

class Descriptor {
public:
    explicit Descriptor(const std::string& name)
        : name_(name),
          file_(name == "-" ? STDIN_FILENO : open(name.c_str(), O_RDONLY | O_CLOEXEC)) {
        check(file_);
    }
    ~Descriptor() {
        if (file_ > STDIN_FILENO) close(file_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int get() const noexcept { return file_; }
    const std::string& name() const noexcept { return name_; }
    struct stat status() const {
        struct stat status;
        check(fstat(file_, &status));
        return status;
    }
    // `call` gives what was read, or -1.
    template <class Call> unsigned read(Call call) const {
        ssize_t size;
        do size = call();
        while (size < 0 && errno == EINTR);
        check(size);
        return static_cast<unsigned>(size);
    }

private:
    void check(ssize_t result) const {
        if (result < 0) throw Failure("cannot read '" + name_ + "': " + std::strerror(errno));
    }

    std::string name_;
    int file_;
};

// A file that can be read anywhere.
class RandomSource final : public ListSource {
public:
    explicit RandomSource(std::shared_ptr<Descriptor> file)
        : ListSource(file->name()),
          file_(std::move(file)),
          // Standard input may stand behind what others have read.
          base_(std::max<off_t>(0, lseek(file_->get(), 0, SEEK_CUR))) {}

    unsigned read(std::uint64_t offset, void* to, unsigned n) override {
        constexpr auto kLast = static_cast<std::uint64_t>(std::numeric_limits<off_t>::max());
        if (offset > kLast - static_cast<std::uint64_t>(base_)) return 0;
        return file_->read(
            [&] { return pread(file_->get(), to, n, base_ + static_cast<off_t>(offset)); });
    }
    bool reaches(std::uint64_t size) override {
        return size <=
               static_cast<std::uint64_t>(std::max<off_t>(0, file_->status().st_size - base_));
    }

private:
    std::shared_ptr<Descriptor> file_;
    off_t base_;
};

class DescriptorFile
    : public core::ObjectRoot
    , public core::SCOM_InternalClass<DescriptorFile>
    , public core::IFile {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<DescriptorFile, core::IFile>();
    }
    explicit DescriptorFile(std::shared_ptr<Descriptor> file) : file_(std::move(file)) {}

    core::URL url() override { return {}; }
    unsigned read(void* to, unsigned n) override {
        return file_->read([&] { return ::read(file_->get(), to, n); });
    }
    void write(const void*, unsigned) override { throw Failure("the file is only read"); }
    void flush() override {}

private:
    std::shared_ptr<Descriptor> file_;
};

// What can be read only once.
class SequentialSource final : public ListSource {
public:
    SequentialSource(std::string name, core::InterfacePtr<core::IFile> file)
        : ListSource(std::move(name)),
          file_(std::move(file)),
          kept_(core::create_temp_file(kInMemory)) {}

    unsigned read(std::uint64_t offset, void* to, unsigned n) override {
        if (offset < keptSize_) {
            kept_->seek(static_cast<long long>(offset), core::kSeekFromStart);
            return kept_->read(to, n);
        }
        if (!keeps_) return file_->read(to, n);
        return reaches(offset + 1) ? read(offset, to, n) : 0;
    }
    bool reaches(std::uint64_t size) override {
        char block[kBlock];
        while (keptSize_ < size) {
            const unsigned n = file_->read(block, sizeof block);
            if (n == 0) return false;
            kept_->seek(0, core::kSeekFromEnd);
            kept_->write(block, n);
            keptSize_ += n;
        }
        return true;
    }
    void read_once() override { keeps_ = false; }

private:
    static constexpr unsigned kInMemory = 0x100000;
    static constexpr unsigned kBlock = 0x8000;

    core::InterfacePtr<core::IFile> file_;
    core::InterfacePtr<core::IFileEx> kept_; // from the start on
    std::uint64_t keptSize_ = 0;
    bool keeps_ = true;
};

} // namespace

ListSourcePtr open_source(const std::string& name) {
    auto file = std::make_shared<Descriptor>(name);
    if (S_ISREG(file->status().st_mode)) return std::make_shared<RandomSource>(std::move(file));
    return source_of(name, core::make_object<DescriptorFile>(std::move(file)));
}

ListSourcePtr source_of(std::string name, core::InterfacePtr<core::IFile> file) {
    return std::make_shared<SequentialSource>(std::move(name), std::move(file));
}

bool ListCursor::fill() {
    const auto size = static_cast<unsigned>(std::min<std::uint64_t>(sizeof block_, limit_ - next_));
    const unsigned n = size == 0 ? 0 : source_->read(next_, block_, size);
    at_ = block_;
    end_ = block_ + n;
    next_ += n;
    return n != 0;
}

unsigned ListCursor::read(void* to, unsigned n) {
    if (n == 0 || (at_ == end_ && !fill())) return 0;
    n = std::min(n, static_cast<unsigned>(end_ - at_));
    std::memcpy(to, at_, n);
    at_ += n;
    return n;
}

void ListCursor::write(const void*, unsigned) {
    throw Failure("'" + source_->name() + "' is only read");
}

bool ListCursor::skip(std::uint64_t n) {
    if (n <= static_cast<std::uint64_t>(end_ - at_)) {
        at_ += n;
        return true;
    }
    if (n > limit_ - offset() || !source_->reaches(offset() + n)) return false;
    move_to(offset() + n);
    return true;
}

void ListCursor::move_to(std::uint64_t offset) noexcept {
    const auto behind = static_cast<std::uint64_t>(end_ - block_);
    if (offset <= next_ && next_ - offset <= behind) {
        at_ = end_ - (next_ - offset);
        return;
    }
    next_ = offset;
    at_ = end_ = block_;
}

} // namespace orb
