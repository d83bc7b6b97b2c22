#include "adapters/xdg/desktop_entry.h"

#include <algorithm>
#include <sstream>

namespace bridge {

namespace {

constexpr std::string_view blanks = " \t\r";

std::string_view trimmed(std::string_view text) {
    const auto begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

char unescaped(char mark) {
    switch (mark) {
    case 's':
        return ' ';
    case 'n':
        return '\n';
    case 't':
        return '\t';
    case 'r':
        return '\r';
    default:
        return mark;
    }
}

std::string unescape(std::string_view text) {
    std::string result;
    for (size_t index = 0; index < text.size(); ++index) {
        if (text[index] == '\\' && index + 1 < text.size())
            result += unescaped(text[++index]);
        else
            result += text[index];
    }
    return result;
}

bool isPlain(char character) {
    const bool letterOrDigit = (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
                               (character >= '0' && character <= '9');
    return letterOrDigit || std::string_view("/._-+,:@").find(character) != std::string_view::npos;
}

// One argument of a command line.
std::string quoted(std::string_view argument) {
    if (!argument.empty() && std::ranges::all_of(argument, isPlain)) return std::string(argument);
    std::string result = "\"";
    for (const char character : argument) {
        if (std::string_view("\"`$\\").find(character) != std::string_view::npos) result += '\\';
        if (character == '%') result += '%';
        result += character;
    }
    return result + '"';
}

bool contains(const std::vector<std::string>& list, const std::string& name) {
    return std::ranges::find(list, name) != list.end();
}

} // namespace

DesktopEntry::DesktopEntry(std::string_view text) {
    bool isOurs = false;
    std::istringstream lines{std::string(text)};
    for (std::string line; std::getline(lines, line);) {
        const auto content = trimmed(line);
        if (content.starts_with('[')) {
            isOurs = content == "[Desktop Entry]";
            continue;
        }
        const auto equals = content.find('=');
        if (!isOurs || content.starts_with('#') || equals == std::string_view::npos) continue;
        m_values[std::string(trimmed(content.substr(0, equals)))] = trimmed(content.substr(equals + 1));
    }
}

std::optional<std::string> DesktopEntry::string(const std::string& key) const {
    const auto found = m_values.find(key);
    if (found == m_values.end()) return std::nullopt;
    return unescape(found->second);
}

bool DesktopEntry::boolean(const std::string& key, bool otherwise) const {
    const auto found = m_values.find(key);
    if (found == m_values.end()) return otherwise;
    // The digits are of older versions of the standard.
    if (found->second == "true" || found->second == "1") return true;
    if (found->second == "false" || found->second == "0") return false;
    return otherwise;
}

std::optional<std::vector<std::string>> DesktopEntry::list(const std::string& key) const {
    const auto text = string(key);
    if (!text) return std::nullopt;
    std::vector<std::string> items;
    std::istringstream parts(*text);
    for (std::string part; std::getline(parts, part, ';');)
        if (!part.empty()) items.push_back(part);
    return items;
}

bool DesktopEntry::isShownIn(const std::vector<std::string>& desktops) const {
    const auto only = list("OnlyShowIn");
    const auto never = list("NotShowIn");
    for (const auto& desktop : desktops) {
        if (only && contains(*only, desktop)) return true;
        if (never && contains(*never, desktop)) return false;
    }
    return !only;
}

std::string escapeForDesktopEntry(std::string_view text) {
    std::string result;
    for (const char character : text) {
        switch (character) {
        case '\\':
            result += "\\\\";
            break;
        case '\n':
            result += "\\n";
            break;
        case '\t':
            result += "\\t";
            break;
        case '\r':
            result += "\\r";
            break;
        default:
            result += character;
        }
    }
    return result;
}

std::string execKeyFor(const std::string& program, const std::vector<std::string>& arguments) {
    // The first word of a command must have no equals sign, and GLib looks for that word before it reads "%%" as one
    // character. As an argument both are welcome, also to systemd, which stumbles over a script for the shell.
    const bool isNoCommand = program.find_first_of("=%") != std::string::npos;
    auto command = (isNoCommand ? "/usr/bin/env nice -n 0 " : "") + quoted(program);
    for (const auto& argument : arguments)
        command += ' ' + quoted(argument);
    return escapeForDesktopEntry(command);
}

} // namespace bridge
