#include "BufferedFile.h"

#include <core/component/ClassDescriptor.h>
#include <core/component/IllegalArgumentException.h>
#include <core/component/IllegalStateException.h>
#include <core/files/FileException.h>

#include <algorithm>

namespace core {
namespace {

constexpr long long kLargestMove = 0x3FFFFFFF;

// Of `innerPosition_`: nobody has asked yet, and the file has no position, as a pipe has none.
constexpr long long kUnknown = -1;
constexpr long long kUnseekable = -2;

} // namespace

BufferedFile::~BufferedFile() {
    if (!dirtyOnDestroy_) return;
    try {
        write_pending();
    } catch (...) {
        // Nobody is left to tell: `flush` reports errors.
    }
}

void BufferedFile::attach(IFile* file, unsigned bufferSize) {
    ORB_ASSERT(file != nullptr);
    ORB_ASSERT(bufferSize != 0);
    write_pending();
    FileBuffer buffer(bufferSize);
    buffer_ = std::move(buffer);
    inner_ = {file, true};
    innerEx_ = InterfacePtr<IFileEx>(inner_);
    innerPosition_ = kUnknown;
    writeMode_ = false;
    dirtyOnDestroy_ = true;
    clear_buffer();
}

// ---- The inner file.

IFile& BufferedFile::inner() const {
    if (!inner_) throw IllegalStateException(ORB_HERE);
    return *inner_;
}

IFileEx& BufferedFile::inner_ex(const char16_t* operation) const {
    if (!innerEx_) throw_unexpected_call(ORB_FILE_HERE, inner().url(), operation);
    return *innerEx_;
}

long long BufferedFile::inner_position(const char16_t* operation) {
    if (innerPosition_ < 0) seek_inner(0, kSeekFromCurrent, operation);
    return innerPosition_;
}

void BufferedFile::add_inner_position(unsigned n) noexcept {
    if (innerPosition_ >= 0) innerPosition_ += n;
}

long long BufferedFile::seek_inner(long long offset, int origin, const char16_t* operation) {
    IFileEx& file = inner_ex(operation);
    innerPosition_ = kUnknown;
    return innerPosition_ = file.seek(offset, origin);
}

// Without an exception: `innerPosition_` tells whether it came off.
void BufferedFile::try_seek_inner(long long offset, int origin) noexcept {
    try {
        seek_inner(offset, origin, u"");
    } catch (...) {
        innerPosition_ = kUnseekable;
    }
}

// What fails stays pending, to be written at the same place when the caller tries again; but the
// destructor does not try.
void BufferedFile::write_inner(const void* src, unsigned n) {
    dirtyOnDestroy_ = false;
    if (innerPosition_ == kUnknown) try_seek_inner(0, kSeekFromCurrent);
    try {
        inner().write(src, n);
    } catch (...) {
        if (innerPosition_ >= 0) try_seek_inner(innerPosition_, kSeekFromStart);
        throw;
    }
    dirtyOnDestroy_ = true;
    add_inner_position(n);
}

// ---- The buffer.

unsigned BufferedFile::pending() const noexcept {
    return writeMode_ ? static_cast<unsigned>(ahead_.cursor - buffer_.begin()) : 0;
}

void BufferedFile::clear_buffer() noexcept {
    ahead_ = {buffer_.begin(), 0};
    room_ = writeMode_ ? buffer_.size() : 0;
}

void BufferedFile::write_pending() {
    if (pending() == 0) return;
    write_inner(buffer_.begin(), pending());
    clear_buffer();
}

// Takes the inner file back to the position that the caller sees.
void BufferedFile::give_back_unread(const char16_t* operation) {
    if (const long long unread = ahead_.left) seek_inner(-unread, kSeekFromCurrent, operation);
    clear_buffer();
}

void BufferedFile::begin_reading() {
    write_pending();
    writeMode_ = false;
    clear_buffer();
}

void BufferedFile::begin_writing() {
    inner();
    give_back_unread(u"BufferedFile::write");
    writeMode_ = true;
    clear_buffer();
}

// ---- Reading and writing.

URL BufferedFile::url() {
    return inner().url();
}

// One comparison tells the usual case from the others: there is nothing ahead while writing, and no
// room while reading; a count of 0 is one of the others.
unsigned BufferedFile::read(void* dst, unsigned n) {
    if (n - 1 < ahead_.left) [[likely]] {
        ahead_.take(dst, n);
        return n;
    }
    if (writeMode_) begin_reading();
    if (n == 0) return 0;
    return read_through(inner(), buffer_, ahead_, dst, n,
                        [this](unsigned got) { add_inner_position(got); });
}

const std::uint8_t* BufferedFile::window(unsigned& size) {
    if (writeMode_) begin_reading();
    read_ahead(inner(), buffer_, ahead_, [this](unsigned got) { add_inner_position(got); });
    size = ahead_.left;
    return ahead_.bytes();
}

void BufferedFile::write(const void* src, unsigned n) {
    if (n - 1 < room_) [[likely]]
        return put(src, n);
    if (!writeMode_) begin_writing();
    if (n > room_)
        write_large(static_cast<const std::byte*>(src), n);
    else if (n != 0)
        put(src, n);
}

void BufferedFile::put(const void* src, unsigned n) noexcept {
    std::memcpy(ahead_.cursor, src, n);
    ahead_.cursor += n;
    room_ -= n;
}

// Fills the buffer up, and then writes whole buffers right from the source.
void BufferedFile::write_large(const std::byte* from, unsigned n) {
    if (pending() != 0) {
        const unsigned first = room_;
        put(from, first);
        write_pending();
        from += first;
        n -= first;
    }
    for (; n > buffer_.size(); n -= buffer_.size(), from += buffer_.size())
        write_inner(from, buffer_.size());
    put(from, n);
}

void BufferedFile::flush() {
    write_pending();
    inner().flush();
}

long long BufferedFile::seek(long long offset, int origin) {
    static constexpr char16_t kOperation[] = u"BufferedFile::seek";
    if (writeMode_) {
        write_pending();
        return seek_inner(offset, origin, kOperation);
    }
    if (origin == kSeekFromEnd) {
        const long long position = seek_inner(offset, origin, kOperation);
        clear_buffer();
        return position;
    }

    const long long logical = inner_position(kOperation) - ahead_.left;
    long long target = 0;
    if (origin == kSeekFromStart)
        target = offset;
    else if (origin == kSeekFromCurrent && __builtin_add_overflow(logical, offset, &target))
        throw_file_exception(ORB_FILE_HERE, url(), EOVERFLOW);

    long long move = 0;
    const bool isFar = __builtin_sub_overflow(target, logical, &move) || move >= kLargestMove ||
                       move <= -kLargestMove;
    if (!isFar && move >= buffer_.begin() - ahead_.cursor && move <= ahead_.left) {
        ahead_.cursor += move;
        ahead_.left -= static_cast<unsigned>(move);
        return target;
    }
    const long long position = seek_inner(target, kSeekFromStart, kOperation);
    clear_buffer();
    return position;
}

long long BufferedFile::setEOF() {
    static constexpr char16_t kOperation[] = u"BufferedFile::setEOF";
    IFileEx& file = inner_ex(kOperation);
    if (writeMode_)
        write_pending();
    else
        give_back_unread(kOperation);
    return file.setEOF();
}

InterfacePtr<IFileEx> create_buffered_file(IFile* file, unsigned bufferSize) {
    ORB_ASSERT(file != nullptr);
    if (const InterfacePtr<IBufferedFile> buffered(file); buffered)
        return InterfacePtr<IFileEx>(file);
    const auto buffered = make_object<BufferedFile>();
    buffered->attach(file, bufferSize);
    return buffered;
}

} // namespace core

ORBCORE_REGISTER(core::BufferedFile);
