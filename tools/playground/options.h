#pragma once

#include "bridges/common/permission_state.h"
#include "policy/bridge_capability.h"

#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace bridge::playground {

// What one of the switches --capabilities, --calendars and --reminder-lists asks for.
struct Choice {
    enum class Kind { all, none, keep, named } kind = Kind::all;
    std::vector<std::string> names; // for Kind::named
};

struct Options {
    bool help = false;
    bool serve = false;                 // no tour: print the line of JSON and serve until told to end
    std::optional<std::string> profile; // kept; otherwise a throw-away one
    Choice capabilities;
    Choice calendars;
    Choice reminderLists;
    // Every service's status as its platform numbers it; nothing where the service is not to exist.
    std::map<PrivacyService, std::optional<int>> permissions;
    bool unpaired = false;
    std::vector<std::string> imports; // iCalendar files
};

// A word that can't be understood, with what would be.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Throws UsageError.
Options readOptions(const std::vector<std::string>& words);
extern const char* const usage;

} // namespace bridge::playground
