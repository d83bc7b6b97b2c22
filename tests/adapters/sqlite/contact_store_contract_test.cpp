#include "tests/contracts/contact_store_contract.h"

#include "tests/adapters/sqlite/sqlite_contact_store_under_test.h"

namespace bridge {
namespace {

INSTANTIATE_TEST_SUITE_P(Sqlite, ContactStoreContract,
                         testing::Values([] { return std::make_unique<SqliteContactStoreUnderTest>(); }));

} // namespace
} // namespace bridge
