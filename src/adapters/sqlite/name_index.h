#pragma once

#include "adapters/sqlite/database.h"
#include "platform/contact_store.h"

#include <optional>
#include <string>
#include <vector>

namespace bridge {

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
        for (auto place = firstOf(sought, {}); place; place = firstOf(sought, {place->sortKey, place->contact + 1}))
            if (!visit(place->contact)) return;
    }

private:
    struct Place {
        std::string sortKey = {};
        int64_t contact = 0;
        bool operator==(const Place&) const = default;
    };
    static std::vector<std::string> beginnings(const std::vector<std::string>& words);
    // The first that has all of them, from this place on. Nothing sought is had by nobody.
    std::optional<Place> firstOf(const std::vector<std::string>& sought, Place from);
    std::optional<Place> firstOf(const std::string& beginning, const Place& from);

    Database& m_database;
};

} // namespace bridge
