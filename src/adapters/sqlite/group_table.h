#pragma once

#include "adapters/sqlite/contact_table.h"

#include <optional>
#include <string>
#include <vector>

namespace bridge {

// The groups of a database and who belongs to them.
class GroupTable {
public:
    explicit GroupTable(Database& database) : m_database(database) {}

    std::vector<ContactGroup> all() const; // in the order in which they were made
    std::optional<int64_t> findName(std::string_view name) const;

    struct Added {
        int64_t key = 0;
        std::string identifier;
    };
    Added add(std::string_view name);
    // These throw PlatformError for what does not exist.
    void remove(std::string_view identifier);
    void addMember(const AddGroupMember& change);
    void removeMember(const RemoveGroupMember& change);

    // By their keys.
    void addMember(int64_t group, int64_t contact, std::string_view sortKey);

private:
    int64_t existing(std::string_view identifier) const;

    Database& m_database;
};

} // namespace bridge
