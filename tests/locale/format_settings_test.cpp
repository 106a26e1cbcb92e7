// Formats as settings, from stored descriptions, and in many threads.

#include <core/component/Utf8.h>
#include <core/concurrency/Thread.h>
#include <core/locale/DateFormat.h>
#include <core/locale/NumericFormat.h>
#include <core/locale/OrbLocaleInfo.h>
#include <core/numbers/Date.h>
#include <core/numbers/Numeric.h>

#include "support/ProcessTest.h"

#include <latch>
#include <thread>

namespace {

using namespace core;
using namespace core::literals;
using namespace stdx::literals;

std::string utf8(std::u16string_view text) {
    return std::string(std::string_view(to_utf8(text)));
}

using FormatSettings = test::ProcessTest;

TEST_F(FormatSettings, AreAtFirstThoseOfTheSystem) {
    EXPECT_EQ(process().getNumericFormat().locale(), Locale::system());
    EXPECT_EQ(process().getDateFormat().locale(), Locale::system());
}

TEST_F(FormatSettings, OfAThreadStandInFrontOfTheProcess) {
    Thread& thread = *current_thread();
    process().setNumericFormat(NumericFormat(Locale(u"de")));
    process().setDateFormat(DateFormat(Locale(u"de")));
    const auto find = [] {
        const DateFormat dates = current_thread()->getDateFormat();
        return utf8(current_thread()->getNumericFormat().format(1234.5_num)) + ' ' +
               utf8(dates.format(Date(2009, 3, 5), dates.getShortDatePattern()));
    };
    EXPECT_EQ(find(), "1.234,5 05.03.2009");
    NumericFormat numbers = thread.getNumericFormat();
    numbers.setWin32Grouping(u"");
    DateFormat dates = thread.getDateFormat();
    dates.setShortDatePattern(u"y");
    EXPECT_EQ(find(), "1.234,5 05.03.2009") << "a copy is handed out";
    thread.setNumericFormat(numbers);
    thread.setDateFormat(dates);
    numbers.setDecimalSeparator(u'!');
    EXPECT_EQ(find(), "1234,5 9") << "a copy is taken";
    const InterfacePtr<Thread> other =
        create_thread([&] { EXPECT_EQ(find(), "1.234,5 05.03.2009") << "of another thread"; });
    other->start();
    other->join();
    thread.resetNumericFormat();
    thread.resetDateFormat();
    EXPECT_EQ(find(), "1.234,5 05.03.2009");
}

TEST(OrbLocaleInfoFormats, TakeWhatIsSetAndTheLocaleElse) {
    const auto written = [](const OrbLocaleInfo& info) {
        const DateFormat dates = info.createDateFormat();
        return utf8(info.createNumericFormat().format(-1234567.5_num)) + ' ' +
               utf8(dates.format(Date(2009, 3, 5, 6, 7, 8), dates.getShortDateTimePattern()));
    };
    EXPECT_EQ(written(OrbLocaleInfo(u"de", 0, 0, u"", NegativeOrder::Locale, u"", u"", u"", u"")),
              "-1.234.567,5 05.03.2009 06:07:08");
    EXPECT_EQ(written(OrbLocaleInfo(u"de", u'/', u'_', u"3;2", NegativeOrder::Parentheses, u"", u"",
                                    u"д MMM гг", u"H'h'")),
              "(12_34_567/5) 5 März 09 6h");
}

TEST(SharedFormats, ServeManyThreadsAtOnce) {
    constexpr int kThreads = 8;
    const char16_t* const names[] = {u"ru_UA", u"hi_IN", u"ar_EG"};
    const Date date(2009, 3, 5, 6, 7, 8);
    std::latch begin(kThreads);
    std::vector<std::string> texts(kThreads);
    std::vector<std::thread> threads;
    for (int t = 0; t != kThreads; ++t)
        threads.emplace_back([&, t] {
            begin.arrive_and_wait();
            for (int i = 0; i != 60; ++i) {
                const Locale locale(names[(i + t) % 3]);
                NumericFormat numbers(locale);
                DateFormat dates(locale);
                std::string text = utf8(numbers.format(1234567.25_num, 10, 1));
                text += utf8(dates.format(date, dates.getLongDateTimePattern()));
                text += utf8(dates.format(date, i % 2 ? u"yyyy G" : u"G y")).size() > 5 ? "+" : "-";
                Numeric number;
                const stdx::ustring openEnded = u"5"_us + numbers.getDecimalSeparator(); // for ICU
                EXPECT_TRUE(numbers.parse(openEnded, number) && number == 5);
                const auto& pattern = dates.getShortDateTimePattern();
                Date back;
                EXPECT_TRUE(dates.parse(dates.format(date, pattern), pattern, back));
                EXPECT_EQ(back, date);
                numbers.setDecimalSeparator(u'!');
                dates.setTimePattern(u"H");
                if (i < 3) {
                    const auto place = static_cast<std::size_t>(t);
                    texts[place] = (i + t) % 3 == 0 ? text : texts[place];
                }
            }
        });
    for (std::thread& thread : threads) thread.join();
    for (const std::string& text : texts) EXPECT_EQ(text, texts[0]);
    EXPECT_NE(texts[0], "");
}

} // namespace
