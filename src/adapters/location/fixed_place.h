#pragma once

#include "adapters/location/location_source.h"
#include "platform/clock.h"
#include "platform/local_search.h"

#include <string>

namespace bridge {

// Where the user said once that this computer is, for one that nothing can locate. It holds at any moment, so each fix
// is of now.
class FixedPlace : public LocationSource {
public:
    // Without a place there is no fix, and the error tells the user to write one into `settingsFile`; `fault` is what
    // is wrong with what stands there, in a sentence of its own, empty when nothing is. `clock` outlives the source.
    FixedPlace(std::optional<MapCoordinate> place, std::string settingsFile, std::string fault, const Clock& clock)
        : m_place(place), m_settingsFile(std::move(settingsFile)), m_fault(std::move(fault)), m_clock(clock) {}

    Task<LocationFix> locate() override;
    std::string description() const override;

private:
    std::optional<MapCoordinate> m_place;
    std::string m_settingsFile;
    std::string m_fault;
    const Clock& m_clock;
};

} // namespace bridge
