#pragma once

#include "adapters/jsonfile/service_settings.h"
#include "platform/directions.h"
#include "platform/http_client.h"

#include <memory>

namespace bridge {

// From the server that the user has named, or from nobody, with an error that says how to name one. The client outlives
// the object.
std::unique_ptr<Directions> openDirections(HTTPClient& client, const ServiceSettings& settings);

} // namespace bridge
