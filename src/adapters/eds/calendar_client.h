#pragma once

#include "adapters/eds/object_text.h"
#include "adapters/eds/source_client.h"
#include "adapters/eds/source_list.h"
#include "adapters/ical/calendar_object.h"

#include <optional>

namespace bridge {

// The conversation with one calendar or list.
class CalendarClient : public SourceClient {
public:
    using Place = Calendar;

    explicit CalendarClient(Calendar calendar)
        : SourceClient(calendar.id, subjectOf(calendar)), m_calendar(std::move(calendar)) {}

    // As it was listed last; for its title in sentences.
    void becomes(Calendar calendar) {
        setSubject(subjectOf(calendar));
        m_calendar = std::move(calendar);
    }
    const Calendar& calendar() const { return m_calendar; }

    // Those that the query of libecal finds. One that makes no sense is left out, so that it does not hide the others.
    std::vector<CalendarObject> objects(const std::string& query, GCancellable* cancellable);
    std::optional<CalendarObject> object(const std::string& uid, GCancellable* cancellable);

    // Answers with the UID, which the account may have chosen itself.
    std::string create(const CalendarObject& object, GCancellable* cancellable);
    // Writes one component: the master, or an event that does not repeat, without touching exceptions, or one
    // exception.
    void write(const CalendarObject& object, size_t component, GCancellable* cancellable);
    void remove(const std::string& uid, GCancellable* cancellable);
    // Takes an exception out of its series, and its time out of the master's.
    void removeException(const std::string& uid, const std::string& componentText, GCancellable* cancellable);

private:
    EClient* connect(ESource* source, GCancellable* cancellable, GError** error) const override;
    void forget() override { m_zones.clear(); }
    Components stored(const std::string& uid, GCancellable* cancellable);
    // Of the zones that the system doesn't know by their names.
    void fetchZones(ECalClient* client, const Components& components, GCancellable* cancellable);
    void addZones(ECalClient* client, const CalendarObject& object, GCancellable* cancellable);

    Calendar m_calendar;
    std::map<std::string, std::string> m_zones; // definitions by identifier; empty when there is none
};

} // namespace bridge
