// The memory of dynamic values. They come and go by the million, all of three sizes, so each thread
// keeps a few cells of those that it frees and makes new values in them without asking the memory
// layer. A cell may be freed on another thread than it was made on; it stays with that one.
//
// The lists belong to their thread and take no lock. They go back to the memory layer when the thread
// ends; what is freed behind that, by destructors of other thread-local objects, goes there at once.
// Any thread may use values, ours or not.
#pragma once

#include <kiln/memory.h>

#include <cstddef>
#include <new>

#ifndef __has_feature
#define __has_feature(feature) 0
#endif

namespace core {

inline constexpr std::size_t kValueCellSizes[] = {48, 64, 80};
inline constexpr unsigned kValueCellKinds = 3;

// The address sanitizer is to see each use of a freed value: nothing is kept for it.
#if defined(__SANITIZE_ADDRESS__) || __has_feature(address_sanitizer)
inline constexpr unsigned kKeptValueCells = 0;
#else
inline constexpr unsigned kKeptValueCells = 128; // of each size, at most
#endif

struct ValueCell {
    ValueCell* next;
};

// Without a destructor, so that it serves until the last instruction of its thread.
struct ValueCells {
    struct List {
        ValueCell* first;
        unsigned count;
        unsigned
            limit; // 0 before the clean-up at the end of the thread stands ready, and behind it
    };
    List lists[kValueCellKinds];
    bool ended;
};

extern thread_local constinit ValueCells value_cells __attribute__((tls_model("initial-exec")));

// For a list that is full or has no limit yet.
void release_value_cell(void* memory, unsigned kind) noexcept;

template <std::size_t size> constexpr unsigned value_cell_kind() noexcept {
    static_assert(size <= kValueCellSizes[kValueCellKinds - 1], "no cell is so large");
    unsigned kind = 0;
    while (kValueCellSizes[kind] < size) ++kind;
    return kind;
}

template <std::size_t size> void* take_value_cell() {
    constexpr unsigned kind = value_cell_kind<size>();
    ValueCells::List& list = value_cells.lists[kind];
    ValueCell* const cell = list.first;
    if (!cell) return kiln_new(kValueCellSizes[kind]);
    list.first = cell->next;
    --list.count;
    return cell;
}

template <std::size_t size> void give_value_cell(void* memory) noexcept {
    constexpr unsigned kind = value_cell_kind<size>();
    ValueCells::List& list = value_cells.lists[kind];
    if (list.count >= list.limit) return release_value_cell(memory, kind);
    list.first = new (memory) ValueCell{list.first};
    ++list.count;
}

} // namespace core
