#pragma once

#include "server/operation.h"

namespace bridge {

// The rows of each bridge, in the file named for it.
std::span<const Operation> statusOperations();
std::span<const Operation> calendarOperations();
std::span<const Operation> remindersOperations();
std::span<const Operation> contactsOperations();
std::span<const Operation> musicOperations();
std::span<const Operation> filesOperations();
std::span<const Operation> iworkOperations();
std::span<const Operation> locationOperations();

} // namespace bridge
