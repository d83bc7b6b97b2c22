#include "adapters/ical/calendar_object.h"

#include "adapters/ical/event_fields.h"
#include "adapters/ical/object_state.h"
#include "adapters/ical/reminder_fields.h"
#include "base/platform_error.h"
#include "base/uuid.h"

namespace bridge {

namespace {

ICalPointer<icalcomponent> newItem(icalcomponent_kind kind, Date now) {
    ICalPointer<icalcomponent> item(icalcomponent_new(kind));
    setText(item.get(), ICAL_UID_PROPERTY, makeUUID());
    setTime(item.get(), ICAL_CREATED_PROPERTY, {now.secondsSince1970, TimeForm::utc()});
    noteChange(item.get(), Changed::text, now);
    return item;
}

void requireType(EntityType actual, EntityType required) {
    if (actual == required) return;
    throw PlatformError(required == EntityType::event ? "The calendar item is no event."
                                                      : "The calendar item is no reminder.");
}

} // namespace

CalendarObject::CalendarObject(std::unique_ptr<State> state) : m_state(std::move(state)) {}
CalendarObject::CalendarObject(CalendarObject&&) noexcept = default;
CalendarObject& CalendarObject::operator=(CalendarObject&&) noexcept = default;
CalendarObject::~CalendarObject() = default;

CalendarObject CalendarObject::parse(std::string_view text) {
    return CalendarObject(State::parse(text));
}

CalendarObject CalendarObject::create(const CalendarEvent& event, Date now) {
    auto calendar = State::emptyCalendar();
    auto item = newItem(ICAL_VEVENT_COMPONENT, now);
    // Nothing has these times, so they are written whatever they are.
    CalendarEvent nothing;
    nothing.startDate = Date{event.startDate.secondsSince1970 == 0 ? 1 : 0};
    writeEvent(item.get(), nothing, event, Zones());
    icalcomponent_add_component(calendar.get(), item.release());
    return CalendarObject(std::make_unique<State>(std::move(calendar)));
}

CalendarObject CalendarObject::create(const Reminder& reminder, Date now) {
    auto calendar = State::emptyCalendar();
    auto item = newItem(ICAL_VTODO_COMPONENT, now);
    writeReminder(item.get(), Reminder{}, reminder, Zones());
    if (reminder.isCompleted) complete(item.get(), now);
    icalcomponent_add_component(calendar.get(), item.release());
    return CalendarObject(std::make_unique<State>(std::move(calendar)));
}

std::string CalendarObject::text() const {
    return bridge::componentText(m_state->calendar.get());
}

std::string CalendarObject::componentText(size_t component) const {
    return bridge::componentText(m_state->item(component));
}

size_t CalendarObject::componentCount() const {
    return m_state->items.size();
}

EntityType CalendarObject::entityType() const {
    return m_state->entityType;
}

const std::string& CalendarObject::uid() const {
    return m_state->uid;
}

bool CalendarObject::isRecurring() const {
    return m_state->series().isRecurring();
}

std::vector<Occurrence> CalendarObject::occurrences(Date from, Date to, size_t limit) const {
    return findOccurrences(from, to, limit).occurrences;
}

FoundOccurrences CalendarObject::findOccurrences(Date from, Date to, size_t limit) const {
    return m_state->series().between(from, to, limit);
}

std::optional<Occurrence> CalendarObject::occurrence(std::string_view recurrenceID) const {
    const auto series = m_state->series();
    if (recurrenceID.empty()) return series.first();
    if (!series.isRecurring()) return std::nullopt;
    const auto key = series.keyFromText(recurrenceID);
    return key ? series.find(*key) : std::nullopt;
}

std::optional<EventSpan> CalendarObject::span() const {
    return m_state->series().span();
}

CalendarEvent CalendarObject::describe(const Occurrence& occurrence) const {
    requireType(entityType(), EntityType::event);
    auto event = readEvent(m_state->item(occurrence.component), occurrence.start, occurrence.end, m_state->zones);
    event.externalIdentifier = m_state->uid;
    auto* master = m_state->master();
    event.hasRecurrenceRules = master && firstProperty(master, ICAL_RRULE_PROPERTY);
    return event;
}

namespace {

// The event of one occurrence on its own, as the series has it.
ICalPointer<icalcomponent> copyOfOccurrence(icalcomponent* item, const Occurrence& occurrence, const Series& series,
                                            const Zones& zones) {
    auto copy = clone(item);
    for (const auto kind : {ICAL_RRULE_PROPERTY, ICAL_RDATE_PROPERTY, ICAL_EXDATE_PROPERTY, ICAL_EXRULE_PROPERTY})
        removeProperties(copy.get(), kind);
    if (firstProperty(item, ICAL_RECURRENCEID_PROPERTY) || occurrence.recurrenceID.empty()) return copy;

    const auto key = series.keyFromText(occurrence.recurrenceID);
    if (!key) throw PlatformError("The occurrence is not one of this event.");
    const auto end = readTime(item, ICAL_DTEND_PROPERTY, zones);
    const auto times = ComponentTimes::read(item, zones);
    const ItemTime start{*key, series.form()};
    setTime(copy.get(), ICAL_DTSTART_PROPERTY, start);
    // A DURATION, and no end at all, say the same for each occurrence, unless the series gives this one its own.
    if (!end && times && times->endAfter(start) == occurrence.end) return copy;
    removeProperties(copy.get(), ICAL_DURATION_PROPERTY);
    removeProperties(copy.get(), ICAL_DTEND_PROPERTY);
    const auto endForm = end && end->form.isDate == start.form.isDate ? end->form : start.form;
    const ItemTime until = occurrence.end.isFloating ? ItemTime{occurrence.end.seconds, endForm}
                                                     : ItemTime::at(occurrence.end.seconds, endForm);
    if (occurrence.end != occurrence.start) setTime(copy.get(), ICAL_DTEND_PROPERTY, until);
    return copy;
}

} // namespace

size_t CalendarObject::change(const Occurrence& occurrence, const CalendarEvent& event, Date now) {
    const auto before = describe(occurrence);
    auto changed = m_state->copy();
    const auto series = changed->series();
    size_t component = occurrence.component;
    if (!occurrence.recurrenceID.empty() && changed->item(component) == changed->master()) {
        const auto key = series.keyFromText(occurrence.recurrenceID);
        auto exception = copyOfOccurrence(changed->master(), occurrence, series, changed->zones);
        setTime(exception.get(), ICAL_RECURRENCEID_PROPERTY, {key.value(), series.form()});
        component = changed->items.size();
        changed->items.push_back(exception.get());
        icalcomponent_add_component(changed->calendar.get(), exception.release());
    }
    auto* item = changed->item(component);
    const auto what = writeEvent(item, before, event, changed->zones);
    if (what == Changed::nothing) return occurrence.component;
    noteChange(item, what, now);
    m_state = std::move(changed);
    return component;
}

bool CalendarObject::remove(const Occurrence& occurrence, Date now) {
    requireType(entityType(), EntityType::event);
    auto* item = m_state->item(occurrence.component);
    if (occurrence.recurrenceID.empty()) return false;
    auto changed = m_state->copy();
    const auto key = changed->series().keyFromText(occurrence.recurrenceID);
    if (!key) throw PlatformError("The occurrence is not one of this event.");
    const auto form = changed->series().form();
    if (item != m_state->master()) {
        auto* exception = changed->item(occurrence.component);
        std::erase(changed->items, exception);
        icalcomponent_remove_component(changed->calendar.get(), exception);
        icalcomponent_free(exception);
    }
    if (changed->items.empty()) return false;
    if (auto* master = changed->master()) {
        addProperty(master, makeTimeProperty(ICAL_EXDATE_PROPERTY, {*key, form}));
        noteChange(master, Changed::times, now);
    }
    if (!changed->series().first()) return false;
    m_state = std::move(changed);
    return true;
}

CalendarObject CalendarObject::detached(const Occurrence& occurrence) const {
    requireType(entityType(), EntityType::event);
    auto calendar = State::emptyCalendar();
    for (auto* zone : components(m_state->calendar.get(), ICAL_VTIMEZONE_COMPONENT))
        icalcomponent_add_component(calendar.get(), clone(zone).release());
    auto item = copyOfOccurrence(m_state->item(occurrence.component), occurrence, m_state->series(), m_state->zones);
    removeProperties(item.get(), ICAL_RECURRENCEID_PROPERTY);
    removeProperties(item.get(), ICAL_SEQUENCE_PROPERTY);
    setText(item.get(), ICAL_UID_PROPERTY, makeUUID());
    icalcomponent_add_component(calendar.get(), item.release());
    return CalendarObject(std::make_unique<State>(std::move(calendar)));
}

Reminder CalendarObject::describeReminder() const {
    requireType(entityType(), EntityType::reminder);
    auto reminder = readReminder(m_state->items.front(), m_state->zones);
    reminder.externalIdentifier = m_state->uid;
    return reminder;
}

void CalendarObject::change(const Reminder& reminder, Date now) {
    const auto before = describeReminder();
    auto changed = m_state->copy();
    auto* item = changed->items.front();
    auto what = writeReminder(item, before, reminder, changed->zones);
    if (reminder.isCompleted && !before.isCompleted) {
        if (!moveOn(changed->items, changed->zones)) complete(item, now);
        what = Changed::times;
    } else if (before.isCompleted && !reminder.isCompleted) {
        reopen(item);
        what = Changed::times;
    }
    if (what == Changed::nothing) return;
    noteChange(item, what, now);
    m_state = std::move(changed);
}

} // namespace bridge
