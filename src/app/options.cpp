#include "app/options.h"

#include <stdexcept>
#include <string_view>

namespace bridge {

namespace {

constexpr const char* help = R"(Usage: brindlefox-apple-bridge [--background]

Lets your Agent Server work with your calendars, contacts, files, documents and music,
as far as you allow it in the dashboard behind the icon in the panel.

Started again while it runs, it shows the dashboard.

  --background  never show the dashboard unasked: for starting at login
  --version     print the version
  --help        print this
)";

} // namespace

Options parseOptions(std::span<const char* const> arguments) {
    Options options;
    for (const std::string_view argument : arguments) {
        if (argument == "--background")
            options.action = Options::Action::startHidden;
        else if (argument == "--version")
            return {Options::Action::say, std::string("brindlefox-apple-bridge ") + BRIDGE_VERSION + "\n"};
        else if (argument == "--help")
            return {Options::Action::say, help};
        else
            throw std::invalid_argument("There is no \"" + std::string(argument) + "\"; see --help.");
    }
    return options;
}

} // namespace bridge
