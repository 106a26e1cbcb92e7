// The string buffer in chunks: appending never moves what is there.
//
// The first chunk that is added has 512 units, each later one twice the capacity of the last, at
// most 8192.
#pragma once

#include "StringBufferBase.h"
#include "WindowReader.h"

#include <span>
#include <vector>

namespace core {

class StringBuffer
    : public ObjectRoot
    , public SCOM_InternalClass<StringBuffer>
    , public StringBufferBase {
public:
    explicit StringBuffer(IStringFormatter* formatter = nullptr) : StringBufferBase(formatter) {}
    StringBuffer(const StringBuffer&) = delete;
    StringBuffer& operator=(const StringBuffer&) = delete;
    ~StringBuffer();

    static const InterfaceEntry* _GetEntries() {
        return interface_map<StringBuffer, IStringBuffer>();
    }

    unsigned length() final { return length_; }
    void setLength(unsigned n) final;
    unsigned capacity() final { return capacity_; }
    void reserve(unsigned n) final;
    void compact() final;

    using StringBufferBase::append;
    void append(char16_t unit) final {
        if (last_->used == last_->capacity) more_room(1);
        last_->data[last_->used] = unit;
        added(1);
    }
    void append(const char16_t* text, unsigned n) final;
    unsigned append(StreamConverterToUnicode& converter, const char* bytes, unsigned n) final;

    using StringBufferBase::insert;
    void insert(unsigned pos, const char16_t* text, unsigned n) final;

    void clear() final;
    void erase(unsigned pos, unsigned n) final;
    stdx::ustring toString() final;
    void setCharAt(unsigned pos, char16_t unit) final;

    using StringBufferBase::replace;
    void replace(unsigned pos, unsigned n, const char16_t* text, unsigned size) final;

    InterfacePtr<IStringBufferIterator> createIterator(unsigned pos) final;

    // Free memory behind the text, of at least `least` units, which are few; added() makes the first
    // units of it text.
    std::span<char16_t> room(unsigned least) {
        if (last_->capacity - last_->used < least) more_room(least);
        return {last_->data + last_->used, last_->capacity - last_->used};
    }
    void added(unsigned n) noexcept {
        last_->used += n;
        length_ += n;
    }

private:
    friend class StringBufferCursor;

    struct Chunk {
        char16_t* data;
        unsigned used;
        unsigned capacity;
    };
    struct Place {
        std::size_t chunk;
        unsigned offset;
    };

    std::u16string_view run(unsigned pos) final;
    InterfacePtr<IStringBuffer> create_like(IStringFormatter* formatter) final {
        return create_string_buffer(formatter);
    }

    void more_room(unsigned least);
    void set_tail(std::size_t chunk) noexcept;
    void append_to_several(std::u16string_view units);
    void add_chunk(unsigned capacity);
    void add_chunks(unsigned capacity);
    void free_chunks_from(std::size_t first) noexcept;
    Place place(unsigned pos) noexcept;
    void split(Place at, unsigned inserted);
    void units_moved() noexcept;

    // Outside of a call:
    //  - all text lies in the chunks up to tail_;
    //  - last_ is the chunk tail_, or none_ while there are no chunks;
    //  - length_ and capacity_ are the sums over all chunks.
    std::vector<Chunk> chunks_;
    std::size_t tail_ = 0; // takes what is appended
    Chunk none_ = {nullptr, 0, 0};
    Chunk* last_ = &none_;
    unsigned length_ = 0;
    unsigned capacity_ = 0;

    unsigned version_ = 0;      // counts the changes that move units; appending moves none
    std::size_t nearChunk_ = 0; // where the last search ended, and the units in front of it
    unsigned nearStart_ = 0;
};

// A place in a buffer that reads forwards quickly and survives all changes.
class StringBufferCursor {
public:
    StringBufferCursor() = default;
    explicit StringBufferCursor(StringBuffer& buffer, unsigned pos = 0)
        : buffer_(&buffer), position_(pos) {
        find();
    }

    unsigned position() noexcept {
        refresh();
        return position_;
    }
    void move(unsigned pos) noexcept {
        position_ = pos;
        find();
    }

    // The units here that lie together; none at the end.
    std::u16string_view units() noexcept {
        refresh();
        while (chunk_ < buffer_->chunks_.size()) {
            const StringBuffer::Chunk& chunk = buffer_->chunks_[chunk_];
            if (offset_ < chunk.used) return {chunk.data + offset_, chunk.used - offset_};
            if (chunk_ >= buffer_->tail_) break;
            ++chunk_;
            offset_ -= chunk.used;
        }
        return {};
    }
    // `n` may go beyond the units that lie together.
    void pass(unsigned n) noexcept {
        position_ += n;
        offset_ += n;
    }

private:
    void refresh() noexcept {
        if (version_ != buffer_->version_) find();
    }
    void find() noexcept;

    StringBuffer* buffer_ = nullptr;
    unsigned position_ = 0;
    std::size_t chunk_ = 0;
    unsigned offset_ = 0;
    unsigned version_ = 0;
};

class StringBufferIterator
    : public ObjectRoot
    , public SCOM_InternalClass<StringBufferIterator>
    , public WindowReader<StringBufferIterator, IStringBufferIterator> {
public:
    StringBufferIterator(StringBuffer& buffer, unsigned pos)
        : buffer_(&buffer, true), cursor_(buffer, pos) {}

    static const InterfaceEntry* _GetEntries() {
        return interface_map<StringBufferIterator, IStringBufferIterator,
                             Via<IReader, IStringBufferIterator>, ITextWindow>();
    }

    IStringBuffer* buffer() final { return buffer_.get(); }
    unsigned position() final { return cursor_.position(); }
    bool next() final;
    bool prev() final;
    char16_t current() final;

    std::u16string_view units() noexcept { return cursor_.units(); }
    void pass(unsigned n) noexcept { cursor_.pass(n); }
    // What is appended while reading is not read: the target may be this very buffer.
    unsigned cut(unsigned n) {
        const unsigned left = buffer_->length() - cursor_.position();
        return n < left ? n : left;
    }

private:
    const InterfacePtr<StringBuffer> buffer_;
    StringBufferCursor cursor_;
};

} // namespace core
