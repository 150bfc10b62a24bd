// What benchmarks measure with.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#ifdef _WIN32
#include <windows.h>

#include <psapi.h>
#endif

namespace bench {

// Wall time of one step, in seconds.
template <typename Step>
double seconds(Step&& step) {
    const auto start = std::chrono::steady_clock::now();
    std::forward<Step>(step)();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// The upper median of at least one value.
inline double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// What this process holds in memory now, in KB.
inline long residentKb() {
#ifdef _WIN32 // asked through the system: Wine opens files by a process of its own, which /proc/self would be there
    PROCESS_MEMORY_COUNTERS counters{};
    counters.cb = sizeof counters;
    K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return static_cast<long>(counters.WorkingSetSize / 1024);
#else
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmRSS:")) {
            return std::atol(line.c_str() + 6);
        }
    }
    return 0;
#endif
}

} // namespace bench
