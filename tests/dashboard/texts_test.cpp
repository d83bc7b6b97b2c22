#include "tests/dashboard/dashboard_test.h"

namespace bridge {
namespace {

using testing::Contains;

QStringList titles(const char* heads) {
    return QString::fromUtf8(heads).split('|');
}

class Words : public DashboardTest {
protected:
    void expectInOrder(const QStringList& expected) {
        const auto shown = driver->texts();
        qsizetype at = 0;
        for (const auto& text : expected) {
            at = shown.indexOf(text, at);
            ASSERT_GE(at, 0) << text.toStdString() << " is missing or in another place among:\n"
                             << shown.join('\n').toStdString();
            ++at;
        }
    }
};

TEST_F(Words, OfTheClosedPanelStandFromTopToBottom) {
    openWithEverythingGranted();
    expectInOrder(titles("Brindlefox Apple Bridge|Choose exactly what the agent can read or change|Agent permissions|"
                         "Calendar|0 of 8 capabilities enabled|Full access|Reminders|0 of 8 capabilities enabled|"
                         "Contacts|0 of 8 capabilities enabled|Music|0 of 6 capabilities enabled|"
                         "Files|0 of 5 capabilities enabled|Pages|0 of 3 capabilities enabled|"
                         "Numbers|0 of 4 capabilities enabled|Keynote|0 of 2 capabilities enabled|"
                         "Location & Maps|0 of 3 capabilities enabled|"
                         "Launch at Login|Start Apple Bridge automatically when you sign in|"
                         "Agent Server pairing|Agent Server address|"
                         "Unpaired — every bridge request is blocked|One-time pairing code|Pair|"
                         "Generate the code in Agent Server with: bun run apple-bridge:code|"
                         "Refresh|Privacy Settings|Quit"));
    EXPECT_EQ(driver->value<QString>("serverAddress", "text"), "http://127.0.0.1:3000");
    EXPECT_FALSE(driver->texts().contains("Only the paired Agent Server can access this bridge"));
}

TEST_F(Words, OfTheCalendarGroup) {
    openAt("calendar");
    expectInOrder(
        titles("Allowed actions|Enable all|Disable all|"
               "Event permissions|Read events|Create events|Edit events|Delete events|"
               "Calendar permissions|Read calendars|Create calendars|Rename calendars|Delete calendars|"
               "Authorized calendars|Select all|Select none|Team|apple trees ltd|Holidays|Feeds|Personal|Home|"
               "Capabilities above apply only to the calendars selected here.|memory|Reminders"));
}

TEST_F(Words, OfTheRemindersGroup) {
    openAt("reminders");
    expectInOrder(titles("Allowed actions|Enable all|Disable all|"
                         "Reminder permissions|Read reminders|Create reminders|Edit and complete reminders|"
                         "Delete reminders|List permissions|Read lists|Create lists|Rename lists|Delete lists|"
                         "Authorized reminder lists|Select all|Select none|Projects|Ideas of others|Errands|"
                         "Capabilities above apply only to the lists selected here."));
}

TEST_F(Words, OfTheFilesGroup) {
    openAt("files");
    expectInOrder(titles("Allowed actions|Reading and browsing|List files and folders|Read text files|File changes|"
                         "Create files and folders|Overwrite and move files|Delete files and folders|"
                         "Authorized folders|Add Folder…|All file and iWork actions stay inside these folders."));
}

TEST_F(Words, OfTheOtherGroups) {
    openWithEverythingGranted();
    const std::map<QString, QStringList> inside{
        {"contacts", titles("Contact permissions|Read contacts|Create contacts|Edit contacts|Delete contacts|"
                            "Group permissions|Read groups|Create groups|Change group membership|Delete groups")},
        {"music", titles("Library permissions|Search the music library|Playlist permissions|Read playlists|"
                         "Create playlists|Add songs to playlists|Delete playlists|Playback permissions|"
                         "Control playback|MPD")},
        {"pages", titles("Document permissions|Read documents|Create documents|Export documents")},
        {"numbers", titles("Spreadsheet permissions|Read spreadsheets|Create spreadsheets|Edit spreadsheets|"
                           "Export spreadsheets")},
        {"keynote", titles("Presentation permissions|Create presentations|Export presentations")},
        {"locationMaps", titles("Location permissions|Read current location|Map permissions|Search places|"
                                "Calculate directions")}};
    for (const auto& [group, words] : inside) {
        driver->click("group." + group);
        expectInOrder(words);
    }
}

TEST_F(Words, WhenNothingCanBeChosen) {
    bridge.calendars->allCalendars.clear();
    openAt("calendar");
    EXPECT_EQ(driver->texts("none.calendar"), QStringList("No calendars are currently available."));
    driver->click("group.reminders");
    EXPECT_EQ(driver->texts("none.list"), QStringList("No lists are currently available."));
}

TEST_F(Words, OfEveryStateOfAPermission) {
    open();
    const std::map<int, QString> labels{{0, "Not determined"}, {1, "Restricted"}, {2, "Denied"},
                                        {3, "Full access"},    {4, "Limited"},    {9, "Unknown"}};
    for (const auto& [status, label] : labels) {
        bridge.authorization->setStatus(PrivacyService::contacts, status);
        bridge.loop.runUntilDone(model().refresh());
        EXPECT_EQ(driver->texts("permission.contacts"), QStringList(label));
    }
    bridge.authorization->setStatus(PrivacyService::contacts, std::nullopt);
    bridge.authorization->setStatus(PrivacyService::calendar, 4);
    bridge.authorization->setStatus(PrivacyService::location, 3);
    bridge.loop.runUntilDone(model().refresh());
    EXPECT_EQ(driver->texts("permission.contacts"), QStringList("Unavailable"));
    EXPECT_EQ(driver->texts("permission.calendar"), QStringList("Write only"));
    EXPECT_EQ(driver->texts("permission.locationMaps"), QStringList("Location: Full access"));
    EXPECT_EQ(driver->find("permission.files"), nullptr);
}

TEST_F(Words, AreNeverReadAsMarkup) {
    bridge.calendars->allCalendars[0].title = "<b>bold</b><img src='http://127.0.0.1:9/'>";
    openAt("calendar");
    EXPECT_THAT(driver->texts(), Contains(QString("<b>bold</b><img src='http://127.0.0.1:9/'>")));
    for (auto* each : driver->all([](QQuickItem& item) { return item.inherits("QQuickText"); }))
        EXPECT_EQ(each->property("textFormat").toInt(), Qt::PlainText)
            << each->property("text").toString().toStdString();
}

} // namespace
} // namespace bridge
