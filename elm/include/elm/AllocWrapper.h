// The allocator of the string family: what the blocks of long strings come from.
//
// A string is three words whatever its type, so its allocator has no state: each use makes one.
#pragma once

#include <cstddef>
#include <memory>
#include <type_traits>

// What orbcore.so exports of namespace elm.
#define ORB_ELM_API __attribute__((visibility("default")))

namespace elm {

// `Alloc<T>` with memory counted in bytes, as blocks need it: a header, then units.
template <class T, template <class> class Alloc> class AllocWrapper : public Alloc<T> {
    using Bytes = typename std::allocator_traits<Alloc<T>>::template rebind_alloc<std::byte>;
    static_assert(std::is_empty_v<Bytes>, "a string has no room for an allocator with state");

public:
    // Memory for `bytes` bytes, aligned for any ordinary object. Throws std::bad_alloc.
    void* allocate_bytes(std::size_t bytes) const { return Bytes().allocate(bytes); }

    // Gives back what allocate_bytes() gave for the same number of bytes.
    void deallocate_bytes(void* memory, std::size_t bytes) const noexcept {
        Bytes().deallocate(static_cast<std::byte*>(memory), bytes);
    }
};

} // namespace elm
