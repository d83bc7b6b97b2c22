#include "adapters/xdg/xdg_autostart.h"
#include "tests/adapters/xdg/desktop_site.h"

#include <gio/gdesktopappinfo.h>
#include <gtest/gtest.h>

namespace bridge {
namespace {

// What GLib, and so the session of GNOME, makes of the entry.
TEST(AutostartEntry, StartsAProgramWhateverItsPathIs) {
    for (const std::string name :
         {"plain", "with space",      "quote\"d", "it's", "100%",       "%f",        "%%",    "$HOME",
          "`id`",  "back\\slash",     "two\\\\",  "a=b",  "semi;colon", "new\nline", "tab\t", "ünïcödé 🦊",
          "#hash", "&|<>()*?[]!~^{}", " leading", "-dash"}) {
        DesktopSite site;
        const auto program = site.folder.file("bin/" + name);
        std::filesystem::rename(site.addProgram("program"), program);
        XdgAutostart item(program, {"--background", name}, site.environment());
        item.registerItem();
        EXPECT_EQ(item.status(), LoginItemStatus::enabled) << name;

        const auto file = site.folder.file("home/.config/autostart/") + XdgAutostart::fileName;
        GDesktopAppInfo* entry = g_desktop_app_info_new_from_filename(file.c_str());
        ASSERT_TRUE(entry) << name << '\n' << getFile(file);
        EXPECT_TRUE(g_app_info_launch(G_APP_INFO(entry), nullptr, nullptr, nullptr)) << name;
        g_object_unref(entry);
        EXPECT_EQ(site.startedProgram(), "program|--background|" + name + "|") << name;
    }
}

} // namespace
} // namespace bridge
