// The platform's date patterns, in English and Russian letters, as patterns of ICU.

#include <core/locale/DateFormat.h>

#include <algorithm>
#include <iterator>

namespace core {
namespace {

constexpr std::size_t kMostRun = 4;

struct LetterRow {
    char16_t english, russian;
    const char16_t* icu[kMostRun]; // by the length of the run; null: it has no meaning
};
constexpr LetterRow kLetters[] = {
    {u'd', u'д', {u"d", u"dd", u"EEE", u"EEEE"}},
    {u'M', u'М', {u"L", u"LL", u"LLL", u"LLLL"}},
    {u'y', u'г', {u"y", u"yy", u"yyyy", u"yyyy"}},
    {u'h', u'ч', {u"h", u"hh"}},
    {u'H', u'Ч', {u"H", u"HH"}},
    {u'm', u'м', {u"m", u"mm"}},
    {u's', u'с', {u"s", u"ss"}},
    {u't', u'в', {u"a", u"aa"}},
    {u'q', u'к', {u"q", u"qq"}},
};

const LetterRow* row_of(char16_t letter) noexcept {
    for (const LetterRow& row : kLetters)
        if (row.english == letter || row.russian == letter) return &row;
    return nullptr;
}

const char16_t* meaning_of(char16_t letter, std::size_t run) noexcept {
    const LetterRow* const row = row_of(letter);
    return row && run <= kMostRun ? row->icu[run - 1] : nullptr;
}

// Where a literal that began as text without quotes ends.
bool ends_text(char16_t c) noexcept {
    return c == u'\'' || c == u'"' || c == u'Z' || c == u'z' || row_of(c);
}

class Translation {
public:
    explicit Translation(std::u16string_view source) : rest_(source) {
        out_.reserve(static_cast<unsigned>(source.size() + source.size() / 2));
        while (!rest_.empty()) step();
    }

    stdx::ustring take() { return std::move(out_); }

private:
    void step() {
        const char16_t first = rest_.front();
        if (first == u'\'' || first == u'"') {
            take_quotation(first);
        } else if (row_of(first)) {
            const std::size_t run = std::min(rest_.find_first_not_of(first), rest_.size());
            if (const char16_t* const meaning = meaning_of(first, run))
                put_field(meaning, run);
            else
                put_literal(rest_.substr(0, run));
            rest_.remove_prefix(run);
        } else {
            const auto end = std::find_if(rest_.begin() + 1, rest_.end(), ends_text);
            const auto size = static_cast<std::size_t>(end - rest_.begin());
            put_literal(rest_.substr(0, size));
            rest_.remove_prefix(size);
        }
    }

    // A month beside a day stands in the form that goes with a day, elsewhere in that which stands
    // alone.
    void put_field(std::u16string_view meaning, std::size_t run) {
        const bool isMonth = meaning.front() == u'L';
        const bool isDay = meaning.front() == u'd';
        if (isMonth && dayLast_) {
            out_.append(static_cast<unsigned>(run), u'M');
        } else {
            if (isDay && monthRun_ != 0) std::fill_n(out_.begin() + monthAt_, monthRun_, u'M');
            if (isMonth) monthAt_ = out_.size();
            out_.append(meaning);
        }
        monthRun_ = isMonth && !dayLast_ ? run : 0;
        dayLast_ = isDay;
    }

    // A doubled quote, in front of a quotation and inside, is passed over.
    void take_quotation(char16_t quote) {
        rest_.remove_prefix(1);
        if (rest_.starts_with(quote)) {
            rest_.remove_prefix(1);
            return;
        }
        open_literal();
        while (!rest_.empty()) {
            const char16_t c = rest_.front();
            rest_.remove_prefix(1);
            if (c != quote) {
                put_quoted(c);
            } else {
                if (!rest_.starts_with(quote)) break;
                rest_.remove_prefix(1);
            }
        }
        out_.push_back(u'\'');
    }

    void put_literal(std::u16string_view text) {
        open_literal();
        out_.append(text);
        out_.push_back(u'\'');
    }

    // Literals side by side become one: two quotes between them would be an apostrophe.
    void open_literal() {
        if (!out_.empty() && std::as_const(out_).back() == u'\'')
            out_.pop_back();
        else
            out_.push_back(u'\'');
    }

    void put_quoted(char16_t c) {
        if (c == u'\'') out_.push_back(c);
        out_.push_back(c);
    }

    std::u16string_view rest_;
    stdx::ustring out_;
    bool dayLast_ = false;     // the last field was the day of a month
    std::size_t monthRun_ = 0; // not 0: the last field was a month, at `monthAt_` in `out_`
    unsigned monthAt_ = 0;
};

} // namespace

stdx::ustring DateFormat::parseOrbPattern(std::u16string_view pattern) {
    return Translation(pattern).take();
}

} // namespace core
