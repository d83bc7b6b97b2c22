#pragma once

#include "tests/support/private_bus.h"

namespace bridge {

// The tests' own bus, as the one of the system too.
class PrivateSystemBus : public PrivateBus {
public:
    // The one of this program.
    static PrivateSystemBus& instance();

    void SetUp() override {
        PrivateBus::SetUp();
        useIt();
    }
    // Undoes what a test did who left the system without a bus.
    void useIt() const { setenv("DBUS_SYSTEM_BUS_ADDRESS", address().c_str(), 1); }
};

} // namespace bridge
