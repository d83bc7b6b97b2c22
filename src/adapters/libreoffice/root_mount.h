#pragma once

#include <string>
#include <vector>

namespace bridge::office {

// What is to stand before bubblewrap in a command; nothing, as a rule. bubblewrap needs a root folder that is a mount
// of its own (pivot_root(2)), which it is not in a plain chroot(1). There the superuser can give it one.
std::vector<std::string> rootMountWords();

} // namespace bridge::office
