#include "adapters/xdg/desktop_entry.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

using Strings = std::vector<std::string>;

TEST(DesktopEntry, HasTheKeysOfItsOwnGroup) {
    const DesktopEntry entry("Name=before\n[Other]\nName=other\n[Desktop Entry]\n# Name=comment\nName = Ours \r\n"
                             "Name[pt]=Nosso\nnonsense\n\n[Desktop Action new]\nName=action\nExec=other\n");
    EXPECT_EQ(entry.string("Name"), "Ours");
    EXPECT_EQ(entry.string("Name[pt]"), "Nosso");
    EXPECT_EQ(entry.string("Exec"), std::nullopt);
}

TEST(DesktopEntry, ReadsEscapedCharacters) {
    const DesktopEntry entry("[Desktop Entry]\nA=\\sa\\tb\\nc\\rd\\\\e\\;f\\\n");
    EXPECT_EQ(entry.string("A"), " a\tb\nc\rd\\e;f\\");
}

TEST(DesktopEntry, KnowsTruthAndNothingElse) {
    const DesktopEntry entry("[Desktop Entry]\nA=true\nB=false\nC=1\nD=0\nE=yes\nF=\n");
    EXPECT_TRUE(entry.boolean("A", false));
    EXPECT_FALSE(entry.boolean("B", true));
    EXPECT_TRUE(entry.boolean("C", false));
    EXPECT_FALSE(entry.boolean("D", true));
    for (const auto* key : {"E", "F", "G"}) {
        EXPECT_TRUE(entry.boolean(key, true));
        EXPECT_FALSE(entry.boolean(key, false));
    }
}

TEST(DesktopEntry, ListsAreSeparatedBySemicolons) {
    const DesktopEntry entry("[Desktop Entry]\nA=GNOME;KDE;\nB=XFCE\nC=\nD=;;\n");
    EXPECT_EQ(entry.list("A"), (Strings{"GNOME", "KDE"}));
    EXPECT_EQ(entry.list("B"), (Strings{"XFCE"}));
    EXPECT_EQ(entry.list("C"), Strings());
    EXPECT_EQ(entry.list("D"), Strings());
    EXPECT_EQ(entry.list("E"), std::nullopt);
}

TEST(DesktopEntry, IsShownWhereItsListsSay) {
    const DesktopEntry everywhere("[Desktop Entry]\n");
    const DesktopEntry only("[Desktop Entry]\nOnlyShowIn=KDE;GNOME;\n");
    const DesktopEntry never("[Desktop Entry]\nNotShowIn=XFCE;GNOME;\n");
    const DesktopEntry nowhere("[Desktop Entry]\nOnlyShowIn=\n");
    const Strings none, ubuntu{"ubuntu", "GNOME"}, kde{"KDE"}, xfce{"XFCE"};
    EXPECT_TRUE(everywhere.isShownIn(none) && everywhere.isShownIn(ubuntu));
    EXPECT_TRUE(only.isShownIn(ubuntu) && only.isShownIn(kde));
    EXPECT_FALSE(only.isShownIn(xfce) || only.isShownIn(none));
    EXPECT_FALSE(never.isShownIn(ubuntu) || never.isShownIn(xfce));
    EXPECT_TRUE(never.isShownIn(kde) && never.isShownIn(none));
    EXPECT_FALSE(nowhere.isShownIn(kde));
}

TEST(DesktopEntry, TheMoreSpecificDesktopDecides) {
    const DesktopEntry entry("[Desktop Entry]\nOnlyShowIn=GNOME;\nNotShowIn=ubuntu;\n");
    EXPECT_FALSE(entry.isShownIn({"ubuntu", "GNOME"}));
    EXPECT_TRUE(entry.isShownIn({"GNOME", "ubuntu"}));
}

TEST(DesktopEntry, TakesAnyBytes) {
    for (const std::string& text :
         {std::string(), std::string("\0\0", 2), std::string("[Desktop Entry]\n=\n==\n\\=\\\n"),
          std::string("[Desktop Entry\nHidden=true\n"), std::string(10'000, '['),
          std::string("\xff\xfe[Desktop Entry]\n")})
        EXPECT_EQ(DesktopEntry(text).string("Hidden"), std::nullopt);
}

TEST(DesktopEntry, AStringIsReadAsItWasWritten) {
    for (const std::string text : {"/usr/bin/plain", "/a\\b", "/a\nb\tc\rd", "/a;b", "/ä 🦊"})
        EXPECT_EQ(DesktopEntry("[Desktop Entry]\nA=" + escapeForDesktopEntry(text)).string("A"), text);
}

TEST(ExecKey, QuotesWhatHasAMeaning) {
    EXPECT_EQ(execKeyFor("/usr/bin/brindlefox-apple-bridge"), "/usr/bin/brindlefox-apple-bridge");
    EXPECT_EQ(execKeyFor("/opt/a b/c"), "\"/opt/a b/c\"");
    EXPECT_EQ(execKeyFor("/opt/a'b"), "\"/opt/a'b\"");
    EXPECT_EQ(execKeyFor("/opt/\"$`\\"), R"("/opt/\\"\\$\\`\\\\")");
}

TEST(ExecKey, HasTheArgumentsBehindTheProgram) {
    EXPECT_EQ(execKeyFor("/usr/bin/a", {"--background", "a b", "", "50%"}),
              "/usr/bin/a --background \"a b\" \"\" \"50%%\"");
    EXPECT_EQ(execKeyFor("/opt/a=b", {"-x"}), "/usr/bin/env nice -n 0 \"/opt/a=b\" -x");
}

TEST(ExecKey, APathThatIsNoCommandIsAnArgument) {
    EXPECT_EQ(execKeyFor("/opt/100%"), "/usr/bin/env nice -n 0 \"/opt/100%%\"");
    EXPECT_EQ(execKeyFor("/opt/a=b"), "/usr/bin/env nice -n 0 \"/opt/a=b\"");
}

} // namespace
} // namespace bridge
