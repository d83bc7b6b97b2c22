#include "adapters/eds/event_jobs.h"

#include "adapters/eds/as_stored.h"
#include "adapters/eds/item_move.h"
#include "adapters/eds/wall_clock.h"

#include <algorithm>
#include <tuple>

namespace bridge {

namespace {

constexpr int64_t day = 24 * 60 * 60;

std::string quoted(Date date) {
    auto text = formatDate(date);
    std::erase_if(text, [](char character) { return character == '-' || character == ':'; });
    return "(make-time \"" + text + "\")";
}

// The index behind the range alone knows neither of moved occurrences nor of where they were moved from, so every
// series is looked at. That comes first, or the service would expand them all. A day more at both ends: it takes times
// without a zone as UTC.
std::string queryFor(Date start, Date end) {
    constexpr int64_t reliable = 365 * day; // what lies before 1970 the service's arithmetic does not see
    if (start.secondsSince1970 < reliable) return "#t";
    const Date from{start.secondsSince1970 - day};
    const Date to{end.secondsSince1970 + day};
    return "(or (has-recurrences?) (occur-in-time-range? " + quoted(from) + " " + quoted(to) + "))";
}

CalendarEvent described(const CalendarObject& object, const Occurrence& occurrence, const std::string& calendarID) {
    auto event = object.describe(occurrence);
    event.identifier = ItemIdentifier{calendarID, object.uid(), occurrence.recurrenceID}.text();
    event.calendarID = calendarID;
    return event;
}

// As saved under the UID that the account gave it.
CalendarEvent saved(const CalendarObject& object, const std::string& uid, const std::string& calendarID) {
    const auto occurrence = object.occurrence("");
    if (!occurrence) throw PlatformError("The event has no time.");
    auto event = object.describe(*occurrence);
    event.identifier = ItemIdentifier{calendarID, uid, occurrence->recurrenceID}.text();
    event.externalIdentifier = uid;
    event.calendarID = calendarID;
    return event;
}

struct Found {
    CalendarObject object;
    Occurrence occurrence;
};

std::optional<Found> find(CalendarClient& client, const Call& call, const ItemIdentifier& identifier) {
    auto object = client.object(identifier.uid, call.cancellable());
    if (!object || object->entityType() != EntityType::event) return std::nullopt;
    auto occurrence = object->occurrence(identifier.recurrenceID);
    if (!occurrence) return std::nullopt;
    return Found{std::move(*object), std::move(*occurrence)};
}

Found require(CalendarClient& client, const Call& call, const ItemIdentifier& identifier) {
    auto found = find(client, call, identifier);
    if (!found) throw PlatformError("The event is no longer there.");
    return std::move(*found);
}

bool isSame(const CalendarEvent& stored, CalendarEvent wanted) {
    wanted.identifier = stored.identifier;
    wanted.externalIdentifier = stored.externalIdentifier;
    wanted.calendarID = stored.calendarID;
    return wanted == stored;
}

void removeFrom(CalendarClient& client, Found found, GCancellable* cancellable) {
    const auto component = found.object.componentText(found.occurrence.component);
    if (!found.object.remove(found.occurrence, now()))
        client.remove(found.object.uid(), cancellable);
    else if (isException(component))
        client.removeException(found.object.uid(), component, cancellable);
    else
        client.write(found.object, 0, cancellable);
}

} // namespace

bool comesBefore(const CalendarEvent& left, const CalendarEvent& right) {
    return std::tie(left.startDate, left.identifier) < std::tie(right.startDate, right.identifier);
}

std::vector<CalendarEvent> readEvents(CalendarClient& client, const Call& call, Date start, Date end, size_t limit) {
    start = std::max(start, earliestDate);
    end = std::min(end, Date{latestDate.secondsSince1970 + 1});
    std::vector<CalendarEvent> events;
    for (const auto& object : client.objects(queryFor(start, end), call.cancellable()))
        for (const auto& occurrence : object.occurrences(start, end, limit))
            events.push_back(described(object, occurrence, client.calendar().id));
    std::sort(events.begin(), events.end(), comesBefore);
    if (events.size() > limit) events.resize(limit);
    return events;
}

std::optional<CalendarEvent> readEvent(CalendarClient& client, const Call& call, const ItemIdentifier& identifier) {
    const auto found = find(client, call, identifier);
    if (!found) return std::nullopt;
    return described(found->object, found->occurrence, identifier.sourceID);
}

CalendarEvent addEvent(CalendarClient& client, const Call& call, const CalendarEvent& event) {
    client.requireWritable(call.cancellable());
    const auto object = CalendarObject::create(event, now());
    const auto uid = client.create(object, call.cancellable());
    return asStored(client, call, saved(object, uid, client.calendar().id), &readEvent);
}

CalendarEvent changeEvent(CalendarClient& client, const Call& call, const ItemIdentifier& identifier,
                          const CalendarEvent& event) {
    auto found = require(client, call, identifier);
    client.requireWritable(call.cancellable());
    auto stored = described(found.object, found.occurrence, identifier.sourceID);
    if (isSame(stored, event)) return stored;
    const auto component = found.object.change(found.occurrence, event, now());
    // Described before it is written, so that nothing can fail afterwards.
    const auto changed = found.object.occurrence(found.occurrence.recurrenceID);
    if (!changed) throw PlatformError("The event can't be changed to that.");
    stored = described(found.object, *changed, identifier.sourceID);
    client.write(found.object, component, call.cancellable());
    return asStored(client, call, stored, &readEvent);
}

CalendarEvent moveEvent(CalendarClient& client, Call& call, const ItemIdentifier& identifier,
                        const CalendarEvent& event, const Calendar& target) {
    const auto found = require(client, call, identifier);
    client.requireWritable(call.cancellable());
    CalendarClient targetClient(target);
    targetClient.requireWritable(call.cancellable());

    auto copy = found.object.isRecurring() ? found.object.detached(found.occurrence)
                                           : CalendarObject::parse(found.object.text());
    const auto occurrence = copy.occurrence("");
    if (!occurrence) throw PlatformError("The event has no time.");
    if (!isSame(copy.describe(*occurrence), event)) copy.change(*occurrence, event, now());

    const auto remove = [&](GCancellable* cancellable) {
        auto object = CalendarObject::parse(found.object.text());
        removeFrom(client, {std::move(object), found.occurrence}, cancellable);
    };
    const auto isDone = [&](GCancellable* cancellable) {
        const auto object = client.object(identifier.uid, cancellable);
        return !object || !object->occurrence(found.occurrence.recurrenceID);
    };
    const auto uid = moveItem(targetClient, copy, {remove, isDone}, call);
    return asStored(targetClient, call, saved(copy, uid, target.id), &readEvent);
}

void removeEvent(CalendarClient& client, const Call& call, const ItemIdentifier& identifier) {
    auto found = require(client, call, identifier);
    client.requireWritable(call.cancellable());
    removeFrom(client, std::move(found), call.cancellable());
}

} // namespace bridge
