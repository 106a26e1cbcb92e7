// Steps of destructors that may fail in reading a stored list.
#pragma once

#include <core/component/TechLog.h>

#include <exception>

namespace core {

// What is thrown goes to the technical log and no further.
template <class Step> void log_in_destructor(Step step) noexcept {
    try {
        try {
            step();
        } catch (const Exception& exception) {
            write_exception_to_techlog(exception, u"passing the rest of an attachment");
        }
    } catch (...) {
        // Nobody is left to be told.
    }
}

} // namespace core
