#pragma once

#include <string>

namespace bridge::bench {

// The least that a server can do for a request on a connection of its own: accept4, recv, send a fixed answer, close,
// on a bare epoll loop. What the kernel costs, and nothing else. Listens on 127.0.0.1:`port`; never returns.
[[noreturn]] void runBareServer(int port, const std::string& answer);

} // namespace bridge::bench
