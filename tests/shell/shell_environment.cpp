#include "tests/shell/shell_environment.h"

#include "tests/support/private_bus.h"

namespace bridge::testbus {

namespace {

auto* const bus = new PrivateBus; // GoogleTest's to delete
[[maybe_unused]] auto* const environment = testing::AddGlobalTestEnvironment(bus);

} // namespace

bool isPossible() {
    return PrivateBus::isPossible();
}

std::string address() {
    return bus->address();
}

bool isOwned(const std::string& name) {
    return bus->processOf(name) != 0;
}

void waitUntilFree(const std::string& name) {
    bus->waitUntil(PrivateBus::Owned::no, name);
}

} // namespace bridge::testbus
