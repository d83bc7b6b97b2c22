#pragma once

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

namespace bridge {

// A rule with its instances, as the files of test data list them:
//   # Every day in January
//   RRULE:FREQ=...
//   DTSTART:19980101T090000
//   INSTANCES:19980101T090000,19980102T090000
struct RuleExample {
    std::string comment;
    std::string rule;
    std::string start;
    std::vector<std::string> instances;
    bool isInvalid = false; // "*** MALFORMEDDATA" in the place of instances
};

inline std::vector<RuleExample> readRuleExamples(const std::string& path) {
    std::ifstream file(path);
    std::vector<RuleExample> examples;
    RuleExample example;
    for (std::string line; std::getline(file, line);) {
        const auto after = [&](const char* name) { return line.substr(std::string(name).size()); };
        if (line.starts_with("#")) example.comment = line;
        if (line.starts_with("RRULE:")) example.rule = after("RRULE:");
        if (line.starts_with("DTSTART")) example.start = line;
        if (!line.starts_with("INSTANCES:")) continue;
        std::string rest = after("INSTANCES:");
        example.isInvalid = rest.find("***") != std::string::npos;
        while (!rest.empty() && !example.isInvalid) {
            const auto comma = std::min(rest.find(','), rest.size());
            example.instances.push_back(rest.substr(0, comma));
            rest.erase(0, comma + 1);
        }
        // libical names some rules that it can't follow, and so has nothing to say of them.
        if (line.find("UNIMPLEMENTED") == std::string::npos) examples.push_back(example);
        example = {};
    }
    return examples;
}

} // namespace bridge
