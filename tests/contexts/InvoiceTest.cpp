// The example type, as a host uses it: by name, in both languages, stored and read again.
#include "Invoice.h"
#include "support/ProcessTest.h"

#include <core/component/Utf8.h>
#include <core/values/Call.h>
#include <core/values/ContextException.h>

namespace {

using namespace core;
using namespace stdx::literals;

class InvoiceExample : public test::ProcessTest {
protected:
    Value invoice = create_object<IType>(example::CLSID_InvoiceType)->createIValue();
};

TEST_F(InvoiceExample, CountsInBothLanguages) {
    EXPECT_EQ(call(invoice, u"Add", u"Paper", 12.5, 3), 37.5);
    EXPECT_EQ(call(invoice, u"добавить", u"Ink", 8), 8);
    set_property(invoice, u"СтавкаНалога", 20);
    EXPECT_EQ(get_property(invoice, u"Total"), 54.6);
    EXPECT_THROW(set_property(invoice, u"TaxRate", 101), ContextException);
    EXPECT_THROW(call(invoice, u"Add", u"Air", 1, 0), ContextException);
    Value price;
    EXPECT_EQ(call(invoice, u"Найти", u"INK", price), true);
    EXPECT_EQ(price, 8);
    EXPECT_EQ(call(invoice, u"Find", u"Air"), false);
    call(invoice, u"Pay", Date(2026, 11, 23));
    EXPECT_EQ(get_property(invoice, u"Оплачена"), true);
    EXPECT_EQ(get_property(invoice, u"Date"), Date(2026, 11, 23));
}

TEST_F(InvoiceExample, ComesBackFromItsStoredForm) {
    set_property(invoice, u"Number", u"A-17");
    call(invoice, u"Add", u"Paper", 2, 5);
    set_property(invoice, u"TaxRate", 7);
    stdx::ustring stored;
    invoice.toString(stored);
    Value back;
    GenericValue::fromString(stored, back);
    EXPECT_EQ(get_property(back, u"Номер"), u"A-17"_us);
    EXPECT_EQ(get_property(back, u"Total"), 10.7);
}

// A list of the first version, which had no rate.
TEST_F(InvoiceExample, ReadsWhatItsFirstVersionWrote) {
    const stdx::ustring type = to_string(example::CLSID_InvoiceType);
    Value back;
    GenericValue::fromString(
        u"{\"#\"," + type + u",{1,\"B-1\",20250102000000,\"Smith\",1,{1,{\"Ink\",8,2}}}}", back);
    EXPECT_EQ(get_property(back, u"Customer"), u"Smith"_us);
    EXPECT_EQ(get_property(back, u"Paid"), true);
    EXPECT_EQ(get_property(back, u"TaxRate"), 0);
    EXPECT_EQ(get_property(back, u"Total"), 16);
}

} // namespace
