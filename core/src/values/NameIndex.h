// The names of the properties, or of the methods, of a description, found without regard to case: a
// hash table of open addressing over names whose case is taken off. The answers are those of a search
// in a sorted vector with compare_nocase(), as case is taken off in the same way.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace core {

class NameIndex {
public:
    // Room for so many names; more are taken, too.
    explicit NameIndex(std::size_t names);

    // The first member that claims a name keeps it.
    void add(std::u16string_view name, int member);
    int find(std::u16string_view name) const noexcept; // or -1

    // Eight units without case.
    struct Block {
        std::uint64_t low, high;
        friend bool operator==(const Block&, const Block&) noexcept = default;
    };

private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t length = 0;
        std::uint32_t begin = 0; // the name is the blocks from here on
        int member = -1;         // marks a free slot
    };

    // The slot of the name, or the free one where it would go.
    std::size_t slot_of(std::u16string_view name, std::uint32_t hash) const noexcept;
    void grow();

    // A power of two of slots, a third of which at least is free, so that every search ends.
    std::vector<Slot> slots_;
    std::size_t used_ = 0;
    std::vector<Block> blocks_;
};

} // namespace core
