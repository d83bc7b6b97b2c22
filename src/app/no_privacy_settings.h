#pragma once

#include "platform/privacy_settings.h"

namespace bridge {

// For a process without a desktop.
class NoPrivacySettings : public PrivacySettings {
public:
    void open() override { throw PlatformError("There are no privacy settings: this process has no desktop."); }
};

} // namespace bridge
