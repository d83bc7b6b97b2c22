#include "adapters/eds/eds_event_store.h"

#include "adapters/eds/eds_calendars.h"
#include "adapters/eds/event_jobs.h"
#include "adapters/eds/reminder_jobs.h"
#include "base/text.h"
#include "base/uuid.h"

#include <algorithm>

namespace bridge {

namespace {

ItemIdentifier requireIdentifier(const std::string& text, const char* absence) {
    auto identifier = ItemIdentifier::parse(text);
    if (!identifier) throw PlatformError(absence);
    return std::move(*identifier);
}

// The registry drops white space at the ends when it reads its file again, which may be before or after it answers.
std::string asKept(const std::string& title) {
    return std::string(trim(title));
}

// What differs between the two kinds of items; everything else about writing them is the same.
struct EventKind {
    using Item = CalendarEvent;
    static constexpr auto entityType = EntityType::event;
    static constexpr auto absence = "There is no such event.";
    static constexpr auto calendarID = &CalendarEvent::calendarID;
    static constexpr auto add = &addEvent;
    static constexpr auto change = &changeEvent;
    static constexpr auto move = &moveEvent;
    static constexpr auto remove = &removeEvent;
};
struct ReminderKind {
    using Item = Reminder;
    static constexpr auto entityType = EntityType::reminder;
    static constexpr auto absence = "There is no such reminder.";
    static constexpr auto calendarID = &Reminder::listID;
    static constexpr auto add = &addReminder;
    static constexpr auto change = &changeReminder;
    static constexpr auto move = &moveReminder;
    static constexpr auto remove = &removeReminder;
};

// The calendars are the store's, which outlives its tasks.
template <typename Kind> Task<typename Kind::Item> save(EdsCalendars& calendars, typename Kind::Item item) {
    std::optional<ItemIdentifier> place;
    if (!item.identifier.empty()) place = requireIdentifier(item.identifier, Kind::absence);
    std::vector<std::string> identifiers{item.*Kind::calendarID};
    if (place) identifiers.push_back(place->sourceID);
    auto requiring = calendars.requireAll(Kind::entityType, std::move(identifiers));
    const auto required = co_await std::move(requiring);
    const auto target = required.front();
    // Where it is now; the target, unless it moves.
    const auto origin = required.back();
    const auto job = [place, target, item = std::move(item)](CalendarClient& client, Call& call) {
        if (!place) return Kind::add(client, call, item);
        if (place->sourceID == target.id) return Kind::change(client, call, *place, item);
        return Kind::move(client, call, *place, item, target);
    };
    const auto worker = calendars.workerOf(origin);
    auto saving = worker->write(origin, job);
    auto saved = co_await std::move(saving);
    co_return saved;
}

template <typename Kind> Task<> remove(EdsCalendars& calendars, std::string identifier) {
    const auto place = requireIdentifier(identifier, Kind::absence);
    auto requiring = calendars.require(Kind::entityType, place.sourceID);
    const auto listed = co_await std::move(requiring);
    const auto job = [place](CalendarClient& client, Call& call) {
        Kind::remove(client, call, place);
        return true;
    };
    const auto worker = calendars.workerOf(listed);
    auto removing = worker->write(listed, job);
    co_await std::move(removing);
}

} // namespace

EdsEventStore::EdsEventStore(std::unique_ptr<EdsCalendars> calendars) : m_calendars(std::move(calendars)) {}

EdsEventStore::~EdsEventStore() = default;

Task<std::unique_ptr<EdsEventStore>> EdsEventStore::open(EventLoop& loop, EdsPatience patience) {
    std::unique_ptr<EdsEventStore> store(new EdsEventStore(std::make_unique<EdsCalendars>(loop, patience)));
    auto asking = store->m_calendars->registry().isServed();
    const bool isServed = co_await std::move(asking);
    if (!isServed) store.reset();
    co_return store;
}

Task<std::vector<CalendarSource>> EdsEventStore::sources() {
    auto listing = m_calendars->list();
    auto list = co_await std::move(listing);
    co_return std::move(list.accounts);
}

Task<std::vector<Calendar>> EdsEventStore::calendars(EntityType entityType) {
    auto listing = m_calendars->list();
    auto list = co_await std::move(listing);
    std::erase_if(list.calendars, [&](const Calendar& calendar) { return calendar.entityType != entityType; });
    auto describing = m_calendars->described(std::move(list.calendars));
    auto calendars = co_await std::move(describing);
    co_return calendars;
}

Task<std::optional<Calendar>> EdsEventStore::calendar(std::string identifier) {
    auto listing = m_calendars->list();
    const auto list = co_await std::move(listing);
    auto describing = describe(list, std::move(identifier));
    auto calendar = co_await std::move(describing);
    co_return calendar;
}

Task<std::optional<Calendar>> EdsEventStore::describe(const SourceList& list, std::string identifier) {
    const auto* listed = list.find(identifier);
    if (!listed) co_return std::nullopt;
    std::vector<Calendar> calendars;
    calendars.push_back(*listed);
    auto describing = m_calendars->described(std::move(calendars));
    auto described = co_await std::move(describing);
    co_return std::move(described.front());
}

Task<std::optional<Calendar>> EdsEventStore::defaultCalendar(EntityType entityType) {
    auto listing = m_calendars->list();
    const auto list = co_await std::move(listing);
    auto describing = describe(list, entityType == EntityType::event ? list.defaultCalendar : list.defaultTaskList);
    auto calendar = co_await std::move(describing);
    if (calendar && !calendar->allowsContentModifications) calendar.reset();
    co_return calendar;
}

Task<Calendar> EdsEventStore::addCalendar(EntityType entityType, std::string sourceID, std::string title) {
    const auto identifier = makeUUID();
    auto adding = m_calendars->registry().addCalendar(entityType, std::move(sourceID), asKept(title), identifier);
    const auto list = co_await std::move(adding);
    auto describing = describe(list, identifier);
    auto calendar = co_await std::move(describing);
    if (!calendar) throw PlatformError("The account did not take the calendar.");
    co_return std::move(*calendar);
}

Task<Calendar> EdsEventStore::renameCalendar(std::string identifier, std::string title) {
    auto renaming = m_calendars->registry().renameCalendar(identifier, asKept(title));
    const auto list = co_await std::move(renaming);
    auto describing = describe(list, std::move(identifier));
    auto calendar = co_await std::move(describing);
    if (!calendar) throw PlatformError("There is no such calendar.");
    co_return std::move(*calendar);
}

Task<> EdsEventStore::removeCalendar(std::string identifier) {
    auto removing = m_calendars->registry().removeCalendar(std::move(identifier));
    co_await std::move(removing);
}

Task<std::vector<CalendarEvent>> EdsEventStore::events(Date start, Date end, std::vector<std::string> calendarIDs,
                                                       size_t limit) {
    auto requiring = m_calendars->requireAll(EntityType::event, std::move(calendarIDs));
    const auto calendars = co_await std::move(requiring);
    const auto read = [start, end, limit](CalendarClient& client, Call& call) {
        return readEvents(client, call, start, end, limit);
    };
    std::vector<std::shared_ptr<CalendarWorker>> workers;
    std::vector<Task<std::vector<CalendarEvent>>> tasks;
    for (const auto& listed : calendars) {
        workers.push_back(m_calendars->workerOf(listed));
        tasks.push_back(workers.back()->read(listed, read));
    }
    auto reading = together(m_calendars->loop(), std::move(tasks));
    auto parts = co_await std::move(reading);
    std::vector<CalendarEvent> events;
    for (auto& part : parts)
        std::move(part.begin(), part.end(), std::back_inserter(events));
    std::sort(events.begin(), events.end(), comesBefore);
    if (events.size() > limit) events.resize(limit);
    co_return events;
}

Task<std::vector<Reminder>> EdsEventStore::reminders(std::vector<std::string> listIDs) {
    auto requiring = m_calendars->requireAll(EntityType::reminder, std::move(listIDs));
    const auto lists = co_await std::move(requiring);
    const auto read = [](CalendarClient& client, Call& call) { return readReminders(client, call); };
    std::vector<std::shared_ptr<CalendarWorker>> workers;
    std::vector<Task<std::vector<Reminder>>> tasks;
    for (const auto& listed : lists) {
        workers.push_back(m_calendars->workerOf(listed));
        tasks.push_back(workers.back()->read(listed, read));
    }
    auto reading = together(m_calendars->loop(), std::move(tasks));
    auto parts = co_await std::move(reading);
    std::vector<Reminder> reminders;
    for (auto& part : parts)
        std::move(part.begin(), part.end(), std::back_inserter(reminders));
    co_return reminders;
}

Task<std::optional<CalendarItem>> EdsEventStore::item(std::string identifier) {
    const auto place = ItemIdentifier::parse(identifier);
    auto listing = m_calendars->list();
    const auto list = co_await std::move(listing);
    const auto* listed = place ? list.find(place->sourceID) : nullptr;
    if (!listed) co_return std::nullopt;
    const auto read = [place = *place](CalendarClient& client, Call& call) -> std::optional<CalendarItem> {
        if (client.calendar().entityType == EntityType::event) return readEvent(client, call, place);
        return readReminder(client, call, place);
    };
    const auto worker = m_calendars->workerOf(*listed);
    auto reading = worker->read(*listed, read);
    auto item = co_await std::move(reading);
    co_return item;
}

Task<CalendarEvent> EdsEventStore::saveEvent(CalendarEvent event) {
    return save<EventKind>(*m_calendars, std::move(event));
}

Task<> EdsEventStore::removeEvent(std::string identifier) {
    return remove<EventKind>(*m_calendars, std::move(identifier));
}

Task<Reminder> EdsEventStore::saveReminder(Reminder reminder) {
    return save<ReminderKind>(*m_calendars, std::move(reminder));
}

Task<> EdsEventStore::removeReminder(std::string identifier) {
    return remove<ReminderKind>(*m_calendars, std::move(identifier));
}

} // namespace bridge
