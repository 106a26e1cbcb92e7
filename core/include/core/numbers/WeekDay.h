// The days of the week, numbered as every interface of the library counts them.
#pragma once

#include <cstdint>

namespace core {

enum class WeekDay : std::int32_t {
    Monday = 1,
    Tuesday,
    Wednesday,
    Thursday,
    Friday,
    Saturday,
    Sunday,
};

} // namespace core
