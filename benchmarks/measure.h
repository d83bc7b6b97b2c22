#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bridge::bench {

double median(std::vector<double> values);

struct Comparison {
    double ours; // medians, in the unit that the measuring functions answer in
    double bare;
    double ratio; // the median of the ratios of each round
};

// Runs `bare` and `ours` in turn, so that whatever else the machine does hits both, and compares round by round.
Comparison compare(int rounds, const std::function<double()>& bare, const std::function<double()>& ours);

// One line: "GET /health, server CPU a request   1.12 x   (32.1 µs against 28.7 µs)   goal 1.25, limit 1.60"
void report(const std::string& what, const Comparison& comparison, const std::string& unit,
            const std::string& goal = "");

// Seconds that `action` takes.
double secondsFor(const std::function<void()>& action);

// This thread and the processes it makes from now on run on this core alone, where there are several.
void pinTo(int core);

} // namespace bridge::bench
