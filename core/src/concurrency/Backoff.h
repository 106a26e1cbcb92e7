// How all spin loops of the locks wait: at first by pausing the processor, then by giving it up,
// at last by sleeping.
#pragma once

namespace core {

// Waits a little, by the value of `step`, and adds one to it; the caller starts at 0. From step 26
// on a call lasts 10 milliseconds.
void back_off(unsigned int& step) noexcept;

} // namespace core
