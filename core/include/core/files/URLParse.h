// A text on its way through a scheme's parser, see core/files/SchemeBase.h.
#pragma once

#include <core/files/URL.h>

#include <cstdint>
#include <string_view>
#include <vector>

namespace core {

// A small set of units, lent; asking for one of ASCII is a look at a bit.
class UnitSet {
public:
    constexpr explicit UnitSet(std::u16string_view units) noexcept : units_(units) {
        for (const char16_t c : units)
            if (c < 128) bits_[c >> 6] |= std::uint64_t{1} << (c & 63);
    }

    constexpr bool contains(char16_t c) const noexcept {
        if (c < 128) return (bits_[c >> 6] >> (c & 63) & 1) != 0;
        return units_.find(c) != units_.npos;
    }

private:
    std::uint64_t bits_[2] = {};
    std::u16string_view units_;
};

// The marks are set in their order; those that a step leaves out get the position at the end.
struct URLParse {
    std::u16string_view text;
    UnitSet reserved;
    UnitSet separators; // of paths
    bool fragment;      // "#" begins one
    std::vector<unsigned> marks = std::vector<unsigned>(URL::kMarks);
    unsigned position = 0;
    int next = 0; // the mark that comes next

    bool atEnd() const noexcept { return position == text.size(); }
    bool at(char16_t c) const noexcept { return !atEnd() && text[position] == c; }
    bool atSeparator(unsigned ahead = 0) const noexcept {
        return position + ahead < text.size() && separators.contains(text[position + ahead]);
    }

    void mark() noexcept { mark(position); }
    void mark(unsigned place) noexcept { marks[static_cast<unsigned>(next++)] = place; }
    // Sets all marks before `last` to the position.
    void markUpTo(int last) noexcept {
        while (next < last) mark();
    }

    // The first reserved unit from `from` on, or the end.
    unsigned segmentEnd(unsigned from) const noexcept {
        while (from < text.size() && !reserved.contains(text[from])) ++from;
        return from;
    }
};

} // namespace core
