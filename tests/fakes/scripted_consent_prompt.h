#pragma once

#include "base/platform_error.h"
#include "platform/consent_prompt.h"
#include "tests/base/gate.h"

#include <vector>

namespace bridge {

// A user who always gives the same answer, at once or when the gate opens, and remembers what was asked.
class ScriptedConsentPrompt : public ConsentPrompt {
public:
    bool answer = true;
    bool fails = false;
    bool waits = false;
    Gate answered;
    std::vector<PrivacyService> asked;

    Task<bool> ask(PrivacyService service) override {
        asked.push_back(service);
        if (fails) throw PlatformError("There is nobody to ask.");
        if (waits) co_await answered.opened();
        co_return answer;
    }
};

} // namespace bridge
