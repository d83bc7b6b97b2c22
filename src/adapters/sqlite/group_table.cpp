#include "adapters/sqlite/group_table.h"

#include "base/text.h"
#include "base/uuid.h"

#include <fmt/format.h>

namespace bridge {

std::vector<ContactGroup> GroupTable::all() const {
    std::vector<ContactGroup> groups;
    auto row = m_database.query("SELECT id, name FROM contact_group ORDER BY key");
    while (row.step())
        groups.push_back({row.column<std::string>(0), row.column<std::string>(1)});
    return groups;
}

std::optional<int64_t> GroupTable::findName(std::string_view name) const {
    return m_database.value<int64_t>("SELECT key FROM contact_group WHERE name = ? ORDER BY key", name);
}

GroupTable::Added GroupTable::add(std::string_view name) {
    const auto identifier = makeUUID();
    m_database.run("INSERT INTO contact_group(id, name) VALUES(?, ?)", identifier, name);
    return {m_database.lastInsertedKey(), identifier};
}

void GroupTable::remove(std::string_view identifier) {
    m_database.run("DELETE FROM contact_group WHERE key = ?", existing(identifier));
}

void GroupTable::addMember(const AddGroupMember& change) {
    const auto group = existing(change.groupIdentifier);
    const auto contact = ContactTable(m_database).existing(change.contactIdentifier);
    addMember(group, contact.key, contact.sortKey);
}

void GroupTable::addMember(int64_t group, int64_t contact, std::string_view sortKey) {
    m_database.run("INSERT OR IGNORE INTO member(\"group\", sort_key, contact) VALUES(?, ?, ?)", group, sortKey,
                   contact);
}

void GroupTable::removeMember(const RemoveGroupMember& change) {
    const auto group = existing(change.groupIdentifier);
    const auto contact = ContactTable(m_database).existing(change.contactIdentifier);
    m_database.run("DELETE FROM member WHERE \"group\" = ? AND sort_key = ? AND contact = ?", group, contact.sortKey,
                   contact.key);
}

int64_t GroupTable::existing(std::string_view identifier) const {
    const auto key = m_database.value<int64_t>("SELECT key FROM contact_group WHERE id = ?", identifier);
    if (!key)
        throw PlatformError(
            fmt::format("There is no group of contacts “{}” on this computer.", repairUTF8(identifier)));
    return *key;
}

} // namespace bridge
