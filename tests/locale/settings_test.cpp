#include <core/component/Utf8.h>
#include <core/concurrency/Thread.h>
#include <core/locale/BoolFormat.h>
#include <core/locale/Collator.h>
#include <core/locale/ILangSettings.h>
#include <core/locale/WeekInfo.h>
#include <core/numbers/Date.h>
#include <core/numbers/TimeZone.h>

#include "support/ProcessTest.h"

#include <latch>
#include <thread>

namespace {

using namespace core;
using namespace stdx::literals;

using LocaleSettings = test::ProcessTest;

// What a new thread of the process finds.
template <class Ask> auto on_another_thread(Ask&& ask) {
    decltype(ask()) answer = ask();
    const InterfacePtr<Thread> thread = create_thread([&] { answer = ask(); });
    thread->start();
    thread->join();
    return answer;
}

TEST_F(LocaleSettings, AreAtFirstThoseOfTheSystem) {
    EXPECT_EQ(process().getLocale(), Locale::system());
    EXPECT_EQ(process().getResourceLocale(), Locale::system());
    EXPECT_EQ(process().getBoolFormat().locale(), Locale::system());
    EXPECT_EQ(process().getTimeZone(), TimeZone::system());
    EXPECT_EQ(process().getFirstDayOfWeek(),
              static_cast<int>(WeekInfo::of(Locale::system()).firstDayOfWeek()));
}

TEST_F(LocaleSettings, OfTheProcessHoldForItAlone) {
    process().setLocale(Locale(u"sv"));
    EXPECT_EQ(Locale(), Locale(u"sv"));
    EXPECT_EQ(process().getResourceLocale(), Locale::system());
    EXPECT_EQ(process().getBoolFormat().locale(), Locale::system());
    EXPECT_EQ(on_another_thread([] { return Locale(); }), Locale(u"sv"));
    {
        const test::ManualProcess other;
        EXPECT_EQ(Locale(), Locale::system());
    }
    std::thread([] { EXPECT_EQ(Locale(), Locale::system()); }).join(); // of no process
}

TEST_F(LocaleSettings, OfAThreadStandInFrontOfTheProcess) {
    Thread& thread = *current_thread();
    process().setResourceLocale(Locale(u"de"));
    process().setBoolFormat(BoolFormat(Locale(u"de")));
    process().setTimeZone(TimeZone(u"Europe/Berlin"));
    const auto find = [] {
        const Thread& current = *current_thread();
        return std::string(current.getResourceLocale().key()) + ' ' +
               std::string(std::string_view(to_utf8(current.getBoolFormat().format(true)))) + ' ' +
               std::string(std::string_view(to_utf8(current.getTimeZone().id())));
    };
    EXPECT_EQ(find(), "de Ja Europe/Berlin");
    thread.setResourceLocale(Locale(u"ru"));
    thread.setBoolFormat(BoolFormat(Locale(u"ru")));
    thread.setTimeZone(TimeZone(u"Asia/Tokyo"));
    EXPECT_EQ(find(), "ru Да Asia/Tokyo");
    EXPECT_EQ(resource_locale(), Locale(u"ru"));
    const InterfacePtr<Thread> other =
        create_thread([&] { EXPECT_EQ(find(), "de Ja Europe/Berlin") << "of another thread"; });
    other->start();
    other->join();
    thread.resetResourceLocale();
    thread.resetBoolFormat();
    thread.resetTimeZone();
    EXPECT_EQ(find(), "de Ja Europe/Berlin");
}

TEST_F(LocaleSettings, OfTheTimeZoneShiftTheDateOfTheThread) {
    current_thread()->setTimeZone(TimeZone(u"GMT+14:00"));
    const Date here = current_thread_date();
    current_thread()->setTimeZone(TimeZone(u"GMT-11:00"));
    const auto hours = (here.ticks() - current_thread_date().ticks() + 36'000'000 / 2) / 36'000'000;
    EXPECT_EQ(hours, 25u);
}

TEST_F(LocaleSettings, SayWhichLanguagesATextIsLookedForIn) {
    process().setResourceLocale(Locale(u"ru_RU"));
    const auto settings = create_object<ILangSettings>(CLSID_SimpleLangSettings);
    ASSERT_TRUE(settings);
    EXPECT_EQ(settings, create_object<ILangSettings>(CLSID_SimpleLangSettings));
    EXPECT_EQ(settings->getMainLanguage(), u"ru_RU"_us);
    EXPECT_EQ(settings->getSecondLanguage(), u"en"_us);
    process().setTermLanguage(1);
    EXPECT_EQ(settings->getLanguageIndex(), 1);
    EXPECT_EQ(settings->getSecondLanguage(), u"ru"_us);
    EXPECT_TRUE(settings->getFurtherLanguages().empty());
}

// Nothing of these locales was asked for before.
TEST(LocaleRecords, AreMadeOnceWhenManyThreadsAskAtFirst) {
    constexpr int kThreads = 8;
    const char16_t* const names[] = {u"fi_FI", u"hu_HU", u"ko_KR"};
    const CharacterOrder* orders[kThreads][3] = {};
    std::latch begin(kThreads);
    std::vector<std::thread> threads;
    for (int t = 0; t != kThreads; ++t)
        threads.emplace_back([&, t] {
            begin.arrive_and_wait();
            for (int i = 0; i != 3; ++i) {
                const int n = (i + t) % 3;
                const Locale locale(names[n]);
                const Collator collator(locale);
                orders[t][n] = CharacterOrderPtr(collator).get();
                EXPECT_LT(collator.compare(u"a", u"b"), 0);
                EXPECT_TRUE(WeekInfo::of(locale).isWeekend(WeekDay::Sunday));
                EXPECT_FALSE(BoolFormat(locale).format(true).empty());
            }
        });
    for (std::thread& thread : threads) thread.join();
    for (const auto& row : orders)
        for (int n = 0; n != 3; ++n) EXPECT_EQ(row[n], orders[0][n]);
}

// A setting may change while other threads read it.
TEST_F(LocaleSettings, AreSafeToReadWhileTheyChange) {
    std::atomic<bool> done = false;
    const InterfacePtr<Thread> reader = create_thread([&] {
        while (!done) {
            const std::string key = Locale().key();
            EXPECT_TRUE(key == "ru" || key == "en") << key;
            current_thread()->getTimeZone();
        }
    });
    process().setLocale(Locale(u"en"));
    reader->start();
    for (int i = 0; i != 2'000; ++i) {
        process().setLocale(Locale(i % 2 ? u"ru" : u"en"));
        process().setTimeZone(i % 2 ? TimeZone::utc() : TimeZone::system());
    }
    done = true;
    reader->join();
}

} // namespace
