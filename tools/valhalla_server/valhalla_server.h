#pragma once

#include <string>
#include <sys/types.h>

#include "base/file_descriptor.h"

namespace bridge {

enum class Timetables { none, ofABus };

// A real Valhalla on 127.0.0.1 over the map of Liechtenstein, for tests and ./try. It is there at once: what is asked
// before it has started, and has prepared its map, waits. It ends with this object, and with our process in whatever
// way that ends.
class ValhallaServer {
public:
    // What this machine lacks for it, in a sentence; empty when nothing.
    static std::string hindrance();
    // The same of a package that is unpacked in this folder, for a processor as uname() calls it.
    static std::string hindranceOf(const std::string& installed, const std::string& processor);

    // Prepares its map in the folder, with the first request, unless an earlier one of its kind has. The path is
    // absolute. Throws PlatformError.
    explicit ValhallaServer(const std::string& folder, Timetables timetables = Timetables::none);
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
