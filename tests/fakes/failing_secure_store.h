#pragma once

#include "platform/secure_store.h"

#include <set>

namespace bridge {

// A secure store of which some calls fail, without any effect.
class FailingSecureStore : public SecureStore {
public:
    enum class Call { read, replace, remove };

    explicit FailingSecureStore(SecureStore& real) : m_real(real) {}

    void fail(std::set<Call> calls, int32_t status) {
        m_failing = std::move(calls);
        m_status = status;
    }
    void recover() { m_failing.clear(); }

    Task<std::optional<std::string>> read(SecureItem item) override {
        failIf(Call::read);
        auto found = co_await m_real.read(std::move(item));
        co_return found;
    }
    Task<> replace(SecureItem item, std::string secret) override {
        failIf(Call::replace);
        co_await m_real.replace(std::move(item), std::move(secret));
    }
    Task<> remove(SecureItem item) override {
        failIf(Call::remove);
        co_await m_real.remove(std::move(item));
    }
    std::string description() const override { return m_real.description(); }

private:
    void failIf(Call call) const {
        if (m_failing.contains(call)) throw SecureStoreError(m_status, "The secure store fails on purpose.");
    }

    SecureStore& m_real;
    std::set<Call> m_failing;
    int32_t m_status = 0;
};

} // namespace bridge
