#pragma once

#include "bridges/contacts/contact_requests.h"

namespace bridge {

// The contact that a request describes, its given name trimmed. Throws AppleBridgeError malformedRequest for an empty
// given name or a day that there is not.
Contact contactToCreate(CreateContactRequest request);

// The changes that a request asks for, checked when this is made: it throws like contactToCreate().
class ContactEdit {
public:
    explicit ContactEdit(UpdateContactRequest request);

    // What the request does not name stays. Of setting and clearing the birthday at once, clearing wins.
    void applyTo(Contact& contact) const;

private:
    UpdateContactRequest m_request;
    std::optional<Birthday> m_birthday;
};

} // namespace bridge
