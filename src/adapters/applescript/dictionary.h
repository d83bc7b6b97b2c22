#pragma once

#include <string>
#include <vector>

namespace bridge::applescript {

// The words that an application adds to the language. All are written in lower case and may consist of several
// words ("body text"); the language does not regard case.
struct ClassTerms {
    std::string name;                    // "slide"
    std::string plural;                  // "slides"
    std::vector<std::string> properties; // "default title item"
    std::vector<std::string> elements;   // names of the classes that it contains
    std::string inherits = {};           // a class whose properties and elements it has, too
};

struct CommandTerms {
    std::string name;                    // "export"
    std::vector<std::string> parameters; // their labels, without the direct parameter: "to", "as"
};

// What makes an application scriptable: its class "application" holds what is reached from "tell application".
// The language itself brings the standard suite: make (new, at, with data, with properties), duplicate (to,
// with properties), delete, count, open, save (in, as), close (saving, saving in), exists, get, set, quit, activate;
// and the constants yes, no and ask.
struct Dictionary {
    std::vector<ClassTerms> classes;
    std::vector<CommandTerms> commands;
    std::vector<std::string> constants; // enumerators: "pdf", "microsoft word"
};

} // namespace bridge::applescript
