#include "support/ProcessTest.h"

#include <core/files/URL.h>
#include <core/files/URLEncoder.h>
#include <core/text/Converter.h>

using core::Converter;
using core::URL;
using core::URLEncoder;

TEST(UrlEncoding, GoesThroughTheBytesOfAnEncoding) {
    const Converter& utf8 = Converter::utf8();
    const Converter cyrillic(u"windows-1251");
    const stdx::ustring text = u"a b/ж\U0001F600-._~%";
    EXPECT_EQ(URLEncoder::encode(text, utf8), u"a%20b%2F%D0%B6%F0%9F%98%80-._~%25");
    EXPECT_EQ(URLEncoder::encodeURL(text, utf8), u"a%20b/%D0%B6%F0%9F%98%80-._~%");
    EXPECT_EQ(URLEncoder::encode(u"жж1", cyrillic), u"%E6%E61");
    EXPECT_EQ(URLEncoder::decode(URLEncoder::encode(text, utf8), utf8), text);
    EXPECT_EQ(URLEncoder::decode(u"%E6%e61", cyrillic), u"жж1");
    for (const char16_t* const plain : {u"%zz", u"%", u"%4", u"100%", u""})
        EXPECT_EQ(URLEncoder::decode(plain, utf8), plain);
    EXPECT_THROW(URLEncoder::decode(u"a%D0b", utf8), core::ConverterException);
}

class UrlHosts : public test::ProcessTest {};

TEST_F(UrlHosts, GoToTheNameSystemAndBack) {
    const URL url(u"file://u@пример.рф:80/путь?п", false);
    EXPECT_EQ(url.toIDNA().text(), u"file://u@xn--e1afmkfd.xn--p1ai:80/путь?п");
    EXPECT_EQ(url.toIDNA().fromIDNA(), url);
    for (const char16_t* const same : {u"file:///a", u"file://[::1]:80/a", u"other://пример/"})
        EXPECT_EQ(URL(same, false).toIDNA().text(), same);

    stdx::ustring name = u"unchanged";
    EXPECT_FALSE(core::idna_to_ASCII(stdx::ustring(70, u'ж'), name)); // too long a label
    EXPECT_EQ(name, u"unchanged");
    EXPECT_TRUE(core::idna_to_ASCII(u"bücher.de", name));
    EXPECT_EQ(name, u"xn--bcher-kva.de");
    EXPECT_TRUE(core::idna_to_Unicode(name, name));
    EXPECT_EQ(name, u"bücher.de");
    EXPECT_TRUE(core::looksLikeIPv6(u"::1") && !core::looksLikeIPv6(u"") &&
                !core::looksLikeIPv6(u"1.2.3.4"));
}
