#include "adapters/libreoffice/helper/soffice.h"

#include "adapters/libreoffice/helper/profile.h"
#include "adapters/libreoffice/protocol.h"

#include <com/sun/star/bridge/UnoUrlResolver.hpp>
#include <com/sun/star/connection/NoConnectException.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/lang/XMultiComponentFactory.hpp>
#include <cppuhelper/bootstrap.hxx>
#include <rtl/bootstrap.hxx>

#include <array>
#include <csignal>
#include <fstream>
#include <poll.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace bridge::office {

namespace {

// It ends with this when it has written its profile for the first time.
constexpr int startAgain = 81;
constexpr const char* profile = "/tmp/profile";
constexpr const char* address = "pipe,name=brindlefox;urp";

// A file that unpacks to more than this is nothing that a person has written.
constexpr rlim_t largestMemory = rlim_t{6} << 30;
constexpr rlim_t largestFile = rlim_t{1} << 30;

void limit(pid_t pid, decltype(RLIMIT_AS) what, rlim_t most) {
    const rlimit limits{most, most};
    prlimit(pid, what, &limits, nullptr);
}

bool isReadable(int descriptor, std::chrono::milliseconds patience) {
    pollfd watched{descriptor, POLLIN, 0};
    return poll(&watched, 1, static_cast<int>(patience.count())) > 0;
}

} // namespace

SOffice::SOffice(const std::string& home) : m_home(home) {
    writeProfile(profile);
    for (int attempt = 0; attempt < 3 && !m_desktop.is(); ++attempt) {
        start();
        connect();
    }
    if (!m_desktop.is()) throw ScriptError(notStarted, "LibreOffice could not be started.");
}

SOffice::~SOffice() {
    if (m_pid <= 0) return;
    kill(m_pid, SIGKILL);
    waitpid(m_pid, nullptr, 0);
}

void SOffice::start() {
    const std::array<std::string, 8> words{m_home + "/program/soffice.bin",
                                           std::string("-env:UserInstallation=file://") + profile,
                                           std::string("--accept=") + address,
                                           "--headless",
                                           "--norestore",
                                           "--nologo",
                                           "--nodefault",
                                           "--nolockcheck"};
    std::vector<char*> arguments;
    for (const auto& word : words)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    std::array<std::string, 4> settings{"HOME=/tmp", "LC_ALL=en_US.UTF-8", "SAL_USE_VCLPLUGIN=svp", "PATH=/usr/bin"};
    std::vector<char*> environment;
    for (auto& setting : settings)
        environment.push_back(setting.data());
    environment.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addclosefrom_np(&actions, helperSocket);
    const int code = posix_spawn(&m_pid, arguments[0], &actions, nullptr, arguments.data(), environment.data());
    posix_spawn_file_actions_destroy(&actions);
    if (code != 0) throw ScriptError(notStarted, "LibreOffice could not be started.");
    limit(m_pid, RLIMIT_AS, largestMemory);
    limit(m_pid, RLIMIT_FSIZE, largestFile);
    limit(m_pid, RLIMIT_CORE, 0);
    m_end = FileDescriptor(static_cast<int>(syscall(SYS_pidfd_open, m_pid, 0)));
}

bool SOffice::mustStartAgain() const {
    int status = 0;
    waitpid(m_pid, &status, 0);
    if (WIFEXITED(status) && WEXITSTATUS(status) == startAgain) return true;
    throw ScriptError(notStarted, "LibreOffice ended while it was started.");
}

void SOffice::connect() {
    // Without the types of the office the first call of one ends this process.
    rtl::Bootstrap::set("URE_MORE_TYPES", toUno("file://" + m_home + "/program/types/offapi.rdb"));
    static const auto local = cppu::defaultBootstrap_InitialComponentContext();
    const auto resolver = css::bridge::UnoUrlResolver::create(local);
    const auto target = toUno(std::string("uno:") + address + ";StarOffice.ComponentContext");
    while (!m_desktop.is())
        try {
            m_context = as<css::uno::XComponentContext>(
                Ref<css::uno::XInterface>(resolver->resolve(target), css::uno::UNO_QUERY_THROW));
            m_desktop = as<css::frame::XComponentLoader>(css::frame::Desktop::create(m_context));
        } catch (const css::connection::NoConnectException&) {
            if (isReadable(m_end.get(), std::chrono::milliseconds(10)) && mustStartAgain()) {
                m_pid = 0;
                return;
            }
        }
}

Ref<css::uno::XInterface> SOffice::createInstance(const char* service) const {
    return m_context->getServiceManager()->createInstanceWithContext(OUString::createFromAscii(service), m_context);
}

bool SOffice::hasEnded() const {
    return isReadable(m_end.get(), std::chrono::milliseconds(200));
}

int64_t SOffice::residentBytes() const {
    std::ifstream file("/proc/" + std::to_string(m_pid) + "/statm");
    int64_t size = 0;
    int64_t resident = 0;
    file >> size >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

} // namespace bridge::office
