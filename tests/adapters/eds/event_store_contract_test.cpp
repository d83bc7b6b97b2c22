#include "tests/contracts/event_store_contract.h"

#include "tests/adapters/eds/eds_event_store_under_test.h"

namespace bridge {
namespace {

const EventStoreKind kind{
    .name = "Eds", .make = [] { return std::make_unique<EdsEventStoreUnderTest>(); }, .keepsOuterSpaces = false};

INSTANTIATE_TEST_SUITE_P(Adapters, EventStoreContract, testing::Values(kind), nameOf);

} // namespace
} // namespace bridge
