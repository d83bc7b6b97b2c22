#include "adapters/libreoffice/sandbox.h"

#include "adapters/libreoffice/root_mount.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bridge::office {

namespace {

// More than LibreOffice's temporary files ever were, and little enough for a machine's memory.
constexpr const char* roomInTmp = "536870912";
constexpr const char* helperInside = "/app/brindlefox-office";

void append(std::vector<std::string>& command, std::initializer_list<std::string> words) {
    command.insert(command.end(), words);
}

std::vector<std::string> emptyPlace(const std::string& bubblewrap) {
    auto command = rootMountWords();
    append(command, {bubblewrap, "--unshare-net", "--unshare-pid", "--unshare-ipc", "--unshare-uts",
                     "--unshare-cgroup-try", "--cap-drop", "ALL", "--clearenv"});
    append(command, {"--ro-bind", "/usr", "/usr"});
    // Links where /usr is all there is, folders on older installations.
    for (const char* folder : {"bin", "lib", "lib32", "lib64", "sbin"}) {
        const std::string path = std::string("/") + folder;
        std::error_code none;
        if (std::filesystem::is_symlink(path, none))
            append(command, {"--symlink", std::filesystem::read_symlink(path, none).string(), path});
        else
            append(command, {"--ro-bind-try", path, path});
    }
    return command;
}

bool runs(std::vector<std::string> command) {
    std::vector<char*> arguments;
    for (auto& word : command)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t quiet;
    posix_spawn_file_actions_init(&quiet);
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        posix_spawn_file_actions_addopen(&quiet, descriptor, "/dev/null", O_RDWR, 0);
    char* noEnvironment = nullptr;
    pid_t pid = 0;
    const int code = posix_spawn(&pid, arguments[0], &quiet, nullptr, arguments.data(), &noEnvironment);
    posix_spawn_file_actions_destroy(&quiet);
    if (code != 0) return false;
    int status = 0;
    while (waitpid(pid, &status, 0) < 0)
        if (errno != EINTR) return false;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

bool isThere(const std::string& path) {
    return access(path.c_str(), R_OK) == 0;
}

} // namespace

std::vector<std::string> sandboxedCommand(const OfficePrograms& programs, const std::string& documents,
                                          const std::vector<std::string>& helperArguments) {
    auto command = emptyPlace(programs.bubblewrap);
    append(command, {"--ro-bind-try", programs.home, programs.home});
    append(command, {"--proc", "/proc", "--dev", "/dev", "--size", roomInTmp, "--tmpfs", "/tmp"});
    // Settings of the machine that are no secret: fonts, LibreOffice's own, and what time it is here.
    for (const char* path : {"/etc/libreoffice", "/etc/fonts", "/etc/alternatives", "/etc/localtime",
                             "/etc/ld.so.cache", "/var/cache/fontconfig"})
        append(command, {"--ro-bind-try", path, path});
    append(command, {"--ro-bind", programs.helper, helperInside, "--bind", documents, folderInside});
    append(command, {"--setenv", "PATH", "/usr/bin", "--setenv", "HOME", "/tmp", "--setenv", "LC_ALL", "en_US.UTF-8"});
    // The helper is the first process of its namespace: with it everything in there ends.
    append(command, {"--as-pid-1", "--hostname", "office", "--chdir", folderInside, "--", helperInside});
    command.insert(command.end(), helperArguments.begin(), helperArguments.end());
    return command;
}

std::string missingForSandbox(const OfficePrograms& programs) {
    for (const char* part : {"soffice.bin", "libswlo.so", "libsclo.so", "libsdlo.so"})
        if (!isThere(programs.home + "/program/" + part))
            return "LibreOffice is not installed. Install libreoffice-writer, libreoffice-calc and "
                   "libreoffice-impress.";
    if (!isThere(programs.bubblewrap))
        return "bubblewrap is not installed. LibreOffice is only run inside it; install bubblewrap.";
    if (!isThere(programs.helper)) return "The part of the bridge that works with LibreOffice is not installed.";
    auto command = emptyPlace(programs.bubblewrap);
    append(command, {"--proc", "/proc", "--dev", "/dev", "--tmpfs", "/tmp", "--", "/usr/bin/true"});
    if (!runs(command))
        return "LibreOffice is only run inside bubblewrap, which can't shield a program here: this system does not "
               "allow it to make namespaces.";
    return {};
}

} // namespace bridge::office
