#include "app/import/import_report.h"

#include "base/text.h"

#include <algorithm>
#include <fmt/format.h>

namespace bridge {

std::string printable(const std::string& text) {
    std::string shown;
    for (const char each : repairUTF8(text))
        if ((each >= 0 && each < ' ') || each == '\x7f')
            shown += "\xef\xbf\xbd";
        else
            shown += each;
    // The control characters of the upper half, which UTF-8 writes as C2 80 to C2 9F.
    for (size_t place = 0; place + 1 < shown.size(); ++place)
        if (shown[place] == '\xc2' && static_cast<unsigned char>(shown[place + 1]) < 0xa0)
            shown.replace(place, 2, "\xef\xbf\xbd");
    return shown;
}

namespace {

std::string counted(size_t count, const char* one) {
    return fmt::format("{} {}{}", count, one, count == 1 ? "" : "s");
}

std::string counted(size_t events, size_t tasks) {
    if (tasks == 0) return counted(events, "event");
    if (events == 0) return counted(tasks, "task");
    return counted(events, "event") + " and " + counted(tasks, "task");
}

std::string describe(const ImportedCalendar& imported) {
    const bool isEvents = imported.calendar.entityType == EntityType::event;
    return fmt::format("{} as {} \"{}\"", counted(imported.itemCount, isEvents ? "event" : "task"),
                       isEvents ? "calendar" : "reminder list", printable(imported.calendar.title));
}

std::string describe(const CalendarFileProblem& problem) {
    return fmt::format("{}: {}: {}", problem.isLost ? "left out" : "not whole", printable(problem.item),
                       printable(problem.reason));
}

} // namespace

std::string describe(const ImportedFile& file) {
    std::string text = (file.name == "-" ? "standard input" : printable(file.name)) + "\n";
    if (file.failure) return text + "  not taken: " + printable(*file.failure) + "\n";
    for (const auto& calendar : file.calendars)
        text += "  " + describe(calendar) + "\n";
    if (file.calendars.empty()) text += "  nothing to take: no events and no tasks\n";
    for (const auto& problem : file.problems)
        text += "  " + describe(problem) + "\n";
    return text;
}

std::string summarize(const std::vector<ImportedFile>& files) {
    size_t events = 0, tasks = 0, lost = 0, damaged = 0, failed = 0;
    for (const auto& file : files) {
        for (const auto& imported : file.calendars)
            (imported.calendar.entityType == EntityType::event ? events : tasks) += imported.itemCount;
        failed += file.failure ? 1 : 0;
        const auto left = static_cast<size_t>(std::ranges::count(file.problems, true, &CalendarFileProblem::isLost));
        lost += left;
        damaged += file.problems.size() - left;
    }
    auto text = fmt::format("Taken: {} from {}.", counted(events, tasks), counted(files.size() - failed, "file"));
    if (lost) text += fmt::format(" Left out: {}.", counted(lost, "item"));
    if (damaged) text += fmt::format(" Not whole: {}.", counted(damaged, "item"));
    if (failed) text += fmt::format(" Not taken: {}.", counted(failed, "file"));
    return text + "\n";
}

} // namespace bridge
