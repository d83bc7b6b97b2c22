#pragma once

#include "platform/secure_store.h"

#include <map>
#include <memory>
#include <utility>

namespace bridge {

// Keeps secrets in memory. Stores over the same Items see the same secrets, as one store does before and after a
// restart.
class MemorySecureStore : public SecureStore {
public:
    using Items = std::map<std::pair<std::string, std::string>, std::string>;

    MemorySecureStore() = default;
    explicit MemorySecureStore(std::shared_ptr<Items> items) : m_items(std::move(items)) {}

    Task<std::optional<std::string>> read(SecureItem item) override {
        const auto found = m_items->find({item.service, item.account});
        if (found == m_items->end()) co_return std::nullopt;
        co_return found->second;
    }
    Task<> replace(SecureItem item, std::string secret) override {
        (*m_items)[{item.service, item.account}] = std::move(secret);
        co_return;
    }
    Task<> remove(SecureItem item) override {
        m_items->erase({item.service, item.account});
        co_return;
    }
    std::string description() const override { return "memory"; }

    const Items& items() const { return *m_items; }

private:
    std::shared_ptr<Items> m_items = std::make_shared<Items>();
};

} // namespace bridge
