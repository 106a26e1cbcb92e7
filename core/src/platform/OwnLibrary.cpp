#include "OwnLibrary.h"

#include <dlfcn.h>

namespace core {

const std::string& own_library_directory() {
    static const auto& directory = *new std::string([] {
        Dl_info info = {};
        std::string file;
        if (dladdr(reinterpret_cast<const void*>(&own_library_directory), &info) && info.dli_fname)
            file = info.dli_fname;
        const std::size_t slash = file.rfind('/');
        return slash == file.npos ? std::string("./") : file.substr(0, slash + 1);
    }());
    return directory;
}

} // namespace core
