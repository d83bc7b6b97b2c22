#pragma once

#include <string>

namespace bridge {

// For the user who started the program and would wait for a window: says in one why none comes. Returns when it is
// closed. A display answers, and no QApplication is there (any more). `count` outlives it.
void showStartFailure(int& count, char** arguments, const std::string& message);

} // namespace bridge
