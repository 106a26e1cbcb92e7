// The set of a mask, "[a-z_]", and the table by character that it and the mask's parts learn into.
#pragma once

#include <core/text/CharacterOrder.h>

#include <array>
#include <cstdint>
#include <utility>
#include <vector>

namespace core {

// A value for each character, at first `T()`. Memory is taken a page for each high byte that is
// asked about, so that the text of one alphabet costs one or two pages.
template <class T> class CharacterTable {
public:
    // The slot of `c`, valid until the next call.
    T& operator[](char16_t c) {
        std::uint16_t& page = pageOf_[c >> 8];
        if (page == 0) {
            pages_.emplace_back();
            page = static_cast<std::uint16_t>(pages_.size());
        }
        return pages_[page - 1u][c & 0xFF];
    }

private:
    std::array<std::uint16_t, 256> pageOf_{}; // from 1; 0 where there is none yet
    std::vector<std::array<T, 256>> pages_;
};

// How a family of masks spells characters.
struct Spelling {
    char16_t (*represent)(char16_t) noexcept; // the one that stands for all that count as equal
    char16_t (*capital)(char16_t) noexcept;   // of a representative; a range may hold either
};

// Characters are given as representatives.
class SymbolsSet {
public:
    // `order` outlives the set.
    SymbolsSet(bool negated, const CharacterOrder& order, const Spelling& spelling)
        : negated_(negated), order_(order), capital_(spelling.capital) {}

    void add(char16_t c) { answers_[c] = answer(true); }
    // Takes the ends as they are spelled, in either order. They are to be added as well: an order
    // may put their representatives outside.
    void addRange(char16_t low, char16_t high) {
        if (order_.compare(low, high) > 0) std::swap(low, high);
        ranges_.emplace_back(low, high);
    }

    // Asks the order once for a character, then remembers.
    bool contains(char16_t c) {
        Answer& known = answers_[c];
        if (known == Answer::Unknown) known = answer(in_a_range(c));
        return known == Answer::Yes;
    }

private:
    enum class Answer : std::uint8_t { Unknown, Yes, No };

    Answer answer(bool member) const noexcept {
        return member != negated_ ? Answer::Yes : Answer::No;
    }
    bool in_a_range(char16_t c) const noexcept {
        const char16_t capital = capital_(c);
        for (const auto& [low, high] : ranges_)
            if (is_between(c, low, high) || (capital != c && is_between(capital, low, high)))
                return true;
        return false;
    }
    bool is_between(char16_t c, char16_t low, char16_t high) const noexcept {
        return order_.compare(c, low) >= 0 && order_.compare(c, high) <= 0;
    }

    bool negated_;
    const CharacterOrder& order_;
    char16_t (*capital_)(char16_t) noexcept;
    std::vector<std::pair<char16_t, char16_t>> ranges_;
    CharacterTable<Answer> answers_;
};

} // namespace core
