#include "tests/shell/accessible_bus.h"

namespace bridge {

namespace {

constexpr const char* launcher = "/usr/libexec/at-spi-bus-launcher";

} // namespace

std::string AccessibleBus::hindrance() {
    if (!isPossible()) return "dbus-daemon is not installed";
    return std::filesystem::exists(launcher) ? "" : "at-spi2-core is not installed";
}

void AccessibleBus::SetUp() {
    if (!hindrance().empty()) return;
    // Its services have a home without anything.
    const auto home = m_home.path().string();
    start({{"HOME", home}, {"XDG_RUNTIME_DIR", home}, {"GSETTINGS_BACKEND", "memory"}});
    putFile(serviceFolder() / "org.a11y.Bus.service",
            std::string("[D-BUS Service]\nName=org.a11y.Bus\nExec=") + launcher + "\n");
    reload();
}

} // namespace bridge
