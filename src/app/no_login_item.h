#pragma once

#include "platform/login_item.h"

namespace bridge {

// Of a bridge that is not the logged-in user's own, and so must not start by itself.
class NoLoginItem : public LoginItem {
public:
    LoginItemStatus status() const override { return LoginItemStatus::notFound; }
    void registerItem() override { fail(); }
    void unregisterItem() override {}
    void openLoginItemsSettings() override { fail(); }

private:
    [[noreturn]] static void fail() { throw PlatformError("This bridge can't be started at login."); }
};

} // namespace bridge
