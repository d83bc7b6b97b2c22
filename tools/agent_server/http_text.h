#pragma once

#include "tools/agent_server/stand_in_agent_server.h"

#include <optional>
#include <string_view>

namespace bridge {

// A whole answer; `more` is header lines.
std::string answerText(int status, std::string_view type, std::string_view body, std::string_view more = {});
std::string jsonAnswer(int status, std::string_view body);

// Nothing while more must come. What makes no sense gives a request without a method.
std::optional<StandInAgentServer::Received> parseRequest(const std::string& input);

} // namespace bridge
