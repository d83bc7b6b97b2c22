#pragma once

#include <string>
#include <vector>

namespace bridge::office {

// Where the programs are that make up the office program.
struct OfficePrograms {
    std::string helper;                        // brindlefox-office
    std::string home = "/usr/lib/libreoffice"; // LibreOffice's own folder, below /usr or /opt
    std::string bubblewrap = "/usr/bin/bwrap";
    bool operator==(const OfficePrograms&) const = default;
};

// The folder of the documents, as it is seen from inside.
constexpr const char* folderInside = "/documents";

// The command that runs the helper, with its arguments, in a place where there is nothing but the programs, the
// documents' folder and an empty /tmp: no network, no other process, no user's file, no bus, no display.
std::vector<std::string> sandboxedCommand(const OfficePrograms& programs, const std::string& documents,
                                          const std::vector<std::string>& helperArguments);

// What is missing here for such a command to work, and what to do about it; empty when nothing is. Takes some
// milliseconds, for it tries.
std::string missingForSandbox(const OfficePrograms& programs);

} // namespace bridge::office
