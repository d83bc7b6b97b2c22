#include "bridges/iwork/document_places.h"

#include "base/apple_bridge_error.h"
#include "base/platform_error.h"
#include "base/text.h"

namespace bridge {

namespace {

std::string_view lastComponent(std::string_view location) {
    return location.substr(location.rfind('/') + 1);
}

// A full stop that a name begins with only hides it.
std::string_view extensionOf(std::string_view name) {
    const size_t point = name.rfind('.');
    if (point == 0 || point == std::string_view::npos) return {};
    return name.substr(point + 1);
}

void requireSame(const DocumentPlace& place, const std::string& locationNow) {
    if (locationNow != place.location) throw AppleBridgeError::unsafePath(place.path);
}

} // namespace

DocumentPlace DocumentPlaces::find(std::string rootID, std::string path, PathMayBeMissing mayBeMissing) {
    auto location = m_files.confinedURL(rootID, path, mayBeMissing);
    // A repaired name would be another one.
    if (!isUTF8(location)) throw PlatformError("The document's path is not UTF-8 text, so no script can name it.");
    return {std::move(rootID), std::move(path), std::move(location)};
}

DocumentPlace DocumentPlaces::existing(std::string rootID, std::string path) {
    return find(std::move(rootID), std::move(path), PathMayBeMissing::no);
}

DocumentPlace DocumentPlaces::planned(std::string rootID, std::string path) {
    return find(std::move(rootID), std::move(path), PathMayBeMissing::yes);
}

void DocumentPlaces::makeRoomFor(const DocumentPlace& place) {
    if (m_files.fileExists(place.rootID, place.path))
        throw AppleBridgeError::operationFailed(
            "The destination already exists; typed iWork creation and export never overwrite files.");
    requireSame(place, m_files.makeWayTo(place.rootID, place.path));
}

void DocumentPlaces::lookAgain(const DocumentPlace& place) {
    requireSame(place, m_files.confinedURL(place.rootID, place.path, PathMayBeMissing::no));
}

void requireDocumentOf(IWorkApplication application, const DocumentPlace& place) {
    const auto name = lastComponent(place.location);
    const auto extension = documentExtension(application);
    if (lowercase(extensionOf(name)) != extension)
        throw AppleBridgeError::malformedRequest("Expected a ." + std::string(extension) +
                                                 " file: " + std::string(name));
}

} // namespace bridge
