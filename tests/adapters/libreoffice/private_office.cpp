#include "tests/adapters/libreoffice/private_office.h"

#include "tests/support/becomes_true.h"
#include "tests/support/stop_process.h"

#include <algorithm>
#include <csignal>
#include <fstream>
#include <sstream>

namespace bridge::office {

namespace {

namespace fs = std::filesystem;

std::string fileOfProcess(const fs::path& process, const char* name) {
    std::ifstream file(process / name, std::ios::binary);
    // Its process may end at any moment.
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

} // namespace

PrivateOffice::PrivateOffice(LibreOfficeOptions options) {
    if (options.programs.helper.empty()) options.programs.helper = BRIDGE_OFFICE_HELPER;
    options.folder = workFolder();
    m_office = std::make_unique<LibreOffice>(std::move(options));
}

std::vector<std::string> PrivateOffice::filesAtWork() const {
    std::vector<std::string> names;
    std::error_code none;
    for (const auto& own : fs::directory_iterator(workFolder(), none))
        for (const auto& document : fs::recursive_directory_iterator(own.path() / "documents", none))
            names.push_back(document.path().filename());
    return names;
}

std::vector<pid_t> PrivateOffice::processes(const std::string& program) const {
    // All that is in the sandbox comes from a process of ours that was told of our folder.
    std::vector<pid_t> family;
    std::vector<pid_t> found;
    std::vector<std::pair<pid_t, pid_t>> parents;
    std::error_code none;
    for (const auto& process : fs::directory_iterator("/proc", none)) {
        const pid_t pid = std::atoi(process.path().filename().c_str());
        if (pid <= 0) continue;
        const auto status = fileOfProcess(process, "stat");
        const auto end = status.rfind(')');
        if (end == status.npos) continue;
        parents.emplace_back(pid, std::atoi(status.c_str() + end + 4));
        if (fileOfProcess(process, "cmdline").find(workFolder() + "/") != std::string::npos) family.push_back(pid);
    }
    for (size_t index = 0; index < family.size(); ++index)
        for (const auto& [pid, parent] : parents)
            if (parent == family[index] && std::find(family.begin(), family.end(), pid) == family.end())
                family.push_back(pid);
    for (const pid_t pid : family)
        if (fileOfProcess("/proc/" + std::to_string(pid), "comm") == program.substr(0, 15) + "\n") found.push_back(pid);
    return found;
}

void PrivateOffice::send(const std::string& program, int signal) const {
    for (const pid_t pid : processes(program))
        kill(pid, signal);
}

void PrivateOffice::stop(const std::string& program) const {
    for (const pid_t pid : processes(program))
        stopProcess(pid);
}

std::string PrivateOffice::timesAsleep(const std::string& program) const {
    std::string times;
    for (const pid_t pid : processes(program)) {
        const auto status = fileOfProcess("/proc/" + std::to_string(pid), "status");
        const auto line = status.find("\nvoluntary_ctxt_switches:");
        if (line != status.npos) times += status.substr(line, status.find('\n', line + 1) - line);
    }
    return times;
}

void PrivateOffice::awaitEnd(const std::string& program) const {
    while (!processes(program).empty())
        betweenLooks();
}

} // namespace bridge::office
