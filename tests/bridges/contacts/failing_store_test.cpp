#include "tests/bridges/contacts/every_operation.h"

namespace bridge {
namespace {

class FailingStore : public EveryOperation {
protected:
    // The calls of the operation when all goes well, in a world of its own.
    std::vector<Call> callsWithoutFailure() {
        MemoryContactStore ownBook = book;
        FailingContactStore ownStore(ownBook);
        ContactDataBridge ownBridge(ownStore, authorization);
        run(GetParam().run(ownBridge, present));
        return ownStore.calls;
    }
};

TEST_P(FailingStore, IsReportedInItsOwnWordsWhicheverCallFails) {
    const auto calls = callsWithoutFailure();
    ASSERT_FALSE(calls.empty());
    const auto write = static_cast<size_t>(std::ranges::find(calls, Call::execute) - calls.begin());
    for (size_t failing = 0; failing < calls.size(); ++failing) {
        const auto before = book.state();
        store.failing = store.calls.size() + failing;
        EXPECT_EQ(failure(), std::string("platform: ") + FailingContactStore::failure) << failing;
        EXPECT_EQ(book.state() == before, failing <= write) << failing;
    }
}

TEST_P(FailingStore, WorksAgainAfterwards) {
    const auto calls = callsWithoutFailure();
    for (size_t failing = 0; failing < calls.size() && calls[failing] != Call::execute; ++failing) {
        store.failing = store.calls.size() + failing;
        EXPECT_NE(failure(), "");
    }
    EXPECT_EQ(failure(), "");
}

FOR_EVERY_OPERATION(FailingStore);

} // namespace
} // namespace bridge
