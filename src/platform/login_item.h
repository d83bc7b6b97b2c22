#pragma once

#include "base/platform_error.h"

namespace bridge {

// By the platforms' numbers.
enum class LoginItemStatus {
    notRegistered = 0,
    enabled = 1,
    requiresApproval = 2, // registered, but the user has switched it off outside of this program
    notFound = 3          // the service can't be used here
};

// The program as one of those that start when the user signs in. Main thread only; nothing here waits for the user.
class LoginItem {
public:
    virtual ~LoginItem() = default;

    // As it is now: the user may change it in other programs.
    virtual LoginItemStatus status() const = 0;

    // Afterwards the status is `enabled`. Throws PlatformError when that can't be had; then nothing changed.
    virtual void registerItem() = 0;

    // Afterwards the status is `notRegistered`, also when the user had switched it off. Throws PlatformError when it
    // can't be had; then nothing changed. What is not registered stays so without an error.
    virtual void unregisterItem() = 0;

    // Shows the user where the platform lets such programs be switched on. Throws PlatformError when there is no such
    // place, with what to do instead.
    virtual void openLoginItemsSettings() = 0;
};

} // namespace bridge
