#pragma once

#include "app/platform.h"

namespace bridge {

// The embedded adapters but for location, places and directions: whose they are depends on the user's choice of
// services, which each platform keeps elsewhere.
Platform openEmbeddedPorts(EventLoop& loop, const std::string& folder, std::unique_ptr<ConsentPrompt> prompt);

} // namespace bridge
