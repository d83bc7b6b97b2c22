#pragma once

#include "base/async_mutex.h"
#include "platform/secure_store.h"

#include <functional>
#include <memory>

namespace bridge {

// A keyring, with a file to fall back on while the keyring is locked or gone. Whatever the file holds is newer than the
// keyring, because it is written only when the keyring can't be: it is read first, and cleared once the keyring holds
// something newer.
//
// What was removed while the keyring could not be reached leaves an empty item in the file, so that an old secret in
// the keyring does not come back. For the same reason an empty secret is the same as none here.
class PreferredSecureStore : public SecureStore {
public:
    // Brings null when there is no keyring that can be used.
    using Opening = std::function<Task<std::unique_ptr<SecureStore>>()>;

    // The keyring is opened by the first call that needs it, so that one that hangs keeps nothing else waiting.
    PreferredSecureStore(Opening openKeyring, std::unique_ptr<SecureStore> file);

    Task<std::optional<std::string>> read(SecureItem item) override;
    Task<> replace(SecureItem item, std::string secret) override;
    Task<> remove(SecureItem item) override;
    // The keyring's once that is open.
    std::string description() const override;

private:
    Task<SecureStore*> keyring();
    Task<bool> replaceInKeyring(SecureItem item, std::string secret);
    Task<bool> removeFromKeyring(SecureItem item);

    AsyncMutex m_opening;
    Opening m_openKeyring; // until that is done
    std::unique_ptr<SecureStore> m_keyring;
    std::unique_ptr<SecureStore> m_file;
};

} // namespace bridge
