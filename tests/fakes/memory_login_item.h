#pragma once

#include "platform/login_item.h"

#include <memory>

namespace bridge {

// A login item whose platform is the test.
class MemoryLoginItem : public LoginItem {
public:
    struct State {
        LoginItemStatus status = LoginItemStatus::notRegistered;
        bool refusesChanges = false;
        bool hasPage = true;
        int registrations = 0; // that were asked for
        int removals = 0;
        int pages = 0;
    };

    explicit MemoryLoginItem(std::shared_ptr<State> state = std::make_shared<State>()) : m_state(std::move(state)) {}
    State& state() { return *m_state; }

    LoginItemStatus status() const override { return m_state->status; }
    void registerItem() override {
        ++m_state->registrations;
        if (m_state->status == LoginItemStatus::enabled) return;
        refuse(m_state->status != LoginItemStatus::notRegistered);
        m_state->status = LoginItemStatus::enabled;
    }
    void unregisterItem() override {
        ++m_state->removals;
        if (m_state->status == LoginItemStatus::notRegistered) return;
        refuse(m_state->status == LoginItemStatus::notFound);
        m_state->status = LoginItemStatus::notRegistered;
    }
    void openLoginItemsSettings() override {
        if (!m_state->hasPage) throw PlatformError("There is no page for login items.");
        ++m_state->pages;
    }

private:
    void refuse(bool always) const {
        if (always || m_state->refusesChanges) throw PlatformError("The login items can't be changed.");
    }

    std::shared_ptr<State> m_state;
};

} // namespace bridge
