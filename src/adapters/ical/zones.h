#pragma once

#include "adapters/ical/ical_pointer.h"
#include "base/time_zone.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace bridge {

// What the TZIDs of one calendar object mean. A name of the IANA database is what the system says of it, whatever the
// object's own VTIMEZONE says, since that was right at best when it was written; also behind a prefix, as in
// /example.org/20260101_1/Europe/Berlin. Then comes the object's VTIMEZONE, then the names that Windows has.
class Zones {
public:
    Zones() = default;
    explicit Zones(icalcomponent* calendar);

    // Nothing when the name means nothing here: its times are floating then.
    std::shared_ptr<const TimeZone> find(std::string_view tzid) const;

private:
    std::map<std::string, std::string, std::less<>> m_definitions; // TZID to the VTIMEZONE's text
    mutable std::map<std::string, std::shared_ptr<const TimeZone>, std::less<>> m_found;
};

// What a VTIMEZONE defines; nothing when that is no zone. Each text is worked out once and kept for the process.
std::shared_ptr<const TimeZone> zoneFromDefinition(const std::string& definition);

} // namespace bridge
