#pragma once

#include "adapters/dbus/glib_pointer.h"

#include <string>

namespace bridge {

// What a source says of itself: the text of its key file, which the registry hands out and takes.
class SourceData {
public:
    // Nothing is in what can't be read.
    explicit SourceData(const std::string& text);

    std::string displayName() const; // in the user's language, where there are several
    bool isEnabled() const;
    std::string parent() const; // an identifier; empty when there is none
    // Calendar, Task List, Collection and so on.
    bool has(const char* extension) const;
    std::string backend(const char* extension) const;

    // In all languages.
    void rename(const std::string& title);
    std::string text() const;

private:
    GLibPointer<GKeyFile> m_file;
};

} // namespace bridge
