#include "bridges/contacts/contact_data_bridge.h"

#include "base/apple_bridge_error.h"
#include "bridges/common/permission_state.h"
#include "bridges/contacts/contact_edits.h"
#include "bridges/contacts/contact_search.h"
#include "platform/privacy_service_names.h"

namespace bridge {

void ContactDataBridge::ensureContactsAccess() const {
    switch (permissionState(m_authorization, PrivacyService::contacts)) {
    case BridgePermissionState::fullAccess:
    // The store then has only the contacts that the user picked for us.
    case BridgePermissionState::limited:
        return;
    case BridgePermissionState::notDetermined:
    case BridgePermissionState::denied:
    case BridgePermissionState::restricted:
    case BridgePermissionState::writeOnly:
    case BridgePermissionState::unavailable:
    case BridgePermissionState::unknown:
        throw AppleBridgeError::permissionDenied(titleOf(PrivacyService::contacts));
    }
}

Task<Contact> ContactDataBridge::fetchContact(std::string identifier) {
    std::vector<std::string> identifiers{identifier};
    auto found = co_await m_store.contacts(std::move(identifiers));
    if (found.empty()) throw AppleBridgeError::resourceNotFound(identifier);
    co_return std::move(found.front());
}

Task<std::vector<ContactDescriptor>> ContactDataBridge::searchContacts(SearchContactsRequest request) {
    ensureContactsAccess();
    const auto query = normalizedQuery(request);
    ContactPredicate predicate = AllContacts{};
    if (request.groupID) {
        auto group = co_await findGroup(*request.groupID);
        predicate = ContactsInGroup{std::move(group.identifier)};
    } else if (!query.empty()) {
        predicate = ContactsMatchingName{query};
    }

    const auto limit = searchLimit(request);
    const bool filters = request.groupID && !query.empty();
    std::vector<ContactDescriptor> found;
    std::function<bool(const Contact&)> visit = [&](const Contact& contact) {
        if (!filters || nameContains(contact, query)) found.push_back(describeContact(contact));
        return found.size() < limit;
    };
    co_await m_store.enumerate(std::move(predicate), std::move(visit));
    co_return found;
}

Task<ContactDescriptor> ContactDataBridge::createContact(CreateContactRequest request) {
    ensureContactsAccess();
    std::vector<ContactChange> changes{AddContact{contactToCreate(std::move(request))}};
    auto added = co_await m_store.execute(std::move(changes));
    const auto contact = co_await fetchContact(std::move(added.at(0)));
    co_return describeContact(contact);
}

Task<ContactDescriptor> ContactDataBridge::updateContact(UpdateContactRequest request) {
    ensureContactsAccess();
    const auto identifier = request.identifier;
    const ContactEdit edit(std::move(request));

    const auto turn = co_await m_changing.lock();
    auto contact = co_await fetchContact(identifier);
    if (!contact.isEditable) throw AppleBridgeError::operationFailed("The contact cannot be edited.");
    edit.applyTo(contact);
    std::vector<ContactChange> changes{UpdateContact{std::move(contact)}};
    co_await m_store.execute(std::move(changes));
    const auto updated = co_await fetchContact(identifier);
    co_return describeContact(updated);
}

Task<> ContactDataBridge::deleteContact(std::string identifier) {
    ensureContactsAccess();
    const auto turn = co_await m_changing.lock();
    auto contact = co_await fetchContact(std::move(identifier));
    if (!contact.isEditable) throw AppleBridgeError::operationFailed("The contact cannot be deleted.");
    std::vector<ContactChange> changes{DeleteContact{std::move(contact.identifier)}};
    co_await m_store.execute(std::move(changes));
}

} // namespace bridge
