#include "adapters/jsonfile/file_secure_store.h"

#include "base/log.h"
#include "base/record.h"

#include <cerrno>

namespace bridge {

namespace {

using StoredItems = std::map<std::string, std::map<std::string, Bytes>>;

class DamagedFile : public SecureStoreError {
public:
    DamagedFile() : SecureStoreError(EBADMSG, "The file of secrets is damaged.") {}
};

} // namespace

Task<std::optional<std::string>> FileSecureStore::read(SecureItem item) {
    const auto items = load();
    const auto service = items.find(item.service);
    if (service == items.end()) co_return std::nullopt;
    const auto account = service->second.find(item.account);
    if (account == service->second.end()) co_return std::nullopt;
    co_return account->second;
}

Task<> FileSecureStore::replace(SecureItem item, std::string secret) {
    auto items = loadOrSetAside();
    items[item.service][item.account] = std::move(secret);
    save(items);
    co_return;
}

Task<> FileSecureStore::remove(SecureItem item) {
    auto items = loadOrSetAside();
    const auto service = items.find(item.service);
    if (service == items.end() || service->second.erase(item.account) == 0) co_return;
    save(items);
}

FileSecureStore::Items FileSecureStore::load() const {
    std::optional<std::string> content;
    try {
        content = m_file.read();
    } catch (const PlatformError& error) {
        throw SecureStoreError(EIO, error.what());
    }
    if (!content) return {};

    Items items;
    try {
        for (auto& [service, accounts] : decode<StoredItems>(parseJSON(*content)))
            for (auto& [account, secret] : accounts)
                items[service][account] = secret.value;
    } catch (const JSONError&) {
        throw DamagedFile();
    } catch (const DecodingError&) {
        throw DamagedFile();
    }
    return items;
}

FileSecureStore::Items FileSecureStore::loadOrSetAside() const {
    try {
        return load();
    } catch (const DamagedFile&) {
    }
    try {
        m_file.setAside();
    } catch (const PlatformError& error) {
        throw SecureStoreError(EIO, error.what());
    }
    log::note("the file of secrets was damaged: it is set aside");
    return {};
}

void FileSecureStore::save(const Items& items) const {
    StoredItems stored;
    for (const auto& [service, accounts] : items)
        for (const auto& [account, secret] : accounts)
            stored[service][account] = {secret};
    try {
        m_file.write(encodeJSON(stored));
    } catch (const PlatformError& error) {
        throw SecureStoreError(EIO, error.what());
    }
}

} // namespace bridge
