#pragma once

#include "platform/authorization.h"

namespace bridge {

// Puts a question to the user, on a desktop whose platform has no privacy settings to ask by itself. Main thread only.
class ConsentPrompt {
public:
    virtual ~ConsentPrompt() = default;

    // Whether the user allows the use of this service. Waits for the answer, however long; a dropped task takes the
    // question away. Throws PlatformError when there is no way to ask.
    virtual Task<bool> ask(PrivacyService service) = 0;
};

} // namespace bridge
