#pragma once

#include "adapters/libreoffice/message_channel.h"

#include <string>
#include <sys/types.h>
#include <vector>

namespace bridge::office {

// A program in a process group of its own, with a socket to it. Nothing else of the bridge is open in it: no
// descriptor, no environment, no signal mask. It and its group end with this object.
class OfficeProcess {
public:
    // The program finds the socket at helperSocket; what it says on standard error goes to the file. Throws
    // PlatformError.
    OfficeProcess(const std::vector<std::string>& command, const std::string& errorFile);
    OfficeProcess(const OfficeProcess&) = delete;
    OfficeProcess& operator=(const OfficeProcess&) = delete;
    ~OfficeProcess();

    MessageChannel& channel() { return m_channel; }
    const MessageChannel& channel() const { return m_channel; }

private:
    MessageChannel m_channel;
    pid_t m_pid = 0;
};

} // namespace bridge::office
