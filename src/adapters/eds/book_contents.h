#pragma once

#include "adapters/eds/book_client.h"
#include "adapters/eds/call.h"
#include "adapters/eds/contact_list.h"

namespace bridge {

// Reading an address book. These block and throw PlatformError. A card that makes no sense is left out, so that it does
// not hide the others.

// Which of its contacts.
struct BookSelection {
    std::optional<std::vector<std::string>> uids = std::nullopt;
    std::optional<std::vector<std::string>> nameWords = std::nullopt; // as nameWords() gives them
};

// Its place among all contacts, of every address book, and the contact.
struct PlacedContact {
    std::string sortKey;
    Contact contact;
};
bool comesBefore(const PlacedContact& left, const PlacedContact& right);

// In their order.
std::vector<PlacedContact> readContacts(BookClient& client, const Call& call, const BookSelection& selection);

std::vector<ContactGroup> readGroups(BookClient& client, const Call& call);
// Nobody when there is no such group. Also those that are no longer there.
std::vector<ListMember> readMembers(BookClient& client, const Call& call, const std::string& uid);

// The contact or group behind an identifier of the store.
std::string identifierOf(const ListMember& item);
std::optional<ListMember> itemOf(std::string_view identifier);

// In a sentence, for what is gone.
std::string noContact(std::string_view identifier);
std::string noGroup(std::string_view identifier);

} // namespace bridge
