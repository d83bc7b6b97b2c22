#include "adapters/eds/source_kind.h"

#include <array>

namespace bridge {

namespace {

struct Kind {
    std::string_view backend;
    SourceType type;
};

// Nothing is `cloud`, which means the platform's own: on this desktop every such service is somebody's CalDAV or
// Exchange server.
constexpr std::array kinds = std::to_array<Kind>({
    {"local", SourceType::local},
    {"caldav", SourceType::calDAV},
    {"webdav", SourceType::calDAV},
    {"owncloud", SourceType::calDAV},
    {"google", SourceType::calDAV},
    {"gtasks", SourceType::calDAV},
    {"yahoo", SourceType::calDAV},
    {"ews", SourceType::exchange},
    {"exchange", SourceType::exchange},
    {"mapi", SourceType::exchange},
    {"microsoft365", SourceType::exchange},
    {"outlook", SourceType::exchange},
    {"webcal", SourceType::subscribed},
    {"http", SourceType::subscribed},
    {"weather", SourceType::subscribed},
    {"contacts", SourceType::birthdays},
});

} // namespace

SourceType sourceTypeOf(std::string_view backend) {
    for (const auto& kind : kinds)
        if (kind.backend == backend) return kind.type;
    // Of the kinds that can take new calendars the one that promises least about where they lie.
    return SourceType::calDAV;
}

} // namespace bridge
