// The bytes in front of a file, taken from where they lie.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/streams/IFile.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

namespace core {

// Files that hold bytes in memory hand out a window on them, from others just the bytes wanted are
// read; a parser sees no difference. A file with a window stands still until sync().
class ByteCursor {
public:
    explicit ByteCursor(IFile* file)
        : file_(file, true), window_(InterfacePtr<IByteWindow>(file_).get()) {}

    // The next byte; false at the end of the file.
    bool take(std::uint8_t& byte) {
        if (at_ == end_ && !fill(1)) return false;
        byte = *at_++;
        return true;
    }

    // False where the file ends before.
    bool read(void* to, std::size_t n) {
        auto* at = static_cast<std::byte*>(to);
        return take(n, [&at](const std::uint8_t* bytes, std::size_t size) {
            std::memcpy(at, bytes, size);
            at += size;
        });
    }

    // A little-endian number of 1, 2, 4 or 8 bytes.
    bool read_number(unsigned width, std::uint64_t& number) {
        if (static_cast<std::size_t>(end_ - at_) >= sizeof number) {
            std::memcpy(&number, at_, sizeof number);
            number &= ~std::uint64_t{0} >> (64 - 8 * width);
            at_ += width;
            return true;
        }
        number = 0;
        return read(&number, width);
    }

    // Hands the next `n` bytes to `sink(bytes, size)`, in pieces as they lie in memory.
    template <class Sink> bool take(std::uint64_t n, Sink sink) {
        while (n != 0) {
            if (at_ == end_ && !fill(n)) return false;
            const auto size = std::min<std::size_t>(n, static_cast<std::size_t>(end_ - at_));
            sink(at_, size);
            at_ += size;
            n -= size;
        }
        return true;
    }

    // Whether so many bytes are known to follow. Of a file that is only read in sequence no more is
    // known than what lies in memory.
    bool holds(std::uint64_t n) {
        const auto inMemory = static_cast<std::size_t>(end_ - at_);
        if (n <= inMemory) return true;
        const InterfacePtr<IFileEx> random(file_);
        if (!random) return false;
        if (window_)
            sync();
        else
            n -= inMemory;
        const long long position = random->seek(0, kSeekFromCurrent);
        const long long end = random->seek(0, kSeekFromEnd);
        random->seek(position, kSeekFromStart);
        return end >= position && n <= static_cast<std::uint64_t>(end - position);
    }

    // Puts the file where the cursor is. The window is asked for again then.
    void sync() {
        if (at_ != begin_ && window_) window_->advance(static_cast<unsigned>(at_ - begin_));
        begin_ = at_ = end_;
    }

private:
    static constexpr unsigned kPiece = 4096;

    // Makes the next bytes lie in memory: a window, or as many as are wanted.
    bool fill(std::uint64_t wanted) {
        sync();
        unsigned size = 0;
        if (window_) {
            begin_ = window_->window(size);
        } else {
            if (!piece_) piece_ = std::make_unique_for_overwrite<std::uint8_t[]>(kPiece);
            begin_ = piece_.get();
            size = file_->read(piece_.get(),
                               static_cast<unsigned>(std::min<std::uint64_t>(wanted, kPiece)));
        }
        at_ = begin_;
        end_ = begin_ + size;
        return size != 0;
    }

    InterfacePtr<IFile> file_;
    IByteWindow* window_;                   // of the file, or null
    std::unique_ptr<std::uint8_t[]> piece_; // what was read of a file without one
    const std::uint8_t* begin_ = nullptr;   // where the file stands, if it has a window
    const std::uint8_t* at_ = nullptr;
    const std::uint8_t* end_ = nullptr;
};

} // namespace core
