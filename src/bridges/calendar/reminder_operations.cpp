#include "bridges/calendar/apple_data_bridge.h"
#include "bridges/calendar/descriptions.h"
#include "bridges/calendar/item_title.h"
#include "bridges/calendar/reminder_filter.h"
#include "bridges/calendar/search_limit.h"

namespace bridge {

namespace {

constexpr std::string_view reminderLabel = "Reminder";
constexpr int64_t lowestPriority = 9;
constexpr int64_t usualSearchLimit = 100;

// Everything but the list.
void apply(UpdateReminderRequest changes, Reminder& reminder) {
    if (changes.title) reminder.title = validTitle(*changes.title, reminderLabel);
    if (changes.notes) reminder.notes = std::move(changes.notes);
    if (changes.dueDate) reminder.dueDate = componentsToTheMinute(*changes.dueDate);
    if (changes.isCompleted) reminder.isCompleted = *changes.isCompleted;
    if (changes.priority) reminder.priority = std::clamp<int64_t>(*changes.priority, 0, lowestPriority);
    if (changes.clearNotes.value_or(false)) reminder.notes.reset();
    if (changes.clearDueDate.value_or(false)) reminder.dueDate.reset();
}

} // namespace

Task<std::vector<ReminderDescriptor>> AppleDataBridge::searchReminders(SearchRemindersRequest request) {
    m_reminderLists.requireFullAccess();
    const auto lists = co_await m_reminderLists.forSearch(request.listIDs);
    std::vector<std::string> identifiers;
    std::map<std::string, std::string> titles;
    for (const auto& list : lists) {
        identifiers.push_back(list.id);
        titles.emplace(list.id, list.title);
    }

    auto found = co_await m_store.reminders(std::move(identifiers));
    std::vector<ReminderDescriptor> described;
    described.reserve(found.size());
    for (auto& reminder : found) {
        auto title = titles[reminder.listID];
        described.push_back(describe(std::move(reminder), std::move(title)));
    }
    described = filterReminders(std::move(described), request);
    const size_t limit = searchLimit(request.limit, usualSearchLimit);
    if (described.size() > limit) described.resize(limit);
    co_return described;
}

Task<ReminderDescriptor> AppleDataBridge::createReminder(CreateReminderRequest request) {
    m_reminderLists.requireFullAccess();
    Reminder reminder;
    reminder.title = validTitle(request.title, reminderLabel);
    auto list = co_await m_reminderLists.forNewItem(std::move(request.listID));
    reminder.listID = list.id;
    reminder.notes = std::move(request.notes);
    // Below 0 it goes to the store as it is, unlike in an update.
    reminder.priority = std::min(request.priority, lowestPriority);
    if (request.dueDate) reminder.dueDate = componentsToTheMinute(*request.dueDate);
    auto saved = co_await m_store.saveReminder(std::move(reminder));
    co_return describe(std::move(saved), std::move(list.title));
}

Task<ReminderDescriptor> AppleDataBridge::updateReminder(UpdateReminderRequest request) {
    m_reminderLists.requireFullAccess();
    auto held = co_await m_reminders.forChange(request.identifier);
    auto& reminder = held.item;
    std::string listTitle;
    if (request.listID) {
        auto target = co_await m_reminderLists.target(*request.listID);
        reminder.listID = target.id;
        listTitle = std::move(target.title);
    }
    const bool stays = !request.listID;
    apply(std::move(request), reminder);
    // Asked for before the change: once it is made, nothing must fail.
    if (stays) listTitle = co_await m_reminderLists.title(reminder.listID);
    auto saved = co_await m_store.saveReminder(std::move(reminder));
    co_return describe(std::move(saved), std::move(listTitle));
}

Task<> AppleDataBridge::deleteReminder(std::string identifier) {
    m_reminderLists.requireFullAccess();
    auto held = co_await m_reminders.forChange(std::move(identifier));
    co_await m_store.removeReminder(std::move(held.item.identifier));
}

} // namespace bridge
