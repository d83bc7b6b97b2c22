#pragma once

#include "adapters/sqlite/database.h"
#include "adapters/vcard/vcard_file.h"
#include "platform/clock.h"
#include "platform/contact_store.h"

#include <memory>
#include <string>
#include <vector>

namespace bridge {

// What came of a file, for the user to read.
struct ContactImport {
    size_t contactsAdded = 0;
    size_t contactsKnown = 0; // here already, by their UID, and saying the same
    size_t groupsAdded = 0;
    std::vector<VCardFileProblem> problems;
};

// Contacts in one file of this computer, for a machine without an address book. Each call completes inline; another
// process may read and write the same file meanwhile. What can happen to the file is told at SqliteEventStore.
//
// Contacts are kept as vCards, with an index of the words of their names, of which the first 1,000 of a name count.
// When the user's language is another than before, the first call orders everything anew.
class SqliteContactStore : public ContactStore {
public:
    // `path` is absolute; missing folders are made, for the user alone.
    SqliteContactStore(std::string path, const Clock& clock, DatabaseOptions options = {});
    ~SqliteContactStore() override;

    std::string description() const override { return "this computer"; }
    Task<std::vector<Contact>> contacts(std::vector<std::string> identifiers) override;
    Task<> enumerate(ContactPredicate predicate, std::function<bool(const Contact&)> visit) override;
    Task<std::vector<ContactGroup>> groups() override;
    Task<std::vector<std::string>> execute(std::vector<ContactChange> changes) override;

    // Takes in the contacts of a file, and its groups: into the group of that name where there is one. All in one
    // transaction, whole or not at all. A contact whose UID is here already stays as it is here, and joins its groups;
    // where the file says something else of it, that is a problem.
    ContactImport importFile(VCardFile file);

private:
    struct State;
    std::unique_ptr<State> m_state;
};

// Reads the bytes of a vCard file into the store. Throws PlatformError when nothing in it is vCard, or the store fails;
// nothing has changed then.
ContactImport importContacts(SqliteContactStore& store, std::string_view bytes);

} // namespace bridge
