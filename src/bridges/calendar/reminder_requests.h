#pragma once

#include "base/record.h"

namespace bridge {

struct SearchRemindersRequest {
    std::vector<std::string> listIDs;
    std::optional<Date> dueAfter;
    std::optional<Date> dueBefore;
    std::optional<bool> isCompleted;
    std::optional<std::string> query;
    std::optional<int64_t> limit;

    static constexpr auto fields() {
        return std::tuple{required("listIDs", &SearchRemindersRequest::listIDs),
                          optional("dueAfter", &SearchRemindersRequest::dueAfter),
                          optional("dueBefore", &SearchRemindersRequest::dueBefore),
                          optional("isCompleted", &SearchRemindersRequest::isCompleted),
                          optional("query", &SearchRemindersRequest::query),
                          optional("limit", &SearchRemindersRequest::limit)};
    }
};
static_assert(listsEveryMember<SearchRemindersRequest>());

struct CreateReminderRequest {
    std::optional<std::string> listID;
    std::string title;
    std::optional<std::string> notes;
    std::optional<Date> dueDate;
    int64_t priority = 0;

    static constexpr auto fields() {
        return std::tuple{
            optional("listID", &CreateReminderRequest::listID), required("title", &CreateReminderRequest::title),
            optional("notes", &CreateReminderRequest::notes), optional("dueDate", &CreateReminderRequest::dueDate),
            required("priority", &CreateReminderRequest::priority)};
    }
};
static_assert(listsEveryMember<CreateReminderRequest>());

struct UpdateReminderRequest {
    std::string identifier;
    std::optional<std::string> listID;
    std::optional<std::string> title;
    std::optional<std::string> notes;
    std::optional<Date> dueDate;
    std::optional<bool> isCompleted;
    std::optional<int64_t> priority;
    std::optional<bool> clearNotes;
    std::optional<bool> clearDueDate;

    static constexpr auto fields() {
        return std::tuple{required("identifier", &UpdateReminderRequest::identifier),
                          optional("listID", &UpdateReminderRequest::listID),
                          optional("title", &UpdateReminderRequest::title),
                          optional("notes", &UpdateReminderRequest::notes),
                          optional("dueDate", &UpdateReminderRequest::dueDate),
                          optional("isCompleted", &UpdateReminderRequest::isCompleted),
                          optional("priority", &UpdateReminderRequest::priority),
                          optional("clearNotes", &UpdateReminderRequest::clearNotes),
                          optional("clearDueDate", &UpdateReminderRequest::clearDueDate)};
    }
};
static_assert(listsEveryMember<UpdateReminderRequest>());

} // namespace bridge
