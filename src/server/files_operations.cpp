#include "bridges/files/file_data_bridge.h"
#include "server/operation_rows.h"
#include "server/operation_tables.h"

namespace bridge {

namespace {

constexpr std::array toWrite{BridgeCapability::filesCreate, BridgeCapability::filesUpdate};

// Which switch a write needs depends on what is there now. A text too long for any file is refused for that before an
// unknown folder is.
BridgeCapability capabilityToWrite(const BridgeSet& bridges, const WriteTextFileRequest& request) {
    auto& files = std::get<FileDataBridge&>(bridges);
    try {
        return files.fileExists(request.rootID, request.path) ? BridgeCapability::filesUpdate
                                                              : BridgeCapability::filesCreate;
    } catch (...) {
        FileDataBridge::checkLength(request);
        throw;
    }
}

constexpr std::array rows{
    operation<&FileDataBridge::authorizedRoots>("files.roots.list", BridgeCapability::filesList),
    operation<&FileDataBridge::listFiles>("files.list", BridgeCapability::filesList),
    operation<&FileDataBridge::readText>("files.read_text", BridgeCapability::filesRead),
    operation<&FileDataBridge::writeText, &capabilityToWrite>("files.write_text", toWrite, Confirm::whenOverwriting),
    operation<&FileDataBridge::createDirectory>("files.create_directory", BridgeCapability::filesCreate),
    operation<&FileDataBridge::moveFile>("files.move", BridgeCapability::filesUpdate, Confirm::whenOverwriting),
    deletion<&FileDataBridge::deleteFile, &DeleteFileRequest::path>("files.delete", BridgeCapability::filesDelete),
};
static_assert(wellFormed(rows));

} // namespace

std::span<const Operation> filesOperations() {
    return rows;
}

} // namespace bridge
