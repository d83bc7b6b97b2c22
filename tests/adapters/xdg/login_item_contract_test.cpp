#include "tests/contracts/login_item_contract.h"

#include "adapters/xdg/xdg_autostart.h"
#include "tests/adapters/xdg/desktop_site.h"
#include "tests/fakes/memory_login_item.h"
#include "tests/support/without_system_call.h"

#include <sys/syscall.h>

namespace bridge {
namespace {

struct MemorySite : LoginItemSite {
    std::shared_ptr<MemoryLoginItem::State> state = std::make_shared<MemoryLoginItem::State>();

    std::unique_ptr<LoginItem> start() override { return std::make_unique<MemoryLoginItem>(state); }
    void switchOffElsewhere() override { state->status = LoginItemStatus::requiresApproval; }
    void switchOnElsewhere() override { state->status = LoginItemStatus::enabled; }
    bool whileNothingCanBeChanged(std::function<void()> action) override {
        state->refusesChanges = true;
        action();
        state->refusesChanges = false;
        return true;
    }
    void loseService() override { state->status = LoginItemStatus::notFound; }
    bool showedSettings() override { return state->pages == 1; }
    void losePage() override { state->hasPage = false; }
};

#ifdef SYS_unlink
constexpr unsigned unlinkCall = SYS_unlink;
#else
constexpr unsigned unlinkCall = SYS_unlinkat;
#endif

// On a desktop that writes "Hidden" into the entry, as most do.
struct AutostartSite : LoginItemSite {
    AutostartSite() {
        site.variables["XDG_CURRENT_DESKTOP"] = "XFCE";
        site.addProgram("xfce4-session-settings");
    }
    std::unique_ptr<LoginItem> start() override {
        return std::make_unique<XdgAutostart>(program, std::vector<std::string>(), site.environment());
    }
    void switchOffElsewhere() override { write("Hidden=true\n"); }
    void switchOnElsewhere() override { write("Hidden=false\n"); }
    bool whileNothingCanBeChanged(std::function<void()> action) override {
        bool unlinkFails = false;
        const bool renameFails =
            withoutSystemCall(SYS_renameat, EROFS, [&] { unlinkFails = withoutSystemCall(unlinkCall, EROFS, action); });
        return renameFails && unlinkFails;
    }
    void loseService() override { std::filesystem::remove(program); }
    bool showedSettings() override { return site.startedProgram() == "xfce4-session-settings|"; }
    void losePage() override { std::filesystem::remove(site.folder / "bin/xfce4-session-settings"); }

    void write(const std::string& key) { putFile(file, getFile(file) + key); }

    DesktopSite site;
    const std::string program = site.addProgram("brindlefox-apple-bridge");
    const std::filesystem::path file = site.folder / "home/.config/autostart" / XdgAutostart::fileName;
};

// What the system brings along is hidden and shown rather than written and removed.
struct SystemAutostartSite : AutostartSite {
    SystemAutostartSite() {
        putFile(systemFile, "[Desktop Entry]\nType=Application\nExec=/bin/true\n");
        start()->unregisterItem();
    }
    void loseService() override {
        AutostartSite::loseService();
        std::filesystem::remove(systemFile);
    }
    const std::filesystem::path systemFile = site.folder / "xdg/autostart" / XdgAutostart::fileName;
};

const LoginItemKind kinds[] = {
    {"Memory", [] { return std::make_unique<MemorySite>(); }},
    {"XdgAutostart", [] { return std::make_unique<AutostartSite>(); }},
    {"XdgAutostartOfTheSystem", [] { return std::make_unique<SystemAutostartSite>(); }},
};
INSTANTIATE_TEST_SUITE_P(Adapters, LoginItemContract, testing::ValuesIn(kinds), nameOf);

} // namespace
} // namespace bridge
