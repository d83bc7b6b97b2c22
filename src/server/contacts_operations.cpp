#include "bridges/contacts/contact_requests.h"
#include "server/operation_rows.h"
#include "server/operation_tables.h"
#include "server/payloads.h"

namespace bridge {

namespace {

constexpr std::array rows{
    later<SearchContactsRequest>("contacts.search", BridgeCapability::contactsRead),
    later("contacts.groups.list", BridgeCapability::contactGroupsRead),
    later<CreateContactRequest>("contacts.create", BridgeCapability::contactsCreate),
    later<UpdateContactRequest>("contacts.update", BridgeCapability::contactsUpdate),
    later<IdentifierPayload>("contacts.delete", BridgeCapability::contactsDelete, Confirm::always),
    later<CreateContactGroupRequest>("contacts.groups.create", BridgeCapability::contactGroupsCreate),
    later<ContactGroupMembershipRequest>("contacts.groups.add_members", BridgeCapability::contactGroupsUpdate),
    later<ContactGroupMembershipRequest>("contacts.groups.remove_members", BridgeCapability::contactGroupsUpdate),
    later<IdentifierPayload>("contacts.groups.delete", BridgeCapability::contactGroupsDelete, Confirm::always),
};
static_assert(wellFormed(rows));

} // namespace

std::span<const Operation> contactsOperations() {
    return rows;
}

} // namespace bridge
