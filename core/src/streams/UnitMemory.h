// Memory for units. Pieces of 4096, 8192 and 16384 units come from the pools of the memory layer,
// others from the heap.
#pragma once

#include <kiln/buffer_pools.h>
#include <kiln/memory.h>

#include <utility>

namespace core {

inline kiln::BufferPool* pool_of_units(unsigned capacity) noexcept {
    switch (capacity) {
    case 4096:
        return &kiln::buffer_pools().kib8;
    case 8192:
        return &kiln::buffer_pools().kib16;
    case 16384:
        return &kiln::buffer_pools().kib32;
    default:
        return nullptr;
    }
}

// The units are unset. Throws std::bad_alloc.
inline char16_t* allocate_units(unsigned capacity) {
    kiln::BufferPool* const pool = pool_of_units(capacity);
    void* const memory = pool ? pool->get() : kiln_new(capacity * sizeof(char16_t));
    return static_cast<char16_t*>(memory);
}

inline void free_units(char16_t* units, unsigned capacity) noexcept {
    if (kiln::BufferPool* const pool = pool_of_units(capacity))
        pool->put(reinterpret_cast<std::byte*>(units));
    else
        kiln_delete(units);
}

// The owner of one piece.
class UnitMemory {
public:
    UnitMemory() noexcept = default;
    explicit UnitMemory(unsigned capacity) : data_(allocate_units(capacity)), capacity_(capacity) {}
    UnitMemory(UnitMemory&& other) noexcept
        : data_(std::exchange(other.data_, nullptr)),
          capacity_(std::exchange(other.capacity_, 0)) {}
    UnitMemory& operator=(UnitMemory&& other) noexcept {
        std::swap(data_, other.data_);
        std::swap(capacity_, other.capacity_);
        return *this;
    }
    ~UnitMemory() {
        if (data_) free_units(data_, capacity_);
    }

    char16_t* data() const noexcept { return data_; }
    unsigned capacity() const noexcept { return capacity_; }

private:
    char16_t* data_ = nullptr;
    unsigned capacity_ = 0;
};

} // namespace core
