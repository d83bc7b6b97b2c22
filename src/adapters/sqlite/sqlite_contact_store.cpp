#include "adapters/sqlite/sqlite_contact_store.h"

#include "adapters/sqlite/contact_schema.h"
#include "adapters/sqlite/contact_table.h"
#include "adapters/sqlite/group_table.h"
#include "adapters/sqlite/store_file.h"

#include <fmt/format.h>
#include <set>

namespace bridge {

namespace {

// Makes one change after the other and gathers what was added.
struct Executor {
    ContactTable contacts;
    GroupTable groups;
    std::vector<std::string> added = {};

    void operator()(const AddContact& change) {
        added.push_back(contacts.add(VCard::create(change.contact)).identifier);
    }
    void operator()(const UpdateContact& change) { contacts.change(change.contact); }
    void operator()(const DeleteContact& change) { contacts.remove(change.identifier); }
    void operator()(const AddContactGroup& change) { added.push_back(groups.add(change.name).identifier); }
    void operator()(const DeleteContactGroup& change) { groups.remove(change.identifier); }
    void operator()(const AddGroupMember& change) { groups.addMember(change); }
    void operator()(const RemoveGroupMember& change) { groups.removeMember(change); }
};

class Importer {
public:
    Importer(Database& database, const VCardFile& file) : m_file(file), m_contacts(database), m_groups(database) {
        m_result.problems = file.problems;
    }

    ContactImport run() {
        for (const auto& card : m_file.cards)
            addCard(card);
        for (const auto& group : m_file.groups)
            addGroup(group);
        return std::move(m_result);
    }

private:
    void addCard(const VCard& card) {
        if (const auto known = m_contacts.findUID(card.uid())) {
            m_keys.push_back(*known);
            if (m_contacts.card(*known).saysTheSameAs(card))
                ++m_result.contactsKnown;
            else
                m_result.problems.push_back({fmt::format("contact “{}”", card.formattedName()),
                                             "It is here already, says something else, and stays as it is here."});
            return;
        }
        m_keys.push_back(m_contacts.add(card).key);
        ++m_result.contactsAdded;
    }

    void addGroup(const VCardGroup& group) {
        auto key = m_groups.findName(group.name);
        if (!key) {
            key = m_groups.add(group.name).key;
            ++m_result.groupsAdded;
        }
        const auto add = [&](int64_t contact) { m_groups.addMember(*key, contact, m_contacts.sortKey(contact)); };
        for (const size_t member : group.members)
            add(m_keys[member]);
        size_t missing = 0;
        for (const auto& uid : group.otherMembers)
            if (const auto contact = m_contacts.findUID(uid))
                add(*contact);
            else
                ++missing;
        if (missing > 0)
            m_result.problems.push_back({fmt::format("group “{}”", group.name),
                                         fmt::format("{} of its members {} neither in the file nor here.", missing,
                                                     missing == 1 ? "is" : "are"),
                                         false});
    }

    const VCardFile& m_file;
    ContactTable m_contacts;
    GroupTable m_groups;
    std::vector<int64_t> m_keys; // of the file's cards
    ContactImport m_result;
};

} // namespace

struct SqliteContactStore::State {
    State(std::string path, const Clock& clock, DatabaseOptions options)
        : file(std::move(path), contactStoreSchema, clock, options, [](Database&) {}) {}

    template <typename Action> auto read(Action action) {
        if (!file.read([](Database& database) { return ContactTable(database).isUpToDate(); }))
            file.write([](Database& database) { ContactTable(database).bringUpToDate(); });
        return file.read(action);
    }
    template <typename Action> auto write(Action action) {
        return file.write([&](Database& database) {
            ContactTable(database).bringUpToDate();
            return action(database);
        });
    }

    StoreFile file;
};

SqliteContactStore::SqliteContactStore(std::string path, const Clock& clock, DatabaseOptions options)
    : m_state(std::make_unique<State>(std::move(path), clock, options)) {}

SqliteContactStore::~SqliteContactStore() = default;

Task<std::vector<Contact>> SqliteContactStore::contacts(std::vector<std::string> identifiers) {
    co_return m_state->read([&](Database& database) {
        const ContactTable table(database);
        std::vector<Contact> found;
        std::set<std::string_view> seen;
        for (const auto& identifier : identifiers)
            if (seen.insert(identifier).second)
                if (auto row = table.find(identifier)) found.push_back(std::move(row->contact));
        return found;
    });
}

Task<> SqliteContactStore::enumerate(ContactPredicate predicate, std::function<bool(const Contact&)> visit) {
    m_state->read([&](Database& database) { ContactTable(database).visit(predicate, visit); });
    co_return;
}

Task<std::vector<ContactGroup>> SqliteContactStore::groups() {
    co_return m_state->read([](Database& database) { return GroupTable(database).all(); });
}

Task<std::vector<std::string>> SqliteContactStore::execute(std::vector<ContactChange> changes) {
    co_return m_state->write([&](Database& database) {
        Executor executor{ContactTable(database), GroupTable(database)};
        for (const auto& change : changes)
            std::visit(executor, change);
        return std::move(executor.added);
    });
}

ContactImport SqliteContactStore::importFile(VCardFile file) {
    return m_state->write([&](Database& database) { return Importer(database, file).run(); });
}

ContactImport importContacts(SqliteContactStore& store, std::string_view bytes) {
    return store.importFile(readVCardFile(bytes));
}

} // namespace bridge
