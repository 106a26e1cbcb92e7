// The process in which a benchmark makes objects by their classes and opens files.
#pragma once

#include <core/component/SCOM_Process.h>
#include <core/component/Utf8.h>
#include <core/concurrency/Thread.h>
#include <core/files/FileSystemFunctions.h>
#include <core/runtime/CoreInit.h>
#include <core/runtime/Process.h>

#include <filesystem>
#include <string>

#include <unistd.h>

namespace bench {

// The process stays until the program ends.
inline void enter_process() {
    [[maybe_unused]] static const bool entered = [] {
        CoreInit();
        auto* const host = new core::Process;
        host->construct(nullptr);
        host->init(nullptr);
        return true;
    }();
}

// A name in the directory of temporary files; the file of this name goes with the object.
class ScratchName {
public:
    ScratchName()
        : path((std::filesystem::temp_directory_path() / ("bench_" + std::to_string(::getpid())))
                   .string()) {
        enter_process();
    }
    ~ScratchName() { std::filesystem::remove(path); }
    ScratchName(const ScratchName&) = delete;
    ScratchName& operator=(const ScratchName&) = delete;

    core::URL url() const { return core::file_url(core::from_utf8(path)); }
    double mebibytes() const {
        return static_cast<double>(std::filesystem::file_size(path)) / 0x100000;
    }

    const std::string path;
};

} // namespace bench
