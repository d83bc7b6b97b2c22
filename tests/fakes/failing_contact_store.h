#pragma once

#include "base/platform_error.h"
#include "platform/contact_store.h"

namespace bridge {

// An address book of which one call fails when told, without any effect. An enumeration fails after it has shown its
// first contact. It remembers every call.
class FailingContactStore : public ContactStore {
public:
    enum class Call { contacts, enumerate, groups, execute };
    static constexpr const char* failure = "The address book fails on purpose.";

    explicit FailingContactStore(ContactStore& real) : m_real(real) {}

    // The calls so far.
    std::vector<Call> calls;
    // The call with this number fails, counting from 0 in `calls`.
    std::optional<size_t> failing;

    std::string description() const override { return m_real.description(); }

    Task<std::vector<Contact>> contacts(std::vector<std::string> identifiers) override {
        if (fails(Call::contacts)) throw PlatformError(failure);
        auto found = co_await m_real.contacts(std::move(identifiers));
        co_return found;
    }
    Task<> enumerate(ContactPredicate predicate, std::function<bool(const Contact&)> visit) override {
        const bool breaksOff = fails(Call::enumerate);
        std::function<bool(const Contact&)> passOn = [&](const Contact& contact) {
            return visit(contact) && !breaksOff;
        };
        co_await m_real.enumerate(std::move(predicate), std::move(passOn));
        if (breaksOff) throw PlatformError(failure);
    }
    Task<std::vector<ContactGroup>> groups() override {
        if (fails(Call::groups)) throw PlatformError(failure);
        auto found = co_await m_real.groups();
        co_return found;
    }
    Task<std::vector<std::string>> execute(std::vector<ContactChange> changes) override {
        if (fails(Call::execute)) throw PlatformError(failure);
        auto added = co_await m_real.execute(std::move(changes));
        co_return added;
    }

private:
    bool fails(Call call) {
        calls.push_back(call);
        return failing == calls.size() - 1;
    }

    ContactStore& m_real;
};

} // namespace bridge
