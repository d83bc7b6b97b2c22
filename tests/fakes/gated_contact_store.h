#pragma once

#include "platform/contact_store.h"
#include "tests/base/gate.h"

#include <algorithm>
#include <list>

namespace bridge {

// An address book that takes its time: from hold() on every call waits before it acts, until a test lets it go on.
class GatedContactStore : public ContactStore {
public:
    explicit GatedContactStore(ContactStore& real) : m_real(real) {}

    void hold() { m_holding = true; }
    // How many calls wait now.
    size_t waiting() const {
        return static_cast<size_t>(std::ranges::count_if(m_gates, [](const Gate& gate) { return gate.isAwaited(); }));
    }
    // Lets the one go on that has waited longest.
    void releaseOne() {
        std::ranges::find_if(m_gates, [](const Gate& gate) { return gate.isAwaited(); })->open();
    }
    // Lets all go on, those too that come meanwhile.
    void releaseAll() {
        while (waiting() > 0)
            releaseOne();
    }

    std::string description() const override { return m_real.description(); }

    Task<std::vector<Contact>> contacts(std::vector<std::string> identifiers) override {
        co_await leave();
        auto found = co_await m_real.contacts(std::move(identifiers));
        co_return found;
    }
    Task<> enumerate(ContactPredicate predicate, std::function<bool(const Contact&)> visit) override {
        co_await leave();
        co_await m_real.enumerate(std::move(predicate), std::move(visit));
    }
    Task<std::vector<ContactGroup>> groups() override {
        co_await leave();
        auto found = co_await m_real.groups();
        co_return found;
    }
    Task<std::vector<std::string>> execute(std::vector<ContactChange> changes) override {
        co_await leave();
        auto added = co_await m_real.execute(std::move(changes));
        co_return added;
    }

private:
    Task<> leave() {
        if (!m_holding) co_return;
        auto& gate = m_gates.emplace_back();
        co_await gate.opened();
    }

    ContactStore& m_real;
    std::list<Gate> m_gates;
    bool m_holding = false;
};

} // namespace bridge
