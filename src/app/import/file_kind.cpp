#include "app/import/file_kind.h"

#include "adapters/vcard/content_line.h"
#include "base/text.h"

#include <algorithm>

namespace bridge {

namespace {

std::optional<FileKind> kindBegunBy(std::string_view line) {
    const auto colon = line.find(':');
    if (colon == line.npos || !vcard::equalsIgnoringCase(trim(line.substr(0, colon)), "BEGIN")) return std::nullopt;
    const auto component = trim(line.substr(colon + 1));
    if (vcard::equalsIgnoringCase(component, "VCARD")) return FileKind::contacts;
    for (const auto* name : {"VCALENDAR", "VEVENT", "VTODO", "VJOURNAL", "VFREEBUSY", "VTIMEZONE"})
        if (vcard::equalsIgnoringCase(component, name)) return FileKind::calendar;
    return std::nullopt;
}

} // namespace

std::optional<FileKind> kindOf(std::string_view text) {
    while (!text.empty()) {
        const auto line = text.substr(0, text.find_first_of("\r\n"));
        if (const auto kind = kindBegunBy(line)) return kind;
        text.remove_prefix(std::min(text.size(), line.size() + 1));
    }
    return std::nullopt;
}

} // namespace bridge
