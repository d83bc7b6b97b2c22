#pragma once

#include "base/platform_error.h"

namespace bridge {

// The platform's own page of privacy settings.
class PrivacySettings {
public:
    virtual ~PrivacySettings() = default;

    // Shows it to the user and does not wait. Throws PlatformError when there is no such page here, with where else
    // permissions are changed, or when it can't be shown.
    virtual void open() = 0;
};

} // namespace bridge
