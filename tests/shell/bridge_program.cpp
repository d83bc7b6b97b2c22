#include "tests/shell/bridge_program.h"

namespace bridge {

namespace {

std::vector<std::string> commandFor(const std::string& program, const std::vector<std::string>& arguments) {
    std::vector<std::string> command{"sh", "-c", "\"$0\" \"$@\" 2>&1 & echo $!; wait $!; echo \"ended with $?\"",
                                     program};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return command;
}

BridgeProgram::Variables allOf(const TemporaryFolder& home, const BridgeProgram::Variables& more) {
    auto variables = environmentOf(home);
    variables.insert(more.begin(), more.end());
    return variables;
}

} // namespace

BridgeProgram::Variables environmentOf(const TemporaryFolder& home) {
    const auto runtime = home.file("run");
    std::filesystem::create_directory(runtime);
    std::filesystem::permissions(runtime, std::filesystem::perms::owner_all);
    return {{"HOME", home.path()},
            {"XDG_RUNTIME_DIR", runtime},
            {"XDG_DATA_HOME", home.file("data")},
            {"XDG_CONFIG_HOME", home.file("config")},
            {"XDG_CACHE_HOME", home.file("cache")},
            {"GSETTINGS_BACKEND", "memory"},
            {"LSAN_OPTIONS", "suppressions=" BRIDGE_LEAKS},
            {"GIO_USE_VFS", "local"}};
}

std::string BridgeProgram::path() {
    const char* installed = std::getenv("BRIDGE_PROGRAM");
    return installed ? installed : BRIDGE_PROGRAM;
}

BridgeProgram::BridgeProgram(const TemporaryFolder& home, const Variables& variables,
                             const std::vector<std::string>& arguments, const std::string& program)
    : m_shell(commandFor(program, arguments), allOf(home, variables), ""), m_pid(std::stoi(m_shell.readLine())) {}

std::string BridgeProgram::readLine() {
    auto line = m_shell.readLine();
    constexpr std::string_view end = "ended with ";
    if (line.starts_with(end)) m_exitCode = std::stoi(line.substr(end.size()));
    m_log += line + '\n';
    return line;
}

bool BridgeProgram::says(const std::string& text) {
    while (!m_exitCode)
        if (readLine().find(text) != std::string::npos) return true;
    return false;
}

int BridgeProgram::exitCode() {
    while (!m_exitCode)
        readLine();
    return *m_exitCode;
}

} // namespace bridge
