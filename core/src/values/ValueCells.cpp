#include "ValueCells.h"

#include <utility>

namespace core {

thread_local constinit ValueCells value_cells = {};

namespace {

struct Cleaner {
    void stand_ready() noexcept {
        for (ValueCells::List& list : value_cells.lists) list.limit = kKeptValueCells;
    }
    ~Cleaner() {
        value_cells.ended = true;
        for (ValueCells::List& list : value_cells.lists) {
            ValueCell* cell = std::exchange(list, {}).first;
            while (cell) kiln_delete(std::exchange(cell, cell->next));
        }
    }
};
thread_local Cleaner cleaner;

} // namespace

void release_value_cell(void* memory, unsigned kind) noexcept {
    ValueCells::List& list = value_cells.lists[kind];
    if (kKeptValueCells == 0 || value_cells.ended || list.limit != 0) return kiln_delete(memory);
    cleaner.stand_ready();
    list.first = new (memory) ValueCell{list.first};
    ++list.count;
}

} // namespace core
