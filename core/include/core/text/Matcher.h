// Regular expressions, in the syntax of ICU.
//
//   core::Matcher word(u"(\\w+)@(\\w+)", text, core::Matcher::kIgnoreCase);
//   while (word.find()) use(word.group(1), word.start(), word.end());
//
//   if (core::matches_pattern(u"\\d{4}-\\d{2}", text)) …
//
// Positions and lengths count UTF-16 units.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/platform/api.h>
#include <elm/string>

#include <chrono>

namespace core {

// A pattern, a text, and the place of the last match. Making one compiles the pattern, which costs
// some microseconds: for many texts keep the matcher and give it each text by `reset`.
//
// Copies are handles on one state: what one finds, the others stand at. There is no lock, so all
// copies belong to one thread.
//
// A bad pattern, a group or a position that does not exist, a question about a match where there
// was none, and a match that exceeds its limits throw `RegexException`; the matcher stays usable.
//
// A pattern that nests repetitions, as "(a+)+b", can try a text for longer than anyone waits. Who
// takes patterns from outside sets `setTimeLimit`.
class ORBCORE_API Matcher {
public:
    // Flags of the constructors, to be combined; other bits are ignored.
    static constexpr unsigned kIgnoreCase = 1;
    static constexpr unsigned kComments = 2;  // blanks and "# …" in the pattern are skipped
    static constexpr unsigned kDotAll = 4;    // "." matches a line end
    static constexpr unsigned kMultiLine = 8; // "^" and "$" work per line

    // With an empty text.
    explicit Matcher(const stdx::ustring& pattern, unsigned flags = 0);
    Matcher(const stdx::ustring& pattern, const stdx::ustring& text, unsigned flags = 0);
    // A moved matcher is a copied one: no matcher is ever without its state.
    Matcher(const Matcher& other) noexcept;
    Matcher& operator=(const Matcher& other) noexcept;
    ~Matcher();

    // --- matching, within the region ---

    bool matches();   // does the whole region match?
    bool lookingAt(); // is there a match at the start of the region?
    // The next match behind the last one.
    bool find();
    // The first match from `start` on, after a reset.
    bool find(unsigned start);

    // --- the last match ---

    // Where it begins and where it ends, or one of its groups; -1 for a group that took no part.
    int start() const;
    int start(unsigned group) const;
    int end() const;
    int end(unsigned group) const;
    // Its text, or that of one of its groups; empty for a group that took no part.
    stdx::ustring group() const;
    stdx::ustring group(unsigned n) const;
    // The groups of the pattern; the whole match, number 0, is not counted.
    unsigned groupCount() const noexcept;
    // Whether the end of the text was looked at, so that more text might change the outcome, and
    // whether more text might undo the match.
    bool hitEnd() const noexcept;
    bool requireEnd() const noexcept;

    // --- the text ---

    // Restricts matching to the units from `start` to `end`, and starts over.
    Matcher& region(unsigned start, unsigned end);
    unsigned regionStart() const noexcept;
    unsigned regionEnd() const noexcept;
    // Back to the start of the whole text, or of a new one.
    Matcher& reset();
    Matcher& reset(const stdx::ustring& text);

    // The text with all matches, or the first, replaced; "$1" or "${name}" in the replacement is a
    // group, a backslash takes the meaning of the unit behind it. The matcher's own text stays;
    // the matcher starts over.
    stdx::ustring replaceAll(const stdx::ustring& replacement);
    stdx::ustring replaceFirst(const stdx::ustring& replacement);

    // --- limits ---

    // The time that one call may take; longer ends with U_REGEX_TIME_OUT (0x10312). Zero, as at
    // first: no limit. It is kept to some milliseconds; short calls do without a look at the clock.
    void setTimeLimit(std::chrono::milliseconds limit);
    // The memory for positions to come back to; more ends with U_REGEX_STACK_OVERFLOW (0x10311).
    // 8,000,000 bytes at first; 0: no limit. The matcher starts over.
    void setStackLimit(unsigned bytes);

private:
    class Record;
    InterfacePtr<Record> record_;
};

// Does the whole text match? Compiles the pattern at each call.
ORBCORE_API bool matches_pattern(const stdx::ustring& pattern, const stdx::ustring& text,
                                 unsigned flags = 0);

// A pattern that matches this text literally. "|" stays as it is, and so do the blanks and the "#"
// that `Matcher::kComments` would skip: a text with these is not quoted by it.
ORBCORE_API stdx::ustring quote_pattern(const stdx::ustring& text);

} // namespace core
