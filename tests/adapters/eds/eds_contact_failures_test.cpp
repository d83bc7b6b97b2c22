#include "tests/adapters/eds/eds_contact_test.h"
#include "tests/adapters/eds/stopped.h"

// A service that dies, hangs, does not start, is not there.

namespace bridge {
namespace {

using std::chrono::hours;
using std::chrono::milliseconds;

class EdsContactFailuresTest : public EdsContactTest {
protected:
    // Long enough for a service that answers, short for one that never will.
    static constexpr EdsPatience little{milliseconds(5'000), milliseconds(5'000), milliseconds(200)};
    // No call ends by itself.
    static constexpr EdsPatience endless{hours(1), hours(1), milliseconds(200)};

    // A book whose backend has a process of its own, which is `remoteProcess`.
    std::string addRemoteBook() {
        EXPECT_TRUE(names().empty());
        const auto before = eds().backends();
        const auto remote = BookNeighbour::addRemoteBook("Company", "http://127.0.0.1:9/book/");
        EXPECT_TRUE(names().empty());
        for (const auto process : eds().backends())
            if (std::ranges::find(before, process) == before.end()) remoteProcess = process;
        EXPECT_NE(remoteProcess, 0);
        return remote;
    }
    template <typename T> void finish(Task<T>& task) {
        while (!task.done())
            setting->loop().waitOnce();
    }

