#include "app/import/file_import.h"

#include "adapters/ical/calendar_file.h"
#include "adapters/vcard/charset.h"
#include "adapters/vcard/vcard_file.h"
#include "app/import/calendar_import.h"
#include "app/import/counted.h"
#include "app/import/file_kind.h"
#include "app/import/input_file.h"

namespace bridge {

namespace {

template <typename Problem> std::vector<ImportProblem> problemsOf(const std::vector<Problem>& found) {
    std::vector<ImportProblem> problems;
    for (const auto& each : found)
        problems.push_back({each.item, each.reason, each.isLost});
    return problems;
}

FileKind kindOfFile(std::string_view text) {
    if (text.empty()) throw PlatformError("It is empty.");
    if (const auto kind = kindOf(text)) return *kind;
    throw PlatformError("It is neither an iCalendar nor a vCard file.");
}

void takeContacts(SqliteContactStore& store, std::string_view text, ImportedFile& imported,
                  const ImportProgress& progress) {
    auto file = readVCardFile(text);
    progress("Saving " + counted(file.cards.size(), "contact") + " of " + imported.name);
    const auto taken = store.importFile(std::move(file));
    imported.problems = problemsOf(taken.problems);
    imported.contacts = {taken.contactsAdded, taken.contactsKnown, taken.groupsAdded};
}

} // namespace

Task<ImportedFile> importFile(ImportStores stores, std::string name, ImportProgress progress) {
    ImportedFile imported;
    imported.name = name;
    try {
        progress("Reading " + name);
        const auto text = vcard::withoutByteOrderMark(readInputFile(name));
        imported.kind = kindOfFile(text);
        if (imported.kind == FileKind::contacts) {
            takeContacts(stores.contacts, text, imported, progress);
        } else {
            auto file = readCalendarFile(text);
            auto problems = problemsOf(file.problems);
            progress("Saving " + counted(file.objects.size(), "item") + " of " + name);
            auto importing = importCalendars(stores.calendars, std::move(file), name);
            imported.calendars = co_await std::move(importing);
            imported.problems = std::move(problems);
        }
    } catch (const PlatformError& error) {
        imported.failure = error.what();
    }
    co_return imported;
}

} // namespace bridge
