#pragma once

#include "app/instance_message.h"
#include "app/options.h"

#include <string>

namespace bridge {

// The program with an icon and windows. It ends when the user quits or the system asks it to.
class BrindlefoxAppleBridgeApp {
public:
    // A display answers; `instances` is the folder in which later starts look for this one. `count` outlives it.
    BrindlefoxAppleBridgeApp(int& count, char** arguments, std::string instances);

    // Until the end; what the process answers then. The token is what the desktop gave along, or empty.
    int run(Options::Action action, const std::string& activationToken);

private:
    int& m_count;
    char** m_arguments;
    std::string m_instances;
};

} // namespace bridge
