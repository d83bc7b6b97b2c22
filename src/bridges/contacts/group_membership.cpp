#include "bridges/contacts/group_membership.h"

#include "base/apple_bridge_error.h"

#include <algorithm>
#include <array>
#include <set>

namespace bridge {

namespace {

constexpr std::array<std::string_view, 2> names{"add_members", "remove_members"};

constexpr size_t maximumMembers = 100;

} // namespace

std::string_view wireName(GroupMembershipChange change) {
    return names[static_cast<size_t>(change)];
}

std::optional<GroupMembershipChange> fromWireName(std::string_view name, std::type_identity<GroupMembershipChange>) {
    const auto found = std::find(names.begin(), names.end(), name);
    if (found == names.end()) return std::nullopt;
    return static_cast<GroupMembershipChange>(found - names.begin());
}

std::span<const std::string_view> wireNames(std::type_identity<GroupMembershipChange>) {
    return names;
}

void checkMembers(const ContactGroupMembershipRequest& request) {
    const auto& identifiers = request.contactIdentifiers;
    if (identifiers.empty() || identifiers.size() > maximumMembers)
        throw AppleBridgeError::malformedRequest("Contact group changes require between 1 and 100 contact IDs.");
    const std::set<std::string_view> different(identifiers.begin(), identifiers.end());
    if (different.size() != identifiers.size())
        throw AppleBridgeError::malformedRequest("Contact IDs in a group change must be unique.");
}

} // namespace bridge
