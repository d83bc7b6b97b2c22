#include "bridges/contacts/contact_descriptors.h"

#include "base/text.h"
#include "bridges/contacts/postal_address_format.h"

#include <algorithm>

namespace bridge {

namespace {

std::vector<std::string> withoutLabels(const std::vector<LabeledValue>& values) {
    std::vector<std::string> texts;
    texts.reserve(values.size());
    for (const auto& each : values)
        texts.push_back(each.value);
    return texts;
}

} // namespace

ContactDescriptor describeContact(const Contact& contact) {
    ContactDescriptor descriptor{.id = contact.identifier,
                                 .givenName = contact.givenName,
                                 .middleName = contact.middleName,
                                 .familyName = contact.familyName,
                                 .nickname = contact.nickname,
                                 .organizationName = contact.organizationName,
                                 .jobTitle = contact.jobTitle,
                                 .phoneNumbers = withoutLabels(contact.phoneNumbers),
                                 .emailAddresses = withoutLabels(contact.emailAddresses),
                                 .postalAddresses = {},
                                 .birthday = {},
                                 .imageAvailable = contact.imageAvailable};
    for (const auto& address : contact.postalAddresses)
        descriptor.postalAddresses.push_back(formatPostalAddress(address));
    if (contact.birthday) descriptor.birthday = describeBirthday(*contact.birthday);
    return descriptor;
}

std::vector<ContactGroupDescriptor> describeGroups(std::vector<ContactGroup> groups) {
    std::vector<std::pair<std::string, ContactGroupDescriptor>> sorted;
    sorted.reserve(groups.size());
    for (auto& group : groups) {
        auto key = sortKey(group.name);
        sorted.emplace_back(std::move(key), ContactGroupDescriptor{std::move(group.identifier), std::move(group.name)});
    }
    std::ranges::stable_sort(sorted, {}, [](const auto& each) -> const std::string& { return each.first; });

    std::vector<ContactGroupDescriptor> descriptors;
    descriptors.reserve(sorted.size());
    for (auto& each : sorted)
        descriptors.push_back(std::move(each.second));
    return descriptors;
}

} // namespace bridge
