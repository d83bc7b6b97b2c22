#pragma once

#include "adapters/sqlite/database.h"
#include "platform/contact_store.h"

#include <string>
#include <vector>

namespace bridge {

// The words of the name by which a contact is found.
std::vector<std::string> nameWordsOf(const Contact& contact);
// Where it stands among all contacts.
std::string sortKeyOf(const Contact& contact);

// Which contacts have a word in their names that begins in a certain way, in the order of contacts.
class NameIndex {
public:
    explicit NameIndex(Database& database) : m_database(database) {}

    void add(int64_t contact, std::string_view sortKey, const std::vector<std::string>& words);
    // What add() was given.
    void remove(int64_t contact, std::string_view sortKey, const std::vector<std::string>& words);
    void clear();

    // Calls `visit` for each contact in whose name each of these words seems to begin one, until it returns false.
    // Whether they really do is left to be seen where a word is longer than what is kept here.
    template <typename Visit> void search(const std::vector<std::string>& words, Visit visit) {
        const auto sought = beginnings(words);
        if (sought.empty()) return;
        auto row = m_database.query(
            "SELECT sort_key, contact FROM word_beginning WHERE beginning = ? ORDER BY sort_key, contact", sought[0]);
        while (row.step()) {
            const auto contact = row.column<int64_t>(1);
            if (hasOthers(sought, row.text(0), contact) && !visit(contact)) return;
        }
    }

private:
    // The rarest first.
    std::vector<std::string> beginnings(const std::vector<std::string>& words);
    bool hasOthers(const std::vector<std::string>& sought, std::string_view sortKey, int64_t contact);

    Database& m_database;
};

} // namespace bridge
