#pragma once

#include "adapters/posix/system_clock.h"
#include "app/import/file_import.h"
#include "base/event_loop.h"
#include "base/text.h"
#include "tests/support/temporary_folder.h"

namespace bridge {

// Stores to import into, and a folder for the files.
struct ImportSite {
    TemporaryFolder folder;
    SystemClock clock;
    EventLoop loop;
    SqliteEventStore store{folder / "calendars.db", clock};
    SqliteContactStore contactStore{folder / "contacts.db", clock};
    std::vector<std::string> progress; // what was said of it

    ImportedFile take(const std::string& name) {
        const auto note = [this](const std::string& sentence) { progress.push_back(sentence); };
        return loop.runUntilDone(importFile({store, contactStore}, name, note));
    }
    ImportedFile takeText(const std::string& name, std::string_view text) {
        putFile(folder / name, text);
        return take(folder.file(name));
    }
    std::vector<Calendar> calendars(EntityType type) { return loop.runUntilDone(store.calendars(type)); }
    std::vector<CalendarEvent> events(const Calendar& calendar) {
        return loop.runUntilDone(store.events(earliestDate, latestDate, {calendar.id}, 2'000));
    }
    std::vector<Reminder> reminders(const Calendar& list) { return loop.runUntilDone(store.reminders({list.id})); }
    // In their order.
    std::vector<Contact> contacts(ContactPredicate predicate = AllContacts{}) {
        std::vector<Contact> found;
        loop.runUntilDone(contactStore.enumerate(std::move(predicate), [&found](const Contact& each) {
            found.push_back(each);
            return true;
        }));
        return found;
    }
    std::vector<std::string> givenNames(ContactPredicate predicate = AllContacts{}) {
        std::vector<std::string> names;
        for (const auto& contact : contacts(std::move(predicate)))
            names.push_back(contact.givenName);
        return names;
    }
    std::vector<ContactGroup> groups() { return loop.runUntilDone(contactStore.groups()); }
};

inline const std::string sowingEvent = "BEGIN:VEVENT\r\nUID:sowing\r\nDTSTAMP:20260101T000000Z\r\n"
                                       "DTSTART:20260814T090000Z\r\nDTEND:20260814T100000Z\r\nSUMMARY:Sowing\r\n"
                                       "END:VEVENT\r\n";
inline const std::string seedsTask = "BEGIN:VTODO\r\nUID:seeds\r\nDTSTAMP:20260101T000000Z\r\nSUMMARY:Seeds\r\n"
                                     "DUE;VALUE=DATE:20260813\r\nEND:VTODO\r\n";

inline std::string cardText(const std::string& lines) {
    return "BEGIN:VCARD\r\nVERSION:3.0\r\n" + lines + "END:VCARD\r\n";
}

inline std::string calendarText(const std::string& content) {
    return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Garden//EN\r\n" + content + "END:VCALENDAR\r\n";
}

} // namespace bridge
