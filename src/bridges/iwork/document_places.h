#pragma once

#include "bridges/files/file_data_bridge.h"
#include "bridges/iwork/iwork_application.h"

#include <string>

namespace bridge {

// A document in a folder that the user chose: how a request names it, and where that is.
struct DocumentPlace {
    std::string rootID;
    std::string path;
    std::string location; // absolute, free of links
};

// Where documents are and may come to be. An application goes to a location by itself, possibly much later than it was
// found, so each is looked at again just before.
//
// Everything throws as the file bridge does, and unsafePath when a place is no longer where it was.
class DocumentPlaces {
public:
    explicit DocumentPlaces(FileDataBridge& files) : m_files(files) {}

    DocumentPlace existing(std::string rootID, std::string path);
    DocumentPlace planned(std::string rootID, std::string path);

    // Makes the folders on the way. Throws AppleBridgeError operationFailed when anything is there already.
    void makeRoomFor(const DocumentPlace& place);
    void lookAgain(const DocumentPlace& place);

private:
    DocumentPlace find(std::string rootID, std::string path, PathMayBeMissing mayBeMissing);

    FileDataBridge& m_files;
};

// Throws AppleBridgeError malformedRequest for what isn't named as the application's documents are.
void requireDocumentOf(IWorkApplication application, const DocumentPlace& place);

} // namespace bridge
