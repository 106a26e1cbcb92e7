#include "MaskSyntax.h"

#include <core/component/CompatibilityMode.h>

namespace core {
namespace {

// Until this version any `]` closed a set, and the escape character was plain inside one.
constexpr int kEscapeInSets = 80315;

class MaskReader {
public:
    MaskReader(std::u16string_view mask, char16_t escape, const CharacterOrder& order,
               const Spelling& spelling)
        : mask_(mask), escape_(escape), order_(order), spelling_(spelling) {}

    MaskPositions read() {
        while (at_ < mask_.size()) readPosition();
        return std::move(result_);
    }

private:
    bool is_last() const noexcept { return at_ + 1 == mask_.size(); }

    void readPosition() {
        const char16_t c = mask_[at_];
        if (c == u'[' && !is_last()) {
            ++at_;
            readSet();
        } else if (c == u'_') {
            ++at_;
            add(0, any_one());
        } else if (c == u'%') {
            at_ = std::min(mask_.find_first_not_of(u'%', at_), mask_.size());
            result_.anys.push_back(result_.symbols.size());
            add(u'%', nullptr);
        } else {
            if (is_escape(c) && !is_last()) ++at_;
            add(spelling_.represent(mask_[at_++]), nullptr);
        }
    }

    void add(char16_t symbol, std::shared_ptr<SymbolsSet> set) {
        result_.symbols.push_back(symbol);
        result_.sets.push_back(std::move(set));
    }

    bool is_escape(char16_t c) const noexcept { return escape_ != 0 && c == escape_; }

    // All `_` of a mask share one set.
    const std::shared_ptr<SymbolsSet>& any_one() {
        if (!anyOne_) anyOne_ = std::make_shared<SymbolsSet>(true, order_, spelling_);
        return anyOne_;
    }

    // The set that begins behind its `[`.
    void readSet() {
        const bool escapes = escape_ != 0 && compatibility_mode() >= kEscapeInSets;
        const std::size_t close = find_close(escapes);
        const bool negated = at_ < close && mask_[at_] == u'^';
        if (negated) ++at_;

        auto set = std::make_shared<SymbolsSet>(negated, order_, spelling_);
        while (at_ < close) readMember(*set, close, escapes);
        at_ = std::min(close + 1, mask_.size());
        add(0, std::move(set));
    }

    // The place of the closing `]`, or the mask's end.
    std::size_t find_close(bool escapes) const noexcept {
        for (std::size_t i = at_; i < mask_.size(); ++i)
            if (mask_[i] == u']' && !(escapes && mask_[i - 1] == escape_)) return i;
        return mask_.size();
    }

    void readMember(SymbolsSet& set, std::size_t close, bool escapes) {
        const char16_t low = readPlain(close, escapes);
        set.add(spelling_.represent(low));
        if (at_ + 1 >= close || mask_[at_] != u'-') return;
        ++at_;
        const char16_t high = readPlain(close, escapes);
        set.add(spelling_.represent(high));
        set.addRange(low, high);
    }

    char16_t readPlain(std::size_t close, bool escapes) noexcept {
        if (escapes && mask_[at_] == escape_ && at_ + 1 < close) ++at_;
        return mask_[at_++];
    }

    std::u16string_view mask_;
    char16_t escape_;
    const CharacterOrder& order_;
    Spelling spelling_;
    std::size_t at_ = 0;
    MaskPositions result_;
    std::shared_ptr<SymbolsSet> anyOne_;
};

} // namespace

MaskPositions parse_mask(std::u16string_view mask, char16_t escape, const CharacterOrder& order,
                         const Spelling& spelling) {
    return MaskReader(mask, escape, order, spelling).read();
}

} // namespace core
