#include "app/only_instance.h"
#include "app/options.h"
#include "app/platform.h"
#include "app/process.h"
#include "app/start_up.h"
#ifdef HAVE_SHELL
#include "app/shell/brindlefox_apple_bridge_app.h"
#include "app/shell/display.h"
#include "app/shell/start_failure.h"
#endif

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace bridge {

namespace {

bool canShowWindows() {
#ifdef HAVE_SHELL
    return findDisplay();
#else
    return false;
#endif
}

// What the desktop gives the programs that it starts; theirs alone, and not for what they start.
std::string takeActivationToken() {
    const char* token = std::getenv("XDG_ACTIVATION_TOKEN");
    std::string taken = token ? token : "";
    unsetenv("XDG_ACTIVATION_TOKEN");
    return taken;
}

int runWith([[maybe_unused]] int& count, [[maybe_unused]] char** arguments, Options::Action action, bool hasDisplay) {
    const auto folder = instanceFolder(userProfileFolder());
    const auto wish = action == Options::Action::start ? InstanceWish::showDashboard : InstanceWish::nothing;
    const auto token = takeActivationToken();
    const auto instance = becomeOnlyInstance(folder, {{wish, token}, hasDisplay});
    if (const auto* other = std::get_if<RunningAlready>(&instance)) {
        if (other->answer == InstanceAnswer::noDisplay) std::puts("It is running already, without a display.");
        return 0;
    }
#ifdef HAVE_SHELL
    if (hasDisplay) return BrindlefoxAppleBridgeApp(count, arguments, folder).run(action, token);
#endif
    serveWithoutDisplay(folder);
    return 0;
}

void complain(const std::exception& error) {
    std::fprintf(stderr, "brindlefox-apple-bridge: %s\n", error.what());
}

int run(int& count, char** arguments, Options::Action action) {
    prepareProcess();
    const bool hasDisplay = canShowWindows();
    try {
        return runWith(count, arguments, action, hasDisplay);
    } catch (const std::exception& error) {
        complain(error);
#ifdef HAVE_SHELL
        // Who clicked on an icon sees no standard error.
        if (hasDisplay && action == Options::Action::start) showStartFailure(count, arguments, error.what());
#endif
        return 1;
    }
}

} // namespace

} // namespace bridge

int main(int count, char** arguments) {
    using namespace bridge;
    try {
        const auto options = parseOptions({arguments + 1, static_cast<size_t>(count - 1)});
        if (options.action != Options::Action::say) return run(count, arguments, options.action);
        std::fputs(options.text.c_str(), stdout);
        return 0;
    } catch (const std::invalid_argument& error) {
        complain(error);
        return 2;
    } catch (const std::exception& error) {
        complain(error);
        return 1;
    }
}
