#pragma once

#include "base/async_mutex.h"
#include "base/task.h"
#include "bridges/contacts/contact_descriptors.h"
#include "bridges/contacts/contact_requests.h"
#include "platform/authorization.h"

namespace bridge {

// The user's contacts and their groups.
//
// Main thread only; the store and the authorization outlive it. Every operation first throws AppleBridgeError
// permissionDenied unless the user has granted access to contacts, and passes on PlatformError as the store throws it.
// Everything is checked before anything is changed, and a change that fails has changed nothing. Changes that look
// before they write take turns from the look to the end; searching and listing wait for nobody.
class ContactDataBridge {
public:
    ContactDataBridge(ContactStore& store, const Authorization& authorization)
        : m_store(store), m_authorization(authorization) {}

    // At most `limit` (1 to 500) in the store's order. Without a group the store decides which names match; in a group
    // those match that hold the query anywhere. An unknown group is resourceNotFound.
    Task<std::vector<ContactDescriptor>> searchContacts(SearchContactsRequest request);
    // A given name of nothing but white space and a birthday that is no day are malformedRequest, here and below.
    Task<ContactDescriptor> createContact(CreateContactRequest request);
    // An unknown contact is resourceNotFound, one that takes no changes operationFailed.
    Task<ContactDescriptor> updateContact(UpdateContactRequest request);
    Task<> deleteContact(std::string identifier);

    // By name.
    Task<std::vector<ContactGroupDescriptor>> listGroups();
    // An empty name is malformedRequest. Groups of the same name may be many.
    Task<ContactGroupDescriptor> createGroup(CreateContactGroupRequest request);
    // Its members stay. An unknown group is resourceNotFound, here and below.
    Task<> deleteGroup(std::string identifier);
    // All of 1 to 100 different contacts, each of which exists, or none.
    Task<ContactGroupMembershipResult> addMembers(ContactGroupMembershipRequest request);
    Task<ContactGroupMembershipResult> removeMembers(ContactGroupMembershipRequest request);

private:
    void ensureContactsAccess() const;
    Task<Contact> fetchContact(std::string identifier);
    Task<ContactGroup> findGroup(std::string identifier);
    Task<> ensureAllExist(std::vector<std::string> contactIdentifiers);
    Task<ContactGroupMembershipResult> changeMembership(GroupMembershipChange change,
                                                        ContactGroupMembershipRequest request);

    ContactStore& m_store;
    const Authorization& m_authorization;
    // One for all: a contact that is kept in several address books goes by several identifiers.
    AsyncMutex m_changing;
};

} // namespace bridge
