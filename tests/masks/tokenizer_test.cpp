#include "support/ProcessTest.h"

#include <core/component/SCOM_Process.h>
#include <core/component/Utf8.h>
#include <core/text/StringTokenizer.h>
#include <core/text/StringTokenizerException.h>

#include <gmock/gmock.h>

namespace {

using namespace core;
using Error = StringTokenizerException::Error;

class Tokenizer : public test::ProcessTest {
protected:
    using Texts = std::vector<stdx::ustring>;

    const Texts& tokens(const stdx::ustring& line, const stdx::ustring& delimiters = u",;",
                        const stdx::ustring& quotes = u"\"'") {
        tokenizer_->tokenize(line, delimiters, quotes);
        return tokenizer_->getTokens();
    }

    InterfacePtr<IStringTokenizer> tokenizer_ =
        create_object<IStringTokenizer>(CLSID_StringTokenizer);
};

TEST_F(Tokenizer, TakesALineApart) {
    EXPECT_TRUE(tokenizer_->getTokens().empty());
    const struct {
        stdx::ustring line;
        Texts tokens;
    } rows[] = {
        {u"", {u""}},
        {u"  ", {u""}},
        {u"a", {u"a"}},
        {u"a,b;c", {u"a", u"b", u"c"}},
        {u",", {u"", u""}},
        {u"a,,b,", {u"a", u"", u"b", u""}},
        {u"  a b \t,\u00A0c ", {u"a b", u"c"}},
        {u"a, \"b, c\"", {u"a", u"b, c"}},
        {u"\" a \" , b", {u" a ", u"b"}},
        {u"\"\"", {u""}},
        {u"\"say \"\"yes\"\"\"", {u"say \"yes\""}},
        {u"\"\"\"\"", {u"\""}},
        {u"\"it's\",'6\"'", {u"it's", u"6\""}},
        // White space is looked over between two quotes, so this is a doubled one too.
        {u"\"a\" \"b\"", {u"a\"b"}},
        // Another quote behind a closed quotation opens it again.
        {u"\"a\"'b\"", {u"a'b"}},
    };
    for (const auto& row : rows) EXPECT_EQ(tokens(row.line), row.tokens) << to_utf8(row.line);
    EXPECT_EQ(tokens(u"a b\tc", u" \t"), Texts{u"a b\tc"}) << "white space does not delimit";
    EXPECT_EQ(tokens(u"\"a\",b", u",", u""), (Texts{u"\"a\"", u"b"})) << "without quotes";
    EXPECT_EQ(tokens(u"a,b", u"", u""), Texts{u"a,b"}) << "without delimiters";
}

TEST_F(Tokenizer, RefusesAWrongQuotationWithItsPosition) {
    const struct {
        stdx::ustring line;
        Error error;
        unsigned position;
    } rows[] = {
        {u"\"a\"b", Error::MissedDelimiter, 3},     {u"x, 'a'  b", Error::MissedDelimiter, 8},
        {u"a\"b\"", Error::UnexpectedQuotation, 1}, {u"a, b'", Error::UnexpectedQuotation, 4},
        {u"\"a", Error::MissedCloseQuote, 0},       {u"a, 'b\"", Error::MissedCloseQuote, 3},
        {u"'a'\"", Error::MissedCloseQuote, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(to_utf8(row.line));
        tokens(u"before");
        try {
            tokens(row.line);
            ADD_FAILURE() << "accepted";
        } catch (const StringTokenizerException& exception) {
            EXPECT_EQ(exception.error(), row.error);
            EXPECT_EQ(exception.position(), row.position);
            EXPECT_THAT(to_utf8(exception.description()).c_str(),
                        testing::EndsWith(" " + std::to_string(row.position)));
            EXPECT_THROW(exception.object()->rethrow(), StringTokenizerException);
        }
        EXPECT_TRUE(tokenizer_->getTokens().empty());
    }
}

} // namespace
