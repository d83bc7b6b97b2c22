#include "adapters/secretservice/keyring.h"

#include "adapters/dbus/session_bus.h"

namespace bridge {

namespace {

constexpr auto serviceName = "org.freedesktop.secrets";

const SecretSchema schema{"com.brindlefox.apple-bridge.Secret",
                          SECRET_SCHEMA_NONE,
                          {{"service", SECRET_SCHEMA_ATTRIBUTE_STRING},
                           {"account", SECRET_SCHEMA_ATTRIBUTE_STRING},
                           {nullptr, SECRET_SCHEMA_ATTRIBUTE_STRING}},
                          0,
                          nullptr,
                          nullptr,
                          nullptr,
                          nullptr,
                          nullptr,
                          nullptr,
                          nullptr};

GLibPointer<GHashTable> attributesOf(const SecureItem& item) {
    return GLibPointer<GHashTable>(
        secret_attributes_build(&schema, "service", item.service.c_str(), "account", item.account.c_str(), nullptr));
}

[[noreturn]] void fail(int32_t status, const std::string& description) {
    throw SecureStoreError(status, description);
}

// Filled by the library, thrown by check().
class Outcome {
public:
    GError** out() { return &m_error; }
    void check() {
        if (!m_error) return;
        const GLibPointer<GError> error(std::exchange(m_error, nullptr));
        if (g_error_matches(error.get(), G_IO_ERROR, G_IO_ERROR_CANCELLED))
            fail(error->code, "The keyring did not answer in time.");
        g_dbus_error_strip_remote_error(error.get());
        fail(error->code, error->message);
    }

private:
    GError* m_error = nullptr;
};

std::string pathOf(SecretItem* item) {
    return g_dbus_proxy_get_object_path(G_DBUS_PROXY(item));
}

} // namespace

Keyring::Keyring(GCancellable* cancellable) : m_cancellable(cancellable) {
    m_bus = sessionBus(m_cancellable);
    if (!m_bus) fail(G_IO_ERROR_NOT_CONNECTED, "There is no session bus.");
    if (!isNameServed(m_bus.get(), serviceName, m_cancellable))
        fail(G_IO_ERROR_NOT_FOUND, "There is no Secret Service.");
    Outcome opened;
    m_service.reset(secret_service_open_sync(SECRET_TYPE_SERVICE, nullptr, SECRET_SERVICE_OPEN_SESSION, m_cancellable,
                                             opened.out()));
    opened.check();
    Outcome found;
    m_collection.reset(secret_collection_for_alias_sync(m_service.get(), SECRET_COLLECTION_DEFAULT,
                                                        SECRET_COLLECTION_NONE, m_cancellable, found.out()));
    found.check();
    if (!m_collection) fail(SECRET_ERROR_NO_SUCH_OBJECT, "The keyring has no default collection.");
    if (secret_collection_get_locked(m_collection.get())) fail(SECRET_ERROR_IS_LOCKED, "The keyring is locked.");
}

std::optional<std::string> Keyring::read(const SecureItem& item) {
    const auto items = search(item, SECRET_SEARCH_LOAD_SECRETS);
    if (items.empty()) return std::nullopt;
    SecretItem* newest = items.front().get();
    for (const auto& other : items)
        if (secret_item_get_modified(other.get()) > secret_item_get_modified(newest)) newest = other.get();
    const auto release = [](SecretValue* value) { secret_value_unref(value); };
    const std::unique_ptr<SecretValue, decltype(release)> value(secret_item_get_secret(newest), release);
    if (!value) fail(SECRET_ERROR_PROTOCOL, "The keyring did not hand out the secret.");
    gsize size = 0;
    const char* bytes = secret_value_get(value.get(), &size);
    return std::string(bytes, size);
}

void Keyring::replace(const SecureItem& item, const std::string& secret) {
    const auto former = search(item, SECRET_SEARCH_NONE);
    const auto release = [](SecretValue* value) { secret_value_unref(value); };
    const std::unique_ptr<SecretValue, decltype(release)> value(
        secret_value_new(secret.data(), static_cast<gssize>(secret.size()), "text/plain"), release);
    const auto label = "Brindlefox Apple Bridge: " + item.account;
    Outcome created;
    const GObjectPointer<SecretItem> stored(
        secret_item_create_sync(m_collection.get(), &schema, attributesOf(item).get(), label.c_str(), value.get(),
                                SECRET_ITEM_CREATE_REPLACE, m_cancellable, created.out()));
    created.check();
    // The service replaces an item of the same collection. In another one the old item would stay.
    removeItems(former, pathOf(stored.get()));
}

void Keyring::remove(const SecureItem& item) {
    removeItems(search(item, SECRET_SEARCH_NONE), {});
}

// Those in every collection. Only a locked one could answer for an item that can't be read.
Keyring::Items Keyring::search(const SecureItem& item, SecretSearchFlags flags) {
    Outcome found;
    GList* list = secret_service_search_sync(m_service.get(), &schema, attributesOf(item).get(),
                                             static_cast<SecretSearchFlags>(flags | SECRET_SEARCH_ALL), m_cancellable,
                                             found.out());
    Items items;
    for (const GList* entry = list; entry; entry = entry->next)
        items.emplace_back(static_cast<SecretItem*>(entry->data));
    g_list_free(list);
    found.check();
    for (const auto& match : items)
        if (secret_item_get_locked(match.get())) fail(SECRET_ERROR_IS_LOCKED, "The keyring is locked.");
    return items;
}

void Keyring::removeItems(const Items& items, const std::string& exceptPath) {
    for (const auto& item : items) {
        if (pathOf(item.get()) == exceptPath) continue;
        Outcome removed;
        secret_item_delete_sync(item.get(), m_cancellable, removed.out());
        removed.check();
    }
}

} // namespace bridge
