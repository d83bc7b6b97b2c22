#include "app/start_up.h"

#include "app/instance_socket.h"
#include "base/log.h"
#include "base/termination_signals.h"

namespace bridge {

void noteState(const BridgeModel& model) {
    const auto* listening = std::get_if<ServerListening>(&model.httpServer.state.get());
    if (!listening) return;
    log::note("Listening on 127.0.0.1:" + std::to_string(listening->port) +
              (model.isPaired.get() ? ", paired" : ", not paired: every request is refused"));
}

namespace {

// The model keeps it until it is done. One that can't serve has nothing else to do.
Task<> serve(BridgeModel& model, EventLoop& loop, std::optional<ServerFailed>& failure) {
    co_await model.start();
    noteState(model);
    const auto* failed = std::get_if<ServerFailed>(&model.httpServer.state.get());
    if (!failed) co_return;
    failure = *failed;
    loop.stop();
}

} // namespace

void serveWithoutDisplay(const std::string& instances) {
    EventLoop loop;
    log::gatherOn(loop);
    log::note("There is no display: the bridge serves without a dashboard.");
    const InstanceSocket laterStarts(loop, instances, [&loop](const InstanceMessage& message) {
        if (message.wish != InstanceWish::giveWay) return InstanceAnswer::noDisplay;
        log::note("Another start has a display and takes over.");
        loop.stop();
        return InstanceAnswer::done;
    });
    std::optional<ServerFailed> failure;
    auto platform = openDesktopPlatform(loop);
    BridgeCapabilityPolicy policy(*platform.defaults);
    BridgeModel model(loop, platform, policy);
    const TerminationSignals signals(loop, [&loop] { loop.stop(); });
    model.perform(serve(model, loop, failure));
    loop.run();
    log::flush();
    if (failure) throw std::runtime_error(failure->message);
}

} // namespace bridge
