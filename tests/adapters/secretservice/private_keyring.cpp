#include "tests/adapters/secretservice/private_keyring.h"

#include "tests/support/private_bus.h"

namespace bridge {

namespace {

constexpr auto serviceName = "org.freedesktop.secrets";

auto* const bus = new PrivateBus; // GoogleTest's to delete
[[maybe_unused]] auto* const environment = testing::AddGlobalTestEnvironment(bus);

} // namespace

std::string PrivateKeyring::hindrance() {
    for (const auto* program : {"dbus-daemon", "gnome-keyring-daemon"})
        if (!ChildProcess::isInstalled(program)) return std::string(program) + " is not installed";
    return {};
}

void PrivateKeyring::start(State state) {
    const auto home = m_home.path().string();
    const std::map<std::string, std::string> variables{{"DBUS_SESSION_BUS_ADDRESS", bus->address()},
                                                       {"HOME", home},
                                                       {"XDG_RUNTIME_DIR", home},
                                                       {"XDG_DATA_HOME", home + "/data"},
                                                       {"XDG_CONFIG_HOME", home + "/config"},
                                                       {"XDG_CACHE_HOME", home + "/cache"}};
    std::vector<std::string> command{"gnome-keyring-daemon", "--foreground", "--components=secrets"};
    if (state == State::unlocked) command.emplace_back("--unlock");
    m_daemon = std::make_unique<ChildProcess>(command, variables, state == State::unlocked ? "password" : "");
    bus->waitUntil(PrivateBus::Owned::yes, serviceName);
}

void PrivateKeyring::end() {
    m_daemon.reset();
    bus->waitUntil(PrivateBus::Owned::no, serviceName);
}

void PrivateKeyring::lock() {
    const auto connection = bus->connect();
    const char* const collections[] = {"/org/freedesktop/secrets/collection/login", nullptr};
    constexpr int usualTimeout = -1;
    const GLibPointer<GVariant> answer(g_dbus_connection_call_sync(
        connection.get(), serviceName, "/org/freedesktop/secrets", "org.freedesktop.Secret.Service", "Lock",
        g_variant_new("(^ao)", collections), nullptr, G_DBUS_CALL_FLAGS_NONE, usualTimeout, nullptr, nullptr));
    if (!answer) throw std::runtime_error("the keyring can't be locked");
}

} // namespace bridge
