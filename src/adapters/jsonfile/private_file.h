#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace bridge {

enum class Trust {
    any,     // whatever regular file the path leads to
    oursOnly // refuses a link and a file of another user, and takes from others the right to read it
};

// One small file that the user alone may read, replaced whole at each writing. It keeps nothing open in between.
class PrivateFile {
public:
    // `path` is absolute.
    PrivateFile(std::string path, Trust trust);

    // The content; nothing when there is no such file. Throws PlatformError when it can't be read or isn't trusted.
    std::optional<std::string> read() const;

    // Makes the folders that are missing, for the user alone, and puts the file in its place with mode 0600, flushed
    // to disk. Throws PlatformError, and leaves the old content, when that fails or what stands there isn't trusted.
    void write(std::string_view content) const;

    // Gives the file the first free name of "<name>.damaged-1", "-2" and so on. Throws PlatformError.
    void setAside() const;

private:
    std::string m_folder;
    std::string m_name;
    Trust m_trust;
};

} // namespace bridge