    pid_t remoteProcess = 0;
};

TEST_F(EdsContactFailuresTest, AKilledServiceIsFoundAgainByEveryCall) {
    const auto ada = add("Ada");
    const auto group = addGroup("Friends");
    eds().kill();
    EXPECT_EQ(names(), Names{"Ada"});
    eds().kill();
    EXPECT_EQ(contact(ada)->givenName, "Ada");
    eds().kill();
    EXPECT_EQ(wait(store().groups()).size(), 1u);
    eds().kill();
    execute({AddGroupMember{ada, group}});
    eds().kill();
    EXPECT_EQ(members(group), Names{"Ada"});
    eds().kill();
    EXPECT_EQ(contact(add("Bob"))->givenName, "Bob");
    eds().kill();
    execute({DeleteContact{ada}});
    EXPECT_EQ(names(), Names{"Bob"});
}

TEST_F(EdsContactFailuresTest, WhatWasAnsweredIsThereAfterAKill) {
    for (int round = 0; round < 5; ++round) {
        const auto name = "Round " + std::to_string(round);
        auto one = named(name);
        one.identifier = add(name);
        eds().kill();
        ASSERT_EQ(contact(one.identifier), one);
        one.nickname = "Changed";
        execute({UpdateContact{one}});
        eds().kill();
        ASSERT_EQ(contact(one.identifier), one);
        execute({DeleteContact{one.identifier}});
        eds().kill();
        ASSERT_FALSE(contact(one.identifier));
    }
}

TEST_F(EdsContactFailuresTest, AServiceKilledDuringACallIsAskedAgain) {
    open(endless);
    const auto ada = add("Ada");
    {
        const Stopped stopped(eds().backends().at(0));
        Names found;
        auto asking = visiting(AllContacts{}, found);
        asking.start();
        // Through the registry, to the backend, which does not answer.
        setting->loop().waitOnce();
        eds().kill();
        finish(asking);
        asking.take();
        EXPECT_EQ(found, Names{"Ada"});
    }
    {
        const Stopped stopped(eds().backends().at(0));
        std::vector<ContactChange> changes{DeleteContact{ada}, AddContact{named("Bob")}};
        auto changing = store().execute(changes);
        changing.start();
        setting->loop().waitOnce();
        eds().kill();
        finish(changing);
        changing.take();
    }
    EXPECT_EQ(names(), Names{"Bob"});
}

TEST_F(EdsContactFailuresTest, ABookThatHangsFailsASearchByNameAndNoOtherCall) {
    open(little);
    addRemoteBook();
    const auto ada = add("Ada");
    const auto group = addGroup("Friends");
    const Stopped stopped(remoteProcess);
    Names found;
    auto hanging = visiting(AllContacts{}, found);
    hanging.start();
    EXPECT_EQ(contact(ada)->givenName, "Ada");
    execute({AddGroupMember{ada, group}});
    EXPECT_EQ(members(group), Names{"Ada"});
    add("Bob");
    EXPECT_FALSE(hanging.done());
    finish(hanging);
    EXPECT_EQ(failure([&] { hanging.take(); }), "The address book “Company” did not answer in time.");
    EXPECT_TRUE(found.empty());
    EXPECT_EQ(failure([&] { wait(store().groups()); }), "The address book “Company” did not answer in time.");
}

TEST_F(EdsContactFailuresTest, ABookThatHungAnswersAgain) {
    open(little);
    addRemoteBook();
    add("Ada");
    {
        const Stopped stopped(remoteProcess);
        EXPECT_EQ(failure([&] { names(); }), "The address book “Company” did not answer in time.");
    }
    EXPECT_EQ(names(), Names{"Ada"});
}

TEST_F(EdsContactFailuresTest, ARegistryThatHangsIsAnErrorInItsTime) {
    open(little);
    const auto ada = add("Ada");
    {
        const Stopped stopped(eds().registry());
        EXPECT_EQ(failure([&] { names(); }), "Evolution Data Server did not answer in time.");
        EXPECT_EQ(failure([&] { contact(ada); }), "Evolution Data Server did not answer in time.");
        EXPECT_EQ(failure([&] { add("Bob"); }), "Evolution Data Server did not answer in time.");
    }
    EXPECT_EQ(names(), Names{"Ada"});
}

TEST_F(EdsContactFailuresTest, ADroppedCallLetsTheNextOneThrough) {
    open(endless);
    addRemoteBook();
    {
        const Stopped stopped(remoteProcess);
        Names found;
        auto dropped = visiting(AllContacts{}, found);
        dropped.start();
        setting->loop().waitOnce();
    }
    EXPECT_EQ(names(), Names{});
}

TEST_F(EdsContactFailuresTest, DestroyingTheStoreWaitsForNobody) {
    open(endless);
    addRemoteBook();
    const Stopped stopped(remoteProcess);
    {
        Names found;
        auto dropped = visiting(AllContacts{}, found);
        dropped.start();
        setting->loop().waitOnce();
    }
    setting->reopen();
}

TEST_F(EdsContactFailuresTest, AServiceThatDoesNotStartIsAnErrorAndNoEmptyBook) {
    eds().uninstall();
    eds().installBroken();
    setting->reopen();
    EXPECT_NE(failure([&] { names(); }), "");
    EXPECT_NE(failure([&] { wait(store().groups()); }), "");
    EXPECT_NE(failure([&] { contact(identifier(personal, "a")); }), "");
    EXPECT_NE(failure([&] { add("Ada"); }), "");
    eds().install();
    EXPECT_TRUE(names().empty());
}

TEST_F(EdsContactFailuresTest, ThereIsNoStoreWhereItIsNotInstalled) {
    EventLoop loop;
    eds().uninstall();
    EXPECT_FALSE(loop.runUntilDone(EdsContactStore::open(loop)));
    EXPECT_EQ(failure([&] { names(); }), "Evolution Data Server is not there.");
    eds().install();
    EXPECT_TRUE(loop.runUntilDone(EdsContactStore::open(loop)));
}

// In a process of its own, for GLib keeps to the first bus it meets.
class EdsContactDeathTest : public testing::Test {
protected:
    EdsContactDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    [[noreturn]] static void openOverABusThatIsGone() {
        setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus", 1);
        EventLoop loop;
        const auto store = loop.runUntilDone(EdsContactStore::open(loop));
        _exit(store ? 1 : 0);
    }
};

TEST_F(EdsContactDeathTest, DoesNotOpenWithoutABus) {
    EXPECT_EXIT(openOverABusThatIsGone(), testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace bridge
