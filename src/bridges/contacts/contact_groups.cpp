#include "base/apple_bridge_error.h"
#include "base/text.h"
#include "bridges/contacts/contact_data_bridge.h"

#include <algorithm>
#include <set>

namespace bridge {

Task<ContactGroup> ContactDataBridge::findGroup(std::string identifier) {
    auto groups = co_await m_store.groups();
    const auto found = std::ranges::find(groups, identifier, &ContactGroup::identifier);
    if (found == groups.end()) throw AppleBridgeError::resourceNotFound(identifier);
    co_return std::move(*found);
}

Task<std::vector<ContactGroupDescriptor>> ContactDataBridge::listGroups() {
    ensureContactsAccess();
    auto groups = co_await m_store.groups();
    co_return describeGroups(std::move(groups));
}

Task<ContactGroupDescriptor> ContactDataBridge::createGroup(CreateContactGroupRequest request) {
    ensureContactsAccess();
    std::string name(trim(request.name));
    if (name.empty()) throw AppleBridgeError::malformedRequest("Contact group name cannot be empty.");
    std::vector<ContactChange> changes{AddContactGroup{name}};
    auto added = co_await m_store.execute(std::move(changes));
    co_return ContactGroupDescriptor{std::move(added.at(0)), std::move(name)};
}

Task<> ContactDataBridge::deleteGroup(std::string identifier) {
    ensureContactsAccess();
    const auto turn = co_await m_changing.lock();
    auto group = co_await findGroup(std::move(identifier));
    std::vector<ContactChange> changes{DeleteContactGroup{std::move(group.identifier)}};
    co_await m_store.execute(std::move(changes));
}

Task<> ContactDataBridge::ensureAllExist(std::vector<std::string> contactIdentifiers) {
    // All with one question: a hundred of them one by one would take an address book a second. Only what is not among
    // the answers, unknown or a contact's other identifier, is asked for by itself.
    const auto contacts = co_await m_store.contacts(contactIdentifiers);
    std::set<std::string_view> existing;
    for (const auto& contact : contacts)
        existing.insert(contact.identifier);
    for (const auto& identifier : contactIdentifiers)
        if (!existing.contains(identifier)) {
            const auto fetched = co_await fetchContact(identifier);
        }
}

Task<ContactGroupMembershipResult> ContactDataBridge::changeMembership(GroupMembershipChange change,
                                                                       ContactGroupMembershipRequest request) {
    ensureContactsAccess();
    checkMembers(request);

    const auto turn = co_await m_changing.lock();
    const auto group = co_await findGroup(request.groupIdentifier);
    co_await ensureAllExist(request.contactIdentifiers);
    std::vector<ContactChange> changes;
    changes.reserve(request.contactIdentifiers.size());
    for (const auto& contact : request.contactIdentifiers) {
        if (change == GroupMembershipChange::addMembers)
            changes.emplace_back(AddGroupMember{contact, group.identifier});
        else
            changes.emplace_back(RemoveGroupMember{contact, group.identifier});
    }
    co_await m_store.execute(std::move(changes));
    co_return ContactGroupMembershipResult{std::move(request.groupIdentifier), std::move(request.contactIdentifiers),
                                           change};
}

Task<ContactGroupMembershipResult> ContactDataBridge::addMembers(ContactGroupMembershipRequest request) {
    return changeMembership(GroupMembershipChange::addMembers, std::move(request));
}

Task<ContactGroupMembershipResult> ContactDataBridge::removeMembers(ContactGroupMembershipRequest request) {
    return changeMembership(GroupMembershipChange::removeMembers, std::move(request));
}

} // namespace bridge
