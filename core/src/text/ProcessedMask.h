// A compiled mask: the prefix up to the first `%`, the suffix behind the last, and the parts
// between, of which each takes the first place that fits. No other choice can do better: whatever
// follows finds at least as much text left.
#pragma once

#include <core/text/Characters.h>
#include <core/text/LikeMask.h>

#include "CaseBlock.h"
#include "MaskParts.h"

#include <algorithm>
#include <span>

namespace core {

// A family of masks says which character stands for all that count as equal to it, and how a text
// of such characters is made.
struct CaseRepresentor {
    static char16_t of(char16_t c) noexcept { return c; }
    static constexpr Spelling kSpelling{&of, &of};

    // The text itself.
    class Text {
    public:
        explicit Text(std::u16string_view text) noexcept : text_(text) {}
        std::u16string_view view() const noexcept { return text_; }

    private:
        std::u16string_view text_;
    };
};

struct NoCaseRepresentor {
    static char16_t of(char16_t c) noexcept { return without_case(c); }
    static char16_t capital(char16_t c) noexcept { return to_upper(c); }
    static constexpr Spelling kSpelling{&of, &capital};

    // A copy, in place for texts of everyday length.
    class Text {
    public:
        explicit Text(std::u16string_view text) : size_(text.size()) {
            if (size_ > std::size(small_)) large_.reset(new char16_t[size_]);
            write(text.data(), large_ ? large_.get() : small_);
        }
        std::u16string_view view() const noexcept {
            return {large_ ? large_.get() : small_, size_};
        }

    private:
        void write(const char16_t* from, char16_t* to) const noexcept {
            constexpr std::size_t kLanes = core::kLanes<char16_t>;
            if (size_ < kLanes) {
                std::transform(from, from + size_, to, of);
                return;
            }
            const auto write_block = [=](std::size_t at) {
                store_block(to + at, without_case<char16_t>(load_block(from + at)));
            };
            for (std::size_t i = 0; i + kLanes <= size_; i += kLanes) write_block(i);
            write_block(size_ - kLanes); // the rest, with some of those before once more
        }

        std::size_t size_;
        std::unique_ptr<char16_t[]> large_;
        char16_t small_[256];
    };
};

template <class Representor> class ProcessedMask final : public ILikeMask {
public:
    ProcessedMask(std::u16string_view mask, char16_t escape, CharacterOrderPtr order)
        : order_(std::move(order)),
          positions_(parse_mask(mask, escape, *order_, Representor::kSpelling)),
          prefixLength_(positions_.anys.empty() ? size() : positions_.anys.front()),
          suffixStart_(positions_.anys.empty() ? size() : positions_.anys.back() + 1),
          minLength_(size() - positions_.anys.size()) {
        for (std::size_t i = 1; i < positions_.anys.size(); ++i)
            addPart(positions_.anys[i - 1] + 1, positions_.anys[i]);
    }
    ProcessedMask(const ProcessedMask&) = delete; // the parts refer to it
    ProcessedMask& operator=(const ProcessedMask&) = delete;

    bool match(std::basic_string_view<char16_t> text) override {
        if (text.size() < minLength_) return false;
        if (!fits(0, text.substr(0, prefixLength_))) return false;
        if (positions_.anys.empty()) return text.size() == prefixLength_;

        const std::size_t suffix = text.size() - (size() - suffixStart_);
        if (!fits(suffixStart_, text.substr(suffix))) return false;
        return parts_.empty() || contains_parts(text.substr(prefixLength_, suffix - prefixLength_));
    }

private:
    std::size_t size() const noexcept { return positions_.symbols.size(); }

    void addPart(std::size_t begin, std::size_t end) {
        if (!positions_.has_set(begin, end))
            add<NoSetsMaskPart>(std::u16string_view(positions_.symbols).substr(begin, end - begin));
        else if (end - begin <= SetsMaskPart::kLongest)
            add<SetsMaskPart>(positions_, begin, end);
        else
            add<LongSetsMaskPart>(positions_, begin, end);
    }
    template <class Part, class... Arguments> void add(Arguments&&... arguments) {
        parts_.push_back(std::make_unique<Part>(std::forward<Arguments>(arguments)...));
    }

    // Whether a text fits the positions from `begin` on.
    bool fits(std::size_t begin, std::u16string_view text) const {
        for (std::size_t i = 0; i < text.size(); ++i) {
            // The symbol of a literal stands for itself.
            const char16_t symbol = positions_.symbols[begin + i];
            if (symbol != 0 && text[i] == symbol) continue;
            if (!positions_.matches(begin + i, Representor::of(text[i]))) return false;
        }
        return true;
    }

    bool contains_parts(std::u16string_view text) const {
        const typename Representor::Text represented(text);
        const char16_t* at = represented.view().data();
        const char16_t* const limit = at + text.size();
        for (const auto& part : parts_) {
            at = part->find(at, limit);
            if (at == limit) return false;
            at += part->length();
        }
        return true;
    }

    CharacterOrderPtr order_; // the sets refer to it
    MaskPositions positions_;
    std::vector<std::unique_ptr<BasicMaskPart>> parts_;
    std::size_t prefixLength_;
    std::size_t suffixStart_;
    std::size_t minLength_; // of a text
};

} // namespace core
