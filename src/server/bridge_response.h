#pragma once

#include <string>
#include <string_view>

namespace bridge {

// What goes back to the client: a status and a JSON body.
struct BridgeResponse {
    int status;
    std::string body;
    // What the log calls the request; one of our own words.
    std::string_view logName;
};

std::string_view reasonPhrase(int status);

// Status line and headers, with the blank line that ends them.
std::string responseHead(const BridgeResponse& response);

} // namespace bridge
