#pragma once

#include <condition_variable>
#include <mutex>
#include <string>
#include <sys/types.h>
#include <thread>
#include <vector>

namespace bridge::mpd {

// A program that runs as long as this lives, and not a moment longer than our own process, even one that is killed.
class MpdProcess {
public:
    // What the program says goes into the file.
    MpdProcess(const std::vector<std::string>& command, const std::string& logFile);
    MpdProcess(const MpdProcess&) = delete;
    MpdProcess& operator=(const MpdProcess&) = delete;
    // Waits for its end, which comes by force when it doesn't by itself.
    ~MpdProcess();

    // On any thread.
    bool isRunning() const;
    pid_t id() const { return m_pid; }

private:
    void awaitEnd();

    pid_t m_pid = -1;
    mutable std::mutex m_mutex;
    std::condition_variable m_hasEnded;
    bool m_isRunning = true;
    // The system ends the program with the thread that has started it, so that is one which stays.
    std::thread m_keeper;
};

} // namespace bridge::mpd
