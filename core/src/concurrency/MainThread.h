// The start of the library tells the threads which one is the main one.
#pragma once

namespace core {

void note_main_thread() noexcept;

} // namespace core
