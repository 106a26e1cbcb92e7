// The formats of the calling thread; on a thread that is none of ours those of the system.
#pragma once

#include <core/concurrency/Thread.h>
#include <core/locale/BoolFormat.h>
#include <core/locale/DateFormat.h>
#include <core/locale/NumericFormat.h>

namespace core {

inline NumericFormat numeric_format() {
    const Thread* const thread = current_thread();
    return thread ? thread->getNumericFormat() : NumericFormat(Locale::system());
}
inline DateFormat date_format() {
    const Thread* const thread = current_thread();
    return thread ? thread->getDateFormat() : DateFormat(Locale::system());
}
inline BoolFormat bool_format() {
    const Thread* const thread = current_thread();
    return thread ? thread->getBoolFormat() : BoolFormat(Locale::system());
}

inline stdx::ustring format_date(const Date& date, DateFormat::Pattern pattern) {
    const DateFormat format = date_format();
    return format.format(date, format.getPattern(pattern));
}

} // namespace core
