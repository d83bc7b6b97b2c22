#pragma once

#include "base/file_descriptor.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/wire_client.h"

#include <string>
#include <sys/types.h>
#include <vector>

namespace bridge {

// What is left of a playground that has ended.
struct Ended {
    int status; // as a shell tells it: 128 and the signal's number after a signal
    std::string output;
    std::string errors;
};

// The playground's own program, started the way a script would, with no terminal and `temporary` as the place for
// temporary files. It never outlives the test.
class PlaygroundProcess {
public:
    PlaygroundProcess(const TemporaryFolder& temporary, const std::vector<std::string>& words);
    ~PlaygroundProcess();
    PlaygroundProcess(const PlaygroundProcess&) = delete;
    PlaygroundProcess& operator=(const PlaygroundProcess&) = delete;

    // The next line of its output without the line end; what there is when it ends before.
    std::string readLine();
    void signal(int number) const;
    // Waits for its end. The output is what readLine() has not given yet.
    Ended wait();

private:
    bool readMore();

    pid_t m_process = -1;
    FileDescriptor m_output;
    FileDescriptor m_errors;
    std::string m_unread;
};

// Starts it, waits for its end.
Ended runPlayground(const TemporaryFolder& temporary, const std::vector<std::string>& words);

// A playground that serves: `--serve` is added to the words, and its line is read.
class ServingPlayground {
public:
    ServingPlayground(const TemporaryFolder& temporary, std::vector<std::string> words = {});

    const std::string& line() const { return m_line; }
    JSONValue::Object announced() const;
    std::string credential() const;
    std::string profile() const;
    // Of the first root.
    std::string rootID() const;

    WireAnswer health() const;
    // POST /v1/execute with the credential that the line gave.
    WireAnswer call(const std::string& operation, const std::string& payload = "") const;

    Ended end(int signal);

private:
    PlaygroundProcess m_process;
    std::string m_line;
};

} // namespace bridge
