#include "app/process.h"

#include <algorithm>
#include <csignal>
#include <sys/resource.h>

namespace bridge {

void prepareProcess() {
    std::signal(SIGPIPE, SIG_IGN);

    // A thousand clients may be half-way through a request; the usual 1,024 would be used up by them.
    constexpr rlim_t wanted = 8192;
    rlimit descriptors{};
    if (getrlimit(RLIMIT_NOFILE, &descriptors) == 0 && descriptors.rlim_cur < wanted) {
        descriptors.rlim_cur = std::min(wanted, descriptors.rlim_max);
        setrlimit(RLIMIT_NOFILE, &descriptors);
    }
}

} // namespace bridge
