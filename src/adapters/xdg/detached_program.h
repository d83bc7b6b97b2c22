#pragma once

#include <string>
#include <vector>

namespace bridge {

// Starts a program that goes its own way: in a session of its own, with nothing of ours open and no shell between, and
// nobody has to wait for its end. `command` is the path and the arguments. Returns when the program runs; throws
// PlatformError when it can't be started.
void startDetached(const std::vector<std::string>& command);

} // namespace bridge
