#include "adapters/sqlite/contact_schema.h"

#include "adapters/sqlite/contact_table.h"

#include <array>

namespace bridge {

namespace {

// sort_key is a byte string in the order of the user's language, so it is another after the language has changed:
// name_rules says by which rules it and the words of names were made. It stands in three tables, so that each of the
// three ways through the contacts is a walk along an index that can end anywhere.
constexpr auto version1 = R"(
    CREATE TABLE name_rules(rules TEXT NOT NULL);

    -- text is the whole vCard; summary is the vCard of what a listing shows, and short.
    CREATE TABLE contact(
        key INTEGER PRIMARY KEY,
        id TEXT NOT NULL UNIQUE,
        uid TEXT NOT NULL,
        sort_key BLOB NOT NULL,
        summary TEXT NOT NULL,
        text TEXT NOT NULL);
    CREATE INDEX contact_in_order ON contact(sort_key);
    CREATE INDEX contact_by_uid ON contact(uid);

    -- Every beginning of every word of a name, up to a length, so that a search for one is a search for an equal.
    CREATE TABLE word_beginning(
        beginning TEXT NOT NULL,
        sort_key BLOB NOT NULL,
        contact INTEGER NOT NULL,
        PRIMARY KEY(beginning, sort_key, contact)) WITHOUT ROWID;

    CREATE TABLE contact_group(
        key INTEGER PRIMARY KEY,
        id TEXT NOT NULL UNIQUE,
        name TEXT NOT NULL);

    CREATE TABLE member(
        "group" INTEGER NOT NULL REFERENCES contact_group ON DELETE CASCADE,
        sort_key BLOB NOT NULL,
        contact INTEGER NOT NULL REFERENCES contact ON DELETE CASCADE,
        PRIMARY KEY("group", sort_key, contact)) WITHOUT ROWID;
    CREATE INDEX member_by_contact ON member(contact);
)";

constexpr std::array migrations{version1};

} // namespace

const StoreSchema contactStoreSchema{
    .contents = "contacts on this computer",
    .applicationID = 0x4266436f, // "BfCo"
    .migrations = migrations,
    .fill = [](Database& database) { ContactTable(database).bringUpToDate(); },
};

} // namespace bridge
