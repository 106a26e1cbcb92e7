#pragma once

namespace core {

// The first day of the week in the system's locale: 1 Monday to 7 Sunday.
int first_day_of_week_of_system();

} // namespace core
