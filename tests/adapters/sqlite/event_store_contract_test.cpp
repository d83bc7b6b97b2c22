#include "tests/contracts/event_store_contract.h"

#include "tests/adapters/sqlite/sqlite_event_store_under_test.h"

namespace bridge {
namespace {

const EventStoreKind kind{"Sqlite", [] { return std::make_unique<SqliteEventStoreUnderTest>(); }, 10'000};

INSTANTIATE_TEST_SUITE_P(Adapters, EventStoreContract, testing::Values(kind), nameOf);

} // namespace
} // namespace bridge
