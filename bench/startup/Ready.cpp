#include "bench/startup/Ready.h"

#include <chrono>
#include <fstream>
#include <iostream>
#include <string>

namespace vx::bench {

void reportReady() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    // Not getrusage: its maximum begins with that of the process which started this one.
    std::ifstream status("/proc/self/status");
    std::string word;
    long peak = 0; // KiB
    while (status >> word)
        if (word == "VmHWM:")
            status >> peak;
    std::cout << std::chrono::nanoseconds(now).count() << ' ' << peak << std::endl;
}

} // namespace vx::bench
