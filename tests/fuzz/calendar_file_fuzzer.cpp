#include "adapters/ical/calendar_file.h"
#include "base/platform_error.h"
#include "tests/fuzz/calendar_exercise.h"

namespace bridge {

void fuzz(std::string_view input) {
    try {
        const auto file = readCalendarFile(input);
        for (const auto& problem : file.problems)
            must(!problem.item.empty() && !problem.reason.empty());
        for (const auto& object : file.objects)
            exercise(object);
    } catch (const PlatformError&) {
    }
}

} // namespace bridge
