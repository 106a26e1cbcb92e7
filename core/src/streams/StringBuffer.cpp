#include "StringBuffer.h"

#include "UnitCopy.h"
#include "UnitMemory.h"

#include <core/component/Object.h>
#include <core/text/StreamConverter.h>

#include <algorithm>
#include <bit>
#include <cstring>

namespace core {

namespace {

constexpr unsigned kFirstChunk = 512;
constexpr unsigned kLeastChunk = 256;
constexpr unsigned kGreatestChunk = 8192;

void move_units(char16_t* to, const char16_t* from, unsigned n) noexcept {
    if (n != 0) std::memmove(to, from, n * sizeof *to);
}

} // namespace

StringBuffer::~StringBuffer() {
    for (const Chunk& chunk : chunks_) free_units(chunk.data, chunk.capacity);
}

// ---- Chunks.

void StringBuffer::free_chunks_from(std::size_t first) noexcept {
    for (std::size_t i = first; i < chunks_.size(); ++i) {
        capacity_ -= chunks_[i].capacity;
        free_units(chunks_[i].data, chunks_[i].capacity);
    }
    chunks_.resize(first);
}

void StringBuffer::add_chunk(unsigned capacity) {
    const unsigned grown = elm::checked_size(std::size_t{capacity_} + capacity);
    if (chunks_.size() == chunks_.capacity()) {
        chunks_.reserve(chunks_.size() * 2 + 4);
        set_tail(tail_);
    }
    chunks_.push_back({allocate_units(capacity), 0, capacity});
    capacity_ = grown;
    set_tail(tail_);
}

void StringBuffer::set_tail(std::size_t chunk) noexcept {
    tail_ = chunk;
    last_ = chunk < chunks_.size() ? &chunks_[chunk] : &none_;
}

void StringBuffer::add_chunks(unsigned capacity) {
    for (; capacity >= kGreatestChunk; capacity -= kGreatestChunk) add_chunk(kGreatestChunk);
    if (capacity != 0) add_chunk(capacity);
}

// Goes on to a chunk with room.
void StringBuffer::more_room(unsigned least) {
    while (tail_ < chunks_.size() && chunks_[tail_].capacity - chunks_[tail_].used < least) {
        if (tail_ + 1 == chunks_.size())
            add_chunk(std::max(std::min(chunks_.back().capacity * 2, kGreatestChunk), least));
        set_tail(tail_ + 1);
    }
    if (chunks_.empty()) add_chunk(kFirstChunk);
}

StringBuffer::Place StringBuffer::place(unsigned pos) noexcept {
    while (pos < nearStart_) nearStart_ -= chunks_[--nearChunk_].used;
    while (nearChunk_ < tail_ && pos - nearStart_ >= chunks_[nearChunk_].used)
        nearStart_ += chunks_[nearChunk_++].used;
    return {nearChunk_, pos - nearStart_};
}

void StringBuffer::units_moved() noexcept {
    ++version_;
    nearChunk_ = 0;
    nearStart_ = 0;
}

std::u16string_view StringBuffer::run(unsigned pos) {
    const Place at = place(pos);
    const Chunk& chunk = chunks_[at.chunk];
    return {chunk.data + at.offset, chunk.used - at.offset};
}

// ---- Size.

void StringBuffer::setLength(unsigned n) {
    if (n == 0) return clear();
    if (n < length_) {
        const Place end = place(n);
        chunks_[end.chunk].used = end.offset;
        for (std::size_t i = end.chunk + 1; i <= tail_; ++i) chunks_[i].used = 0;
        set_tail(end.offset == 0 ? end.chunk - 1 : end.chunk);
        length_ = n;
        units_moved();
        return;
    }
    if (n > length_) reserve(n);
    while (length_ < n) {
        const auto free = static_cast<unsigned>(room(1).size());
        added(std::min(free, n - length_));
    }
}

void StringBuffer::reserve(unsigned n) {
    elm::checked_size(n);
    if (chunks_.empty()) return n < kLeastChunk ? add_chunk(kLeastChunk) : add_chunks(n);
    if (n <= capacity_) return;
    const unsigned missing = n - capacity_;
    const unsigned last = chunks_.back().capacity;
    if (last >= missing)
        add_chunk(last);
    else if (missing >= kGreatestChunk)
        add_chunks(missing);
    else
        add_chunk(n);
}

void StringBuffer::compact() {
    units_moved();
    if (length_ == 0) {
        free_chunks_from(0);
        set_tail(0);
        return;
    }
    std::size_t to = 0;
    for (std::size_t from = 1; from <= tail_; ++from) {
        Chunk& source = chunks_[from];
        unsigned moved = 0;
        while (to < from && moved < source.used) {
            Chunk& target = chunks_[to];
            const unsigned n = std::min(target.capacity - target.used, source.used - moved);
            move_units(target.data + target.used, source.data + moved, n);
            target.used += n;
            moved += n;
            if (target.used == target.capacity) ++to;
        }
        source.used -= moved;
        move_units(source.data, source.data + moved, source.used);
    }
    tail_ = std::min(to, chunks_.size() - 1);
    if (chunks_[tail_].used == 0) --tail_;
    free_chunks_from(tail_ + 1);
    set_tail(tail_);

    Chunk& last = chunks_[tail_];
    const unsigned fitting = std::max(last.used, kLeastChunk);
    if (last.used == last.capacity || last.capacity == fitting) return;
    const Chunk smaller{allocate_units(fitting), last.used, fitting};
    move_units(smaller.data, last.data, last.used);
    free_units(last.data, last.capacity);
    capacity_ = capacity_ - last.capacity + fitting;
    last = smaller;
}

void StringBuffer::clear() {
    for (std::size_t i = 0; i < chunks_.size() && i <= tail_; ++i) chunks_[i].used = 0;
    set_tail(0);
    length_ = 0;
    units_moved();
}

// ---- Change.

void StringBuffer::append(const char16_t* text, unsigned n) {
    // No chunk has room for kAllUnits.
    if (text && n <= last_->capacity - last_->used) {
        copy_units(last_->data + last_->used, text, n);
        added(n);
    } else {
        append_to_several(units_of(text, n));
    }
}

void StringBuffer::append_to_several(std::u16string_view units) {
    elm::checked_size(length_ + units.size());
    while (!units.empty()) {
        const std::span<char16_t> to = room(1);
        const auto size = static_cast<unsigned>(std::min(to.size(), units.size()));
        copy_units(to.data(), units.data(), size);
        added(size);
        units.remove_prefix(size);
    }
}

unsigned StringBuffer::append(StreamConverterToUnicode& converter, const char* bytes, unsigned n) {
    // A pair of surrogates is not cut by a chunk.
    constexpr unsigned kPair = 2;
    const char* in = bytes;
    for (bool more = true; more;) {
        const std::span<char16_t> to = room(kPair);
        char16_t* out = to.data();
        const auto decoded = [&] { added(static_cast<unsigned>(out - to.data())); };
        try {
            more = converter.widen(bytes ? &in : nullptr, n - static_cast<unsigned>(in - bytes),
                                   &out, static_cast<unsigned>(to.size()));
        } catch (...) {
            decoded();
            throw;
        }
        decoded();
    }
    return static_cast<unsigned>(in - bytes);
}

// Makes room for a text that does not fit into the chunk at its place: what stands behind the place
// goes into a chunk of its own, with empty chunks before it for the rest of the text.
void StringBuffer::split(Place at, unsigned inserted) {
    const Chunk old = chunks_[at.chunk];
    const unsigned behind = old.used - at.offset;
    const std::size_t firstNew = chunks_.size();
    try {
        unsigned rest = inserted - std::min(inserted, old.capacity - at.offset);
        for (; rest > kGreatestChunk; rest -= kGreatestChunk) add_chunk(kGreatestChunk);
        if (rest != 0) add_chunk(std::bit_ceil(std::max(rest, kLeastChunk)));
        if (behind != 0)
            add_chunk(behind > kGreatestChunk ? behind
                                              : std::bit_ceil(std::max(behind, kLeastChunk)));
    } catch (...) {
        free_chunks_from(firstNew);
        throw;
    }
    const std::size_t made = chunks_.size() - firstNew;
    if (behind != 0) {
        move_units(chunks_.back().data, old.data + at.offset, behind);
        chunks_.back().used = behind;
    }
    chunks_[at.chunk].used = at.offset;
    const auto begin = chunks_.begin();
    std::rotate(begin + static_cast<std::ptrdiff_t>(at.chunk + 1),
                begin + static_cast<std::ptrdiff_t>(firstNew), chunks_.end());
    set_tail(tail_ + made);
}

void StringBuffer::insert(unsigned pos, const char16_t* text, unsigned n) {
    checked_count(pos, 0);
    if (pos == length_) return append(text, n);
    std::u16string_view units = units_of(text, n);
    if (units.empty()) return;
    elm::checked_size(length_ + units.size());

    const Place at = place(pos);
    Chunk& here = chunks_[at.chunk];
    const auto size = static_cast<unsigned>(units.size());
    if (size <= here.capacity - here.used) {
        move_units(here.data + at.offset + size, here.data + at.offset, here.used - at.offset);
        move_units(here.data + at.offset, units.data(), size);
        here.used += size;
    } else {
        split(at, size);
        for (std::size_t i = at.chunk; !units.empty(); ++i) {
            Chunk& to = chunks_[i];
            const auto part =
                static_cast<unsigned>(std::min<std::size_t>(to.capacity - to.used, units.size()));
            move_units(to.data + to.used, units.data(), part);
            to.used += part;
            units.remove_prefix(part);
        }
    }
    length_ += size;
    units_moved();
}

void StringBuffer::erase(unsigned pos, unsigned n) {
    n = checked_count(pos, n);
    if (n == 0) return;
    if (n == length_ - pos) return setLength(pos);

    const Place at = place(pos);
    std::size_t i = at.chunk;
    unsigned offset = at.offset;
    std::size_t firstEmpty = chunks_.size(), lastEmpty = 0;
    for (unsigned left = n; left != 0; ++i, offset = 0) {
        Chunk& chunk = chunks_[i];
        const unsigned cut = std::min(left, chunk.used - offset);
        move_units(chunk.data + offset, chunk.data + offset + cut, chunk.used - offset - cut);
        chunk.used -= cut;
        left -= cut;
        if (chunk.used != 0) continue;
        firstEmpty = std::min(firstEmpty, i);
        lastEmpty = i + 1;
    }
    // Chunks that became empty lie side by side; they go behind the text, for new use.
    if (firstEmpty < lastEmpty) {
        const auto begin = chunks_.begin();
        std::rotate(begin + static_cast<std::ptrdiff_t>(firstEmpty),
                    begin + static_cast<std::ptrdiff_t>(lastEmpty),
                    begin + static_cast<std::ptrdiff_t>(tail_ + 1));
        set_tail(tail_ - (lastEmpty - firstEmpty));
    }
    length_ -= n;
    units_moved();
}

void StringBuffer::replace(unsigned pos, unsigned n, const char16_t* text, unsigned size) {
    n = checked_count(pos, n);
    std::u16string_view units = units_of(text, size);
    if (units.size() > n) // what can fail comes first
        insert(pos + n, units.data() + n, static_cast<unsigned>(units.size() - n));
    else
        erase(pos + static_cast<unsigned>(units.size()), n - static_cast<unsigned>(units.size()));
    units = units.substr(0, n);
    while (!units.empty()) {
        const Place at = place(pos);
        const Chunk& chunk = chunks_[at.chunk];
        const auto part =
            static_cast<unsigned>(std::min<std::size_t>(chunk.used - at.offset, units.size()));
        move_units(chunk.data + at.offset, units.data(), part);
        units.remove_prefix(part);
        pos += part;
    }
}

void StringBuffer::setCharAt(unsigned pos, char16_t unit) {
    if (pos >= length_) throw_out_of_bounds(pos, length_);
    const Place at = place(pos);
    chunks_[at.chunk].data[at.offset] = unit;
}

stdx::ustring StringBuffer::toString() {
    stdx::ustring text;
    text._resize_nofill(length_);
    copy(0, text.data(), length_);
    return text;
}

// ---- Iterators.

void StringBufferCursor::find() noexcept {
    version_ = buffer_->version_;
    position_ = std::min(position_, buffer_->length_);
    const StringBuffer::Place at = buffer_->place(position_);
    chunk_ = at.chunk;
    offset_ = at.offset;
}

bool StringBufferIterator::next() {
    if (units().empty()) return false;
    pass(1);
    return !units().empty();
}

bool StringBufferIterator::prev() {
    const unsigned here = cursor_.position();
    if (here == 0) return false;
    cursor_.move(here - 1);
    return true;
}

char16_t StringBufferIterator::current() {
    const std::u16string_view here = units();
    return here.empty() ? u'\0' : here.front();
}

InterfacePtr<IStringBufferIterator> StringBuffer::createIterator(unsigned pos) {
    if (pos >= length_) throw_out_of_bounds(pos, length_);
    return make_object<StringBufferIterator>(*this, pos);
}

InterfacePtr<IStringBuffer> create_string_buffer(IStringFormatter* formatter) {
    return make_object<StringBuffer>(formatter);
}

} // namespace core
