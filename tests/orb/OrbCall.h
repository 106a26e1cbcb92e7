// Calls of the tool, and files for them.
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace test {

// A file of the test; it goes with the object.
class ScratchFile {
public:
    explicit ScratchFile(std::string_view bytes = {}) {
        static int made = 0;
        path =
            testing::TempDir() + "orb_" + std::to_string(getpid()) + '_' + std::to_string(made++);
        std::ofstream(path, std::ios::binary) << bytes;
    }
    ~ScratchFile() { ::unlink(path.c_str()); }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    std::string bytes() const {
        std::ostringstream all;
        all << std::ifstream(path, std::ios::binary).rdbuf();
        return all.str();
    }

    std::string path;
};

struct OrbResult {
    int exit;
    std::string out, complaint;
    long peakKiB; // of memory
};

// With `piped`, standard input is a pipe from this file.
inline OrbResult call_orb(const std::vector<std::string>& words,
                          const ScratchFile* piped = nullptr) {
    const ScratchFile out, complaint;
    std::string line = piped ? "cat '" + piped->path + "' | " : std::string();
    line += "exec " ORB;
    for (const std::string& word : words) line += " '" + word + '\'';
    line += " >'" + out.path + "' 2>'" + complaint.path + '\'';
    const pid_t child = ::fork();
    if (child == 0) {
        ::execl("/bin/sh", "sh", "-c", line.c_str(), nullptr);
        ::_exit(127);
    }
    int status = 0;
    rusage usage{};
    ::wait4(child, &status, 0, &usage);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, out.bytes(), complaint.bytes(),
            usage.ru_maxrss};
}

} // namespace test
