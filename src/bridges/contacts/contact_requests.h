#pragma once

#include "bridges/contacts/contact_birthday.h"

namespace bridge {

struct SearchContactsRequest {
    std::optional<std::string> query;
    int64_t limit = 0;
    std::optional<std::string> groupID;

    static constexpr auto fields() {
        return std::tuple{optional("query", &SearchContactsRequest::query),
                          required("limit", &SearchContactsRequest::limit),
                          optional("groupID", &SearchContactsRequest::groupID)};
    }
};
static_assert(listsEveryMember<SearchContactsRequest>());

struct CreateContactRequest {
    std::string givenName;
    std::optional<std::string> middleName;
    std::optional<std::string> familyName;
    std::optional<std::string> nickname;
    std::optional<std::string> organizationName;
    std::optional<std::string> jobTitle;
    std::vector<std::string> phoneNumbers;
    std::vector<std::string> emailAddresses;
    std::optional<ContactBirthday> birthday;

    static constexpr auto fields() {
        return std::tuple{required("givenName", &CreateContactRequest::givenName),
                          optional("middleName", &CreateContactRequest::middleName),
                          optional("familyName", &CreateContactRequest::familyName),
                          optional("nickname", &CreateContactRequest::nickname),
                          optional("organizationName", &CreateContactRequest::organizationName),
                          optional("jobTitle", &CreateContactRequest::jobTitle),
                          required("phoneNumbers", &CreateContactRequest::phoneNumbers),
                          required("emailAddresses", &CreateContactRequest::emailAddresses),
                          optional("birthday", &CreateContactRequest::birthday)};
    }
};
static_assert(listsEveryMember<CreateContactRequest>());

struct UpdateContactRequest {
    std::string identifier;
    std::optional<std::string> givenName;
    std::optional<std::string> middleName;
    std::optional<std::string> familyName;
    std::optional<std::string> nickname;
    std::optional<std::string> organizationName;
    std::optional<std::string> jobTitle;
    std::optional<std::vector<std::string>> phoneNumbers;
    std::optional<std::vector<std::string>> emailAddresses;
    std::optional<ContactBirthday> birthday;
    std::optional<bool> clearBirthday;

    static constexpr auto fields() {
        return std::tuple{required("identifier", &UpdateContactRequest::identifier),
                          optional("givenName", &UpdateContactRequest::givenName),
                          optional("middleName", &UpdateContactRequest::middleName),
                          optional("familyName", &UpdateContactRequest::familyName),
                          optional("nickname", &UpdateContactRequest::nickname),
                          optional("organizationName", &UpdateContactRequest::organizationName),
                          optional("jobTitle", &UpdateContactRequest::jobTitle),
                          optional("phoneNumbers", &UpdateContactRequest::phoneNumbers),
                          optional("emailAddresses", &UpdateContactRequest::emailAddresses),
                          optional("birthday", &UpdateContactRequest::birthday),
                          optional("clearBirthday", &UpdateContactRequest::clearBirthday)};
    }
};
static_assert(listsEveryMember<UpdateContactRequest>());

struct CreateContactGroupRequest {
    std::string name;

    static constexpr auto fields() { return std::tuple{required("name", &CreateContactGroupRequest::name)}; }
};
static_assert(listsEveryMember<CreateContactGroupRequest>());

struct ContactGroupMembershipRequest {
    std::string groupIdentifier;
    std::vector<std::string> contactIdentifiers;

    static constexpr auto fields() {
        return std::tuple{required("groupIdentifier", &ContactGroupMembershipRequest::groupIdentifier),
                          required("contactIdentifiers", &ContactGroupMembershipRequest::contactIdentifiers)};
    }
};
static_assert(listsEveryMember<ContactGroupMembershipRequest>());

} // namespace bridge
