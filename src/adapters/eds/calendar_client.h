#pragma once

#include "adapters/eds/eds_error.h"
#include "adapters/eds/object_text.h"
#include "adapters/eds/source_list.h"
#include "adapters/ical/calendar_object.h"

#include <atomic>
#include <optional>

namespace bridge {

// A conversation with one calendar or list, on one thread whose default context stays the same. It blocks; the
// cancellable ends each call at once. Every function throws PlatformError. The connection is made when it is first
// needed and again when it was lost: what only reads is then tried again, what changes something never.
class CalendarClient {
public:
    explicit CalendarClient(Calendar calendar) : m_calendar(std::move(calendar)) {}
    CalendarClient(const CalendarClient&) = delete;
    CalendarClient& operator=(const CalendarClient&) = delete;
    ~CalendarClient() { drop(); }

    // As it was listed last; for its title in sentences.
    void becomes(Calendar calendar) { m_calendar = std::move(calendar); }
    const Calendar& calendar() const { return m_calendar; }

    bool isReadOnly(GCancellable* cancellable);
    // The backends themselves let many a change pass.
    void requireWritable(GCancellable* cancellable);

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
    ECalClient* client(GCancellable* cancellable);
    void drop();
    template <typename Read> auto reading(GCancellable* cancellable, Read read);
    Components stored(const std::string& uid, GCancellable* cancellable);
    // Of the zones that the system doesn't know by their names.
    void fetchZones(ECalClient* client, const Components& components, GCancellable* cancellable);
    void addZones(ECalClient* client, const CalendarObject& object, GCancellable* cancellable);

    Calendar m_calendar;
    GObjectPointer<ECalClient> m_client;
    gulong m_watch = 0;
    std::atomic<bool> m_died = false;
    std::map<std::string, std::string> m_zones; // definitions by identifier; empty when there is none
};

} // namespace bridge
