#include "adapters/posix/system_clock.h"

namespace bridge {

using namespace std::chrono;

Date SystemClock::now() const {
    return {floor<seconds>(system_clock::now().time_since_epoch()).count()};
}

milliseconds SystemClock::uptime() const {
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch());
}

} // namespace bridge
