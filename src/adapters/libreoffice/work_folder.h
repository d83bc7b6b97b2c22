#pragma once

#include "base/file_descriptor.h"

#include <string>

namespace bridge::office {

// A private folder for as long as this lives, in which each document has a folder of its own. Folders that bridges
// have left that ended without a word are cleared away. Throws PlatformError.
class WorkFolder {
public:
    // `parent` is made when it isn't there, and belongs to such folders alone.
    explicit WorkFolder(const std::string& parent);
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;
    ~WorkFolder();

    // Where the documents' folders are.
    std::string documents() const { return m_path + "/documents"; }
    std::string logFile() const { return m_path + "/log"; }

    // Its name can't be guessed: a document could name the file of another one otherwise.
    std::string makeFolder() const;
    FileDescriptor open(const std::string& folder) const;
    void remove(const std::string& folder) const;

private:
    std::string m_path;
    FileDescriptor m_lock; // on the folder, which tells others that it is in use
};

} // namespace bridge::office
