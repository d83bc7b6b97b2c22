#pragma once

#include "base/file_descriptor.h"

#include <cstdint>

namespace bridge {

// A socket that listens on 127.0.0.1, on any free port when `port` is 0. Throws PlatformError.
FileDescriptor listenOnLoopback(uint16_t port);
uint16_t portOf(const FileDescriptor& socket);
// The next connection, non-blocking; empty when there is none.
FileDescriptor acceptConnection(const FileDescriptor& listener);

} // namespace bridge
