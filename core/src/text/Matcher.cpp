// The matcher is a handle on a counted record that owns all that ICU's matcher only points to: the
// text and the alias of it. The record never moves.
#include <core/text/Matcher.h>

#include <core/component/ObjectRoot.h>
#include <core/text/RegexException.h>

#include <unicode/regex.h>
#include <unicode/unistr.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <atomic>
#include <limits>

namespace core {
namespace {

using Clock = std::chrono::steady_clock;

std::uint32_t icu_flags(unsigned flags) noexcept {
    static constexpr struct {
        unsigned ours;
        std::uint32_t icu;
    } kFlags[] = {
        {Matcher::kIgnoreCase, UREGEX_CASE_INSENSITIVE},
        {Matcher::kComments, UREGEX_COMMENTS},
        {Matcher::kDotAll, UREGEX_DOTALL},
        {Matcher::kMultiLine, UREGEX_MULTILINE},
    };
    std::uint32_t mapped = 0;
    for (const auto& row : kFlags)
        if (flags & row.ours) mapped |= row.icu;
    return mapped;
}

// The same units without a copy; the string must outlive the alias and stay as it is.
icu::UnicodeString alias_of(const stdx::ustring& text) {
    return icu::UnicodeString(false, text.c_str(), static_cast<std::int32_t>(text.size()));
}

stdx::ustring to_ustring(const icu::UnicodeString& text) {
    if (text.isBogus()) throw std::bad_alloc(); // how ICU's strings say it
    return stdx::ustring(text.getBuffer(), static_cast<unsigned>(text.length()));
}

// What ICU's `replaceAll` and `replaceFirst` give, but for a failed search, which they take for the
// end of the matches.
icu::UnicodeString replace(icu::RegexMatcher& matcher, const stdx::ustring& replacement,
                           unsigned most, UErrorCode& status) {
    const icu::UnicodeString source = alias_of(replacement);
    icu::UnicodeString result;
    matcher.reset();
    for (unsigned count = 0; count != most && matcher.find(status); ++count)
        matcher.appendReplacement(result, source, status);
    return matcher.appendTail(result);
}

// When the running operation has to end. ICU asks by two callbacks: each ten thousand steps of a
// match, and each time before it tries a further place. The first look at the clock starts the
// time, so that short operations do without. ICU's own limit counts steps, and counts them from
// the last reset on.
class Deadline {
public:
    void set_limit(std::chrono::milliseconds limit) noexcept { limit_ = limit; }
    bool limited() const noexcept { return limit_.count() > 0; }
    void start() noexcept { end_ = Clock::time_point::max(); }

    static UBool U_CALLCONV after_steps(const void* deadline, std::int32_t) {
        return static_cast<const Deadline*>(deadline)->look();
    }
    static UBool U_CALLCONV at_place(const void* deadline, std::int64_t) {
        constexpr unsigned kPlacesPerLook = 64;
        const auto* const self = static_cast<const Deadline*>(deadline);
        return ++self->places_ % kPlacesPerLook != 0 || self->look();
    }

private:
    static constexpr std::chrono::milliseconds kForever = std::chrono::hours(24 * 365);

    bool look() const {
        const Clock::time_point now = Clock::now();
        if (end_ == Clock::time_point::max()) end_ = now + std::min(limit_, kForever);
        return now < end_;
    }

    std::chrono::milliseconds limit_{0};
    // ICU hands its context on as a constant.
    mutable Clock::time_point end_ = Clock::time_point::max();
    mutable unsigned places_ = 0;
};

} // namespace

class Matcher::Record {
public:
    Record(const stdx::ustring& pattern, const stdx::ustring& text, unsigned flags)
        : text_(text),
          pattern_(pattern),
          input_(alias_of(text_)),
          matcher_(alias_of(pattern_), input_, icu_flags(flags), status_) {
        check();
    }
    ~Record() { references_.store(kDestroyedCount, std::memory_order_relaxed); }
    Record(const Record&) = delete;
    Record& operator=(const Record&) = delete;

