// What `orb list` reads: bytes at any offset of a file, of standard input, or of what a filter gives.
#pragma once

#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/files/URL.h>
#include <core/streams/IFile.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <string>

namespace orb {

class ListSource {
public:
    explicit ListSource(std::string name) : name_(std::move(name)) {}
    virtual ~ListSource() = default;

    const std::string& name() const noexcept { return name_; } // for messages

    // At most `n` bytes from the offset on; none only at the end. Throws Failure.
    virtual unsigned read(std::uint64_t offset, void* to, unsigned n) = 0;
    // Whether there are so many bytes.
    virtual bool reaches(std::uint64_t size) = 0;
    // The caller will read on from the start without ever turning back. Until then, what can be read
    // only once is kept in a temporary file as it passes.
    virtual void read_once() {}

private:
    std::string name_;
};

using ListSourcePtr = std::shared_ptr<ListSource>;

// A file, or standard input for "-".
ListSourcePtr open_source(const std::string& name);
// What a file gives that is read in sequence.
ListSourcePtr source_of(std::string name, core::InterfacePtr<core::IFile> file);

// Reads a stretch of a source in sequence, a block at a time.
class ListCursor
    : public core::ObjectRoot
    , public core::SCOM_InternalClass<ListCursor>
    , public core::IFile {
public:
    static constexpr std::uint64_t kEndOfFile = std::numeric_limits<std::uint64_t>::max();

    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<ListCursor, core::IFile>();
    }
    explicit ListCursor(ListSourcePtr source, std::uint64_t begin = 0,
                        std::uint64_t end = kEndOfFile)
        : source_(std::move(source)), next_(begin), limit_(end) {}

    core::URL url() override { return {}; }
    unsigned read(void* to, unsigned n) override;
    void write(const void* from, unsigned n) override;
    void flush() override {}

    // The next byte, -1 at the end; take() passes it.
    int peek() { return at_ != end_ || fill() ? static_cast<unsigned char>(*at_) : -1; }
    int take() {
        const int byte = peek();
        if (byte >= 0) ++at_;
        return byte;
    }
    // Passes so many bytes; false, and nowhere in particular, if there are fewer.
    bool skip(std::uint64_t n);

    // Where the next byte stands in the source.
    std::uint64_t offset() const noexcept { return next_ - static_cast<std::uint64_t>(end_ - at_); }
    void move_to(std::uint64_t offset) noexcept;

    const ListSourcePtr& source() const noexcept { return source_; }

private:
    bool fill();

    ListSourcePtr source_;
    std::uint64_t next_, limit_; // next_: behind the block
    char block_[0x8000];
    const char *at_ = block_, *end_ = block_;
};

using ListCursorPtr = core::InterfacePtr<ListCursor>;

} // namespace orb
