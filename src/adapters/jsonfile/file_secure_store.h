#pragma once

#include "adapters/jsonfile/private_file.h"
#include "platform/secure_store.h"

#include <map>

namespace bridge {

// Secrets in a file that the user alone may read, for a machine without a keyring or with a locked one. They are not
// encrypted. A link in the file's place, or a file of another user, is refused; one of ours that others may read is
// closed to them first. A damaged file fails reading, and is set aside at the next change.
class FileSecureStore : public SecureStore {
public:
    explicit FileSecureStore(std::string path) : m_file(std::move(path), Trust::oursOnly) {}

    Task<std::optional<std::string>> read(SecureItem item) override;
    Task<> replace(SecureItem item, std::string secret) override;
    Task<> remove(SecureItem item) override;
    std::string description() const override { return "a file only you can read"; }

private:
    // Service to account to secret.
    using Items = std::map<std::string, std::map<std::string, std::string>>;

    Items load() const;
    Items loadOrSetAside() const;
    void save(const Items& items) const;

    PrivateFile m_file;
};

} // namespace bridge
