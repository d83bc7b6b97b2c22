#pragma once

#include "bridges/contacts/contact_requests.h"

#include <span>
#include <string_view>

namespace bridge {

enum class GroupMembershipChange { addMembers, removeMembers };

std::string_view wireName(GroupMembershipChange change);
std::optional<GroupMembershipChange> fromWireName(std::string_view name, std::type_identity<GroupMembershipChange>);
std::span<const std::string_view> wireNames(std::type_identity<GroupMembershipChange>);

// Throws AppleBridgeError malformedRequest unless it names 1 to 100 contacts, each once.
void checkMembers(const ContactGroupMembershipRequest& request);

} // namespace bridge
