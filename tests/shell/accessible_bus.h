#pragma once

#include "tests/support/private_bus.h"

namespace bridge {

// A session bus of the test's own where screen readers find what they need.
class AccessibleBus : public PrivateBus {
public:
    static std::string hindrance();
    void SetUp() override;

private:
    TemporaryFolder m_home;
};

} // namespace bridge
