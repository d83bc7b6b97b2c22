#pragma once

#include "app/platform.h"
#include "tools/valhalla_server/valhalla_server.h"
#include "tour.h"

#include <filesystem>
#include <optional>

namespace bridge::playground {

// Puts the device in Vaduz, unless the profile has a services.json already. Throws std::runtime_error.
void writeSampleServices(const std::filesystem::path& folder);

// A Valhalla that knows the ways around there, for a profile whose services.json names no directions server. It ends
// with this object.
class SampleMaps {
public:
    // Opens the maps of the platform anew. Throws PlatformError.
    SampleMaps(EventLoop& loop, Platform& platform, const std::filesystem::path& folder);

    // Otherwise the first who asks for a way waits for its map, which a slow machine may not make in the time he has.
    // Throws PlatformError.
    void prepare(EventLoop& loop) const;

    const Missing& missing() const { return m_missing; }

private:
    std::optional<ValhallaServer> m_valhalla;
    Missing m_missing;
};

} // namespace bridge::playground
