#pragma once

#include <string>

// GLib and Qt's words can't stand in one source.
namespace bridge::testbus {

// The session bus of this test program, and whether there can be one.
bool isPossible();
std::string address();
bool isOwned(const std::string& name);
// Blocks until nobody owns the name.
void waitUntilFree(const std::string& name);

} // namespace bridge::testbus
