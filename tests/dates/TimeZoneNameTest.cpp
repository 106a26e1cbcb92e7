#include <core/locale/Locale.h>
#include <core/numbers/TimeZone.h>

#include "numbers/TimeZoneImpl.h"

#include <gtest/gtest.h>

namespace {

using namespace core;

TEST(TimeZoneNames, AreTheLongOnesOfTheLocale) {
    const Locale english(u"en"), russian(u"ru");
    EXPECT_EQ(TimeZone(u"Europe/Moscow").displayName(english), u"Moscow Standard Time");
    EXPECT_EQ(TimeZone(u"Europe/Moscow").displayName(russian), u"Москва, стандартное время");
    EXPECT_EQ(TimeZone(u"GMT+3:30").displayName(english), u"GMT+03:30");
    const TimeZone stored(stored_time_zone(u"Europe/Atlantis", DateSpan::fromHours(1)).get());
    EXPECT_EQ(stored.displayName(english), u"Europe/Atlantis") << "ICU does not know it";
}

} // namespace
