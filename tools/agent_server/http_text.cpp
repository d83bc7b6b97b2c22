#include "tools/agent_server/http_text.h"

#include "base/text.h"

#include <algorithm>
#include <charconv>

namespace bridge {

namespace {

using Received = StandInAgentServer::Received;

constexpr size_t maximumRequest = 4 * 1024 * 1024;

} // namespace

std::string answerText(int status, std::string_view type, std::string_view body, std::string_view more) {
    std::string text = "HTTP/1.1 " + std::to_string(status) + " Stand-in\r\nContent-Type: ";
    text.append(type).append("\r\nContent-Length: ").append(std::to_string(body.size())).append("\r\n").append(more);
    return text.append("Connection: close\r\n\r\n").append(body);
}

std::string jsonAnswer(int status, std::string_view body) {
    return answerText(status, "application/json", body);
}

std::optional<StandInAgentServer::Received> parseRequest(const std::string& input) {
    const auto headEnd = input.find("\r\n\r\n");
    if (headEnd == input.npos) return input.size() > maximumRequest ? std::optional(Received()) : std::nullopt;
    Received request;
    std::string_view head(input.data(), headEnd);
    const auto takeLine = [&head] {
        const auto end = std::min(head.find("\r\n"), head.size());
        const auto line = head.substr(0, end);
        head.remove_prefix(std::min(end + 2, head.size()));
        return line;
    };
    const auto first = takeLine();
    const auto methodEnd = first.find(' ');
    const auto pathEnd = first.rfind(' ');
    if (methodEnd == first.npos || pathEnd == methodEnd) return Received();
    while (!head.empty()) {
        const auto line = takeLine();
        const auto colon = std::min(line.find(':'), line.size());
        request.headers[lowercase(line.substr(0, colon))] = trim(line.substr(std::min(colon + 1, line.size())));
    }
    size_t length = 0;
    const auto& lengthText = request.headers["content-length"];
    std::from_chars(lengthText.data(), lengthText.data() + lengthText.size(), length);
    if (length > maximumRequest) return Received();
    if (input.size() < headEnd + 4 + length) return std::nullopt;
    request.method = first.substr(0, methodEnd);
    request.path = first.substr(methodEnd + 1, pathEnd - methodEnd - 1);
    request.body = input.substr(headEnd + 4, length);
    return request;
}

} // namespace bridge
