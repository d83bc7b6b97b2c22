#pragma once

#include "base/async_mutex.h"
#include "base/event_loop.h"
#include "base/worker.h"
#include "platform/secure_store.h"

#include <chrono>
#include <memory>

namespace bridge {

// The desktop's keyring over D-Bus (org.freedesktop.secrets): GNOME Keyring, KWallet, KeePassXC. Secrets lie in the
// default collection. Nothing here ever opens a dialog: a locked keyring is an error. Every call talks to the service
// as it is at that moment, so a keyring that was restarted is found again.
class SecretServiceStore : public SecureStore {
public:
    static constexpr std::chrono::milliseconds usualDeadline = std::chrono::seconds(5);

    // Nothing when there is no session bus or no such service on it, it doesn't answer, or its default collection is
    // missing or locked. `loop` must outlive the store, and the store its tasks. No call takes longer than `deadline`
    // once its turn has come.
    static Task<std::unique_ptr<SecretServiceStore>> open(EventLoop& loop,
                                                          std::chrono::milliseconds deadline = usualDeadline);

    Task<std::optional<std::string>> read(SecureItem item) override;
    Task<> replace(SecureItem item, std::string secret) override;
    Task<> remove(SecureItem item) override;
    std::string description() const override { return "Secret Service"; }

private:
    SecretServiceStore(EventLoop& loop, std::chrono::milliseconds deadline) : m_loop(loop), m_deadline(deadline) {}

    // Fresh conversation, one at a time.
    template <typename Job> auto run(Job job) -> Task<decltype(job(std::declval<class Keyring&>()))>;

    EventLoop& m_loop;
    std::chrono::milliseconds m_deadline;
    AsyncMutex m_turn;
    Worker m_worker;
};

} // namespace bridge
