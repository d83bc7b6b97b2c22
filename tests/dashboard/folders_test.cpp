#include "tests/dashboard/dashboard_test.h"

namespace bridge {
namespace {

class Folders : public DashboardTest {
protected:
    std::string make(const char* name) {
        std::filesystem::create_directory(bridge.folder / name);
        return bridge.folder.file(name);
    }
    std::vector<AuthorizedFileRootDescriptor> roots() { return model().files.roots.get(); }
};

TEST_F(Folders, AreAddedThroughTheChooser) {
    openAt("files");
    EXPECT_EQ(driver->texts("none.folder"), QStringList("No folders are authorized yet."));
    bridge.chooser->answer = make("Letters");
    driver->click("addFolder");
    EXPECT_TRUE(bridge.dashboard->hasModal());
    EXPECT_TRUE(driver->value<bool>("addFolder", "busy"));
    driver->click("addFolder"); // which is the first click still
    ASSERT_EQ(bridge.chooser->questions.size(), 1u);
    EXPECT_EQ(bridge.chooser->questions[0].title, "Choose an iCloud Drive folder for Brindlefox");
    EXPECT_EQ(bridge.chooser->questions[0].message, "Brindlefox can only access folders you explicitly add here.");
    EXPECT_EQ(bridge.chooser->questions[0].confirmLabel, "Allow Folder");
    bridge.chooser->answered.open();
    driver->settle();
    EXPECT_FALSE(bridge.dashboard->hasModal());
    ASSERT_EQ(roots().size(), 1u);
    EXPECT_EQ(driver->texts("folder." + shown(roots()[0].id)),
              (QStringList{"Letters", shown(bridge.folder.file("Letters")), "Remove"}));
    EXPECT_FALSE(driver->find("none.folder"));
    EXPECT_FALSE(driver->find("readOnly." + shown(roots()[0].id)));
}

TEST_F(Folders, StayAsTheyAreWhenTheUserCancels) {
    openAt("files");
    driver->click("addFolder");
    bridge.chooser->answered.open();
    driver->settle();
    EXPECT_TRUE(roots().empty());
    EXPECT_FALSE(driver->value<bool>("addFolder", "busy"));
}

TEST_F(Folders, AreRemovedOneByOne) {
    openAt("files");
    model().files.addFolder(make("One"));
    model().files.addFolder(make("Two"));
    driver->settle();
    const auto one = roots()[0].id;
    const auto two = roots()[1].id;
    driver->click("remove." + shown(one));
    ASSERT_EQ(roots().size(), 1u);
    EXPECT_EQ(roots()[0].id, two);
    EXPECT_FALSE(driver->find("folder." + shown(one)));
    EXPECT_TRUE(driver->find("folder." + shown(two)));
}

TEST_F(Folders, AreMarkedWhenTheyAreReadOnly) {
    openAt("files");
    model().files.addFolder(make("One"));
    model().files.addFolder(make("Two"));
    model().readOnlyFolderIDs.set({roots()[1].id});
    driver->settle();
    EXPECT_FALSE(driver->find("readOnly." + shown(roots()[0].id)));
    EXPECT_EQ(driver->texts("readOnly." + shown(roots()[1].id)), QStringList("Read only"));
}

} // namespace
} // namespace bridge
