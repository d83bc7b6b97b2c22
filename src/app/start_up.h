#pragma once

#include "app/bridge_model.h"

#include <string>

namespace bridge {

// One line in the log: where it listens and whether it is paired. Nothing when it does not listen: that was said.
void noteState(const BridgeModel& model);

// The program of a user without a display, or a build without windows: serves until it is told to end. `instances` is
// the folder in which later starts look for this one; one that has a display takes its place. Throws when it can't
// serve, because there is nothing else to do.
void serveWithoutDisplay(const std::string& instances);

} // namespace bridge
