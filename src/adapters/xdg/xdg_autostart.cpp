#include "adapters/xdg/xdg_autostart.h"

#include "adapters/xdg/find_program.h"
#include "base/atomic_file.h"
#include "base/make_folders.h"
#include "base/text.h"

#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>

namespace bridge {

namespace {

constexpr const char* switchedOffByUs = "X-Brindlefox-SwitchedOff";

// Entries are a few lines; whatever is longer is none.
constexpr size_t longestEntry = 65536;

std::string folderOf(const std::string& configFolder) {
    return configFolder + "/autostart";
}

std::string fileOf(const std::string& configFolder) {
    return folderOf(configFolder) + '/' + XdgAutostart::fileName;
}

// Nothing when there is no file that can be read.
std::optional<DesktopEntry> readEntry(const std::string& path) {
    // Opening a pipe would wait for somebody to write.
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status;
    if (!file || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    std::string text(longestEntry, '\0');
    const ssize_t length = read(file.get(), text.data(), text.size());
    if (length < 0) return std::nullopt;
    text.resize(static_cast<size_t>(length));
    return DesktopEntry(text);
}

bool isFolder(const std::string& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// Whether it is there, or may be made where it would be.
bool canBeHad(const std::string& folder) {
    for (std::filesystem::path place = folder;; place = place.parent_path()) {
        if (isFolder(place)) return place == folder || access(place.c_str(), W_OK | X_OK) == 0;
        if (access(place.c_str(), F_OK) == 0 || !place.has_relative_path()) return false;
    }
}

FileDescriptor makeFolder(const std::string& path) {
    makeFolders(path, "The autostart folder could not be made");
    FileDescriptor folder(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder) throw PlatformError::fromErrno("The autostart folder could not be opened", errno);
    return folder;
}

} // namespace

std::optional<XdgPaths> XdgAutostart::paths() const {
    try {
        return XdgPaths(m_environment);
    } catch (const PlatformError&) {
        return std::nullopt;
    }
}

LoginItemStatus XdgAutostart::status() const {
    const auto folders = paths();
    if (!folders || !canBeHad(folders->configHome) || !m_program.starts_with('/') ||
        !findProgram(m_program, m_environment))
        return LoginItemStatus::notFound;
    // Once the user has a file of that name no other counts, whatever is in it.
    const auto own = fileOf(folders->configHome);
    struct stat status;
    if (lstat(own.c_str(), &status) == 0) {
        const auto entry = readEntry(own);
        return entry ? statusOfUsers(*entry) : LoginItemStatus::notRegistered;
    }
    return systemStarts(*folders) ? LoginItemStatus::enabled : LoginItemStatus::notRegistered;
}

LoginItemStatus XdgAutostart::statusOfUsers(const DesktopEntry& entry) const {
    const bool isHidden = entry.boolean("Hidden", false);
    if (isHidden && entry.boolean(switchedOffByUs, false)) return LoginItemStatus::notRegistered;
    // What GNOME's, and what MATE's own settings write.
    if (isHidden || !entry.boolean("X-GNOME-Autostart-enabled", true) ||
        !entry.boolean("X-MATE-Autostart-enabled", true))
        return LoginItemStatus::requiresApproval;
    return starts(entry) ? LoginItemStatus::enabled : LoginItemStatus::notRegistered;
}

bool XdgAutostart::starts(const DesktopEntry& entry) const {
    if (entry.string("Type").value_or("Application") != "Application") return false;
    if (entry.string("Exec").value_or("").empty() || !entry.isShownIn(currentDesktops(m_environment))) return false;
    const auto needed = entry.string("TryExec");
    return !needed || needed->empty() || findProgram(*needed, m_environment);
}

// An entry that comes switched off starts nothing, and nobody has to be asked about it.
bool XdgAutostart::systemStarts(const XdgPaths& paths) const {
    for (const auto& folder : paths.configDirectories)
        if (const auto entry = readEntry(fileOf(folder))) return statusOfUsers(*entry) == LoginItemStatus::enabled;
    return false;
}

// The command is there also in an entry that is switched off, for whoever switches it on elsewhere.
void XdgAutostart::writeEntry(const XdgPaths& paths, const std::string& rest) const {
    std::string text = "[Desktop Entry]\nType=Application\nName=Brindlefox Apple Bridge\n"
                       "Comment=Lets your paired agent use what you allow\nIcon=brindlefox-apple-bridge\nExec=";
    text += execKeyFor(m_program, m_arguments) + "\nTryExec=" + escapeForDesktopEntry(m_program) +
            "\nTerminal=false\n" + rest;
    if (!isUTF8(text))
        throw PlatformError("The path of this program is not UTF-8 text, as an autostart entry must be.");
    const auto folder = makeFolder(folderOf(paths.configHome));
    writeFileAtomically(folder.get(), fileName, text, 0644, IfExists::replace);
}

void XdgAutostart::registerItem() {
    const auto folders = paths();
    switch (status()) {
    case LoginItemStatus::enabled:
        return;
    case LoginItemStatus::requiresApproval:
        throw PlatformError("It was switched off in the settings of the desktop, and can only be switched on there.");
    case LoginItemStatus::notFound:
        if (!folders || !canBeHad(folders->configHome))
            throw PlatformError("There is no folder for your settings: check your home folder and XDG_CONFIG_HOME.");
        throw PlatformError("This program is not where it was started from any more. Install it again.");
    case LoginItemStatus::notRegistered:
        break;
    }
    writeEntry(*folders, "");
}

void XdgAutostart::unregisterItem() {
    const auto folders = paths();
    if (!folders) return;
    if (systemStarts(*folders)) return writeEntry(*folders, std::string("Hidden=true\n") + switchedOffByUs + "=true\n");
    if (unlink(fileOf(folders->configHome).c_str()) != 0 && errno != ENOENT && errno != ENOTDIR)
        throw PlatformError::fromErrno("The autostart entry could not be removed", errno);
}

void XdgAutostart::openLoginItemsSettings() {
    try {
        m_settings.openLoginItems();
    } catch (const NoSuchPage& none) {
        const auto folders = paths();
        if (!folders || status() != LoginItemStatus::requiresApproval) throw;
        throw PlatformError(
            std::string(none.what()) +
            " To allow this one again, remove the file that switches it off: " + fileOf(folders->configHome));
    }
}

} // namespace bridge
