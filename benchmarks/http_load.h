#pragma once

#include <string>

namespace bridge::bench {

// One request over a connection of its own; the whole answer. Empty when nobody listens.
std::string fetch(int port, const std::string& request);

// Sends `request` on `count` connections, `inFlight` of them at a time, and reads each answer to its end. Ends the
// program when an answer has not `answerSize` bytes.
void load(int port, const std::string& request, size_t answerSize, int count, int inFlight);

} // namespace bridge::bench
