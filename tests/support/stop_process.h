#pragma once

#include "tests/support/becomes_true.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>

namespace bridge {

// Whether a thread does nothing any more, stopped or dead (proc(5)).
inline bool isAtRest(const std::filesystem::path& thread) {
    std::ifstream file(thread / "stat");
    const std::string status(std::istreambuf_iterator<char>(file), {});
    const auto end = status.rfind(')');
    return end == std::string::npos || end + 2 >= status.size() ||
           std::string("TtZX").find(status[end + 2]) != std::string::npos;
}

// Returns when every thread of the process has stopped: the signal alone leaves it time for an answer.
inline void stopProcess(pid_t process) {
    namespace fs = std::filesystem;
    ::kill(process, SIGSTOP);
    const auto threads = "/proc/" + std::to_string(process) + "/task";
    const auto isRunning = [&] {
        std::error_code gone;
        return std::ranges::any_of(fs::directory_iterator(threads, gone),
                                   [](const auto& thread) { return !isAtRest(thread.path()); });
    };
    while (isRunning())
        betweenLooks();
}

} // namespace bridge
