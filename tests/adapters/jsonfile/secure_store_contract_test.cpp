#include "tests/contracts/secure_store_contract.h"

#include "adapters/jsonfile/file_secure_store.h"
#include "adapters/jsonfile/preferred_secure_store.h"
#include "tests/fakes/memory_secure_store.h"
#include "tests/support/temporary_folder.h"

namespace bridge {
namespace {

using Items = MemorySecureStore::Items;

struct MemorySite : SecureStoreSite {
    std::shared_ptr<Items> items = std::make_shared<Items>();
    std::unique_ptr<SecureStore> start(EventLoop&) override { return std::make_unique<MemorySecureStore>(items); }
};
const SecureStoreKind memory{"Memory", [] { return std::make_unique<MemorySite>(); }};

struct FileSite : SecureStoreSite {
    TemporaryFolder folder;
    std::unique_ptr<SecureStore> start(EventLoop&) override {
        return std::make_unique<FileSecureStore>(folder.file("secrets.json"));
    }
};

const SecureStoreKind file{"File", [] { return std::make_unique<FileSite>(); }};

struct PreferredSite : SecureStoreSite {
    explicit PreferredSite(bool hasKeyring) : m_hasKeyring(hasKeyring) {}
    std::unique_ptr<SecureStore> start(EventLoop&) override {
        return std::make_unique<PreferredSecureStore>([this] { return keyring(); },
                                                      std::make_unique<MemorySecureStore>(m_file));
    }

private:
    Task<std::unique_ptr<SecureStore>> keyring() {
        co_return m_hasKeyring ? std::make_unique<MemorySecureStore>(m_keyring) : nullptr;
    }

    bool m_hasKeyring;
    std::shared_ptr<Items> m_keyring = std::make_shared<Items>();
    std::shared_ptr<Items> m_file = std::make_shared<Items>();
};

const SecureStoreKind both{"KeyringAndFile", [] { return std::make_unique<PreferredSite>(true); }};
const SecureStoreKind fileOnly{"FileOnly", [] { return std::make_unique<PreferredSite>(false); }};

INSTANTIATE_TEST_SUITE_P(Adapters, SecureStoreContract, testing::Values(memory, file, both, fileOnly), nameOf);

} // namespace
} // namespace bridge
