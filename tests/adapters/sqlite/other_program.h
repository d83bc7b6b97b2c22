#pragma once

#include <csignal>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace bridge {

// Runs `work` in a process of its own, which may tell us lines through a pipe.
class OtherProgram {
public:
    using Tell = std::function<void(const std::string& line)>;

    explicit OtherProgram(const std::function<void(const Tell&)>& work) {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
        m_process = fork();
        if (m_process < 0) throw std::runtime_error("no process");
        if (m_process > 0) {
            close(ends[1]);
            m_pipe = ends[0];
            return;
        }
        close(ends[0]);
        int result = 0;
        try {
            work([&](const std::string& line) {
                const auto text = line + "\n";
                if (::write(ends[1], text.data(), text.size()) != static_cast<ssize_t>(text.size())) _exit(3);
            });
        } catch (const std::exception& error) {
            const std::string text = std::string("failed: ") + error.what() + "\n";
            result = ::write(ends[1], text.data(), text.size()) > 0 ? 1 : 2;
        }
        _exit(result); // without the test's own end
    }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;
    ~OtherProgram() {
        if (m_process > 0) kill();
        close(m_pipe);
    }

    // The next line; "" when the program has ended.
    std::string line() {
        while (true) {
            const auto end = m_read.find('\n');
            if (end != std::string::npos) {
                const auto found = m_read.substr(0, end);
                m_read.erase(0, end + 1);
                return found;
            }
            char bytes[4096];
            const auto count = ::read(m_pipe, bytes, sizeof bytes);
            if (count < 0 && errno == EINTR) continue;
            if (count <= 0) return {};
            m_read.append(bytes, static_cast<size_t>(count));
        }
    }
    void kill() {
        ::kill(m_process, SIGKILL);
        end();
    }
    // Waits for its end; 0 when all went well.
    int end() {
        int status = 0;
        waitpid(m_process, &status, 0);
        m_process = -1;
        return status;
    }

private:
    pid_t m_process = -1;
    int m_pipe = -1;
    std::string m_read;
};

} // namespace bridge
