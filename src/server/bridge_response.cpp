#include "server/bridge_response.h"

#include <fmt/format.h>

namespace bridge {

std::string_view reasonPhrase(int status) {
    switch (status) {
    case 200:
        return "OK";
    case 400:
        return "Bad Request";
    case 401:
        return "Unauthorized";
    case 403:
        return "Forbidden";
    case 404:
        return "Not Found";
    case 413:
        return "Payload Too Large";
    default:
        return "Internal Server Error";
    }
}

std::string responseHead(const BridgeResponse& response) {
    return fmt::format("HTTP/1.1 {} {}\r\n"
                       "Content-Type: application/json; charset=utf-8\r\n"
                       "Content-Length: {}\r\n"
                       "Connection: close\r\n"
                       "Cache-Control: no-store\r\n\r\n",
                       response.status, reasonPhrase(response.status), response.body.size());
}

} // namespace bridge
