#pragma once

#include "platform/directions.h"
#include "platform/http_client.h"

#include <string>

namespace bridge {

// A server that speaks Valhalla's HTTP interface, of the user's own or of somebody's who lets them use it. It is asked
// with the two coordinates, the kind of transport and the language, and nothing else.
class ValhallaDirections : public Directions {
public:
    // `server` is an http or https address without a slash at its end; "/route" is put behind it. `language`, as
    // userLanguage() tells it, is that of the instructions; English where the server doesn't speak it. The client
    // outlives the object.
    ValhallaDirections(HTTPClient& client, std::string server, const std::string& language);

    Task<std::vector<Route>> calculate(DirectionsQuery query) override;
    std::string description() const override;

private:
    HTTPRequest requestFor(const DirectionsQuery& query) const;

    HTTPClient& m_client;
    std::string m_server;
    std::string m_language;
};

} // namespace bridge
