#include "bridges/calendar/reminder_filter.h"

#include "base/text.h"
#include "bridges/calendar/sorting.h"

namespace bridge {

namespace {

class Filter {
public:
    explicit Filter(const SearchRemindersRequest& request)
        : m_request(request), m_foldedQuery(fold(request.query.value_or(""))), m_query(trim(m_foldedQuery)) {}
    Filter(const Filter&) = delete;
    Filter& operator=(const Filter&) = delete;

    bool passes(const ReminderDescriptor& reminder) const {
        if (m_request.isCompleted && reminder.isCompleted != *m_request.isCompleted) return false;
        if (m_request.dueAfter && !(reminder.dueDate && *reminder.dueDate >= *m_request.dueAfter)) return false;
        if (m_request.dueBefore && !(reminder.dueDate && *reminder.dueDate <= *m_request.dueBefore)) return false;
        return m_query.empty() || fold(reminder.title + ' ' + reminder.notes.value_or("")).find(m_query) != npos;
    }

private:
    static constexpr auto npos = std::string::npos;

    const SearchRemindersRequest& m_request;
    std::string m_foldedQuery;
    std::string_view m_query; // of the folded one
};

} // namespace

std::vector<ReminderDescriptor> filterReminders(std::vector<ReminderDescriptor> reminders,
                                                const SearchRemindersRequest& request) {
    const Filter filter(request);
    std::erase_if(reminders, [&](const ReminderDescriptor& each) { return !filter.passes(each); });
    return sortedBy(std::move(reminders), [](const ReminderDescriptor& each) {
        const bool isUndated = !each.dueDate;
        return std::tuple(isUndated, each.dueDate.value_or(Date()), isUndated ? sortKey(each.title) : "");
    });
}

} // namespace bridge
