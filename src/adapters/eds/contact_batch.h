#pragma once

#include "adapters/eds/book_list.h"
#include "adapters/eds/contact_list.h"

namespace bridge {

// What the changes of a batch are about.
struct ContactBatch {
    AddressBook book;                // whose cards they change
    std::vector<std::string> uids;   // those cards, new ones excepted
    std::vector<ListMember> members; // who is put into groups and taken out of them, of any book
};

// Throws PlatformError for what is in no listed book, and when the changes concern several: nothing makes changes of
// two address books or none.
ContactBatch batchOf(const std::vector<ContactChange>& changes, const BookList& list);

} // namespace bridge
