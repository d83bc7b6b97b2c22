#include "tests/architecture/include_arrows.h"

#include "tests/architecture/include_rules.h"

#include <algorithm>
#include <array>

namespace bridge::architecture {

namespace {

bool isWithin(std::string_view path, std::string_view folder) {
    return path == folder || (path.starts_with(folder) && path.substr(folder.size()).starts_with('/'));
}

bool holds(const std::vector<std::string_view>& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

const Rule* ruleFor(std::string_view room) {
    const Rule* found = nullptr;
    for (const auto& rule : rules)
        if (isWithin(room, rule.folder) && (!found || rule.folder.size() > found->folder.size())) found = &rule;
    return found;
}

// A header by its exact name, or by its folder when the name ends in a slash.
struct KnownHeader {
    std::string_view name;
    std::string_view system;
};

constexpr std::array known = std::to_array<KnownHeader>({
    {"uv.h", "libuv"},
    {"uv/", "libuv"},
    {"simdjson.h", "simdjson"},
    {"unicode/", "icu"},
    {"fmt/", "fmt"},
    {"curl/", "curl"},
    {"sqlite3.h", "sqlite"},
    {"glib.h", "glib"},
    {"glib-unix.h", "glib"},
    {"glib-object.h", "glib"},
    {"glib/", "glib"},
    {"gio/", "glib"},
    {"gmodule.h", "glib"},
    {"libsecret/", "libsecret"},
    {"mpd/", "mpd"},
    {"dbus/", "dbus"},
    {"libical/", "libical"},
    {"libecal/", "eds"},
    {"libebook/", "eds"},
    {"libedata-book/", "eds"},
    {"libedataserver/", "eds"},
    {"libebackend/", "eds"},
    {"com/sun/star/", "uno"},
    {"cppuhelper/", "uno"},
    {"rtl/", "uno"},
    {"libavformat/", "ffmpeg"},
    {"xcb/", "xcb"},
    {"linux/", "linux"},
    {"sys/syscall.h", "linux"},
    {"sys/", "posix"},
    {"netinet/", "posix"},
    {"arpa/", "posix"},
    {"net/", "posix"},
});

constexpr std::array posixHeaders = std::to_array<std::string_view>(
    {"dirent.h", "dlfcn.h",  "errno.h",  "fcntl.h",   "fnmatch.h", "glob.h",    "grp.h",    "langinfo.h",
     "libgen.h", "limits.h", "netdb.h",  "poll.h",    "pthread.h", "pwd.h",     "signal.h", "spawn.h",
     "stdint.h", "stdlib.h", "string.h", "strings.h", "syslog.h",  "termios.h", "time.h",   "unistd.h"});

} // namespace

std::vector<Include> includesOf(const std::string& file, std::string_view text) {
    std::vector<Include> found;
    for (int number = 1; !text.empty(); ++number) {
        auto line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        const auto skipSpace = [&line] { line.remove_prefix(std::min(line.size(), line.find_first_not_of(" \t"))); };
        const auto skip = [&line](std::string_view word) {
            if (!line.starts_with(word)) return false;
            line.remove_prefix(word.size());
            return true;
        };
        skipSpace();
        if (!skip("#")) continue;
        skipSpace();
        if (!skip("include") && !skip("import")) continue;
        skip("_next");
        skipSpace();
        const bool isSystem = line.starts_with('<');
        const size_t end = line.empty() ? line.npos : line.find(isSystem ? '>' : '"', 1);
        // A name that comes out of a macro can't be judged, so it is kept to be refused.
        const bool isPlain = (isSystem || line.starts_with('"')) && end != line.npos;
        found.push_back({file, number, std::string(isPlain ? line.substr(1, end - 1) : line), isSystem});
    }
    return found;
}

std::string roomOf(std::string_view path) {
    const size_t first = path.find('/');
    if (first == path.npos) return {};
    const auto room = path.substr(0, first);
    if (room != "bridges" && room != "adapters") return std::string(room);
    return std::string(path.substr(0, path.find('/', first + 1) == path.npos ? first : path.find('/', first + 1)));
}

std::string systemOf(std::string_view header) {
    for (const auto& [name, system] : known)
        if (header == name || (name.ends_with('/') && header.starts_with(name))) return std::string(system);
    if (std::find(posixHeaders.begin(), posixHeaders.end(), header) != posixHeaders.end()) return "posix";
    if (header.size() > 1 && header[0] == 'Q' && header[1] >= 'A' && header[1] <= 'Z') return "qt";
    // <optional>, <cstdint>: only the language's own headers go by a bare name.
    const bool isBare = header.find_first_not_of("abcdefghijklmnopqrstuvwxyz_0123456789") == header.npos;
    return isBare && !header.empty() ? "standard" : "unknown";
}

std::string faultOf(const Include& include) {
    const auto where = include.file + ":" + std::to_string(include.line) + ": ";
    const auto room = roomOf(include.file);
    // A folder within a room may have a rule of its own.
    const Rule* rule = ruleFor(include.file);
    if (!rule) return where + "stands in no room that has a rule";

    if (include.isSystem) {
        const auto system = systemOf(include.target);
        if (holds(rule->systems, system)) return {};
        return where + room + " may not include <" + include.target + "> of " + system;
    }
    // What the build itself writes beside a source.
    if (room == "app" && (include.target.ends_with(".moc") || include.target.starts_with("moc_"))) return {};
    const auto target = roomOf(include.target);
    if (!ruleFor(target)) return where + "\"" + include.target + "\" does not begin with a room";
    if (target == room || holds(rule->rooms, "*")) return {};
    for (const auto allowed : rule->rooms)
        if (isWithin(target, allowed)) return {};
    return where + room + " may not include \"" + include.target + "\"";
}

std::vector<std::string> awaitFaultsOf(const std::string& file, std::string_view text) {
    constexpr std::string_view word = "co_await";
    std::vector<std::string> faults;
    for (size_t start = text.find(word); start != text.npos; start = text.find(word, start + 1)) {
        const auto lineStart = text.rfind('\n', start) + 1;
        const auto line = text.substr(lineStart, start - lineStart);
        const char before = start == 0 ? ' ' : text[start - 1];
        const bool isOperator = line.ends_with("operator ");
        if (line.find("//") != line.npos || before == '_' || before == '"' || isOperator) continue;
        int depth = 0;
        for (size_t index = start + word.size(); index < text.size() && depth >= 0 && text[index] != ';'; ++index) {
            if (text[index] == '(') ++depth;
            if (text[index] == ')') --depth;
            if (text[index] != '{') continue;
            const auto number = 1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(start), '\n');
            faults.push_back(file + ":" + std::to_string(number) +
                             ": a temporary in braces inside a waiting statement");
            break;
        }
    }
    return faults;
}

} // namespace bridge::architecture
