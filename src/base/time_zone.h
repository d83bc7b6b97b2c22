#pragma once

#include "base/date.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace bridge {

// The clock of a place: how far it is from UTC at every moment of the years 1 to 9999. Local times are counted in
// seconds as if the clock showed UTC. Never changes once made, so that any thread may use it.
class TimeZone {
public:
    struct Transition {
        int64_t moment = 0; // from here on
        int offset = 0;     // seconds east of UTC
        bool operator==(const Transition&) const = default;
    };

    // A zone of the IANA time zone database, as the system has it; nothing when the system knows no such zone. Read
    // once in the life of the process.
    static std::shared_ptr<const TimeZone> named(std::string_view identifier);
    static const std::shared_ptr<const TimeZone>& utc();
    // The one that userTimeZone() names.
    static std::shared_ptr<const TimeZone> user();

    // `transitions` in any order. When they go beyond 400 years after `repeatsFrom`, the years that follow are like
    // those 400: after so long the days of the week fall on the same dates again.
    TimeZone(int initialOffset, std::vector<Transition> transitions);
    TimeZone(int initialOffset, std::vector<Transition> transitions, int64_t repeatsFrom);

    int offsetAt(int64_t moment) const;
    int64_t localAt(int64_t moment) const { return moment + offsetAt(moment); }
    // Of a local time that comes twice the first; one that the clocks skip is taken as if they had not changed yet
    // (RFC 5545, 3.3.5).
    int64_t momentOf(int64_t local) const;

private:
    int m_initialOffset;
    std::vector<Transition> m_transitions;
    std::optional<int64_t> m_repeatsFrom;
};

} // namespace bridge
