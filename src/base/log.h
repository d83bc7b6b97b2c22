#pragma once

#include <chrono>
#include <string_view>

namespace bridge {

class EventLoop;

// The program's log, on standard error unless told otherwise: one line for each request and one for each thing worth
// knowing. It never holds a payload, a path or the credential. Main thread only.
namespace log {

// "files.list 200 3 ms". `what` must be one of our own words, never text from the wire.
void request(std::string_view what, int status, std::chrono::milliseconds took);

void note(std::string_view message);

// Where lines go from now on; the descriptor stays the caller's and open.
void writeTo(int descriptor);

// Lines are gathered and leave together each time `loop` goes to wait. Without this, and once the loop is gone, each
// leaves at once.
void gatherOn(EventLoop& loop);
void flush();

} // namespace log

} // namespace bridge
