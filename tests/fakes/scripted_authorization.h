#pragma once

#include "base/platform_error.h"
#include "platform/authorization.h"

#include <map>
#include <vector>

namespace bridge {

// Permissions as the test sets them; full access to everything unless it does. A request is answered as `granted` says
// and changes no status.
class ScriptedAuthorization : public Authorization {
public:
    static constexpr int fullAccess = 3;

    std::map<PrivacyService, std::optional<int>> statuses;
    bool granted = true;
    bool failsToAsk = false;
    std::vector<PrivacyService> requested;

    std::optional<int> status(PrivacyService service) const override {
        const auto found = statuses.find(service);
        return found == statuses.end() ? fullAccess : found->second;
    }
    Task<bool> requestAccess(PrivacyService service) override {
        requested.push_back(service);
        if (failsToAsk) throw PlatformError("There is nobody to ask.");
        co_return granted;
    }
};

} // namespace bridge
