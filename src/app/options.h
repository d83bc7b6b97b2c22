#pragma once

#include <span>
#include <string>

namespace bridge {

// What the program was started with.
struct Options {
    enum class Action {
        start,       // by the user, who wants to see something
        startHidden, // by the system at login
        say          // `text`, on standard output, and end
    };
    Action action = Action::start;
    std::string text;
};

// Throws std::invalid_argument, with what to write instead.
Options parseOptions(std::span<const char* const> arguments);

} // namespace bridge
