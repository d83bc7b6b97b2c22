#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bridge {

// The group "Desktop Entry" of a file as the freedesktop.org Desktop Entry standard 1.5 has it. Keys of a language
// ("Name[pt]") are keys of their own; of a key that comes twice the last counts. What is no such line is passed over.
class DesktopEntry {
public:
    explicit DesktopEntry(std::string_view text);

    // Nothing when the key is absent.
    std::optional<std::string> string(const std::string& key) const;
    // An absent key is `otherwise`, and so is what is neither "true" nor "false".
    bool boolean(const std::string& key, bool otherwise) const;
    // Separated by semicolons.
    std::optional<std::vector<std::string>> list(const std::string& key) const;

    // Whether that desktop shows it: `desktops` is what $XDG_CURRENT_DESKTOP says, the most specific first.
    bool isShownIn(const std::vector<std::string>& desktops) const;

private:
    std::map<std::string, std::string> m_values; // as they are written
};

// As the value of a key that holds a string.
std::string escapeForDesktopEntry(std::string_view text);

// As the value of the key "Exec": starts the program, whatever characters its path has, with these arguments.
std::string execKeyFor(const std::string& program, const std::vector<std::string>& arguments = {});

} // namespace bridge
