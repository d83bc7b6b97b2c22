#include "tests/adapters/eds/private_eds.h"

namespace bridge {

namespace {

const std::string registryService = "org.gnome.evolution.dataserver.Sources5";
const std::string backendPrefix = "org.gnome.evolution.dataserver.Subprocess.Backend.";

// What the installed service file says to run.
std::string commandOf(const std::string& service) {
    std::ifstream file("/usr/share/dbus-1/services/" + service + ".service");
    for (std::string line; std::getline(file, line);)
        if (line.starts_with("Exec=")) return line.substr(5);
    return {};
}

auto* const eds = new PrivateEds; // GoogleTest's to delete
[[maybe_unused]] auto* const environment = testing::AddGlobalTestEnvironment(eds);

} // namespace

PrivateEds& PrivateEds::get() {
    return *eds;
}

std::string PrivateEds::hindrance() {
    if (!isPossible()) return "dbus-daemon is not installed";
    for (const auto& service : {registryService, factoryService})
        if (commandOf(service).empty()) return "Evolution Data Server is not installed";
    return {};
}

void PrivateEds::SetUp() {
    if (!hindrance().empty()) return;
    m_home.emplace();
    std::filesystem::create_directory(*m_home / "run");
    std::filesystem::permissions(*m_home / "run", std::filesystem::perms::owner_all);
    const std::map<std::string, std::string> variables{
        {"HOME", m_home->path()},
        {"XDG_CONFIG_HOME", m_home->file("config")},
        {"XDG_DATA_HOME", m_home->file("data")},
        {"XDG_CACHE_HOME", m_home->file("cache")},
        {"XDG_RUNTIME_DIR", m_home->file("run")},
        // No settings, mounts or proxies of whoever runs the tests.
        {"GSETTINGS_BACKEND", "memory"},
        {"GIO_USE_VFS", "local"},
        {"GIO_USE_PROXY_RESOLVER", "dummy"},
        {"LC_ALL", "C.UTF-8"},
    };
    // The library under test reads them too.
    for (const auto& [name, value] : variables)
        setenv(name.c_str(), value.c_str(), 1);
    start(variables);
    install();
}

void PrivateEds::TearDown() {
    PrivateBus::TearDown();
    m_home.reset();
}

void PrivateEds::write(const std::string& service, const std::string& command) const {
    putFile(serviceFolder() / (service + ".service"), "[D-BUS Service]\nName=" + service + "\nExec=" + command + "\n");
}

void PrivateEds::install() {
    write(registryService, commandOf(registryService));
    write(factoryService, commandOf(factoryService) + " --backend-per-process=1");
    reload();
}

void PrivateEds::installBroken() {
    write(registryService, "/bin/false");
    write(factoryService, "/bin/false");
    reload();
}

void PrivateEds::uninstall() {
    for (const auto& service : {registryService, factoryService})
        std::filesystem::remove(serviceFolder() / (service + ".service"));
    reload();
    end(SIGTERM);
}

void PrivateEds::kill() {
    end(SIGKILL);
}

void PrivateEds::end(int signal) {
    const auto running = ownNames();
    for (const auto& name : running)
        if (const auto process = processOf(name); process > 0) ::kill(process, signal);
    for (const auto& name : running)
        waitUntil(Owned::no, name);
}

std::vector<std::string> PrivateEds::ownNames() const {
    std::vector<std::string> found;
    for (const auto& name : names())
        if (name == factoryService || name == registryService || name.starts_with(backendPrefix)) found.push_back(name);
    return found;
}

pid_t PrivateEds::registry() const {
    return processOf(registryService);
}

pid_t PrivateEds::factory() const {
    return processOf(factoryService);
}

std::vector<pid_t> PrivateEds::backends() const {
    std::vector<pid_t> processes;
    for (const auto& name : names())
        if (name.starts_with(backendPrefix)) processes.push_back(processOf(name));
    return processes;
}

} // namespace bridge
