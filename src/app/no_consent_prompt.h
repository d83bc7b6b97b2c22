#pragma once

#include "base/platform_error.h"
#include "platform/consent_prompt.h"

namespace bridge {

// For a process without a window.
class NoConsentPrompt : public ConsentPrompt {
public:
    Task<bool> ask(PrivacyService) override {
        throw PlatformError("The user can't be asked for access: this process has no window.");
        co_return false;
    }
};

} // namespace bridge
