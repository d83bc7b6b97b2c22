#pragma once

#include "app/bridge_model.h"
#include "app/process.h"
#include "base/log.h"

#include <fcntl.h>

namespace bridge::bench {

constexpr const char* credential = "the-credential-of-the-measurements";

// The whole bridge on embedded adapters below `folder`, paired, every switch on; serves until it is killed.
inline void servePairedBridge(const std::string& folder) {
    prepareProcess();
    log::writeTo(open("/dev/null", O_WRONLY | O_CLOEXEC));
    EventLoop loop;
    log::gatherOn(loop);
    auto platform = openEmbeddedPlatform(loop, folder);
    loop.runUntilDone(platform.secureStore->replace(BridgePairingStore::credentialItem(), credential));
    BridgeCapabilityPolicy policy(*platform.defaults);
    for (const auto group : allCapabilityGroups)
        policy.setGroupEnabled(group, true);
    BridgeModel model(loop, platform, policy);
    loop.runUntilDone(model.start());
    loop.run();
}

} // namespace bridge::bench
