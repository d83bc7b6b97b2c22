#pragma once

#include "adapters/sqlite/sqlite_contact_store.h"

namespace bridge::playground {

// Contacts as people have them, written as a vCard file: names in many scripts, addresses of many countries, birthdays
// with and without a year, a picture, an organization, and three groups of which one is empty.
void makeSampleContacts(SqliteContactStore& store);

} // namespace bridge::playground
