#include "adapters/eds/book_changes.h"

#include "adapters/eds/eds_error.h"
#include "adapters/vcard/vcard.h"

#include <gtest/gtest.h>

// Batches that come to an end in the middle.

namespace bridge {
namespace {

std::string card(const std::string& uid, const std::string& name) {
    return "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:" + uid + "\r\nN:;" + name + ";;;\r\nEND:VCARD\r\n";
}

// Holds cards, and fails the calls that it is told to.
class FailingCards : public CardStore {
public:
    enum class When { before, after };
    struct Failure {
        int call; // from 1, reading excepted
        EdsFault fault;
        When when;
    };
    std::map<std::string, std::string> cards;
    std::vector<Failure> failures;

    std::string subject() const override { return "The book"; }
    std::vector<std::string> cardsOf(const std::vector<std::string>& uids, GCancellable*) override {
        std::vector<std::string> found;
        for (const auto& uid : uids)
            if (cards.contains(uid)) found.push_back(cards[uid]);
        return found;
    }
    std::vector<std::string> create(const std::vector<std::string>& texts, GCancellable*) override {
        std::vector<std::string> uids;
        call([&] {
            for (const auto& text : texts) {
                uids.push_back(VCard::parse(text).uid());
                cards[uids.back()] = text;
            }
        });
        return uids;
    }
    void change(const std::vector<std::string>& texts, GCancellable*) override {
        call([&] {
            for (const auto& text : texts)
                cards.at(VCard::parse(text).uid()) = text;
        });
    }
    void remove(const std::vector<std::string>& uids, GCancellable*) override {
        call([&] {
            for (const auto& uid : uids)
                cards.erase(uid);
        });
    }

private:
    template <typename Action> void call(Action action) {
        ++m_calls;
        const auto fail = [&](When when) {
            for (const auto& failure : failures)
                if (failure.call == m_calls && failure.when == when) throw EdsError(failure.fault, "Gone.");
        };
        fail(When::before);
        action();
        fail(When::after);
    }
    int m_calls = 0;
};

class BookChangesTest : public testing::Test {
protected:
    using Cards = std::map<std::string, std::string>;
    using When = FailingCards::When;

    BookChangesTest() {
        changes.added = {{"new", card("new", "New")}};
        changes.addedInOrder = {"new"};
        changes.changed = {{"changed", {card("changed", "Before"), card("changed", "After")}}};
        changes.removed = {"old"};
        store.cards = before;
    }
    std::vector<std::string> make() {
        Call call(keeper, std::chrono::hours(1), {g_cancellable_new(), GObjectRelease()});
        return makeChanges(store, call, changes);
    }
    std::string failure() {
        try {
            make();
        } catch (const PlatformError& error) {
            return error.what();
        }
        return {};
    }

    const Cards before{{"changed", card("changed", "Before")}, {"old", card("old", "Old")}};
    const Cards after{{"changed", card("changed", "After")}, {"new", card("new", "New")}};
    DeadlineKeeper keeper;
    BookChanges changes;
    FailingCards store;
};

TEST_F(BookChangesTest, AreAllMade) {
    EXPECT_EQ(make(), std::vector<std::string>{"new"});
    EXPECT_EQ(store.cards, after);
}

TEST_F(BookChangesTest, AreTakenBackWhenOneFails) {
    for (const int call : {1, 2, 3})
        for (const auto fault : {EdsFault::lost, EdsFault::notFound, EdsFault::other}) {
            store = {};
            store.cards = before;
            store.failures = {{call, fault, When::before}};
            EXPECT_EQ(failure(), "Gone.");
            EXPECT_EQ(store.cards, before) << call;
        }
}

TEST_F(BookChangesTest, CountAsMadeWhenOnlyTheAnswerIsLost) {
    for (const int call : {1, 2, 3}) {
        store = {};
        store.cards = before;
        store.failures = {{call, EdsFault::lost, When::after}};
        EXPECT_EQ(make(), std::vector<std::string>{"new"});
        EXPECT_EQ(store.cards, after) << call;
    }
}

TEST_F(BookChangesTest, SayWhenTheyCannotBeTakenBack) {
    store.failures = {{3, EdsFault::lost, When::before}, {4, EdsFault::lost, When::before}};
    EXPECT_EQ(failure(), "Gone. What was changed before that could not be taken back.");
}

} // namespace
} // namespace bridge
