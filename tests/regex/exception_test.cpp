#include <core/component/Messages.h>
#include <core/component/SCOM_Process.h>
#include <core/component/Utf8.h>
#include <core/text/Matcher.h>
#include <core/text/RegexException.h>

#include "support/MessageLanguage.h"
#include "support/ProcessTest.h"

namespace {

using namespace stdx::literals;
using core::RegexException;

using RegexExceptionTest = test::ProcessTest;

TEST_F(RegexExceptionTest, IsKeptByItsTwinWithAllItsFields) {
    core::InterfacePtr<core::IExceptionObject> kept;
    try {
        core::Matcher bad(u"(unfinished");
    } catch (const core::Exception& exception) {
        kept = exception.object();
    }
    ASSERT_TRUE(kept);
    try {
        kept->rethrow();
    } catch (const RegexException& exception) {
        EXPECT_EQ(exception.status(), 0x10306);
        EXPECT_EQ(exception.pattern(), u"(unfinished"_us);
        EXPECT_FALSE(exception.creationStackTrace().empty());
    }
}

TEST_F(RegexExceptionTest, SpeaksTheLanguageOfMessages) {
    const auto text_in = [](const char16_t* locale) {
        const test::MessageLanguage language(locale);
        return RegexException(8, u"%s").description();
    };
    const stdx::ustring english = text_in(u"en"), russian = text_in(u"ru");
    EXPECT_EQ(core::to_utf8(english),
              "Error U_INDEX_OUTOFBOUNDS_ERROR (0x8) in the regular expression \"%s\""_s);
    EXPECT_EQ(core::to_utf8(russian),
              "Ошибка U_INDEX_OUTOFBOUNDS_ERROR (0x8) в регулярном выражении «%s»"_s);
}

TEST_F(RegexExceptionTest, TakesAnyNumberForAStatus) {
    for (const int status : {0, -1, 0x7fffffff, static_cast<int>(0x80000000)})
        EXPECT_EQ(RegexException(status, u"p").status(), status);
    EXPECT_EQ(RegexException().status(), 0);
}

} // namespace
