#include "app/import/import_options.h"

#include <filesystem>

namespace bridge {

const char* const importUsage = "Usage: brindlefox-import [--profile DIR] [--] FILE.ics...\n"
                                "       brindlefox-import --help\n";

const char* const importHelp = R"(NAME
  brindlefox-import - take iCalendar files into the calendars of Brindlefox Apple Bridge

SYNOPSIS
  brindlefox-import [--profile DIR] [--] FILE.ics...

DESCRIPTION
  Each FILE goes into the bridge's own calendars on this computer, its events as a new calendar and its tasks as a
  new reminder list. They are called as the file says (X-WR-CALNAME), or else as the file is called. Nothing that is
  there already is changed: when there is a calendar of that name, the new one gets a number, and a file that is taken
  twice is there twice. "-" is standard input.

  An item is taken whole, with everything that other programs have put into it, or is left out; the report names each
  one that was left out, and why. A file is taken in one piece or not at all; the others still are. The bridge may be
  running meanwhile.

  Where the desktop has calendars of its own (Evolution Data Server), the bridge shows those instead; a line says so.

  New calendars are not open to the agent until the user allows it.

OPTIONS
  --profile DIR   a profile in another folder, which must exist
  --help          this text

EXIT STATUS
  0   everything was taken
  1   something was left out; the report says what
  2   the command line could not be understood

FILES
  $XDG_DATA_HOME/brindlefox-apple-bridge/calendars.db, or below ~/.local/share

EXAMPLES
  brindlefox-import ~/Downloads/holidays.ics
  curl -s https://example.com/club.ics | brindlefox-import -
)";

ImportOptions readImportOptions(const std::vector<std::string>& words) {
    ImportOptions options;
    bool onlyFiles = false;
    for (size_t index = 0; index < words.size(); ++index) {
        const auto& word = words[index];
        if (onlyFiles || word == "-" || !word.starts_with('-')) {
            options.files.push_back(word);
        } else if (word == "--") {
            onlyFiles = true;
        } else if (word == "--help" || word == "-h") {
            options.help = true;
        } else if (word == "--profile") {
            if (++index == words.size()) throw ImportUsageError("--profile needs the name of a folder.");
            options.profile = words[index];
        } else {
            throw ImportUsageError("There is no option \"" + word + "\".");
        }
    }
    if (options.help) return options;
    if (options.files.empty()) throw ImportUsageError("No file is named.");
    std::error_code ignored;
    if (options.profile && !std::filesystem::is_directory(*options.profile, ignored))
        throw ImportUsageError("There is no folder \"" + *options.profile + "\".");
    return options;
}

} // namespace bridge
