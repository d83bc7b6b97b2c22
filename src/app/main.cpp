#include "app/bridge_model.h"
#include "app/process.h"
#include "base/log.h"
#include "base/termination_signals.h"

#include <cstdio>

// The application of the logged-in user. Without a desktop shell it serves until it is told to end.
int main(int count, char**) {
    using namespace bridge;
    if (count > 1) {
        std::fputs("brindlefox-apple-bridge takes no arguments.\n", stderr);
        return 2;
    }
    try {
        prepareProcess();
        EventLoop loop;
        log::gatherOn(loop);
        auto platform = openDesktopPlatform(loop);
        BridgeCapabilityPolicy policy(*platform.defaults);
        BridgeModel model(loop, platform, policy);
        const TerminationSignals signals(loop, [&loop] { loop.stop(); });
        loop.runUntilDone(model.start());
        // Without a dashboard there is nobody to tell and nothing else to do.
        if (const auto* failure = std::get_if<ServerFailed>(&model.httpServer.state.get()))
            throw std::runtime_error(failure->message);
        if (const auto* listening = std::get_if<ServerListening>(&model.httpServer.state.get()))
            log::note("Listening on 127.0.0.1:" + std::to_string(listening->port) +
                      (model.isPaired.get() ? ", paired" : ", not paired: every request is refused"));
        loop.run();
        log::flush();
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "brindlefox-apple-bridge: %s\n", error.what());
        return 1;
    }
}
