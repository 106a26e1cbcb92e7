// The representation under every `elm::BasicString`: twelve bytes that hold a short string in
// place, or the place of a block with a long one.
//
//               0           4           8           12
//   short form  | units, a terminator, ...  | marker |   marker: in-place capacity - size
//   long form   | pointer to the block  | 1 | size   |   the top bit of the last word is set
//
// The marker is the last unit of the twelve bytes. In a full short string it is 0, and that is at
// once the terminator. In the long form it is above 127 in every unit width, and so tells the two
// apart. The pointer is no aligned word of its own: it is read and written by memcpy.
//
// Invariants:
//  - a zero unit follows the last unit;
//  - a string above the in-place capacity is long; a long string may be of any size;
//  - a block with count above 1 is never written to.
#pragma once

#include "elm/AllocWrapper.h"
#include "elm/NativeString.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <string>
#include <type_traits>
#include <utility>

namespace elm {

// The longest string there can be: what 31 bits count.
inline constexpr unsigned int kMaxSize = 0x7FFFFFFF;

// `n` as the size of a string, or std::bad_alloc if none can be that long.
constexpr unsigned int checked_size(std::size_t n) {
    if (n > kMaxSize) throw std::bad_alloc();
    return static_cast<unsigned int>(n);
}

static_assert(std::endian::native == std::endian::little && sizeof(void*) == 8);

// Owns the units of a string: copies, moves, grows and un-shares them. Objects can be moved by
// copying their bytes. A shared block makes copies safe to use from different threads; one object
// is for one thread at a time.
template <class T, unsigned E, template <class> class Alloc> class ORB_ELM_API StringStorage {
    static constexpr bool kEager = E == 4294967295u;
    static_assert(kEager || E == 0u, "long strings are copied eagerly never or always");

    using Block = std::conditional_t<kEager, NativeString<T>, RC_NativeString<T>>;
    using UnsignedUnit = std::make_unsigned_t<T>;

public:
    using size_type = unsigned int;

    // The longest string that needs no block: 11, 5 or 2 units.
    static constexpr size_type kInPlace = 12 / sizeof(T) - 1;

    constexpr StringStorage() noexcept { rep_.units[kInPlace] = static_cast<T>(kInPlace); }

    // One atomic increment for a shared long string; a new block of the same capacity for an
    // eager one.
    constexpr StringStorage(const StringStorage& other) : rep_(other.rep_) {
        if (!is_long()) return;
        if constexpr (kEager)
            clone_block(block()->capacity());
        else
            block()->acquire();
    }

    // Leaves the source empty and short.
    constexpr StringStorage(StringStorage&& other) noexcept : rep_(other.rep_) {
        other.rep_ = StringStorage::empty_rep();
    }

    constexpr ~StringStorage() {
        if (is_long()) release_block();
    }

    constexpr StringStorage& operator=(const StringStorage& other) {
        if (this != &other) StringStorage(other).swap(*this);
        return *this;
    }

    constexpr StringStorage& operator=(StringStorage&& other) noexcept {
        if (this != &other) StringStorage(std::move(other)).swap(*this);
        return *this;
    }

    constexpr void swap(StringStorage& other) noexcept {
        const Rep mine = rep_;
        rep_ = other.rep_;
        other.rep_ = mine;
    }

    constexpr size_type size() const noexcept {
        return is_long() ? long_size() : kInPlace - short_room();
    }
    constexpr size_type capacity() const noexcept {
        return is_long() ? block()->capacity() : kInPlace;
    }
    // The units, with a zero unit behind them.
    constexpr const T* data() const noexcept { return is_long() ? block()->units() : rep_.units; }

    // What a growing string of `n` units takes as its capacity: n * 3 / 2, modulo 2^32.
    static constexpr size_type increase_capacity(size_type n) noexcept { return n * 3 / 2; }

    // The owners of the block: 0 for a short string.
    size_type _get_refs() const noexcept { return is_long() ? block()->refs() : 0; }
    // True if a copy of a long string has units of its own.
    static constexpr bool _long_is_eager() noexcept { return kEager; }
    // True if a copy of this very string has units of its own, as a short one always does.
    constexpr bool _is_eager() const noexcept { return kEager || !is_long(); }

    // Gives a string with a shared block a block of its own, of the same capacity. Throws
    // std::bad_alloc.
    constexpr void _make_unique() {
        if constexpr (!kEager)
            if (is_long() && block()->refs() != 1) become_long(block()->capacity());
    }

    // Room for `n` units in all, exactly. Nothing changes if there is room already: a shared
    // block stays shared. Throws std::bad_alloc.
    constexpr void reserve(size_type n) {
        if (n > capacity()) become_long(n);
    }
    // Does nothing.
    constexpr void reserve() noexcept {}

    // Sets the size: cuts, or adds units that are unset and that the caller fills. Grows to
    // exactly `n`.
    constexpr void _resize_nofill(size_type n) {
        reserve(n);
        _make_unique();
        set_size(n);
    }

    // Adds `n` unset units at the end and gives the first of them for the caller to fill.
    // Grows by half, so that repeated calls take constant time on average. Throws std::bad_alloc.
    constexpr T* _append(size_type n) {
        if (!is_long()) {
            const size_type room = short_room();
            if (n <= room) {
                T* const gap = rep_.units + (kInPlace - room);
                gap[n] = T();
                rep_.units[kInPlace] = static_cast<T>(room - n);
                return gap;
            }
            return open_gap(kInPlace - room, 0, n);
        }
        Block* const own = block();
        const size_type old = long_size();
        if (n <= own->capacity() - old && own->refs() == 1) {
            T* const gap = own->units() + old;
            gap[n] = T();
            set_long_size(old + n);
            return gap;
        }
        return open_gap(old, 0, n);
    }

    // The same for a gap in front of position `pos`, which is at most the size.
    T* _insert(size_type pos, size_type n) { return open_gap(pos, 0, n); }

    // Releases the block and returns to the short empty form.
    constexpr void clear() noexcept { StringStorage().swap(*this); }

protected:
    // A string of `n` units that the caller fills, at units(); the capacity is exact.
    constexpr explicit StringStorage(size_type n) : StringStorage() {
        if (n > kInPlace) become_long(n);
        set_size(n);
    }

    // The units for writing: only while nobody shares them.
    constexpr T* units() noexcept { return is_long() ? block()->units() : rep_.units; }

    // Replaces `removed` units from `pos` by `added` unset ones and gives the first of those.
    // Works in place if the capacity allows it, otherwise in a block half as large again.
    // In a new block the first unset unit equals the one that was there: a terminator stays
    // readable when a string is appended to itself. Throws std::bad_alloc.
    T* open_gap(size_type pos, size_type removed, size_type added);

    constexpr bool is_long() const noexcept { return marker() > 127; }

private:
    static constexpr std::uint32_t kLongBit = 0x80000000u;

    struct Rep {
        alignas(4) T units[kInPlace + 1];
    };
    static_assert(sizeof(Rep) == 12);

    static constexpr Rep empty_rep() noexcept { return StringStorage().rep_; }

    constexpr void become_long(size_type capacity) {
        move_to_block(capacity);
        if (!is_long()) __builtin_unreachable(); // as in short_room
    }

    constexpr UnsignedUnit marker() const noexcept {
        return static_cast<UnsignedUnit>(rep_.units[kInPlace]);
    }

    // How many units a short string has left.
    constexpr size_type short_room() const noexcept {
        const size_type room = marker();
        // Said to the compiler, which otherwise warns of writes that never happen.
        if (room > kInPlace) __builtin_unreachable();
        return room;
    }

    Block* block() const noexcept {
        Block* p;
        std::memcpy(&p, &rep_, sizeof p);
        return p;
    }

    size_type long_size() const noexcept {
        std::uint32_t word;
        std::memcpy(&word, reinterpret_cast<const char*>(&rep_) + 8, sizeof word);
        return word & ~kLongBit;
    }

    void set_long_size(size_type n) noexcept {
        const std::uint32_t word = n | kLongBit;
        std::memcpy(reinterpret_cast<char*>(&rep_) + 8, &word, sizeof word);
    }

    // Writes the size and the terminator. In a full short string both are the same unit.
    constexpr void set_size(size_type n) noexcept {
        if (is_long()) {
            block()->units()[n] = T();
            set_long_size(n);
            return;
        }
        if (n > kInPlace) __builtin_unreachable(); // as in short_room
        rep_.units[n] = T();
        rep_.units[kInPlace] = static_cast<T>(kInPlace - n);
    }

    // Makes `fresh` the block; the caller sees to the former one.
    void set_block(Block* fresh, size_type size) noexcept {
        std::memcpy(&rep_, &fresh, sizeof fresh);
        set_long_size(size);
    }

    static Block* create_block(std::size_t capacity);
    void release_block() noexcept;
    void clone_block(std::size_t capacity);
    void move_to_block(std::size_t capacity);

    Rep rep_{};
};

} // namespace elm
