#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace bridge {

// What a start has to say to the bridge that runs already.
enum class InstanceWish { nothing, showDashboard, giveWay };

struct InstanceMessage {
    InstanceWish wish = InstanceWish::nothing;
    // What the desktop gave the new process to put a window before the user with; often empty.
    std::string activationToken;
};

// And how it answers.
enum class InstanceAnswer { done, noDisplay };

// Each is one line.
std::string encode(const InstanceMessage& message);
std::optional<InstanceMessage> decodeInstanceMessage(std::string_view line);
std::string encode(InstanceAnswer answer);
std::optional<InstanceAnswer> decodeInstanceAnswer(std::string_view line);

} // namespace bridge
