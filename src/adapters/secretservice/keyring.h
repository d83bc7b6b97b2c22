#pragma once

#include "adapters/dbus/glib_pointer.h"
#include "platform/secure_store.h"

#include <libsecret/secret.h>
#include <vector>

namespace bridge {

// One conversation with the Secret Service on the worker's thread. It blocks; the cancellable ends each call at once.
// Every function throws SecureStoreError, also when the default collection is missing or locked.
class Keyring {
public:
    explicit Keyring(GCancellable* cancellable);
    Keyring(const Keyring&) = delete;
    Keyring& operator=(const Keyring&) = delete;

    std::optional<std::string> read(const SecureItem& item);
    void replace(const SecureItem& item, const std::string& secret);
    void remove(const SecureItem& item);

private:
    using Items = std::vector<GObjectPointer<SecretItem>>;

    // The proxies' signals go to the context of the thread that made them. Without one of its own that would be the
    // main thread's.
    class OwnContext {
    public:
        OwnContext() { g_main_context_push_thread_default(m_context.get()); }
        OwnContext(const OwnContext&) = delete;
        OwnContext& operator=(const OwnContext&) = delete;
        // Proxies that are gone leave something behind to be freed by the context.
        ~OwnContext() {
            while (g_main_context_iteration(m_context.get(), FALSE)) {
            }
            g_main_context_pop_thread_default(m_context.get());
        }

    private:
        GLibPointer<GMainContext> m_context{g_main_context_new()};
    };

    Items search(const SecureItem& item, SecretSearchFlags flags);
    void removeItems(const Items& items, const std::string& exceptPath);

    GCancellable* m_cancellable;
    OwnContext m_context;
    GObjectPointer<GDBusConnection> m_bus;
    GObjectPointer<SecretService> m_service;
    GObjectPointer<SecretCollection> m_collection;
};

} // namespace bridge