    void AddRef() noexcept { references_.fetch_add(1, std::memory_order_relaxed); }
    void Release() noexcept {
        if (references_.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
    }

    const icu::RegexMatcher& matcher() const noexcept { return matcher_; }

    // One operation of ICU's matcher, which gets the matcher and the status.
    template <class Operation> auto run(Operation&& operation) {
        status_ = U_ZERO_ERROR;
        deadline_.start();
        if constexpr (std::is_void_v<decltype(operation(matcher_, status_))>) {
            operation(matcher_, status_);
            check();
        } else {
            auto result = operation(matcher_, status_);
            check();
            return result;
        }
    }

    int start(unsigned group) {
        return run([=](auto& matcher, auto& status) {
            return matcher.start(static_cast<std::int32_t>(group), status);
        });
    }
    int end(unsigned group) {
        return run([=](auto& matcher, auto& status) {
            return matcher.end(static_cast<std::int32_t>(group), status);
        });
    }
    // What ICU's `group` gives, without its detour over a second string: a match that begins or
    // ends inside of a character is widened at its start and cut at its end.
    stdx::ustring group(unsigned n) {
        const int from = start(n);
        return from < 0 ? stdx::ustring() : text_.substr(place(from), place(end(n)) - place(from));
    }

    void reset(const stdx::ustring& text) {
        text_ = text;
        input_.setTo(false, text_.c_str(), static_cast<std::int32_t>(text_.size()));
        matcher_.reset(input_);
    }
    void reset() { matcher_.reset(); }

    void set_time_limit(std::chrono::milliseconds limit) {
        deadline_.set_limit(limit);
        const bool on = deadline_.limited();
        run([&](icu::RegexMatcher& matcher, UErrorCode& status) {
            matcher.setMatchCallback(on ? Deadline::after_steps : nullptr, &deadline_, status);
            matcher.setFindProgressCallback(on ? Deadline::at_place : nullptr, &deadline_, status);
        });
    }

private:
    // A position, moved to the start of the character that it lies in.
    unsigned place(int position) const noexcept {
        auto at = static_cast<unsigned>(position);
        if (at != text_.size()) U16_SET_CP_START(text_.c_str(), 0, at);
        return at;
    }

    void check() {
        if (status_ == U_REGEX_STOPPED_BY_CALLER) status_ = U_REGEX_TIME_OUT;
        if (U_FAILURE(status_)) throw RegexException(status_, pattern_);
    }

    std::atomic<std::uint32_t> references_ = 0;
    stdx::ustring text_;
    stdx::ustring pattern_;
    icu::UnicodeString input_; // the units of text_
    UErrorCode status_ = U_ZERO_ERROR;
    icu::RegexMatcher matcher_; // points to input_
    Deadline deadline_;
};

Matcher::Matcher(const stdx::ustring& pattern, unsigned flags)
    : Matcher(pattern, stdx::ustring(), flags) {}

Matcher::Matcher(const stdx::ustring& pattern, const stdx::ustring& text, unsigned flags)
    : record_(new Record(pattern, text, flags), true) {}

Matcher::Matcher(const Matcher& other) noexcept = default;
Matcher& Matcher::operator=(const Matcher& other) noexcept = default;
Matcher::~Matcher() = default;

// ---- Matching.

bool Matcher::matches() {
    return record_->run([](auto& matcher, auto& status) { return matcher.matches(status) != 0; });
}

bool Matcher::lookingAt() {
    return record_->run([](auto& matcher, auto& status) { return matcher.lookingAt(status) != 0; });
}

bool Matcher::find() {
    return record_->run([](auto& matcher, auto& status) { return matcher.find(status) != 0; });
}

bool Matcher::find(unsigned start) {
    return record_->run(
        [=](auto& matcher, auto& status) { return matcher.find(start, status) != 0; });
}

// ---- The last match.

int Matcher::start() const {
    return start(0);
}

int Matcher::start(unsigned group) const {
    return record_->start(group);
}

int Matcher::end() const {
    return end(0);
}

int Matcher::end(unsigned group) const {
    return record_->end(group);
}

stdx::ustring Matcher::group() const {
    return group(0);
}

stdx::ustring Matcher::group(unsigned n) const {
    return record_->group(n);
}

unsigned Matcher::groupCount() const noexcept {
    return static_cast<unsigned>(record_->matcher().groupCount());
}

bool Matcher::hitEnd() const noexcept {
    return record_->matcher().hitEnd();
}

bool Matcher::requireEnd() const noexcept {
    return record_->matcher().requireEnd();
}

// ---- The text.

Matcher& Matcher::region(unsigned start, unsigned end) {
    record_->run([=](auto& matcher, auto& status) { matcher.region(start, end, status); });
    return *this;
}

unsigned Matcher::regionStart() const noexcept {
    return static_cast<unsigned>(record_->matcher().regionStart());
}

unsigned Matcher::regionEnd() const noexcept {
    return static_cast<unsigned>(record_->matcher().regionEnd());
}

Matcher& Matcher::reset() {
    record_->reset();
    return *this;
}

Matcher& Matcher::reset(const stdx::ustring& text) {
    record_->reset(text);
    return *this;
}

stdx::ustring Matcher::replaceAll(const stdx::ustring& replacement) {
    return to_ustring(record_->run([&](auto& matcher, auto& status) {
        return replace(matcher, replacement, std::numeric_limits<unsigned>::max(), status);
    }));
}

stdx::ustring Matcher::replaceFirst(const stdx::ustring& replacement) {
    return to_ustring(record_->run(
        [&](auto& matcher, auto& status) { return replace(matcher, replacement, 1, status); }));
}

// ---- Limits.

void Matcher::setTimeLimit(std::chrono::milliseconds limit) {
    record_->set_time_limit(limit);
}

void Matcher::setStackLimit(unsigned bytes) {
    record_->run([=](auto& matcher, auto& status) {
        matcher.setStackLimit(static_cast<std::int32_t>(bytes), status);
    });
}

// ---- Without a matcher at hand.

bool matches_pattern(const stdx::ustring& pattern, const stdx::ustring& text, unsigned flags) {
    return Matcher(pattern, text, flags).matches();
}

stdx::ustring quote_pattern(const stdx::ustring& text) {
    constexpr std::u16string_view kQuoted = u"$&()*+-.?[\\]^{}";
    stdx::ustring pattern;
    pattern.reserve(text.size() * 2);
    for (const char16_t c : text) {
        if (kQuoted.find(c) != kQuoted.npos) pattern.push_back(u'\\');
        pattern.push_back(c);
    }
    return pattern;
}

} // namespace core
