// The blocks in which long strings keep their units.
//
//                     0           4           8
//   RC_NativeString   | count     | capacity  | capacity + 1 units, the last for a terminator
//   NativeString      | capacity  | capacity + 1 units
//
// The first is shared by all copies of a string, the second belongs to one string. Both offer the
// same functions, so that the code above them is written once.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <new>

namespace elm {

// A block with a reference count. All functions but `units` for writing may be called from any
// thread that holds a reference.
template <class T> class RC_NativeString {
public:
    // A block with count 1 and unset units. Throws std::bad_alloc.
    template <class Allocator>
    static RC_NativeString* create(const Allocator& alloc, std::uint32_t capacity) {
        return ::new (alloc.allocate_bytes(bytes(capacity))) RC_NativeString(capacity);
    }

    // Takes one more reference. Who calls holds one already, so nothing needs to be ordered.
    void acquire() noexcept { count_.fetch_add(1, std::memory_order_relaxed); }

    // Gives up one reference, and frees the block with the last one. Whoever finds count 1 is the
    // only owner, and nobody else can take a reference: the subtraction may be spared. Acquire
    // makes the reads of former owners, who let go with release, come before the freeing.
    template <class Allocator> void release(const Allocator& alloc) noexcept {
        if (refs() == 1 || count_.fetch_sub(1, std::memory_order_acq_rel) == 1)
            alloc.deallocate_bytes(this, bytes(capacity_));
    }

    // The count. When it is 1 the caller may write: acquire pairs with the release of the owners
    // that read these units before.
    std::uint32_t refs() const noexcept { return count_.load(std::memory_order_acquire); }

    std::uint32_t capacity() const noexcept { return capacity_; }
    T* units() noexcept { return reinterpret_cast<T*>(this + 1); }

private:
    explicit RC_NativeString(std::uint32_t capacity) noexcept : capacity_(capacity) {}

    static std::size_t bytes(std::uint32_t capacity) noexcept {
        return sizeof(RC_NativeString) + (std::size_t{capacity} + 1) * sizeof(T);
    }

    std::atomic<std::uint32_t> count_{1};
    std::uint32_t capacity_;
};

// A block of one owner.
template <class T> class NativeString {
public:
    // A block with unset units. Throws std::bad_alloc.
    template <class Allocator>
    static NativeString* create(const Allocator& alloc, std::uint32_t capacity) {
        return ::new (alloc.allocate_bytes(bytes(capacity))) NativeString(capacity);
    }

    template <class Allocator> void release(const Allocator& alloc) noexcept {
        alloc.deallocate_bytes(this, bytes(capacity_));
    }

    std::uint32_t refs() const noexcept { return 1; }
    std::uint32_t capacity() const noexcept { return capacity_; }
    T* units() noexcept { return reinterpret_cast<T*>(this + 1); }

private:
    explicit NativeString(std::uint32_t capacity) noexcept : capacity_(capacity) {}

    static std::size_t bytes(std::uint32_t capacity) noexcept {
        return sizeof(NativeString) + (std::size_t{capacity} + 1) * sizeof(T);
    }

    std::uint32_t capacity_;
};

static_assert(sizeof(RC_NativeString<wchar_t>) == 8 && sizeof(NativeString<wchar_t>) == 4);
static_assert(std::atomic<std::uint32_t>::is_always_lock_free);

} // namespace elm
