#pragma once

#include "base/platform_error.h"
#include "base/task.h"

#include <cstdint>
#include <optional>
#include <string>

namespace bridge {

// The item could not be stored, with the platform's own numeric status.
class SecureStoreError : public PlatformError {
public:
    SecureStoreError(int32_t status, const std::string& description) : PlatformError(description), m_status(status) {}
    int32_t status() const { return m_status; }

private:
    int32_t m_status;
};

// Which secret: on a keychain the service and account attributes of a generic password.
struct SecureItem {
    std::string service;
    std::string account;
};

// Where the platform keeps secrets for this user, readable by this user only. Called on the main thread; a call may
// take as long as another process lets it, so each is a task. A dropped task leaves the old or the new item.
class SecureStore {
public:
    virtual ~SecureStore() = default;

    // The stored bytes; nothing when there is no such item. Throws PlatformError when the store can't be read: a store
    // that fails is never an absent item.
    virtual Task<std::optional<std::string>> read(SecureItem item) = 0;

    // Removes any such item, then adds this one. A removal that fails is not reported by itself; an addition that fails
    // throws SecureStoreError.
    virtual Task<> replace(SecureItem item, std::string secret) = 0;

    // Afterwards the item is not found, in this store or after a restart. Removing what is not there succeeds. Throws
    // SecureStoreError when the item is still there.
    virtual Task<> remove(SecureItem item) = 0;

    // For the log and the dashboard: "Secret Service", "a file only you can read".
    virtual std::string description() const = 0;
};

} // namespace bridge
