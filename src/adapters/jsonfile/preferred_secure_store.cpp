#include "adapters/jsonfile/preferred_secure_store.h"

#include "base/log.h"

namespace bridge {

PreferredSecureStore::PreferredSecureStore(Opening openKeyring, std::unique_ptr<SecureStore> file)
    : m_openKeyring(std::move(openKeyring)), m_file(std::move(file)) {}

Task<SecureStore*> PreferredSecureStore::keyring() {
    const auto guard = co_await m_opening.lock();
    if (m_openKeyring) {
        auto opening = m_openKeyring();
        m_keyring = co_await std::move(opening);
        m_openKeyring = nullptr;
        log::note("The credential is kept in " + description() + ".");
    }
    co_return m_keyring.get();
}

Task<std::optional<std::string>> PreferredSecureStore::read(SecureItem item) {
    auto secret = co_await m_file->read(item);
    if (!secret) {
        auto* const opened = co_await keyring();
        if (opened) secret = co_await opened->read(item);
    }
    if (secret && secret->empty()) co_return std::nullopt;
    co_return secret;
}

Task<> PreferredSecureStore::replace(SecureItem item, std::string secret) {
    const bool stored = co_await replaceInKeyring(item, secret);
    if (stored)
        co_await m_file->remove(item);
    else
        co_await m_file->replace(item, secret);
}

Task<> PreferredSecureStore::remove(SecureItem item) {
    const bool removed = co_await removeFromKeyring(item);
    if (removed)
        co_await m_file->remove(item);
    else
        co_await m_file->replace(item, std::string());
}

std::string PreferredSecureStore::description() const {
    return m_keyring ? m_keyring->description() : m_file->description();
}

Task<bool> PreferredSecureStore::replaceInKeyring(SecureItem item, std::string secret) {
    auto* const opened = co_await keyring();
    if (!opened) co_return false;
    try {
        co_await opened->replace(item, secret);
        co_return true;
    } catch (const PlatformError& error) {
        log::note(std::string("the keyring can't be used, a file is. ") + error.what());
    }
    co_return false;
}

Task<bool> PreferredSecureStore::removeFromKeyring(SecureItem item) {
    auto* const opened = co_await keyring();
    if (!opened) co_return false;
    try {
        co_await opened->remove(item);
        co_return true;
    } catch (const PlatformError& error) {
        log::note(std::string("the keyring can't be used, a file is. ") + error.what());
    }
    co_return false;
}

} // namespace bridge
