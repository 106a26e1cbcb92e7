#include "LibraryTable.h"

#include <core/component/SCOM_Process.h>
#include <core/component/Utf8.h>

#include "platform/OwnLibrary.h"

#include <algorithm>
#include <memory>
#include <mutex>

#include <dlfcn.h>

namespace core {
namespace {

using LibraryMain = void (*)(void* handle, int reason, void* reserved);

constexpr int kDetach = 0;
constexpr int kAttach = 1;

std::string lower_case(std::string name) {
    for (char& c : name)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
    return name;
}

void call_library_main(void* handle, int reason) {
    if (const auto main = reinterpret_cast<LibraryMain>(dlsym(handle, "DllMain")))
        main(handle, reason, nullptr);
}

struct Closer {
    void operator()(void* handle) const noexcept { dlclose(handle); }
};

} // namespace

LibraryTable& LibraryTable::instance() {
    static auto& table = *new LibraryTable; // processes may end after the library's own statics
    return table;
}

void* LibraryTable::open(const std::string& name, std::string& error) {
    const std::lock_guard guard(mutex_);
    const std::string key = lower_case(name);
    if (const auto found = libraries_.find(key); found != libraries_.end()) {
        ++found->second.count;
        return found->second.handle;
    }
    const stdx::string file = to_utf8(get_lib_file_name(name.c_str()));
    const std::string path = own_library_directory() + file.c_str();
    std::unique_ptr<void, Closer> library(dlopen(path.c_str(), RTLD_LAZY | RTLD_GLOBAL));
    if (!library) {
        error = dlerror();
        return nullptr;
    }
    call_library_main(library.get(), kAttach);
    libraries_.emplace(key, Library{library.get(), 1});
    return library.release();
}

void LibraryTable::close(void* handle) {
    const std::lock_guard guard(mutex_);
    const auto found = std::find_if(libraries_.begin(), libraries_.end(),
                                    [&](const auto& row) { return row.second.handle == handle; });
    if (found == libraries_.end() || --found->second.count != 0) return;
    libraries_.erase(found);
    const std::unique_ptr<void, Closer> library(handle);
    call_library_main(handle, kDetach);
}

} // namespace core
