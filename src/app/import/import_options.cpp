#include "app/import/import_options.h"

#include <filesystem>

namespace bridge {

const char* const importUsage = "Usage: brindlefox-import [--profile DIR] [--] FILE...\n"
                                "       brindlefox-import --help\n";

const char* const importHelp = R"(NAME
  brindlefox-import - take calendars and contacts into Brindlefox Apple Bridge

SYNOPSIS
  brindlefox-import [--profile DIR] [--] FILE...

DESCRIPTION
  Each FILE is an iCalendar file (.ics) or a vCard file (.vcf, of version 2.1, 3.0 or 4.0), whichever its content says,
  and goes into the bridge's own calendars or contacts on this computer. "-" is standard input.

  Calendars: events become a new calendar and tasks a new reminder list. They are called as the file says
  (X-WR-CALNAME), or else as the file is called. When there is a calendar of that name, the new one gets a number, and
  a file that is taken twice is there twice. New calendars are not open to the agent until the user allows it.

  Contacts: each card becomes a contact. Its CATEGORIES, and cards that are groups themselves (KIND:group), become
  groups, or add to the group of that name that is there. A file that is taken twice is there once: a contact that is
  here already is told by its UID, or, where a card has none, by its whole content. It stays as it is here and joins
  its groups; where the file says something else of it, the report names it.

  Nothing that is there already is changed otherwise. An item is taken whole, with everything that other programs have
  put into it, or without a part that is broken, or is left out; the report names each one that was left out or is not
  whole, and why. A file is taken in one piece or not at all; the others still are. The bridge may be running meanwhile.

  Where the desktop has calendars or contacts of its own (Evolution Data Server), the bridge shows those instead; a line
  says so.

OPTIONS
  --profile DIR   a profile in another folder, which must exist
  --help          this text

EXIT STATUS
  0   everything was taken
  1   something was left out or is not whole; the report says what
  2   the command line could not be understood

FILES
  calendars.db and contacts.db in $XDG_DATA_HOME/brindlefox-apple-bridge, or below ~/.local/share

EXAMPLES
  brindlefox-import ~/Downloads/holidays.ics ~/Downloads/contacts.vcf
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
