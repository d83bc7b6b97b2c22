#include "adapters/location/fixed_place.h"

namespace bridge {

Task<LocationFix> FixedPlace::locate() {
    if (!m_place)
        throw PlatformError((m_fault.empty() ? "" : m_fault + ". ") +
                            "Nothing here finds the location of this computer, and none is set. To set it, write "
                            "{\"location\": {\"latitude\": 52.52, \"longitude\": 13.405}} with your own degrees into " +
                            m_settingsFile + " and start Brindlefox Apple Bridge again.");
    // How well the user knows the place nobody knows; it is what was asked for.
    constexpr double accuracy = 100;
    co_return LocationFix{m_place->latitude, m_place->longitude, accuracy, 0, m_clock.now()};
}

std::string FixedPlace::description() const {
    if (m_place) return "what " + m_settingsFile + " says";
    return m_fault.empty() ? "nowhere, and " + m_settingsFile + " says none" : "nowhere. " + m_fault;
}

} // namespace bridge
