// How much memory a stretch of a benchmark takes at its peak, as the system counts it.
#pragma once

#include <cstring>
#include <fstream>
#include <string>

namespace bench {

// Counts from its construction on, beyond what the process had then.
class PeakMemory {
public:
    PeakMemory() {
        std::ofstream("/proc/self/clear_refs") << '5'; // the peak is the present size from now on
        before_ = kib("VmRSS:");
    }
    double mebibytes() const { return (kib("VmHWM:") - before_) / 1024; }

private:
    static double kib(const char* name) {
        std::ifstream status("/proc/self/status");
        for (std::string line; std::getline(status, line);)
            if (line.starts_with(name)) return std::stod(line.substr(std::strlen(name)));
        return 0;
    }

    double before_;
};

} // namespace bench
