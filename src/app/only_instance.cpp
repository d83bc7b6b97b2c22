#include "app/only_instance.h"

#include "app/instance_socket.h"
#include "base/platform_error.h"

#include <thread>
#include <utility>

namespace bridge {

std::variant<InstanceLock, RunningAlready> becomeOnlyInstance(const std::string& folder, const OnlyInstanceWish& wish) {
    using namespace std::chrono_literals;
    auto deadline = std::chrono::steady_clock::now() + wish.patience;
    bool makesRoom = false;
    do {
        if (auto lock = InstanceLock::take(folder)) return std::move(*lock);
        const auto answer = tellRunningInstance(folder, wish.toRunning, wish.patience);
        if (answer == InstanceAnswer::noDisplay && wish.hasDisplay) {
            const auto given = tellRunningInstance(folder, {InstanceWish::giveWay, {}}, wish.patience);
            if (given == InstanceAnswer::done && !std::exchange(makesRoom, true))
                deadline = std::chrono::steady_clock::now() + wish.patienceWithItsEnd;
        } else if (answer) {
            return RunningAlready{*answer};
        }
        // It holds the lock and does not listen yet, or does not any more: a moment later we know which.
        std::this_thread::sleep_for(10ms);
    } while (std::chrono::steady_clock::now() < deadline);
    throw PlatformError("Another Brindlefox Apple Bridge of yours is running and does not answer. End it first.");
}

} // namespace bridge
