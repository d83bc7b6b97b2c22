#include "benchmarks/measure.h"

#include <algorithm>
#include <chrono>
#include <fmt/format.h>
#include <sched.h>
#include <unistd.h>

namespace bridge::bench {

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

Comparison compare(int rounds, const std::function<double()>& bare, const std::function<double()>& ours) {
    std::vector<double> bareValues, ourValues, ratios;
    for (int round = 0; round < rounds; ++round) {
        bareValues.push_back(bare());
        ourValues.push_back(ours());
        ratios.push_back(ourValues.back() / bareValues.back());
    }
    return {median(ourValues), median(bareValues), median(ratios)};
}

void report(const std::string& what, const Comparison& comparison, const std::string& unit, const std::string& goal) {
    fmt::print("{:<52} {:5.2f} x   ({:.1f} {} against {:.1f} {}){}\n", what, comparison.ratio, comparison.ours, unit,
               comparison.bare, unit, goal.empty() ? "" : "   " + goal);
    std::fflush(stdout);
}

double secondsFor(const std::function<void()>& action) {
    const auto started = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
}

void pinTo(int core) {
    if (core >= sysconf(_SC_NPROCESSORS_ONLN)) return;
    cpu_set_t cores;
    CPU_ZERO(&cores);
    CPU_SET(core, &cores);
    sched_setaffinity(0, sizeof cores, &cores);
}

} // namespace bridge::bench
