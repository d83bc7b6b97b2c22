#include "server/operation_tables.h"

#include <array>

namespace bridge {

std::span<const std::span<const Operation>> operationGroups() {
    static const std::array groups{statusOperations(),   calendarOperations(), remindersOperations(),
                                   contactsOperations(), musicOperations(),    filesOperations(),
                                   iworkOperations(),    locationOperations()};
    return groups;
}

const Operation* findOperation(std::string_view name) {
    for (const auto group : operationGroups())
        for (const auto& row : group)
            if (row.name == name) return &row;
    return nullptr;
}

} // namespace bridge
