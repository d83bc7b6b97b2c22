#include "tests/contracts/contact_store_contract.h"

#include "tests/adapters/eds/eds_contact_store_under_test.h"

namespace bridge {
namespace {

INSTANTIATE_TEST_SUITE_P(Eds, ContactStoreContract,
                         testing::Values([] { return std::make_unique<EdsContactStoreUnderTest>(); }));

} // namespace
} // namespace bridge
