#include "adapters/eds/reminder_jobs.h"

#include "adapters/eds/as_stored.h"
#include "adapters/eds/item_move.h"
#include "adapters/eds/wall_clock.h"

#include <algorithm>

namespace bridge {

namespace {

Reminder described(const CalendarObject& object, const std::string& uid, const std::string& listID) {
    auto reminder = object.describeReminder();
    reminder.identifier = ItemIdentifier{listID, uid, ""}.text();
    reminder.externalIdentifier = uid;
    reminder.listID = listID;
    return reminder;
}

std::optional<CalendarObject> find(CalendarClient& client, const Call& call, const ItemIdentifier& identifier) {
    if (!identifier.recurrenceID.empty()) return std::nullopt;
    auto object = client.object(identifier.uid, call.cancellable());
    if (object && object->entityType() != EntityType::reminder) return std::nullopt;
    return object;
}

CalendarObject require(CalendarClient& client, const Call& call, const ItemIdentifier& identifier) {
    auto object = find(client, call, identifier);
    if (!object) throw PlatformError("The reminder is no longer there.");
    return std::move(*object);
}

bool isSame(const Reminder& stored, Reminder wanted) {
    wanted.identifier = stored.identifier;
    wanted.externalIdentifier = stored.externalIdentifier;
    wanted.listID = stored.listID;
    return wanted == stored;
}

} // namespace

std::vector<Reminder> readReminders(CalendarClient& client, const Call& call) {
    std::vector<Reminder> reminders;
    for (const auto& object : client.objects("#t", call.cancellable()))
        reminders.push_back(described(object, object.uid(), client.calendar().id));
    std::sort(reminders.begin(), reminders.end(),
              [](const Reminder& left, const Reminder& right) { return left.identifier < right.identifier; });
    return reminders;
}

std::optional<Reminder> readReminder(CalendarClient& client, const Call& call, const ItemIdentifier& identifier) {
    const auto object = find(client, call, identifier);
    if (!object) return std::nullopt;
    return described(*object, object->uid(), identifier.sourceID);
}

Reminder addReminder(CalendarClient& client, const Call& call, const Reminder& reminder) {
    client.requireWritable(call.cancellable());
    const auto object = CalendarObject::create(reminder, now());
    const auto uid = client.create(object, call.cancellable());
    return asStored(client, call, described(object, uid, client.calendar().id), &readReminder);
}

Reminder changeReminder(CalendarClient& client, const Call& call, const ItemIdentifier& identifier,
                        const Reminder& reminder) {
    auto object = require(client, call, identifier);
    client.requireWritable(call.cancellable());
    auto stored = described(object, object.uid(), identifier.sourceID);
    if (isSame(stored, reminder)) return stored;
    object.change(reminder, now());
    stored = described(object, object.uid(), identifier.sourceID);
    client.write(object, 0, call.cancellable());
    return asStored(client, call, stored, &readReminder);
}

Reminder moveReminder(CalendarClient& client, Call& call, const ItemIdentifier& identifier, const Reminder& reminder,
                      const Calendar& target) {
    auto object = require(client, call, identifier);
    client.requireWritable(call.cancellable());
    CalendarClient targetClient(target);
    targetClient.requireWritable(call.cancellable());
    if (!isSame(described(object, object.uid(), identifier.sourceID), reminder)) object.change(reminder, now());

    const auto remove = [&](GCancellable* cancellable) { client.remove(identifier.uid, cancellable); };
    const auto isDone = [&](GCancellable* cancellable) { return !client.object(identifier.uid, cancellable); };
    const auto uid = moveItem(targetClient, object, {remove, isDone}, call);
    return asStored(targetClient, call, described(object, uid, target.id), &readReminder);
}

void removeReminder(CalendarClient& client, const Call& call, const ItemIdentifier& identifier) {
    const auto object = require(client, call, identifier);
    client.requireWritable(call.cancellable());
    client.remove(object.uid(), call.cancellable());
}

} // namespace bridge
