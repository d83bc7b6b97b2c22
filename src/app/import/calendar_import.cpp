#include "app/import/calendar_import.h"

#include "base/text.h"

#include <algorithm>
#include <filesystem>

namespace bridge {

namespace {

std::string onOneLine(std::string text) {
    std::ranges::replace_if(
        text, [](char each) { return each >= 0 && each < ' '; }, ' ');
    return std::string(trim(text));
}

std::string titleFor(const CalendarFile& file, const std::string& name) {
    if (file.title)
        if (auto title = onOneLine(repairUTF8(*file.title)); !title.empty()) return title;
    if (name != "-")
        if (auto title = onOneLine(repairUTF8(std::filesystem::path(name).stem().string())); !title.empty())
            return title;
    return "Imported";
}

std::string unlikeAnyOf(const std::vector<Calendar>& calendars, const std::string& title) {
    auto unique = title;
    for (int number = 2; std::ranges::count(calendars, unique, &Calendar::title) > 0; ++number)
        unique = title + " " + std::to_string(number);
    return unique;
}

Task<std::string> accountOnThisComputer(SqliteEventStore& store) {
    const auto sources = co_await store.sources();
    const auto local = std::ranges::find(sources, SourceType::local, &CalendarSource::type);
    if (local == sources.end()) throw PlatformError("There is no account on this computer that takes calendars.");
    co_return local->id;
}

// One for each kind of item that there is.
std::vector<FilledCalendar> calendarsOf(std::vector<CalendarObject> objects) {
    FilledCalendar events, tasks;
    tasks.calendar.entityType = EntityType::reminder;
    for (auto& object : objects)
        (object.entityType() == EntityType::event ? events : tasks).objects.push_back(std::move(object));
    std::vector<FilledCalendar> calendars;
    for (auto* each : {&events, &tasks})
        if (!each->objects.empty()) calendars.push_back(std::move(*each));
    return calendars;
}

} // namespace

Task<std::vector<ImportedCalendar>> importCalendars(SqliteEventStore& store, CalendarFile file, std::string name) {
    const auto title = titleFor(file, name);
    auto calendars = calendarsOf(std::move(file.objects));
    const auto account = co_await accountOnThisComputer(store);
    for (auto& each : calendars) {
        const auto present = co_await store.calendars(each.calendar.entityType);
        each.calendar.sourceID = account;
        each.calendar.title = unlikeAnyOf(present, title);
    }
    const auto added = store.importCalendars(calendars);
    std::vector<ImportedCalendar> imported;
    for (size_t index = 0; index < added.size(); ++index)
        imported.push_back({added[index], calendars[index].objects.size()});
    co_return imported;
}

} // namespace bridge
