#pragma once

#include "base/record.h"

namespace bridge {

struct ReminderDescriptor {
    std::string id;
    std::optional<std::string> externalIdentifier;
    std::string listID;
    std::string listTitle;
    std::string title; // "" when it has none
    std::optional<std::string> notes;
    std::optional<Date> dueDate;
    bool isCompleted = false;
    std::optional<Date> completionDate;
    int64_t priority = 0; // 0 none, 1 highest ... 9 lowest

    bool operator==(const ReminderDescriptor&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            required("id", &ReminderDescriptor::id),
            optional("externalIdentifier", &ReminderDescriptor::externalIdentifier),
            required("listID", &ReminderDescriptor::listID),
            required("listTitle", &ReminderDescriptor::listTitle),
            required("title", &ReminderDescriptor::title),
            optional("notes", &ReminderDescriptor::notes),
            optional("dueDate", &ReminderDescriptor::dueDate),
            required("isCompleted", &ReminderDescriptor::isCompleted),
            optional("completionDate", &ReminderDescriptor::completionDate),
            required("priority", &ReminderDescriptor::priority),
        };
    }
};
static_assert(listsEveryMember<ReminderDescriptor>());

} // namespace bridge
