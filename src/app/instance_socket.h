#pragma once

#include "app/instance_message.h"
#include "base/event_loop.h"

#include <chrono>
#include <functional>

namespace bridge {

// Where the bridge that runs hears of later starts. Its folder belongs to the user alone, so whoever gets there is he.
class InstanceSocket {
public:
    using Handler = std::function<InstanceAnswer(const InstanceMessage&)>;

    // For the holder of the lock; a socket that a dead process left is replaced. Throws PlatformError.
    InstanceSocket(EventLoop& loop, const std::string& folder, Handler handler);
    ~InstanceSocket();
    InstanceSocket(const InstanceSocket&) = delete;
    InstanceSocket& operator=(const InstanceSocket&) = delete;

private:
    struct State;
    State* m_state; // freed by the loop once it has let go of its handles
    std::string m_path;
};

// Says it to the bridge that runs and waits for the answer. Nothing when nobody is there, or it does not answer in
// time.
std::optional<InstanceAnswer> tellRunningInstance(const std::string& folder, const InstanceMessage& message,
                                                  std::chrono::milliseconds patience);

} // namespace bridge
