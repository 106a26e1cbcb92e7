// The component libraries that the operating-system process has open, by name, each with the number
// of times that it was asked for. One table for all logical processes.
#pragma once

#include <core/concurrency/Mutex.h>

#include <map>
#include <string>

namespace core {

class LibraryTable {
public:
    static LibraryTable& instance();

    // The handle of `<name>.so` from beside this library, with its count raised. On failure null,
    // and `error` holds the loader's words, which name the path.
    void* open(const std::string& name, std::string& error);
    // Lowers the count and closes the library at zero.
    void close(void* handle);

private:
    struct Library {
        void* handle;
        unsigned count;
    };

    Mutex mutex_; // held through opening and closing; a library may open others while it starts
    std::map<std::string, Library> libraries_; // by name in lower case
};

} // namespace core
