#pragma once

#include "base/date.h"
#include "tests/support/public_data.h"

#include <sstream>
#include <string>
#include <vector>

namespace bridge {

// A rule and when it happens. Times without a zone stand for UTC.
struct RecurrenceCase {
    std::string title;
    std::string rule;
    std::string start; // 19970902, 19970902T090000 or 19970902T090000Z
    std::vector<Date> instances;

    static Date date(const std::string& text) {
        const auto time = text.size() > 8 ? text.substr(9, 6) : "000000";
        return parseDate(text.substr(0, 4) + "-" + text.substr(4, 2) + "-" + text.substr(6, 2) + "T" +
                         time.substr(0, 2) + ":" + time.substr(2, 2) + ":" + time.substr(4, 2) + "Z")
            .value();
    }
    Date startDate() const { return date(start); }
    std::string startProperty() const { return (start.size() == 8 ? "DTSTART;VALUE=DATE:" : "DTSTART:") + start; }
};

// Reads a file of paragraphs: "# title", "RRULE:", "DTSTART:", "INSTANCES:" with times between commas. Other
// lines do not matter, and a case without times is left out.
inline std::vector<RecurrenceCase> readRecurrenceCases(const std::filesystem::path& path) {
    std::istringstream lines(readFile(path));
    std::vector<RecurrenceCase> cases;
    RecurrenceCase present;
    for (std::string line; std::getline(lines, line);) {
        if (line.ends_with('\r')) line.pop_back();
        const auto value = line.substr(std::min(line.size(), line.find(':') + 1));
        if (line.starts_with("# "))
            present = {line.substr(2), "", "", {}};
        else if (line.starts_with("RRULE:"))
            present.rule = value;
        else if (line.starts_with("DTSTART:"))
            present.start = value;
        else if (line.starts_with("INSTANCES:") && value.find('*') == std::string::npos) {
            std::istringstream instances(value);
            for (std::string instance; std::getline(instances, instance, ',');)
                present.instances.push_back(RecurrenceCase::date(instance));
            cases.push_back(std::move(present));
            present = {};
        }
    }
    return cases;
}

} // namespace bridge
