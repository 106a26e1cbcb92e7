// The settings of a thread whose types stand above it.

#include <core/concurrency/Thread.h>

#include <core/component/SCOM_Process.h>
#include <core/locale/BoolFormat.h>
#include <core/locale/DateFormat.h>
#include <core/locale/NumericFormat.h>
#include <core/numbers/Date.h>
#include <core/numbers/TimeZone.h>

#include "concurrency/ThreadSetting.h"

namespace core {

void Thread::setResourceLocale(const Locale& locale) {
    set_setting(resourceLocale_, locale);
}

Locale Thread::getResourceLocale() const {
    if (const Locale* const own = setting_in<Locale>(resourceLocale_)) return *own;
    SCOM_Process* const process = current_process();
    return process ? process->getResourceLocale() : Locale::system();
}

void Thread::resetResourceLocale() noexcept {
    resourceLocale_.reset();
}

void Thread::setNumericFormat(const NumericFormat& format) {
    set_setting(numericFormat_, format);
}

NumericFormat Thread::getNumericFormat() const {
    if (const NumericFormat* const own = setting_in<NumericFormat>(numericFormat_)) return *own;
    SCOM_Process* const process = current_process();
    return process ? process->getNumericFormat() : NumericFormat(Locale::system());
}

void Thread::resetNumericFormat() noexcept {
    numericFormat_.reset();
}

void Thread::setDateFormat(const DateFormat& format) {
    set_setting(dateFormat_, format);
}

DateFormat Thread::getDateFormat() const {
    if (const DateFormat* const own = setting_in<DateFormat>(dateFormat_)) return *own;
    SCOM_Process* const process = current_process();
    return process ? process->getDateFormat() : DateFormat(Locale::system());
}

void Thread::resetDateFormat() noexcept {
    dateFormat_.reset();
}

void Thread::setBoolFormat(const BoolFormat& format) {
    set_setting(boolFormat_, format);
}

BoolFormat Thread::getBoolFormat() const {
    if (const BoolFormat* const own = setting_in<BoolFormat>(boolFormat_)) return *own;
    SCOM_Process* const process = current_process();
    return process ? process->getBoolFormat() : BoolFormat(Locale::system());
}

void Thread::resetBoolFormat() noexcept {
    boolFormat_.reset();
}

void Thread::setTimeZone(const TimeZone& zone) {
    set_setting(timeZone_, zone);
}

TimeZone Thread::getTimeZone() const {
    if (const TimeZone* const own = setting_in<TimeZone>(timeZone_)) return *own;
    SCOM_Process* const process = current_process();
    return process ? process->getTimeZone() : TimeZone::system();
}

void Thread::resetTimeZone() noexcept {
    timeZone_.reset();
}

Locale resource_locale() {
    const Thread* const thread = current_thread();
    return thread ? thread->getResourceLocale() : Locale::system();
}

Date current_thread_date() {
    const Thread* const thread = current_thread();
    const TimeZone zone = thread ? thread->getTimeZone() : TimeZone::system();
    return zone.toLocalTime(Date::getCurrentDateUTC());
}

} // namespace core
