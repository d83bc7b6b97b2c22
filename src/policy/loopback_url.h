#pragma once

#include <string_view>

namespace bridge {

// Whether `text` is the plain http URL of a server on this very machine: the host is 127.0.0.1, localhost or [::1] to
// the letter, a port may follow, and a path. Nothing that another URL reader could take for another host gets through:
// no user, no query, no fragment, no other spelling of an address, no character that doesn't belong in a URL.
bool isLoopbackURL(std::string_view text);

} // namespace bridge
