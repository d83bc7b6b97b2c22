#include "adapters/ical/zones.h"

#include "adapters/ical/library.h"

#include <unicode/timezone.h>

namespace bridge {

namespace {

std::shared_ptr<const TimeZone> behindPrefix(std::string_view tzid) {
    for (size_t slash = tzid.find('/'); slash != std::string_view::npos; slash = tzid.find('/', slash + 1))
        if (const auto rest = tzid.substr(slash + 1); rest.find('/') != std::string_view::npos)
            if (auto zone = TimeZone::named(rest)) return zone;
    return nullptr;
}

std::shared_ptr<const TimeZone> namedByWindows(std::string_view tzid) {
    icu::UnicodeString name;
    UErrorCode code = U_ZERO_ERROR;
    icu::TimeZone::getIDForWindowsID(icu::UnicodeString::fromUTF8(icu::StringPiece(tzid.data(), int32_t(tzid.size()))),
                                     nullptr, name, code);
    if (U_FAILURE(code) || name.isEmpty()) return nullptr;
    std::string identifier;
    return TimeZone::named(name.toUTF8String(identifier));
}

} // namespace

Zones::Zones(icalcomponent* calendar) {
    for (auto* definition : components(calendar, ICAL_VTIMEZONE_COMPONENT))
        if (auto* property = firstProperty(definition, ICAL_TZID_PROPERTY))
            if (const char* tzid = icalproperty_get_tzid(property))
                m_definitions.emplace(tzid, componentText(definition));
}

std::shared_ptr<const TimeZone> Zones::find(std::string_view tzid) const {
    const auto found = m_found.find(tzid);
    if (found != m_found.end()) return found->second;
    auto zone = TimeZone::named(tzid);
    if (!zone && tzid.starts_with('/')) zone = behindPrefix(tzid);
    if (!zone)
        if (const auto definition = m_definitions.find(tzid); definition != m_definitions.end())
            zone = zoneFromDefinition(definition->second);
    if (!zone) zone = namedByWindows(tzid);
    if (!zone) zone = behindPrefix(tzid);
    m_found.emplace(tzid, zone);
    return zone;
}

} // namespace bridge
