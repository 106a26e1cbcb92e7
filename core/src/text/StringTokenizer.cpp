// The tokenizer: one pass with an open quotation as its only memory beside the token itself.
#include <core/text/StringTokenizer.h>

#include <core/component/ClassDescriptor.h>
#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/text/Characters.h>
#include <core/text/StringTokenizerException.h>

namespace core {
namespace {

using Error = StringTokenizerException::Error;

class LineReader {
public:
    LineReader(const stdx::ustring& delimiters, const stdx::ustring& quotes)
        : delimiters_(delimiters), quotes_(quotes) {}

    std::vector<stdx::ustring> read(std::u16string_view line) {
        for (; at_ < line.size(); ++at_) take(line[at_]);
        if (quote_ != 0 && !closed_) fail(Error::MissedCloseQuote, quotedAt_);
        endToken();
        return std::move(tokens_);
    }

private:
    [[noreturn]] static void fail(Error error, std::size_t position) {
        throw StringTokenizerException(error, static_cast<unsigned int>(position));
    }

    // White space comes first: it is neither quote nor delimiter, whatever the caller names.
    void take(char16_t c) {
        if (is_space(c)) {
            if (!closed_ && (quote_ != 0 || !token_.empty())) token_.push_back(c);
        } else if (quotes_.contains(c)) {
            takeQuote(c);
        } else if (delimiters_.contains(c)) {
            if (quote_ != 0 && !closed_)
                token_.push_back(c);
            else
                endToken();
        } else {
            if (closed_) fail(Error::MissedDelimiter, at_);
            token_.push_back(c);
        }
    }

    void takeQuote(char16_t c) {
        if (quote_ == 0) {
            if (!token_.empty()) fail(Error::UnexpectedQuotation, at_);
            quote_ = c;
            quotedAt_ = at_;
        } else if (c == quote_ && !closed_) {
            closed_ = true;
        } else { // another quote, or the second of a doubled one: the quotation goes on
            token_.push_back(c);
            closed_ = false;
        }
    }

    void endToken() {
        if (quote_ == 0)
            while (!token_.empty() && is_space(std::as_const(token_).back())) token_.pop_back();
        tokens_.push_back(std::move(token_));
        token_ = {};
        quote_ = 0;
        closed_ = false;
    }

    const stdx::ustring& delimiters_;
    const stdx::ustring& quotes_;
    std::size_t at_ = 0;
    stdx::ustring token_;
    char16_t quote_ = 0;  // that the token began with; 0 if it is not quoted
    bool closed_ = false; // the quotation has ended, unless the quote is doubled
    std::size_t quotedAt_ = 0;
    std::vector<stdx::ustring> tokens_;
};

} // namespace

class StringTokenizer
    : public ObjectRoot
    , public SCOM_Class<StringTokenizer, &CLSID_StringTokenizer>
    , public IStringTokenizer {
public:
    static constexpr bool kAggregatable = true;
    static const InterfaceEntry* _GetEntries() {
        return interface_map<StringTokenizer, IStringTokenizer>();
    }

    void tokenize(const stdx::ustring& line, const stdx::ustring& delimiters,
                  const stdx::ustring& quotes) override {
        tokens_.clear();
        tokens_ = LineReader(delimiters, quotes).read(line);
    }
    const std::vector<stdx::ustring>& getTokens() override { return tokens_; }

private:
    std::vector<stdx::ustring> tokens_;
};

} // namespace core

ORBCORE_REGISTER(core::StringTokenizer);
