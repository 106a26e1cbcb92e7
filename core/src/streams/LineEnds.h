// Where the lines of a block of text end.
//
// The ends are listed for a stretch of the block at a time, without a branch that depends on where
// they are: a search from line to line would be mispredicted at the end of each.
#pragma once

#include "UnitScan.h"

#include <elm/string>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <span>
#include <string_view>

namespace core {

// Without a separator every CR and every LF is an end, and a pair of them is two. With one, it
// alone is.
//
// A separator is searched for without going back: "aab" is not found in "aaab", for when the third
// "a" does not fit, the two before it are text, and the search goes on with the third.
class LineEnds {
public:
    // The memory of a block is a whole number of groups.
    static constexpr unsigned kGroup = 64; // units

    LineEnds() = default;
    explicit LineEnds(std::u16string_view separator)
        : separator_(separator), separatorSize_(separator_.size()) {}

    std::u16string_view separator() const noexcept { return separator_.view(); }
    unsigned separator_size() const noexcept { return separatorSize_; }

    // The next block, which stays where it is.
    void start(const char16_t* text, unsigned size) noexcept {
        text_ = text;
        size_ = size;
        held_ = searched_ = 0;
        list_none(0);
    }
    // A block in which nothing ends a line.
    void start_plain(const char16_t* text, unsigned size) noexcept {
        start(text, size);
        list_none(size);
    }

    // The units of the block, without those that are held.
    unsigned size() const noexcept { return size_; }
    // The units behind them that are the beginning of a separator, known when next() has given
    // size(): it may go on in the next block.
    unsigned held() const noexcept { return held_; }

    // What is in front of this place is searched, and no part of it is held.
    unsigned listed() const noexcept { return listed_; }

    // The place of the first end from `from` on, size() if there is none. Goes forwards only.
    unsigned next(unsigned from) noexcept {
        const unsigned end = next_listed(from);
        return end < listed_ ? end : search(from);
    }
    // The same, but listed() or more if none is known.
    unsigned next_listed(unsigned from) noexcept {
        while (ends_[next_] < from) ++next_;
        return ends_[next_];
    }

private:
    static constexpr unsigned kStretch = 1024; // units
    static constexpr unsigned kFew = 4;        // ends that are listed without a branch

    void list_none(unsigned end) noexcept { close_list(0, end); }
    void close_list(unsigned n, unsigned end) noexcept {
        ends_[n] = listed_ = end;
        ends_[n + 1] = ~0u;
        next_ = 0;
    }

    [[gnu::noinline]] unsigned search(unsigned from) noexcept {
        unsigned end = listed_;
        for (unsigned first = std::max(from, listed_); end == listed_ && listed_ != size_;
             first = listed_) {
            list(first);
            end = next_listed(from);
        }
        return end;
    }

    // Lists the ends of the stretch from `first` on.
    void list(unsigned first) noexcept {
        const unsigned begin = first / kGroup * kGroup;
        const unsigned end = std::min(begin + kStretch, size_);
        const unsigned groups = (end - begin + kGroup - 1) / kGroup;
        std::uint64_t bits[kStretch / kGroup];
        if (separatorSize_ == 0)
            find_line_breaks(text_ + begin, groups, bits);
        else
            find_units(text_ + begin, groups, separator_.view().front(), bits);
        constexpr std::uint64_t kAll = ~std::uint64_t{0};
        bits[0] &= kAll << (first - begin);
        if (end % kGroup != 0) bits[groups - 1] &= ~(kAll << end % kGroup);
        const unsigned n = list_places(begin, {bits, groups});
        const unsigned kept = separatorSize_ == 0 ? n : keep_separators(n); // may cut the block
        close_list(kept, std::min(end, size_));
    }

    // Lists the places of the bits that are set; returns their number.
    unsigned list_places(unsigned begin, std::span<const std::uint64_t> groups) noexcept {
        constexpr std::uint64_t kLast = std::uint64_t{1} << (kGroup - 1);
        unsigned* out = ends_;
        for (std::uint64_t bits : groups) {
            const auto put = [&] {
                *out = begin + static_cast<unsigned>(std::countr_zero(bits | kLast));
                out += bits != 0;
                bits &= bits - 1;
            };
            for (unsigned i = 0; i < kFew; ++i) put();
            while (bits != 0) put();
            begin += kGroup;
        }
        return static_cast<unsigned>(out - ends_);
    }

    // Of `n` places where a separator's first unit stands, keeps those of whole separators.
    unsigned keep_separators(unsigned n) noexcept {
        const std::u16string_view separator = separator_.view();
        unsigned kept = 0;
        for (unsigned i = 0; i < n; ++i) {
            const unsigned place = ends_[i];
            if (place < searched_) continue;
            unsigned equal = 1;
            while (equal < separator.size() && place + equal < size_ &&
                   text_[place + equal] == separator[equal])
                ++equal;
            searched_ = place + equal;
            if (equal == separator.size()) {
                ends_[kept++] = place;
            } else if (searched_ == size_) {
                held_ = equal;
                size_ = place;
                break;
            }
        }
        return kept;
    }

    stdx::ustring separator_;
    unsigned separatorSize_ = 0;
    const char16_t* text_ = nullptr;
    unsigned size_ = 0;
    unsigned held_ = 0;
    unsigned searched_ = 0; // behind the last separator, or what began like one
    unsigned listed_ = 0;   // the end of the stretch that is listed
    unsigned next_ = 0;     // in ends_: all before it lie in front of where next() was asked last
    // Of the stretch, ascending; behind them listed_, and what is above all places.
    unsigned ends_[kStretch + kFew] = {0, ~0u};
};

} // namespace core
