#pragma once

#include "adapters/sqlite/name_index.h"
#include "adapters/vcard/vcard.h"

#include <functional>
#include <optional>
#include <string>

namespace bridge {

struct ContactRow {
    int64_t key = 0;
    std::string sortKey;
    Contact contact;
};

// The contacts of a database, with all that is derived from them.
class ContactTable {
public:
    explicit ContactTable(Database& database) : m_database(database), m_names(database) {}

    std::optional<ContactRow> find(std::string_view identifier) const;
    std::optional<int64_t> findUID(std::string_view uid) const;
    VCard card(int64_t key) const;
    // Throws PlatformError when there is none.
    ContactRow existing(std::string_view identifier) const;

    struct Added {
        int64_t key = 0;
        std::string identifier;
    };
    Added add(const VCard& card);
    void change(const Contact& wanted);
    void remove(std::string_view identifier);
    std::string sortKey(int64_t key) const;

    void visit(const ContactPredicate& predicate, const std::function<bool(const Contact&)>& visitor);

    // Whether sort keys and words are those of the user's language.
    bool isUpToDate() const;
    void bringUpToDate();

private:
    void visitNamed(const std::string& text, const std::function<bool(const Contact&)>& visitor);

    Database& m_database;
    NameIndex m_names;
};

} // namespace bridge
