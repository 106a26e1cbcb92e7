#include "support/ProcessTest.h"

#include <core/component/IllegalArgumentException.h>
#include <core/component/SCOM_Process.h>
#include <core/component/Utf8.h>
#include <core/text/StringTemplate.h>
#include <core/text/StringTemplateException.h>
#include <core/text/StringTokenizer.h>

#include <gmock/gmock.h>

namespace {

using namespace core;
using namespace stdx::literals;
using Error = StringTemplateException::Error;

class Template : public test::ProcessTest {
protected:
    using Texts = std::vector<stdx::ustring>;

    stdx::ustring filled(const stdx::ustring& format, const Texts& params) {
        template_->parse(format, static_cast<int>(params.size()));
        return template_->apply(params);
    }

    template <class Action> void expect_error(Error error, unsigned position, Action action) {
        try {
            action();
            ADD_FAILURE() << "accepted";
        } catch (const StringTemplateException& exception) {
            EXPECT_EQ(exception.error(), error);
            EXPECT_EQ(exception.position(), position);
            const bool shown = error == Error::WrongParam;
            EXPECT_EQ(to_utf8(exception.description()).ends_with(" " + std::to_string(position)),
                      shown);
            EXPECT_THROW(exception.object()->rethrow(), StringTemplateException);
        }
    }

    InterfacePtr<IStringTemplate> template_ = create_object<IStringTemplate>(CLSID_StringTemplate);
};

TEST_F(Template, PutsParametersIntoTheirGaps) {
    const struct {
        stdx::ustring format;
        Texts params;
        stdx::ustring result;
    } rows[] = {
        {u"", {}, u""},
        {u"plain (1) 2", {}, u"plain (1) 2"},
        {u"%1", {u"a"}, u"a"},
        {u"%2-%1-%2", {u"a", u"b"}, u"b-a-b"},
        {u"%1%2", {u"a", u"b"}, u"ab"},
        {u"%%1 %1%%", {u"a"}, u"%1 a%"},
        {u"%(1)2", {u"a"}, u"a2"},
        {u"%1(2)", {u"a"}, u"a(2)"},
        {u"(%1)", {u"a"}, u"(a)"},
        {u"%001x", {u"a"}, u"ax"},
        {u"%1", {u"%1%2"}, u"%1%2"},
        {u"%10%(1)0%2%3%4%5%6%7%8%9",
         {u"a", u"b", u"c", u"d", u"e", u"f", u"g", u"h", u"i", u"j"},
         u"ja0bcdefghi"},
        {u"%)1", {u"a"}, u")a"},
    };
    for (const auto& row : rows) EXPECT_EQ(filled(row.format, row.params), row.result);
}

TEST_F(Template, RefusesAWrongFormat) {
    const struct {
        stdx::ustring format;
        int count;
        Error error;
        unsigned position;
    } rows[] = {
        {u"%", 0, Error::WrongParam, 1},
        {u"ab%", 0, Error::WrongParam, 3},
        {u"%x", 1, Error::WrongParam, 1},
        {u"% 1", 1, Error::WrongParam, 1},
        {u"%)", 0, Error::WrongParam, 2},
        {u"%(", 1, Error::WrongParam, 2},
        {u"%(1", 1, Error::WrongParam, 3},
        {u"%()", 1, Error::WrongParam, 2},
        {u"%((1))", 1, Error::WrongParam, 2},
        {u"%(1%", 1, Error::WrongParam, 3},
        {u"%(1 )", 1, Error::WrongParam, 3},
        {u"%0", 2, Error::WrongParam, 2},
        {u"%(0)", 2, Error::WrongParam, 3},
        {u"%0x", 2, Error::WrongParam, 2},
        {u"%3", 2, Error::NotEnough, 0},
        {u"%1%(3)", 2, Error::NotEnough, 0},
        {u"%4294967297 %18446744073709551617", 1, Error::NotEnough, 0},
        {u"%1", 2, Error::TooMany, 0},
        {u"", 1, Error::TooMany, 0},
    };
    template_->parse(u"kept %1", 1);
    for (const auto& row : rows) {
        SCOPED_TRACE(to_utf8(row.format));
        expect_error(row.error, row.position, [&] { template_->parse(row.format, row.count); });
    }
    EXPECT_EQ(template_->apply({u"a"}), u"kept a"_us);
    EXPECT_THROW(template_->parse(u"", -1), IllegalArgumentException);
}

TEST_F(Template, TakesAsManyParametersAsItWasReadFor) {
    EXPECT_EQ(template_->apply({}), u""_us); // nothing was read
    template_->parse(u"%1 %2", 2);
    expect_error(Error::NotEnough, 0, [&] { template_->apply({u"a"}); });
    expect_error(Error::TooMany, 0, [&] { template_->apply({u"a", u"b", u"c"}); });
}

TEST_F(Template, AndTokenizerCanBePartOfAnotherObject) {
    const auto outer = create_object<IUnknown>(CLSID_StringTemplate);
    for (const _GUID& clsid : {CLSID_StringTemplate, CLSID_StringTokenizer}) {
        IUnknown* inner = nullptr;
        ASSERT_TRUE(process().createAggregated(clsid, outer.get(), &inner));
        inner->Release();
    }
}

} // namespace
