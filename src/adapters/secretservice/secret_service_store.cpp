#include "adapters/secretservice/secret_service_store.h"

#include "adapters/secretservice/keyring.h"
#include "base/offload.h"
#include "base/timer.h"

namespace bridge {

namespace {

// Ends the call it was made for when the time is over and when the waiting task is dropped.
class Deadline {
public:
    Deadline(EventLoop& loop, std::chrono::milliseconds delay) : m_timer(loop) {
        m_timer.start(delay, [cancellable = m_cancellable] { g_cancellable_cancel(cancellable.get()); });
    }
    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;
    ~Deadline() { g_cancellable_cancel(m_cancellable.get()); }

    std::shared_ptr<GCancellable> cancellable() const { return m_cancellable; }

private:
    std::shared_ptr<GCancellable> m_cancellable{g_cancellable_new(), GObjectRelease()};
    Timer m_timer;
};

} // namespace

template <typename Job> auto SecretServiceStore::run(Job job) -> Task<decltype(job(std::declval<Keyring&>()))> {
    // The time of a call begins with its turn, so one that hangs doesn't use up that of the next.
    const auto turn = co_await m_turn.lock();
    const Deadline deadline(m_loop, m_deadline);
    auto call = offload(m_loop, m_worker, [cancellable = deadline.cancellable(), job = std::move(job)] {
        Keyring keyring(cancellable.get());
        return job(keyring);
    });
    auto answer = co_await call;
    co_return answer;
}

Task<std::unique_ptr<SecretServiceStore>> SecretServiceStore::open(EventLoop& loop,
                                                                   std::chrono::milliseconds deadline) {
    std::unique_ptr<SecretServiceStore> store(new SecretServiceStore(loop, deadline));
    try {
        // Opening the conversation is the test.
        const auto job = [](Keyring&) { return true; };
        co_await store->run(job);
    } catch (const SecureStoreError&) {
        co_return nullptr;
    }
    co_return store;
}

Task<std::optional<std::string>> SecretServiceStore::read(SecureItem item) {
    auto job = [item = std::move(item)](Keyring& keyring) { return keyring.read(item); };
    auto found = co_await run(std::move(job));
    co_return found;
}

Task<> SecretServiceStore::replace(SecureItem item, std::string secret) {
    auto job = [item = std::move(item), secret = std::move(secret)](Keyring& keyring) {
        keyring.replace(item, secret);
        return true;
    };
    co_await run(std::move(job));
}

Task<> SecretServiceStore::remove(SecureItem item) {
    auto job = [item = std::move(item)](Keyring& keyring) {
        keyring.remove(item);
        return true;
    };
    co_await run(std::move(job));
}

} // namespace bridge
