#include "bridges/contacts/contact_data_bridge.h"
#include "server/operation_rows.h"
#include "server/operation_tables.h"

namespace bridge {

namespace {

constexpr std::array rows{
    operation<&ContactDataBridge::searchContacts>("contacts.search", BridgeCapability::contactsRead),
    operation<&ContactDataBridge::listGroups>("contacts.groups.list", BridgeCapability::contactGroupsRead),
    operation<&ContactDataBridge::createContact>("contacts.create", BridgeCapability::contactsCreate),
    operation<&ContactDataBridge::updateContact>("contacts.update", BridgeCapability::contactsUpdate),
    deletion<&ContactDataBridge::deleteContact>("contacts.delete", BridgeCapability::contactsDelete),
    operation<&ContactDataBridge::createGroup>("contacts.groups.create", BridgeCapability::contactGroupsCreate),
    operation<&ContactDataBridge::addMembers>("contacts.groups.add_members", BridgeCapability::contactGroupsUpdate),
    operation<&ContactDataBridge::removeMembers>("contacts.groups.remove_members",
                                                 BridgeCapability::contactGroupsUpdate),
    deletion<&ContactDataBridge::deleteGroup>("contacts.groups.delete", BridgeCapability::contactGroupsDelete),
};
static_assert(wellFormed(rows));

} // namespace

std::span<const Operation> contactsOperations() {
    return rows;
}

} // namespace bridge
