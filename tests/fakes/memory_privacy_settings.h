#pragma once

#include "platform/privacy_settings.h"

namespace bridge {

// A page that is only counted.
class MemoryPrivacySettings : public PrivacySettings {
public:
    int shown = 0;
    bool fails = false;

    void open() override {
        if (fails) throw PlatformError("There is no such page here.");
        ++shown;
    }
};

} // namespace bridge
