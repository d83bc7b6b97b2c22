#include "adapters/portal/portal_folder_chooser.h"

#include "tests/adapters/portal/fake_portal.h"
#include "tests/contracts/folder_chooser_contract.h"
#include "tests/support/becomes_true.h"

namespace bridge {
namespace {

using Manners = FakePortal::Manners;

auto* const bus = new PrivateBus; // GoogleTest's to delete
[[maybe_unused]] auto* const environment = testing::AddGlobalTestEnvironment(bus);

std::string uriOf(const std::filesystem::path& path) {
    const GLibPointer<char> uri(g_filename_to_uri(path.c_str(), nullptr, nullptr));
    return uri.get();
}

// What the portal notices it notices on a thread of its own.
bool becomesTrueOn(EventLoop& loop, const std::function<bool()>& condition) {
    return becomesTrue([&] {
        loop.turn();
        return condition();
    });
}

class PortalUnderTest : public FolderChooserUnderTest {
public:
    explicit PortalUnderTest(Manners manners) {
        if (PrivateBus::isPossible()) m_portal.emplace(*bus, manners);
    }
    std::string hindrance() override { return m_portal ? "" : "dbus-daemon is not installed"; }
    FolderChooser& chooser() override { return m_chooser; }
    bool comesTrue(const std::function<bool()>& condition) override { return becomesTrueOn(m_loop, condition); }
    bool isOpen() override { return m_portal->isOpen(); }
    std::string title() override { return m_portal->call().title; }
    std::string shownText() override { return m_portal->call().title; }
    std::string confirmLabel() override { return m_portal->call().acceptLabel; }
    void choose(const std::filesystem::path& folder) override { m_portal->respond(0, {uriOf(folder)}); }
    void cancel() override { m_portal->respond(1, {}); }

private:
    EventLoop m_loop;
    std::optional<FakePortal> m_portal;
    PortalFolderChooser m_chooser{m_loop};
};

INSTANTIATE_TEST_SUITE_P(Portal, FolderChooserContract,
                         testing::Values([] { return std::make_unique<PortalUnderTest>(Manners::usual); }));
struct PortalFolderChooserTest : testing::Test {
    void SetUp() override {
        if (!PrivateBus::isPossible()) GTEST_SKIP() << "dbus-daemon is not installed";
    }
    std::optional<std::string> ask() { return loop.runUntilDone(chooser.choose(question)); }
    std::string failure() {
        try {
            ask();
        } catch (const PlatformError& error) {
            return error.what();
        }
        return {};
    }
    // With an answer that is there before anybody asks.
    void answer(unsigned response, const std::vector<std::string>& uris) {
        portal.emplace(*bus, Manners::answersBeforeItReturns);
        portal->respond(response, uris);
    }

    const FolderQuestion question{"Title", "Message", "Allow Folder"};
    EventLoop loop;
    std::optional<FakePortal> portal;
    PortalFolderChooser chooser{loop, [] { return std::string("x11:2a"); }};
};

TEST_F(PortalFolderChooserTest, AsksForAFolderInAModalDialogOfItsWindow) {
    answer(1, {});
    ask();
    const auto call = portal->call();
    EXPECT_TRUE(call.directory);
    EXPECT_TRUE(call.modal);
    EXPECT_EQ(call.parentWindow, "x11:2a");
    EXPECT_EQ(call.title, "Title \xe2\x80\x94 Message");
    EXPECT_EQ(call.acceptLabel, "Allow Folder");
}

TEST_F(PortalFolderChooserTest, MissesNoAnswerThatIsQuickerThanTheCall) {
    answer(0, {"file:///tmp/quick"});
    EXPECT_EQ(ask(), "/tmp/quick");
}

TEST_F(PortalFolderChooserTest, DecodesWhatTheAddressWrites) {
    answer(0, {"file:///tmp/a%20b%23%25%C3%AB"});
    EXPECT_EQ(ask(), "/tmp/a b#%\xc3\xab");
    portal.reset();
    answer(0, {"file://localhost/tmp"});
    EXPECT_EQ(ask(), "/tmp");
}

TEST_F(PortalFolderChooserTest, RefusesFoldersOfOtherComputers) {
    for (const auto* uri : {"file://elsewhere/tmp", "smb://elsewhere/share", "nonsense", "file:"}) {
        answer(0, {uri});
        EXPECT_EQ(failure(), "Only folders of this computer can be used.") << uri;
        portal.reset();
    }
}

TEST_F(PortalFolderChooserTest, SaysThatTheDialogFailed) {
    answer(2, {});
    EXPECT_EQ(failure(), "The desktop's folder chooser failed.");
    portal.reset();
    answer(0, {});
    EXPECT_EQ(failure(), "The desktop's folder chooser failed.");
}

TEST_F(PortalFolderChooserTest, SaysWhyTheDialogDoesNotOpen) {
    portal.emplace(*bus, Manners::refuses);
    EXPECT_NE(failure().find("No room."), std::string::npos);
}

TEST_F(PortalFolderChooserTest, EndsWhenThePortalDoes) {
    portal.emplace(*bus, Manners::usual);
    auto task = chooser.choose(question);
    task.start();
    ASSERT_TRUE(becomesTrueOn(loop, [this] { return portal->isOpen(); }));
    portal->vanish();
    while (!task.done())
        loop.waitOnce();
    EXPECT_THROW(task.take(), PlatformError);
}

TEST_F(PortalFolderChooserTest, KnowsWhenThereIsNoPortal) {
    EXPECT_THROW(ask(), NoPortal);
}

TEST_F(PortalFolderChooserTest, TakesAPortalThatKnowsNoFoldersForNone) {
    portal.emplace(*bus, Manners::usual, 2);
    EXPECT_THROW(ask(), NoPortal);
}

TEST_F(PortalFolderChooserTest, MayGoWhileItsDialogIsOpen) {
    portal.emplace(*bus, Manners::usual);
    {
        PortalFolderChooser other(loop);
        auto task = other.choose(question);
        task.start();
        ASSERT_TRUE(becomesTrueOn(loop, [this] { return portal->isOpen(); }));
    }
    EXPECT_TRUE(becomesTrueOn(loop, [this] { return !portal->isOpen(); }));
}

} // namespace
} // namespace bridge
