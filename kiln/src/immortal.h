// Objects of the library that others may use until the very end of the process.
#pragma once

namespace kiln {

// A static object that is ready before any code runs and is never destroyed.
template <class T> union Immortal {
    constexpr Immortal() : object() {}
    constexpr ~Immortal() {}

    T object;
};

} // namespace kiln
