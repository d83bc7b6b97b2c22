#pragma once

#include <string>
#include <sys/types.h>

#include "base/file_descriptor.h"

namespace bridge {

// A real Valhalla on 127.0.0.1 over the map of Liechtenstein, for tests and ./try. It is there at once: what is asked
// before it has started, and has made its tiles, waits. It ends with this object, and with our process in whatever way
// that ends.
class ValhallaServer {
public:
    // What this machine lacks for it, in a sentence; empty when nothing.
    static std::string hindrance();

    // `tiles` is the absolute path of a folder in an existing one; made with the first request unless it is there.
    // Throws PlatformError.
    explicit ValhallaServer(const std::string& tiles);
    ~ValhallaServer();
    ValhallaServer(const ValhallaServer&) = delete;
    ValhallaServer& operator=(const ValhallaServer&) = delete;

    // "http://127.0.0.1:<port>"
    const std::string& url() const { return m_url; }
    pid_t processID() const { return m_pid; }
    // From now on nobody answers.
    void end();

private:
    FileDescriptor m_lifeline; // its standard input
    std::string m_url;
    pid_t m_pid = 0;
};

} // namespace bridge
