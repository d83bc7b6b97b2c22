#include "app/import/import_report.h"

#include "app/import/counted.h"
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

struct Amount {
    size_t count;
    const char* one;
};

// "2 events, 1 task and 3 contacts", of those that there are.
std::string listed(std::initializer_list<Amount> amounts) {
    std::vector<std::string> texts;
    for (const auto& [count, one] : amounts)
        if (count > 0) texts.push_back(counted(count, one));
    std::string text;
    for (size_t index = 0; index < texts.size(); ++index)
        text += (index == 0 ? "" : index + 1 == texts.size() ? " and " : ", ") + texts[index];
    return text;
}

std::string describe(const ImportedCalendar& imported) {
    const bool isEvents = imported.calendar.entityType == EntityType::event;
    return fmt::format("{} as {} \"{}\"", counted(imported.itemCount, isEvents ? "event" : "task"),
                       isEvents ? "calendar" : "reminder list", printable(imported.calendar.title));
}

std::string describe(const ImportedContacts& imported) {
    std::string text;
    if (const auto added = listed({{imported.added, "contact"}, {imported.groups, "group"}}); !added.empty())
        text += "  " + added + "\n";
    if (imported.known > 0)
        text += fmt::format("  {} {} here already\n", counted(imported.known, "contact"),
                            imported.known == 1 ? "was" : "were");
    return text;
}

std::string describe(const ImportProblem& problem) {
    return fmt::format("{}: {}: {}", problem.isLost ? "left out" : "not whole", printable(problem.item),
                       printable(problem.reason));
}

const char* nothingOf(const ImportedFile& file) {
    if (!file.problems.empty()) return "  nothing was taken\n";
    return file.kind == FileKind::contacts ? "  nothing to take: no contacts\n"
                                           : "  nothing to take: no events and no tasks\n";
}

} // namespace

std::string describe(const ImportedFile& file) {
    const auto name = (file.name == "-" ? "standard input" : printable(file.name)) + "\n";
    if (file.failure) return name + "  not taken: " + printable(*file.failure) + "\n";
    std::string taken;
    for (const auto& calendar : file.calendars)
        taken += "  " + describe(calendar) + "\n";
    taken += describe(file.contacts);
    auto text = name + (taken.empty() ? nothingOf(file) : taken);
    for (const auto& problem : file.problems)
        text += "  " + describe(problem) + "\n";
    return text;
}

std::string summarize(const std::vector<ImportedFile>& files) {
    size_t events = 0, tasks = 0, lost = 0, damaged = 0, failed = 0;
    ImportedContacts contacts;
    for (const auto& file : files) {
        for (const auto& imported : file.calendars)
            (imported.calendar.entityType == EntityType::event ? events : tasks) += imported.itemCount;
        contacts.added += file.contacts.added;
        contacts.known += file.contacts.known;
        contacts.groups += file.contacts.groups;
        failed += file.failure ? 1 : 0;
        const auto left = static_cast<size_t>(std::ranges::count(file.problems, true, &ImportProblem::isLost));
        lost += left;
        damaged += file.problems.size() - left;
    }
    const auto taken =
        listed({{events, "event"}, {tasks, "task"}, {contacts.added, "contact"}, {contacts.groups, "group"}});
    auto text = taken.empty() ? std::string("Taken: nothing.")
                              : fmt::format("Taken: {} from {}.", taken, counted(files.size() - failed, "file"));
    if (contacts.known) text += fmt::format(" Here already: {}.", counted(contacts.known, "contact"));
    if (lost) text += fmt::format(" Left out: {}.", counted(lost, "item"));
    if (damaged) text += fmt::format(" Not whole: {}.", counted(damaged, "item"));
    if (failed) text += fmt::format(" Not taken: {}.", counted(failed, "file"));
    return text + "\n";
}

} // namespace bridge
