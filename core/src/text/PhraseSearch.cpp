#include <core/text/PhraseSearch.h>

#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/text/Characters.h>
#include <core/text/Split.h>

#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include <bitset>

namespace core {
namespace {

constexpr std::size_t kRecordedTerms = 32;

struct Terms {
    std::vector<stdx::ustring> texts;
    StringMatchMode mode;
    bool ignoreCase;
};

stdx::ustring lower(const stdx::ustring& text) {
    return to_lower(text.begin(), text.end());
}

Terms prepare_terms(std::vector<stdx::ustring> texts, StringMatchMode mode, bool ignoreCase) {
    std::erase_if(texts, [](const stdx::ustring& term) { return term.empty(); });
    if (ignoreCase)
        for (stdx::ustring& term : texts) term = lower(term);
    std::sort(texts.begin(), texts.end());
    texts.erase(std::unique(texts.begin(), texts.end()), texts.end());
    return {std::move(texts), mode, ignoreCase};
}

bool starts_word(const stdx::ustring& text, unsigned int at) {
    if (at == 0) return true;
    UChar32 before;
    int end = static_cast<int>(at);
    U16_PREV(text.c_str(), 0, end, before);
    return !u_isalnum(before) && (U_GET_GC_MASK(before) & U_GC_M_MASK) == 0;
}

} // namespace

class StringSearchState
    : public ObjectRoot
    , public SCOM_InternalClass<StringSearchState>
    , public IStringSearchState {
public:
    explicit StringSearchState(Terms terms) : terms_(std::move(terms)) {}

    static const InterfaceEntry* _GetEntries() {
        return interface_map<StringSearchState, IStringSearchState>();
    }

    void search(const stdx::ustring& text,
                std::vector<std::pair<unsigned, unsigned>>* ranges) override {
        found_.reset();
        const stdx::ustring searched = terms_.ignoreCase ? lower(text) : text;
        for (std::size_t i = 0; i < terms_.texts.size(); ++i) searchTerm(i, searched, ranges);
    }

    std::pair<StringSearchStatus, unsigned> getSearchStatus() override {
        const std::size_t count = terms_.texts.size();
        const auto status = found_.none()            ? StringSearchStatus::None
                            : found_.count() < count ? StringSearchStatus::Some
                                                     : StringSearchStatus::All;
        return {status, static_cast<unsigned>(count)};
    }

private:
    void searchTerm(std::size_t index, const stdx::ustring& text,
                    std::vector<std::pair<unsigned, unsigned>>* ranges) {
        const stdx::ustring& term = terms_.texts[index];
        for (unsigned int at = 0; (at = text.find(term, at)) != text.npos;) {
            if (terms_.mode == StringMatchMode::WordStart && !starts_word(text, at)) {
                ++at;
                continue;
            }
            found_.set(index); // throws beyond the last bit
            const unsigned int end = at + term.size();
            if (ranges) ranges->emplace_back(at, end);
            at = end;
        }
    }

    Terms terms_;
    std::bitset<kRecordedTerms> found_;
};

InterfacePtr<IStringSearchState> begin_string_search(const std::vector<stdx::ustring>& terms,
                                                     StringMatchMode mode, bool ignoreCase) {
    return make_object<StringSearchState>(prepare_terms(terms, mode, ignoreCase));
}

InterfacePtr<IStringSearchState> begin_string_search(const stdx::ustring& phrase,
                                                     StringMatchMode mode, bool ignoreCase) {
    return begin_string_search(string_tokenize(phrase, u" \t"), mode, ignoreCase);
}

} // namespace core
