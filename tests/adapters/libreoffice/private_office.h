#pragma once

#include "adapters/libreoffice/libreoffice.h"
#include "tests/support/temporary_folder.h"

#include <memory>
#include <string>
#include <sys/types.h>
#include <vector>

namespace bridge::office {

// A LibreOffice of a test's own.
class PrivateOffice {
public:
    explicit PrivateOffice(LibreOfficeOptions options = {});

    // Why there is none on this machine.
    std::string hindrance() const { return m_office->whyUnavailable().value_or(""); }
    LibreOffice& office() { return *m_office; }
    void end() { m_office.reset(); }

    std::string workFolder() const { return m_folder.file("work"); }
    // Names of what is in the folders of all documents that are open.
    std::vector<std::string> filesAtWork() const;

    // The processes in the sandbox whose program has this name.
    std::vector<pid_t> processes(const std::string& program) const;
    void send(const std::string& program, int signal) const;
    // They do nothing more until they are sent SIGCONT.
    void stop(const std::string& program) const;
    // How often it has begun to wait for something.
    std::string timesAsleep(const std::string& program) const;
    // Until no process of it is left.
    void awaitEnd(const std::string& program) const;

private:
    TemporaryFolder m_folder;
    std::unique_ptr<LibreOffice> m_office;
};

} // namespace bridge::office
