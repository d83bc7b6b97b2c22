#include "bridges/contacts/contact_edits.h"

#include "base/apple_bridge_error.h"
#include "base/text.h"

namespace bridge {

namespace {

std::vector<LabeledValue> labeled(std::string_view label, const std::vector<std::string>& values) {
    std::vector<LabeledValue> result;
    result.reserve(values.size());
    for (const auto& value : values)
        result.push_back({std::string(label), value});
    return result;
}

std::vector<LabeledValue> phoneNumbers(const std::vector<std::string>& values) {
    return labeled("main", values);
}

std::vector<LabeledValue> emailAddresses(const std::vector<std::string>& values) {
    return labeled("work", values);
}

std::optional<Birthday> checked(const std::optional<ContactBirthday>& birthday) {
    if (!birthday) return std::nullopt;
    return checkedBirthday(*birthday);
}

} // namespace

Contact contactToCreate(CreateContactRequest request) {
    Contact contact;
    contact.givenName = trim(request.givenName);
    if (contact.givenName.empty()) throw AppleBridgeError::malformedRequest("Contact given name cannot be empty.");
    contact.birthday = checked(request.birthday);
    contact.middleName = std::move(request.middleName).value_or("");
    contact.familyName = std::move(request.familyName).value_or("");
    contact.nickname = std::move(request.nickname).value_or("");
    contact.organizationName = std::move(request.organizationName).value_or("");
    contact.jobTitle = std::move(request.jobTitle).value_or("");
    contact.phoneNumbers = phoneNumbers(request.phoneNumbers);
    contact.emailAddresses = emailAddresses(request.emailAddresses);
    return contact;
}

ContactEdit::ContactEdit(UpdateContactRequest request) : m_request(std::move(request)) {
    if (m_request.givenName && trim(*m_request.givenName).empty())
        throw AppleBridgeError::malformedRequest("Contact given name cannot be empty when supplied.");
    m_birthday = checked(m_request.birthday);
}

void ContactEdit::applyTo(Contact& contact) const {
    const auto replace = [](std::string& field, const std::optional<std::string>& text) {
        if (text) field = *text;
    };
    replace(contact.givenName, m_request.givenName);
    replace(contact.middleName, m_request.middleName);
    replace(contact.familyName, m_request.familyName);
    replace(contact.nickname, m_request.nickname);
    replace(contact.organizationName, m_request.organizationName);
    replace(contact.jobTitle, m_request.jobTitle);
    if (m_request.phoneNumbers) contact.phoneNumbers = phoneNumbers(*m_request.phoneNumbers);
    if (m_request.emailAddresses) contact.emailAddresses = emailAddresses(*m_request.emailAddresses);
    if (m_birthday) contact.birthday = m_birthday;
    if (m_request.clearBirthday.value_or(false)) contact.birthday.reset();
}

} // namespace bridge
