#include "tests/adapters/geoclue/private_system_bus.h"

namespace bridge {

namespace {

auto* const bus = new PrivateSystemBus; // GoogleTest's to delete
[[maybe_unused]] auto* const environment = testing::AddGlobalTestEnvironment(bus);

} // namespace

PrivateSystemBus& PrivateSystemBus::instance() {
    return *bus;
}

} // namespace bridge
